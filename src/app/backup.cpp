#include "app/backup.h"

#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/settings.h"

#include <algorithm>

namespace zrt {

namespace {

// A single letter is a drive; anything longer is a folder.
std::string BackupFolder() {
    const std::string &drive = Settings.BackUpDrive;
    return WithSeparator(drive.size() == 1 ? drive + ":" : drive);
}

// The log as it is in memory, in today's format.
FileBytes LogFromMemory() {
    FileBytes bytes(static_cast<std::size_t>(Log.NextEntry) * kEntryLength);
    std::ranges::copy(Encode(Log.KeptHeader), bytes.begin());
    for (i16 n = 1; n < Log.NextEntry; ++n)
        std::ranges::copy(Encode(Log.LogEntries[n]), bytes.begin() + n * kEntryLength);
    if (Log.NextEntry == 1)
        bytes.resize(kHeaderLength);
    return bytes;
}

int WriteBackup(const std::string &path) {
    // From memory an old log would come out blank; without the protection that is how it is.
    if (!Log.CurrentFormat && Extensions.ProtectOldLogs)
        return CopyFile(Log.LogFileName, path);
    return ReplaceFile(path, LogFromMemory());
}

} // namespace

void BackupLog() {
    if (Settings.BackUpDrive.empty() || Settings.BackUpDrive == "[none]")
        return;
    const std::string path = BackupFolder() + NameOf(Log.LogFileName);
    if (path == Log.LogFileName) {
        ShowMessageBox({"The backup drive is the folder of the log itself.  Choose another one in "
                        "the settings.",
                        "File or Disk Error", BoxButtons::Ok, BoxIcon::Exclamation});
        return;
    }
    Screen.BusyPointer = true;
    (void)WithRetry([&path] { return WriteBackup(path); }); // given up: the operator was told
    Screen.BusyPointer = false;
}

} // namespace zrt
