// LogQso, the one path by which a contact enters the log: from the two fields of the entry window
// into the record, the tables, the file and the next message. The keyboard and the Add button
// call it.
#pragma once

#include "entry/call_commands.h"
#include "entry/dupes.h"
#include "entry/exchange_parsers.h"
#include "entry/multipliers.h"

#include <string_view>

namespace zrt {

// The steps of LogQso that are other modules' work. Those of modules that stand above it do nothing
// until they are installed; a test may put its own in the place of any.
struct LogQsoHooks {
    // Carries out the command in the call field. False if there is none: it is a call.
    bool (*CarryOutCallCommand)() = zrt::CarryOutCallCommand;
    void (*Dupecheck)(std::string_view call) = zrt::Dupecheck;
    void (*DupeLabelShow)() = zrt::DupeLabelShow;
    void (*ParseExchange)(ParsedExchange &parsed) = zrt::ParseExchange;
    NewMults (*ApplyMultiplier)(LogEntry &entry,
                                const ParsedExchange &parsed) = zrt::ApplyMultiplier;
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

// The "Last: " line for the log's last contact that is not void, as after it was logged. Nothing
// changes in a log without contacts.
void ShowLastContact();

// "Score: " and "Mults:  ", or the countries by mode in Generic.
void ShowScore();

// Counts and names the contacts that are not on disk in the warning line, and hides it when there
// are none.
void ShowOwedEntries();

} // namespace zrt
