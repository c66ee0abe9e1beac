// The doors of platform/ on a machine that does not exist: a virtual clock, a keyboard, boxes that
// are answered from a queue, a disk that can fail, ports and players that record. For the scenario
// runner and for the unit tests of the whole project.
#pragma once

#include "headless/device_records.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

struct DeviceState {
    Microseconds Steady = 1000 * kSecond;
    Microseconds UtcAtZero = 0; // of the calendar since 1970, when Steady was 0; see SetUtc
    int ZoneMinutes = 0;        // local time is UTC and this

    std::deque<BoxAnswer> Answers;                      // to the next boxes
    std::deque<std::optional<std::string>> FileAnswers; // to the next file dialogs; none: Cancel
    std::vector<ShownBox> Boxes;
    std::vector<FileDialog> FileDialogs;

    DiskMode Disk = DiskMode::Ok;
    bool OtherCopyRunning = false; // it holds every lock, that of each log too
    std::string ProgramFolder;     // of executable, user and defaults alike

    std::set<int> KeysDown, KeysHit; // KeysHit: pressed since the program last asked
    std::map<std::string, PortState, NoCaseLess> Ports;
    std::vector<LineChange> Lines;
    std::map<int, std::uint8_t> IoPorts;
    std::map<int, bool> Relays;
    int RelayCount = 8;
    std::vector<std::string> WavesStarted; // file names as the program gave them
    bool SoundFails = false;
    std::vector<Tone> Tones;
    std::string HelpPage; // opened last
    int HelpTopic = -1;

    std::vector<ScheduledEvent> Scheduled; // in no order

    // Does the operator's next thing in a wait without a deadline; false if there is none, which
    // ends the program.
    std::function<bool()> Operator;
    // Told what the devices do, one line a call.
    std::function<void(const std::string &)> Trace;
    // Told what no program may do, as a box without an answer; must not return. Without it the text
    // goes to stderr and the process aborts.
    std::function<void(const std::string &)> Fail;
};
extern DeviceState Devices;

// Installs every door, with fresh devices, no timers, no posted events and no open forms.
void InstallHeadlessDoors();

void SetUtc(const MachineTime &utc); // sets the wall clock; the steady clock does not see it
MachineTime CalendarOf(Microseconds sinceEpoch);

// Runs `event` in the first wait that reaches `due`; before timers of the same instant.
void Schedule(Microseconds due, std::function<void()> event);
// Serves what is due now, and lets no time pass. What the main loop does between two events.
void ServeDueEvents();

// Bytes reach the program at this port, in one event. False if it is not open.
bool ArriveAtPort(const std::string &portName, std::string_view bytes);
// Sets the reply that comes 5 ms after `request` has been written. An older reply to it is gone.
void SetReply(const std::string &portName, std::string request, std::string reply);

[[noreturn]] void FailDevices(const std::string &text);

const char *NameOfAnswer(BoxAnswer answer); // "Ok", "Cancel", ...
std::string DescribeBox(const MessageBox &box);

} // namespace zrt
