#include "app/recovery.h"

#include "app/log_loader.h"
#include "app/log_lock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/contests.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/session_flags.h"

#include <array>
#include <cerrno>

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

// False if there is none, or none that can be read. The operator is told of the latter.
bool ReadTemporaryHeader(LogHeader &header) {
    bool holdsNoLog = false;
    const bool read = WithRetry([&header, &holdsNoLog] {
        const int error = ReadHeader(Log.LogFileName, header);
        holdsNoLog = error == ENOENT || error == EINVAL; // not there, or too short
        return holdsNoLog ? 0 : error;
    });
    return read && !holdsNoLog;
}

// A file that can't be looked at may.
bool MayHoldContacts(const std::string &path) {
    OpenedFile file;
    std::uint64_t length = 0;
    return file.Open(path, OpenMode::Read) != 0 || file.Length(length) != 0 ||
           length > kHeaderLength;
}

void OfferTemporaryLog() {
    LogHeader header;
    if (!ReadTemporaryHeader(header))
        return;
    if (ContestOfTag(header.ContestTag.Whole()) == kNoContest) {
        KeepUnsavedLog(); // no log, but somebody may know what it is
        return;
    }
    const BoxAnswer answer = ShowMessageBox(
        {"ZRTLOG has detected a backup file indicating the program was terminated abnormally.  Do "
         "you want to open it as a log file?",
         "ZRTLOG", BoxButtons::YesNo, BoxIcon::Question});
    if (Program.Ending)
        return; // nobody has answered: the next start asks again
    if (answer != BoxAnswer::Yes) {
        KeepUnsavedLog();
        return;
    }
    Log.LogState = kTemporaryName;
    LoadLog(0);
}

} // namespace

int KeepStrayLog() {
    if (!Files.Exists(Log.LogFileName))
        return 0;
    LockLog();
    const bool held = Log.Lock.Result == LockResult::Held;
    UnlockLog();
    if (held)
        return EBUSY; // the log of another copy, whose contacts would go astray
    if (!MayHoldContacts(Log.LogFileName))
        return 0;
    const std::array names = {UnsavedLog(1), UnsavedLog(2), UnsavedLog(3)};
    return MoveToFirst(Log.LogFileName, names);
}

void OfferRecovery() {
    // The log of a copy that runs is not that of a crash.
    if (Files.Exists(Log.LogFileName) && MayOpenLog())
        OfferTemporaryLog();
    if (Log.LogState == kNoLog)
        UnlockLog();
}

} // namespace zrt
