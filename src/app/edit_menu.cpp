#include "app/edit_menu.h"

#include "entry/log_qso.h"
#include "platform/dialogs.h"
#include "session/log_file.h"

namespace zrt {

namespace {

constexpr const char *kTitle = "Mark Years";

// The place in the record is free in the current format alone.
bool HasSomethingToMark() {
    if (Log.CurrentFormat && Log.NextEntry > 1)
        return true;
    ShowMessageBox({"There are no contacts that can be marked.", kTitle, BoxButtons::Ok,
                    BoxIcon::Exclamation});
    return false;
}

void MarkEntry(i16 n) {
    Log.WorkingEntry = Log.LogEntries[n];
    std::string reserved(Log.WorkingEntry.Reserved.Whole());
    reserved[0] = '2';
    Log.WorkingEntry.Reserved.TakeRaw(reserved);
    StoreEntry(n);
}

} // namespace

void MarkDecade() {
    if (!HasSomethingToMark())
        return;
    const BoxAnswer answer = ShowMessageBox(
        {"The contacts of this log will be taken as of the years 2020 to 2029, not 2000 to 2009.  "
         "Mark all of them?",
         kTitle, BoxButtons::YesNo, BoxIcon::Question, 2});
    if (answer != BoxAnswer::Yes)
        return;
    const LogEntry inHand = Log.WorkingEntry;
    for (i16 n = 1; n < Log.NextEntry; ++n)
        if (IsYear200x(Log.LogEntries[n].Date))
            MarkEntry(n);
    Log.WorkingEntry = inHand; // the next contact may inherit from it
    BringToDisk();
}

} // namespace zrt
