#include "app/instamatch.h"

#include "app/save_path.h"
#include "entry/old_calls.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/data_files.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/settings.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zrt {

namespace {

constexpr const char *kErrorTitle = "File Opening Error";

// ---- the list

void TellFull(std::size_t n) {
    ShowMessageBox(
        {"The maximum allowable number of unique callsigns (10000) has been reached at "
         "log entry number " +
             std::to_string(n) + "of the latest log file. The InstaMatch file is now full.",
         "Maximum Allowable Size of Callsign File Reached", BoxButtons::Ok, BoxIcon::Exclamation});
}

bool IsFull() {
    return OldCalls.Rows.size() > kFullOldCalls;
}

// Takes the n-th row of a file. False if the list is full, which is told.
bool TakeRow(std::size_t n, std::string_view call, std::string_view exchange) {
    if (!IsFull())
        InsertOldCall(call, exchange);
    if (!IsFull())
        return true;
    TellFull(n);
    return false;
}

// ---- logs

// What an entry tells of its station, without the tag.
using ExchangeOf = std::string (*)(const OldEntry36 &entry);

std::string Number(const OldEntry36 &entry) {
    return std::to_string(entry.RcvdNumber);
}

std::string Exchange(const OldEntry36 &entry) {
    return entry.RcvdExchange.Trimmed();
}

std::string Name(const OldEntry36 &entry) {
    return entry.RcvdName.Trimmed();
}

// The row of the multiplier has two digits, so that the name before it has an end.
std::string NameAndRow(const OldEntry36 &entry) {
    return entry.RcvdName.Trimmed() + PadLeft(entry.RcvdExchange.Trimmed(), 2, '0');
}

std::string Nothing(const OldEntry36 &) {
    return {};
}

// By ContestId - 1.
constexpr auto kExchanges = std::to_array<ExchangeOf>({
    Exchange,   // ARRL DX; see below
    Exchange,   // ZRT, the row of the county
    Number,     // CQ WW, the zone
    NameAndRow, // Sprint
    Exchange,   // SS
    Nothing,    // WPX: each contact has another number
    Number,     // AA, the age
    Exchange,   // PAQP
    NameAndRow, // NAQP
    Exchange,   // ARRL 10 m
    Exchange,   // NEQP
    Name,       // Generic
    Name,       // CW Open
});
static_assert(kExchanges.size() == kContests);

// In ARRL DX a station in the USA or Canada receives powers, any other states.
ExchangeOf ExchangeOfContest(const ContestState &contest) {
    if (contest.ContestId == kArrlDx && contest.StationUSVE)
        return Number;
    return kExchanges[static_cast<std::size_t>(contest.ContestId) - 1];
}

// The contest of a log that is not the open one; ContestId is kNoContest for a header of none.
ContestState ContestOf(const LogHeader &header) {
    const ContestState open = std::exchange(Contest, ContestState());
    TakeContest(header);
    return std::exchange(Contest, open);
}

// What a damaged log may hold, but no line of a .zr2 file can.
bool HasControlCharacter(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < ' '; });
}

bool IsStation(const OldEntry36 &entry, std::string_view call) {
    return call.size() > 1 && !IsVoid(entry) && call.find(' ') == std::string_view::npos &&
           !HasControlCharacter(call);
}

OldEntry36 DecodeEntry(std::span<const std::byte> record) {
    OldEntry36 entry;
    if (record.size() > kOld26Length)
        Decode(record, entry);
    else
        Decode(record, static_cast<OldEntry26 &>(entry));
    return entry;
}

