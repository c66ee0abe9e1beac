#include "app/edit_menu.h"

#include "app/file_menu.h"
#include "app/log_loader.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/session_flags.h"
#include "session/settings.h"

#include <algorithm>
#include <array>

namespace zrt {

EditMenuHooks EditMenu;

namespace {

bool HasEntries(const char *complaint) {
    if (Log.NextEntry > 1)
        return true;
    ShowMessageBox({complaint, "No Log Entries", BoxButtons::Ok, BoxIcon::Exclamation});
    return false;
}

bool Confirm(const std::string &question, int defaultButton) {
    return ShowMessageBox({question, "Confirm kill", BoxButtons::YesNo, BoxIcon::Question,
                           defaultButton}) == BoxAnswer::Yes;
}

// Reads the open log again and rebuilds all that is derived from it. What is owed to the disk would
// be gone: the callers settle it first.
void RescanOpenLog() {
    WriteSettings(true);
    Session.RescanInPlace = true;
    LoadLog(0);
}

// ---- Kill All

// Three killed logs are kept whole: number 1 is the newest.
int KeepKilledLog() {
    const std::string path = Session.AppPath + "KilledLog";
    const std::array names = {path + " 1.zrt", path + " 2.zrt", path + " 3.zrt"};
    return CopyToFirst(Log.LogFileName, names);
}

// The copy that holds the contacts.
std::string NameOfBackup() {
    return Extensions.KeepKilledLog ? "KilledLog 1.zrt" : "KilledFile.zrt";
}

// KilledFile.zrt is written from the entries of the old formats, in every log: that of a log of
// today's format has its header and as many empty records.
template <typename Entry> void PutEntries(FileBytes &bytes, const std::vector<Entry> &entries) {
    constexpr std::size_t length = sizeof(Encode(Entry()));
    bytes.resize(static_cast<std::size_t>(Log.NextEntry) * length);
    for (std::size_t n = 1; n * length < bytes.size(); ++n)
        std::ranges::copy(Encode(n < entries.size() ? entries[n] : Entry()),
                          bytes.begin() + static_cast<std::ptrdiff_t>(n * length));
}

int WriteKilledFile() {
    FileBytes bytes;
    if (Contest.ContestId == kSprint || Contest.ContestId == kNaqp)
        PutEntries(bytes, Log.OldEntries36);
    else // a Generic log as well
        PutEntries(bytes, Log.OldEntries26);
    std::ranges::copy(Encode(Log.KeptHeader), bytes.begin());
    return ReplaceFile(Session.AppPath + "KilledFile.zrt", bytes);
}

bool LogFileIsEmpty() {
    OpenedFile file;
    std::uint64_t length = 0;
    return file.Open(Log.LogFileName, OpenMode::Read) == 0 && file.Length(length) == 0 &&
           length == kHeaderLength;
}

// ---- Mark Years

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

void KillLastEntry() {
    if (!HasEntries("No Entries in Log, so can't kill last entry.") ||
        !Confirm("Kill last log entry?", 1))
        return;
    --Log.NextEntry;
    std::erase_if(Log.Unwritten, [](i16 n) { return n >= Log.NextEntry; });
    ShowOwedEntries();
    SetFocus(LogForm.InData[0]);
    WriteQSONrLabel();
    // 6 m and above count as phone here, whatever their mode.
    const i16 band = CurrentBand();
    LogForm.QSONrLabel.Caption = "QSO Nr " + std::to_string(Log.NextEntry) + "    (" +
                                 LongBandName(band) + (band < 9 ? " CW)" : " SSB)");
}

void KillAllEntries() {
    if (!HasEntries("No Entries in Log, so can't kill allentries.") ||
        !Confirm("Kill ALL log entries?\nIf you do so, a backup file is created, called " +
                     NameOfBackup() + ".",
                 2))
        return;
    // Nothing is deleted before its copy is safely there, with the contacts that are owed to the
    // disk.
    if (Extensions.KeepKilledLog && (!SettleOwedEntries() || !WithRetry(KeepKilledLog)))
        return;
    if (!WithRetry(WriteKilledFile))
        return;
    // When it was only the folder that could not be synced the entries are gone: memory must not
    // show what the disk has no more.
    if (!WithRetry(EmptyLogFile) && !LogFileIsEmpty())
        return;
    ForgetEntries(); // a retry in between must not write them again
    RescanOpenLog();
}

void EditLastEntry() {
    if (!HasEntries("No Entries in Log, so can't edit last entry."))
        return;
    if (EditMenu.EditLastEntry == nullptr) {
        ShowMessageBox({"This version can't edit a contact yet.  Use Kill Last Entry, and log the "
                        "contact again.",
                        "Edit Last Entry", BoxButtons::Ok, BoxIcon::Information});
        return;
    }
    if (EditMenu.EditLastEntry() && SettleOwedEntries())
        RescanOpenLog();
}

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
