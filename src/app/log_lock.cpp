#include "app/log_lock.h"

#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/file_errors.h"
#include "session/log_file.h"

namespace zrt {

namespace {

constexpr const char *kTitle = "Log In Use";

void TellHeld(const std::string &path, const FileLock &lock) {
    const std::string holder = lock.Holder.empty() ? "" : " (" + lock.Holder + ")";
    ShowMessageBox({NameOf(path) + " is open in another copy of ZRTLOG" + holder +
                        ".  Close it there first: two copies would write over each other's "
                        "contacts.",
                    kTitle, BoxButtons::Ok, BoxIcon::Exclamation});
}

bool CanBeRead(const std::string &path) {
    LogHeader header;
    return ReadHeader(path, header) == 0;
}

bool OpensWithoutLock(int error) {
    return ShowMessageBox({NameOf(Log.LogFileName) + " can't be locked: " + SystemErrorText(error) +
                               ".  Without the lock two copies of ZRTLOG could open it, and write "
                               "over each other's contacts.  Open it all the same?",
                           kTitle, BoxButtons::YesNo, BoxIcon::Exclamation, 2}) == BoxAnswer::Yes;
}

} // namespace

bool MayOpenLog() {
    LockLog();
    if (Log.Lock.Result == LockResult::Held) {
        TellHeld(Log.LogFileName, Log.Lock);
        return false;
    }
    // A file that can't be read at all is reported where it is read.
    return Log.Lock.Result == LockResult::Taken || !CanBeRead(Log.LogFileName) ||
           OpensWithoutLock(Log.Lock.Error);
}

bool MayReplaceLog(const std::string &path) {
    if (path == Log.LogFileName)
        return true; // the lock is this copy's own
    FileLock lock;
    Files.LockOpenFile(path, lock);
    const bool held = lock.Result == LockResult::Held;
    if (held)
        TellHeld(path, lock);
    Files.Unlock(lock);
    return !held;
}

} // namespace zrt
