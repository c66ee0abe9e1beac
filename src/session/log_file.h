// The log: its records in memory, and the one file that mirrors them. The file is opened, written,
// synced and closed for every single contact.
#pragma once

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

// Makes LogFileName anew with KeptHeader alone, 26 bytes, synced. Returns 0 or the system's error.
[[nodiscard]] int CreateLogFile();
// Reads the first record of a file; a file shorter than a header is error EINVAL.
[[nodiscard]] int ReadHeader(const std::string &path, LogHeader &header);
// Reads all entries of LogFileName in the form of the open log and sets NextEntry. `beyond` is the
// number of entries that did not fit.
[[nodiscard]] int ReadEntries(i16 contestId, i32 &beyond);

// Puts the working entry into its place in memory; its write is owed from now on.
void StoreEntry(i16 n);
// Writes what is owed, this entry and any that an earlier failure left behind, and syncs. A file
// that has vanished or lost its header is made again with all entries.
[[nodiscard]] int WriteOwedEntries();
// The three steps of a contact in a row: store, write, count.
[[nodiscard]] int AppendEntry();
// Stores and writes the working entry in the place of entry n, 1 to NextEntry - 1.
[[nodiscard]] int WriteEntry(i16 n);

} // namespace zrt
