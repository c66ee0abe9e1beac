// LogQso, the one path by which a contact enters the log: from the two fields of the entry window
// into the record, the tables, the file and the next message. The keyboard and the Add button
// call it.
#pragma once

#include "session/log_entry.h"

#include <string>

namespace zrt {

// What the exchange parser of the contest makes of the two fields.
struct ParsedExchange {
    std::string Call;     // as typed; a parser may cut a number off its end or correct it
    i16 Number = 0;       // serial, zone, age or power
    std::string Name;     // Sprint, NAQP, CW Ops
    int DigitsOnCall = 0; // WPX: the refused number stands on the end of the call
};

// What LogQso asks of the modules that surround it. Each does nothing until it is installed.
struct LogQsoHooks {
    // Carries out the command in the call field. False if there is none: it is a call.
    bool (*CarryOutCallCommand)() = [] { return false; };
    void (*SendMacro)(int keyCode, bool repeat) = [](int, bool) {};
    // Looks the call up in the log and sets Entry.DupeFlag.
    void (*Dupecheck)(const std::string &call) = [](const std::string &) {};
    void (*DupeLabelShow)() = [] {};
    // Checks the exchange. A refusal has shown its box and set Entry.ParseError and the selection.
    void (*ParseExchange)(ParsedExchange &parsed) = [](ParsedExchange &) {};
    // WPX: the prefix of the call goes into the list of prefixes and may set Entry.NewMultFlag.
    void (*InsertWpxPrefix)(const std::string &call) = [](const std::string &) {};
    void (*RecordCwOpenCall)(const std::string &call) = [](const std::string &) {};
    // Fills RcvdExchange and marks the tables; may set Entry.NewMultFlag and CountyContact.
    void (*ApplyMultiplier)(LogEntry &entry) = [](LogEntry &) {};
    void (*ShowWorkedCountries)() = [] {};
    void (*UpdateStatistics)(bool force) = [](bool) {};
    void (*ShowNewMultiplier)() = [] {};
    void (*UpdateLogDisplay)() = [] {};
    void (*ClearPartial)() = [] {};
};
extern LogQsoHooks QsoHooks;

// Carries the contact in the fields into the log. `fieldIndex` is the field that had the keyboard
// (0 from the Add button), `shift` the modifiers: 1 Shift, 2 Ctrl, 4 Alt. A refusal leaves the
// fields as typed, with the bad part selected and the focus there. May pump.
void LogQso(i16 fieldIndex, i16 shift);

// Writes the contacts that are owed to the disk, and asks after a failure. What the operator gives
// up on stays owed, and the warning line names it. May pump.
void BringToDisk();

// "Score: " and "Mults:  ", or the countries by mode in Generic.
void ShowScore();

// Names the contacts that are not on disk in the warning line, and hides it when there are none.
void ShowOwedEntries();

} // namespace zrt
