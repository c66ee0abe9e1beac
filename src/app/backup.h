// File, Backup: a copy of the log on the backup drive.
#pragma once

namespace zrt {

// Writes the log under its name to the root of Settings.BackUpDrive, or into it if it is a folder;
// nothing for "[none]". A file of that name is replaced. May pump.
void BackupLog();

} // namespace zrt
