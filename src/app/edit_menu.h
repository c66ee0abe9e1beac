// The operations of the Edit menu on the log as a whole.
#pragma once

namespace zrt {

struct EditMenuHooks {
    // The entry editor on the last entry; true if it changed the log. Null until there is one.
    bool (*EditLastEntry)() = nullptr;
};
extern EditMenuHooks EditMenu;

// Takes back the last contact: its place is the next one's. The file is not touched, and the score
// stays as it is until the log is loaded again. May pump.
void KillLastEntry();

// Empties the log, after a copy to KilledFile.zrt in the program's folder. May pump.
void KillAllEntries();

// Opens the editor on the last contact, and rebuilds what is derived if it changed. May pump.
void EditLastEntry();

// Marks each contact of the open log whose year reads as 2000 to 2009 as of 2020 to 2029, for logs
// of those years that came without the decade. Asks first; what can't be written is owed. May pump.
void MarkDecade();

} // namespace zrt
