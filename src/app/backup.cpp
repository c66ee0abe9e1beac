#include "app/backup.h"

#include "app/file_menu.h"
#include "app/log_lock.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"

namespace zrt {

namespace {

// A single letter is a drive; anything longer is a folder.
std::string BackupFolder() {
    const std::string &drive = Settings.BackUpDrive;
    return WithSeparator(drive.size() == 1 ? drive + ":" : drive);
}

int WriteBackup(const std::string &path) {
    // In records of today an old log comes out blank; without the protection that is how it is.
    if (Log.CurrentFormat || !Extensions.ProtectOldLogs)
        return ReplaceFile(path, LogImage(kEntryLength));
    if (IsOwedToDisk())
        return ReplaceFile(path, LogImage(RecordLength(false, Contest.ContestId)));
    return CopyFile(Log.LogFileName, path);
}

bool DriveIsChosen() {
    if (!Settings.BackUpDrive.empty() && Settings.BackUpDrive != "[none]")
        return true;
    ShowMessageBox(
        {"No backup drive is chosen.  Write a drive or a folder behind BackUpDrive= in " +
             Session.AppPath + kSettingsFile + " while ZRTLOG is closed.",
         "Backup", BoxButtons::Ok, BoxIcon::Information});
    return false;
}

} // namespace

void BackupLog() {
    if (!DriveIsChosen())
        return;
    const std::string path = BackupFolder() + NameOf(Log.LogFileName);
    if (path == Log.LogFileName) {
        ShowMessageBox({"The backup drive is the folder of the log itself.  Choose another one in "
                        "the settings.",
                        "File or Disk Error", BoxButtons::Ok, BoxIcon::Exclamation});
        return;
    }
    // The copy is made from memory: it is whole even if the log can't be written.
    if (!SettleOwedEntries() || !MayReplaceLog(path))
        return;
    Screen.BusyPointer = true;
    (void)WithRetry([&path] { return WriteBackup(path); }); // given up: the operator was told
    Screen.BusyPointer = false;
}

} // namespace zrt
