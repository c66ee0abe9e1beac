#include "app/recovery.h"

#include "app/log_loader.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/session_flags.h"

namespace zrt {

namespace {

std::string UnsavedLog(int number) {
    return Session.AppPath + "Unsaved ZRT Log " + std::to_string(number) + ".zrt";
}

// A missing source is no matter; a name that is still taken is not written over.
void MoveFile(const std::string &from, const std::string &to) {
    if (Files.Exists(from) && !Files.Exists(to))
        (void)Files.Rename(from, to); // what can't be moved stays where it is
}

// Three logs are kept: number 1 is the newest, and number 3 is lost when a fourth comes.
void KeepUnsavedLog() {
    (void)Files.Remove(UnsavedLog(3));
    MoveFile(UnsavedLog(2), UnsavedLog(3));
    MoveFile(UnsavedLog(1), UnsavedLog(2));
    MoveFile(Log.LogFileName, UnsavedLog(1));
    (void)Files.SyncFolder(Session.AppPath); // the names are right already; a crash may undo them
}

} // namespace

void OfferRecovery() {
    LogHeader header;
    if (ReadHeader(Log.LogFileName, header) != 0)
        return; // none there, or too short to hold a log
    if (ContestOfTag(header.ContestTag.Whole()) == kNoContest) {
        KeepUnsavedLog(); // no log, but somebody may know what it is
        return;
    }
    const BoxAnswer answer = ShowMessageBox(
        {"ZRTLOG has detected a backup file indicating the program was terminated abnormally.  Do "
         "you want to open it as a log file?",
         "ZRTLOG", BoxButtons::YesNo, BoxIcon::Question});
    if (answer != BoxAnswer::Yes) {
        KeepUnsavedLog();
        return;
    }
    Log.LogState = kTemporaryName;
    LoadLog(0);
}

} // namespace zrt
