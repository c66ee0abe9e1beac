// The operations of the File menu on the log as a whole.
#pragma once

namespace zrt {

// File, New: asks about the open log, lets the operator choose a contest and starts its log. May
// pump.
void FileNew();

// File, Open: asks about the open log, and opens the recent log number, 1 to 4, or for 0 one of the
// operator's choice. May pump.
void FileOpen(int fileNumber);

// An entry of the recent logs: as FileOpen, if the file can still be read. May pump.
void FileOpenRecent(int fileNumber);

// File, Save As: gives the unnamed log a name; a log with a name gets another one when its file
// can't be written any more. False if it is still unnamed or not on the disk: cancelled or failed.
// May pump.
bool FileSaveAs();

// Before another log is worked on: an unnamed log gets a name or is given up and deleted, what a
// log owes to the disk is written. False to stay. May pump.
bool SettleLog();

// Closes the open log, if there is one, with its windows.
void PutLogAway();

// Deletes the log under the temporary name, when its operator has said so.
void DeleteTemporaryLog();

// Contacts that the file lacks are written, or given up by the operator. False to stay. May pump.
bool SettleOwedEntries();

} // namespace zrt
