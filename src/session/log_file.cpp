#include "session/log_file.h"

#include "platform/files.h"
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

// The entries of the current form that the open log holds on disk or owes to it.
std::vector<i16> AllEntries() {
    std::vector<i16> numbers;
    for (i16 n = 1; n < Log.NextEntry; ++n)
        numbers.push_back(n);
    for (const i16 n : Log.Unwritten)
        if (n >= Log.NextEntry)
            numbers.push_back(n);
    return numbers;
}

int WriteRecords(OpenedFile &file, const std::vector<i16> &numbers) {
    for (const i16 n : numbers)
        if (const int error = file.WriteAt(OffsetOf(n, kEntryLength), Encode(Log.LogEntries[n])))
            return error;
    if (const int error = file.Sync())
        return error;
    return file.Close();
}

// The header and these entries in a file of their own.
int WriteAnew(const std::vector<i16> &numbers) {
    OpenedFile file;
    if (const int error = file.Open(Log.LogFileName, OpenMode::Create))
        return error;
    if (const int error = file.WriteAt(0, Encode(Log.KeptHeader)))
        return error;
    if (const int error = WriteRecords(file, numbers))
        return error;
    return Files.SyncFolder(FolderOf(Log.LogFileName));
}

int WriteRecordsInPlace(const std::vector<i16> &numbers) {
    OpenedFile file;
    int error = file.Open(Log.LogFileName, OpenMode::Update);
    std::uint64_t length = 0;
    if (error == 0)
        error = file.Length(length);
    if (error == ENOENT || (error == 0 && length < kHeaderLength))
        return WriteAnew(AllEntries());
    if (error != 0)
        return error;
    // A file that has lost entries gets them back, or zeros would stand in their places.
    const i16 first = *std::min_element(numbers.begin(), numbers.end());
    const bool lacksEntries =
        Log.CurrentFormat && first > 1 && length < OffsetOf(first, kEntryLength);
    return WriteRecords(file, lacksEntries ? AllEntries() : numbers);
}

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
    Log.Unwritten.clear();
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

int CreateLogFile() {
    return WriteAnew({});
}

int ReadHeader(const std::string &path, LogHeader &header) {
    OpenedFile file;
    if (const int error = file.Open(path, OpenMode::Read))
        return error;
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
    if (std::find(Log.Unwritten.begin(), Log.Unwritten.end(), n) == Log.Unwritten.end())
        Log.Unwritten.push_back(n);
}

int WriteOwedEntries() {
    if (Log.Unwritten.empty())
        return 0;
    const int error = WriteRecordsInPlace(Log.Unwritten);
    if (error == 0)
        Log.Unwritten.clear();
    return error;
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