void TakeEntries(const FileBytes &bytes, std::size_t recordLength, const ContestState &contest) {
    const std::string tag(std::string_view(ContestTable(contest.ContestId).Tag).substr(0, 2));
    const ExchangeOf exchangeOf = ExchangeOfContest(contest);
    const auto records = static_cast<std::size_t>(EntryCountFromFile(bytes.size(), recordLength));
    for (std::size_t n = 1; n < records; ++n) {
        const std::size_t begin = std::min(n * recordLength, bytes.size());
        const std::size_t length = std::min(recordLength, bytes.size() - begin);
        const OldEntry36 entry = DecodeEntry(std::span(bytes).subspan(begin, length));
        const std::string call = UpperCase(entry.Callsign.Trimmed());
        const std::string exchange = tag + exchangeOf(entry);
        if (!IsStation(entry, call) || HasControlCharacter(exchange))
            continue;
        if (!TakeRow(n, call, exchange))
            return;
    }
}

bool TakeLog(const std::string &path, const FileBytes &bytes) {
    LogHeader header;
    Decode(bytes, header);
    const ContestState contest = ContestOf(header);
    if (bytes.size() < kHeaderLength || contest.ContestId == kNoContest ||
        header.IncompatibleMark > 0) {
        ShowMessageBox({"The file " + NameOf(path) + " is not a ZRT log.", kErrorTitle,
                        BoxButtons::Ok, BoxIcon::Exclamation});
        return false;
    }
    TakeEntries(bytes, RecordLength(header.FormatFlag == 1, contest.ContestId), contest);
    return true;
}

// ---- .zr2 files

void TakeLines(std::string_view text) {
    constexpr std::size_t kShortestCall = 2;
    for (std::size_t n = 1; !text.empty(); ++n) {
        const std::string_view line = TrimRight(NextLine(text));
        const std::size_t blank = line.find(' ');
        if (blank == std::string_view::npos || blank < kShortestCall)
            continue;
        if (!TakeRow(n, UpperCase(line.substr(0, blank)), Trim(line.substr(blank))))
            return;
    }
}

std::string TextOfRows() {
    constexpr std::size_t kLongestScrap = 3;
    std::string text;
    for (const OldCallRow &row : OldCalls.Rows) {
        const std::string line =
            std::string(Trim(row.Call)) + " " + std::string(Trim(row.Exchange));
        if (Trim(line).size() > kLongestScrap)
            text += std::string(Trim(line)) + "\r\n";
    }
    return text;
}

} // namespace

bool TakeOldCallsFile(const std::string &path) {
    const bool isLog = HasExtension(path, ".zrt");
    if (!isLog && !HasExtension(path, ".zr2")) {
        ShowMessageBox({"The file must have the extension .zrt or .zr2", kErrorTitle,
                        BoxButtons::Ok, BoxIcon::Exclamation});
        return false;
    }
    FileBytes bytes;
    if (!WithRetry([&path, &bytes] { return ReadFileUpTo(path, kMostFileBytes, bytes); }))
        return false;
    if (isLog)
        return TakeLog(path, bytes);
    TakeLines({reinterpret_cast<const char *>(bytes.data()), bytes.size()});
    return true;
}

bool WriteOldCallsFile(const std::string &path) {
    const std::string text = TextOfRows();
    return WithRetry([&path, &text] { return ReplaceFile(path, std::as_bytes(std::span(text))); });
}

void SelectOldCallsFile() {
    const auto path = ShowFileDialog(
        {"Open Existing Calls File or ZRT Log File", Settings.OpenFilePath,
         ".zrt and .zr2 Files|*.zrt;*.zr2|Callsign Files (*.zr2)|*.zr2|ZRT Log files (.zrt)|*.zrt",
         "", false});
    if (path)
        (void)TakeOldCallsFile(*path); // a failure has been told
}

void SaveOldCallsFile() {
    const auto path = ShowFileDialog({"Save InstaMatch File As", Settings.OpenFilePath,
                                      "InstaMatch files (*.zr2)|*.zr2", "zr2", true});
    if (path && MayWriteTo(*path, "Output file", ".zr2"))
        (void)WriteOldCallsFile(*path); // a failure has been told
}

} // namespace zrt
