#include "session/log_file.h"

#include "session/bands.h"
#include "session/contests.h"

#include <algorithm>
#include <cassert>
#include <cerrno>

namespace zrt {

OpenLog Log;

namespace {

// The offset of entry n: its record number is n + 1, the header is record 1.
std::uint64_t OffsetOf(i16 n, std::size_t recordLength) {
    return static_cast<std::uint64_t>(n) * recordLength;
}

std::size_t RecordLengthOfLog() {
    return RecordLength(Log.CurrentFormat, Contest.ContestId);
}

// The number of entries that the open log holds, those that no write has reached yet among them.
i16 EntryCount() {
    const auto last = std::max_element(Log.Unwritten.begin(), Log.Unwritten.end());
    const i16 owed = last == Log.Unwritten.end() ? i16{0} : *last;
    return std::max(static_cast<i16>(Log.NextEntry - 1), owed);
}

void Owe(i16 n) {
    if (std::find(Log.Unwritten.begin(), Log.Unwritten.end(), n) == Log.Unwritten.end())
        Log.Unwritten.push_back(n);
}

// None of the entries can be counted on to be on the disk.
void OweWholeFile() {
    Log.WholeFileOwed = true;
    const i16 count = EntryCount();
    Log.Unwritten.clear();
    for (i16 n = 1; n <= count; ++n)
        Log.Unwritten.push_back(n);
}

void OweNothing() {
    Log.Unwritten.clear();
    Log.WholeFileOwed = false;
}

// ---- what stands under the name

enum class FileIs { Whole, OfAnotherLog, NoLog };

FileIs KindOfFile(std::span<const std::byte> bytes) {
    LogHeader header;
    Decode(bytes, header);
    if (bytes.size() < kHeaderLength)
        return FileIs::NoLog;
    if (header == Log.KeptHeader)
        return FileIs::Whole;
    const bool isLog = ContestOfTag(header.ContestTag.Whole()) != kNoContest;
    return isLog ? FileIs::OfAnotherLog : FileIs::NoLog;
}

// Of an open file; `length` is its length.
int KindOfFile(OpenedFile &file, FileIs &kind, std::uint64_t &length) {
    FileBytes bytes(kHeaderLength);
    std::size_t got = 0;
    if (const int error = file.Length(length))
        return error;
    if (const int error = file.ReadAt(0, bytes, got))
        return error;
    kind = KindOfFile(std::span(bytes).first(got));
    return 0;
}

// ---- writing

int WriteAndClose(OpenedFile &file, std::span<const std::byte> bytes) {
    if (const int error = file.WriteAt(0, bytes))
        return error;
    if (const int error = file.Sync())
        return error;
    return file.Close();
}

// The file is made, or what is left of it written over; nothing that a log still holds is cut off.
int WriteWholeFile() {
    OpenedFile file;
    FileIs kind = FileIs::Whole;
    std::uint64_t length = 0;
    int error = file.Open(Log.LogFileName, OpenMode::Update);
    if (error == 0 && KindOfFile(file, kind, length) == 0 && kind == FileIs::NoLog)
        error = file.Close();
    if (error == ENOENT || kind == FileIs::NoLog)
        error = file.Open(Log.LogFileName, OpenMode::Create);
    if (error == 0)
        error = WriteAndClose(file, LogImage(RecordLengthOfLog()));
    if (error == 0)
        error = Files.SyncFolder(FolderOf(Log.LogFileName));
    LockLog();
    return error;
}

// Whether the file is long enough for all that stands before the unwritten entries.
bool HoldsWhatIsBefore(std::uint64_t length) {
    const i16 first = *std::min_element(Log.Unwritten.begin(), Log.Unwritten.end());
    return !Log.CurrentFormat || first == 1 || length >= OffsetOf(first, kEntryLength);
}

// Writes the unwritten entries into their places. When the file turns out to be gone or cut, it is
// marked to be written whole, and nothing is written. Nor is anything written into another log that
// stands under the name by now: EEXIST.
int WriteEntriesInPlace() {
    OpenedFile file;
    int error = file.Open(Log.LogFileName, OpenMode::Update);
    std::uint64_t length = 0;
    FileIs kind = FileIs::NoLog;
    if (error == 0)
        error = KindOfFile(file, kind, length);
    if (error == 0 && kind == FileIs::OfAnotherLog)
        return EEXIST;
    if (error == ENOENT || (error == 0 && (kind == FileIs::NoLog || !HoldsWhatIsBefore(length))))
        OweWholeFile();
    if (error != 0 || Log.WholeFileOwed)
        return error;
    for (const i16 n : Log.Unwritten)
        if ((error = file.WriteAt(OffsetOf(n, kEntryLength), Encode(Log.LogEntries[n]))) != 0)
            return error;
    if ((error = file.Sync()) != 0)
        return error;
    return file.Close();
}

template <typename Entry>
void PutEntry(FileBytes &bytes, std::uint64_t offset, const Entry &entry) {
    std::ranges::copy(Encode(entry), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

// An entry that was logged into a log of an old form stands among those of today's.
template <typename Entry> Entry OldOrNew(const Entry &old, const LogEntry &added) {
    return added == LogEntry() ? old : static_cast<const Entry &>(added);
}

// ---- comparing

// Whether the record has been cut or wiped out. One that merely reads differently was changed by
// another program on purpose, and stays.
bool LacksEntry(std::span<const std::byte> bytes, i16 n) {
    const auto offset = std::min<std::size_t>(OffsetOf(n, kEntryLength), bytes.size());
    const auto length = std::min(kEntryLength, bytes.size() - offset);
    LogEntry entry;
    Decode(bytes.subspan(offset, length), entry);
    if (length == kEntryLength && !entry.Callsign.Trimmed().empty())
        return false;
    if (!IsBandCode(entry.BandIndex) && IsBandCode(Log.LogEntries[n].BandIndex))
        entry.BandIndex = Log.LogEntries[n].BandIndex; // was repaired in memory alone
    return entry != Log.LogEntries[n];
}

// Reads as much of the log's file as memory holds.
int ReadForCompare(FileBytes &bytes) {
    OpenedFile file;
    if (const int error = file.Open(Log.LogFileName, OpenMode::Read))
        return error;
    bytes.resize(OffsetOf(Log.NextEntry, RecordLengthOfLog()));
    std::size_t got = 0;
    const int error = file.ReadAt(0, bytes, got);
    bytes.resize(got);
    return error;
}

// Finds what the file lacks, and marks it as unwritten. A file that can't be read lacks all.
int CompareFile() {
    FileBytes bytes;
    const int error = ReadForCompare(bytes);
    const FileIs kind = error == 0 ? KindOfFile(bytes) : FileIs::NoLog;
    if (kind == FileIs::NoLog)
        OweWholeFile();
    if (kind != FileIs::Whole)
        return error == ENOENT ? 0 : error;
    // Contacts that were logged into a log of an old form have spoilt its records: its length
    // tells.
    if (!Log.CurrentFormat && EntryCountFromFile(bytes.size(), RecordLengthOfLog()) < Log.NextEntry)
        OweWholeFile();
    for (i16 n = 1; Log.CurrentFormat && n < Log.NextEntry; ++n)
        if (LacksEntry(bytes, n))
            Owe(n);
    return 0;
}

// ---- reading

template <typename Record>
void DecodeAll(std::span<const std::byte> bytes, std::size_t recordLength,
               std::vector<Record> &records, i16 count) {
    for (i16 n = 1; n <= count; ++n) {
        const auto offset = std::min<std::size_t>(OffsetOf(n, recordLength), bytes.size());
        Decode(bytes.subspan(offset, std::min(recordLength, bytes.size() - offset)), records[n]);
    }
}

} // namespace

void ForgetEntries() {
    std::fill(Log.LogEntries.begin(), Log.LogEntries.end(), LogEntry());
    std::fill(Log.OldEntries26.begin(), Log.OldEntries26.end(), OldEntry26());
    std::fill(Log.OldEntries36.begin(), Log.OldEntries36.end(), OldEntry36());
    Log.WorkingEntry = {};
    Log.WorkingOld26 = {};
    Log.WorkingOld36 = {};
    Log.NextEntry = 1;
    OweNothing();
}

std::size_t RecordLength(bool currentFormat, i16 contestId) {
    if (currentFormat)
        return kEntryLength;
    const bool named = contestId == kSprint || contestId == kNaqp || contestId == kGeneric;
    return named ? kOld36Length : kOld26Length;
}

bool IsFull() {
    const bool old36 = RecordLength(Log.CurrentFormat, Contest.ContestId) == kOld36Length;
    return Log.NextEntry > (old36 ? kMostOldEntries36 : kMostEntries);
}

OldEntry36 EntryFields(i16 n) {
    switch (RecordLength(Log.CurrentFormat, Contest.ContestId)) {
    case kEntryLength: return Log.LogEntries[n];
    case kOld36Length: return Log.OldEntries36[n];
    default: {
        OldEntry36 entry;
        static_cast<OldEntry26 &>(entry) = Log.OldEntries26[n];
        return entry;
    }
    }
}

i32 EntryCountFromFile(std::uint64_t length, std::size_t recordLength) {
    const double records = static_cast<double>(length) / static_cast<double>(recordLength);
    // A log in which only the header was ever written: less than half a record of 60.
    return std::max(1, RoundToEven(std::min(records, 1e9)));
}

void LockLog() {
    Files.LockOpenFile(Log.LogFileName, Log.Lock);
}

void UnlockLog() {
    if (Log.Lock.Handle >= 0)
        Files.Unlock(Log.Lock);
    Log.Lock = {};
}

int CreateLogFile() {
    OpenedFile file;
    int error = file.Open(Log.LogFileName, OpenMode::Create);
    if (error == 0)
        error = WriteAndClose(file, Encode(Log.KeptHeader));
    if (error == 0)
        error = Files.SyncFolder(FolderOf(Log.LogFileName));
    LockLog();
    return error;
}

int EmptyLogFile() {
    const int error = ReplaceFile(Log.LogFileName, Encode(Log.KeptHeader));
    LockLog();
    return error;
}

int ReadHeader(const std::string &path, LogHeader &header) {
    OpenedFile file;
    if (const int error = file.Open(path, OpenMode::Read))
        return error;
    std::uint64_t length = 0;
    if (const int error = file.Length(length))
        return error;
    if (length > kMostLogBytes)
        return EFBIG;
    std::array<std::byte, kHeaderLength> bytes{};
    std::size_t got = 0;
    if (const int error = file.ReadAt(0, bytes, got))
        return error;
    if (got < bytes.size())
        return EINVAL;
    Decode(bytes, header);
    return 0;
}

int ReadEntries(i16 contestId, i32 &beyond) {
    beyond = 0;
    OpenedFile file;
    if (const int error = file.Open(Log.LogFileName, OpenMode::Read))
        return error;
    std::uint64_t length = 0;
    if (const int error = file.Length(length))
        return error;
    const std::size_t recordLength = RecordLength(Log.CurrentFormat, contestId);
    const i16 most = recordLength == kOld36Length ? kMostOldEntries36 : kMostEntries;
    const i32 entries = EntryCountFromFile(length, recordLength) - 1;
    const i16 count = static_cast<i16>(std::min<i32>(entries, most));
    FileBytes bytes((static_cast<std::size_t>(count) + 1) * recordLength);
    std::size_t got = 0;
    if (const int error = file.ReadAt(0, bytes, got))
        return error;
    bytes.resize(got);
    switch (recordLength) {
    case kEntryLength: DecodeAll(bytes, recordLength, Log.LogEntries, count); break;
    case kOld36Length: DecodeAll(bytes, recordLength, Log.OldEntries36, count); break;
    default: DecodeAll(bytes, recordLength, Log.OldEntries26, count); break;
    }
    beyond = entries - count;
    Log.NextEntry = static_cast<i16>(count + 1);
    return 0;
}

void StoreEntry(i16 n) {
    assert(n >= 1 && n <= kMostEntries);
    Log.LogEntries[n] = Log.WorkingEntry;
    Owe(n);
}

bool IsOwedToDisk() {
    return Log.WholeFileOwed || !Log.Unwritten.empty();
}

int WriteOwedEntries() {
    if (!IsOwedToDisk())
        return 0;
    int error = Log.WholeFileOwed ? 0 : WriteEntriesInPlace();
    if (Log.WholeFileOwed)
        error = WriteWholeFile();
    if (error == 0)
        OweNothing();
    return error;
}

int BringFileUpToDate() {
    if (Log.LogState == kNoLog)
        return 0;
    const int error = Log.WholeFileOwed ? 0 : CompareFile();
    return error != 0 ? error : WriteOwedEntries();
}

FileBytes LogImage(std::size_t recordLength) {
    const i16 count = EntryCount();
    FileBytes bytes(count == 0 ? kHeaderLength
                               : OffsetOf(static_cast<i16>(count + 1), recordLength));
    PutEntry(bytes, 0, Log.KeptHeader);
    for (i16 n = 1; n <= count; ++n) {
        const auto offset = OffsetOf(n, recordLength);
        switch (recordLength) {
        case kEntryLength: PutEntry(bytes, offset, Log.LogEntries[n]); break;
        case kOld36Length:
            PutEntry(bytes, offset, OldOrNew(Log.OldEntries36[n], Log.LogEntries[n]));
            break;
        default: PutEntry(bytes, offset, OldOrNew(Log.OldEntries26[n], Log.LogEntries[n])); break;
        }
    }
    return bytes;
}

int SaveLogTo(const std::string &path) {
    // A file that is whole is copied: it may still hold a contact that was killed last.
    FileBytes bytes;
    if (IsOwedToDisk() || ReadFile(Log.LogFileName, bytes) != 0)
        bytes = LogImage(RecordLengthOfLog());
    if (const int error = ReplaceFile(path, bytes))
        return error;
    OweNothing();
    Log.LogFileName = path;
    LockLog();
    return 0;
}

int AppendEntry() {
    StoreEntry(Log.NextEntry);
    const int error = WriteOwedEntries();
    ++Log.NextEntry;
    return error;
}

int WriteEntry(i16 n) {
    StoreEntry(n);
    return WriteOwedEntries();
}

} // namespace zrt
