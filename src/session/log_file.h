// The log: its records in memory, and the one file that mirrors them. The file is opened, written,
// synced and closed for every single contact.
#pragma once

#include "platform/files.h"
#include "session/log_entry.h"

#include <string>
#include <vector>

namespace zrt {

inline constexpr i16 kMostEntries = 9000;
inline constexpr i16 kMostOldEntries36 = 5000;

enum LogStateValue : i16 { kNoLog = 0, kTemporaryName = 1, kUsersName = 2 };

struct OpenLog {
    // By entry number; the row 0 stays unused.
    std::vector<LogEntry> LogEntries = std::vector<LogEntry>(kMostEntries + 1);
    std::vector<OldEntry26> OldEntries26 = std::vector<OldEntry26>(kMostEntries + 1);
    std::vector<OldEntry36> OldEntries36 = std::vector<OldEntry36>(kMostOldEntries36 + 1);
    // The entry that is being built, edited or examined.
    LogEntry WorkingEntry;
    OldEntry26 WorkingOld26;
    OldEntry36 WorkingOld36;

    LogHeader Header;     // the working copy
    LogHeader KeptHeader; // as the log was opened or made

    i16 NextEntry = 1; // entries in the log are 1 to NextEntry - 1
    bool CurrentFormat = false;
    std::string LogFileName;
    i16 LogState = kNoLog;

    std::vector<i16> Unwritten; // entries that no write has brought to the disk yet
    // The file is gone or cut, or was not synced since it was made again: the next write brings the
    // header and all entries.
    bool WholeFileOwed = false;
    FileLock Lock; // keeps the file from other copies of the program while the log is open
};
extern OpenLog Log;

// Empties the rows of all forms and what is owed to the disk; header and name stay.
void ForgetEntries();

// 60, or 36 and 26 for the old forms. The contest of an old log decides which.
std::size_t RecordLength(bool currentFormat, i16 contestId);
bool IsFull();

// The fields that every form has, and the name, of entry n (1 to NextEntry - 1) of the open log.
OldEntry36 EntryFields(i16 n);

// NextEntry for a file of this length in bytes: the record count with the header's slot, ties to
// even, at least 1.
i32 EntryCountFromFile(std::uint64_t length, std::size_t recordLength);

// Locks LogFileName for as long as the log is open; see Log.Lock for what came of it. After the
// file has been replaced it must be done again. UnlockLog lets the file go.
void LockLog();
void UnlockLog();

// Makes LogFileName anew with KeptHeader alone, 26 bytes, synced. Returns 0 or the system's error.
[[nodiscard]] int CreateLogFile();
// The same for a log with entries: the file is emptied as a whole or not at all.
[[nodiscard]] int EmptyLogFile();

// A longer file is none that a log ever was: a hole, or something else. Of a shorter one that holds
// too many entries the first are read.
inline constexpr std::uint64_t kMostLogBytes = std::uint64_t{1} << 30;

// Reads the first record of a file; a file shorter than a header is error EINVAL, one of more than
// kMostLogBytes EFBIG.
[[nodiscard]] int ReadHeader(const std::string &path, LogHeader &header);
// Reads all entries of LogFileName in the form of the open log and sets NextEntry. `beyond` is the
// number of entries that did not fit.
[[nodiscard]] int ReadEntries(i16 contestId, i32 &beyond);

// Puts the working entry into its place in memory; its write is owed from now on.
void StoreEntry(i16 n);
// Whether anything of the log is not on the disk yet.
bool IsOwedToDisk();
// Writes what is owed, this entry and any that an earlier failure left behind, and syncs. A file
// that has vanished or lost its header is made again with all entries.
[[nodiscard]] int WriteOwedEntries();
// Compares the file with what is in memory, and writes what it lacks. For before an operation that
// reads, copies or closes the log: other processes may have cut or deleted the file. Where another
// log stands in its place by now that one is left alone.
[[nodiscard]] int BringFileUpToDate();
// The log as one file, from memory: the header in a slot of its own, and all entries in records of
// this length. A log without entries is its header.
FileBytes LogImage(std::size_t recordLength);
// The log gets another name, as it is in memory. The file of before stays.
[[nodiscard]] int SaveLogTo(const std::string &path);
// The three steps of a contact in a row: store, write, count.
[[nodiscard]] int AppendEntry();
// Stores and writes the working entry in the place of entry n, 1 to NextEntry - 1.
[[nodiscard]] int WriteEntry(i16 n);

} // namespace zrt
