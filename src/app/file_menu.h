// The operations of the File menu on the log as a whole.
#pragma once

namespace zrt {

// File, New: asks about the open log, lets the operator choose a contest and starts its log. May
// pump.
void FileNew();

// File, Save As: gives the unnamed log a name. False if it is still unnamed: cancelled or failed.
// May pump.
bool FileSaveAs();

// Deletes the log under the temporary name, when its operator has said so.
void DeleteTemporaryLog();

// Contacts that are not on disk are written, or given up by the operator. False to stay.
bool SettleOwedEntries();

} // namespace zrt
