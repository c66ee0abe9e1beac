// A session of an operator on a disk with faults, from the start to the exit. The sweeps of
// fault_sweep_test.cpp take it again and again.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace zrt {

inline constexpr int kContacts = 30;
inline constexpr int kContactsBeforeSave = 20; // the others go into the log after it has its name
inline constexpr const char *kLogName = "cqww.ZRT";
inline constexpr const char *kCabrilloName = "cqww.LOG";
inline constexpr const char *kBackupName = "stick/cqww.ZRT";
inline const std::string kOldCabrillo =
    "START-OF-LOG: 3.0\r\nSOAPBOX: old\r\nEND-OF-LOG:\r\n"; // there before the walk

struct ProcessGone {}; // thrown out of a walk whose disk has crashed

struct FaultOperatorState {
    bool Recovers = true; // takes the log of a session that crashed
    bool GivesUp = false; // the first time that he is offered to try again
    bool KillsAll = false;
    int DialogAnswers = 0;         // in a row, to the dialog of the files after a contest
    std::vector<std::string> Told; // the boxes that were no question
};
extern FaultOperatorState FaultOperator;

struct WalkState {
    bool OnFaultyDoor = false;
    bool LearnsSettings = false; // the walk without a fault
    bool Ended = false;
    std::vector<std::string> Cleared; // calls that had cleared the fields
    std::string FaultIn;              // the step with the first fault
};
extern WalkState Walk;

// The complete settings files that the walk without a fault went through, without the values.
extern std::set<std::string> SettingsShapes;
std::string ShapeOf(const std::string &settings);
void LearnSettings();

std::string CallOf(int n); // of contact n, counted from 0

// A new process with the operator before it, on the real disk or the faulty door before it. Waits
// for the disk are not real; see interrupted_calls.cpp.
void BeginProcessOn(const std::string &folder);

// Start, New, contacts, settings, Save As, Backup, files after a contest, Open, contacts, Kill All,
// Exit; at the end the log is empty.
void TakeWalk();
// The program is started again; the log of the session before is opened, or refused and a new one
// is begun. Then a contact is logged.
void TakeRecoveryWalk();

} // namespace zrt
