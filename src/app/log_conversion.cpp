#include "app/log_conversion.h"

#include "entry/callsign.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/contests.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/reference_data.h"
#include "session/session_flags.h"

#include <algorithm>
#include <cerrno>

namespace zrt {

namespace {

std::string SavedName() {
    std::string name = Log.LogFileName;
    name.back() = 'b';
    return name;
}

// Hands each entry of a log in memory to `edit`. What all forms share is the oldest form, and it
// stands first in each record.
template <typename Edit> void EditEntries(FileBytes &bytes, std::size_t recordLength, Edit edit) {
    const auto records = static_cast<std::size_t>(EntryCountFromFile(bytes.size(), recordLength));
    bytes.resize(std::max(bytes.size(), records * recordLength));
    for (std::size_t n = 1; n < records; ++n) {
        const std::span<std::byte> record =
            std::span(bytes).subspan(n * recordLength, kOld26Length);
        OldEntry26 entry;
        Decode(record, entry);
        edit(entry);
        std::ranges::copy(Encode(entry), record.begin());
    }
}

// A crash between the two steps of PutInPlace leaves the copy behind.
bool IsCopy(const std::string &path, const FileBytes &bytes) {
    FileBytes there;
    return ReadFile(path, there) == 0 && there == bytes;
}

// The old log is safe under its new name before the converted one takes its place.
int PutInPlace(const FileBytes &old, const FileBytes &converted) {
    const std::string saved = SavedName();
    if (Files.Exists(saved)) {
        if (!IsCopy(saved, old))
            return EEXIST;
    } else if (const int error = ReplaceFile(saved, old)) {
        return error;
    }
    const int error = ReplaceFile(Log.LogFileName, converted);
    if (error != 0 && IsCopy(Log.LogFileName, old))
        (void)Files.Remove(saved); // a copy of what is safe
    return error;
}

// No log of these versions was near this size.
constexpr std::uint64_t kMostBytes = std::uint64_t{16} << 20;

// Reads the log's file, puts the header into it and edits its entries.
template <typename Edit> bool ConvertLog(std::size_t recordLength, Edit edit) {
    FileBytes bytes;
    int error = ReadFileUpTo(Log.LogFileName, kMostBytes, bytes);
    if (error == 0) {
        const FileBytes old = bytes;
        std::ranges::copy(Encode(Log.Header), bytes.begin());
        EditEntries(bytes, recordLength, edit);
        error = PutInPlace(old, bytes);
    }
    if (error == 0) {
        Log.KeptHeader = Log.Header;
        return true;
    }
    ShowMessageBox({SystemErrorText(error) + ": " + SavedName() +
                        ".  The log was not converted and is as it was.",
                    "File or Disk Error", BoxButtons::Ok, BoxIcon::Exclamation});
    return false;
}

// ---- WPX, from before the prefix was stored

bool HasOldWpxCode() {
    const char code = Log.Header.QthOption.Whole().front();
    return code < '2' || code > '9';
}

bool ConvertWpxLog() {
    ShowMessageBox({"The File selected,  " + Log.LogFileName +
                        ", is in the format for versions 6.5 and earlier of ZRTLOG.  It will be "
                        "converted to new format readable only by version 7.0 and later.  The old "
                        "file will be saved as  " +
                        SavedName(),
                    "WPX File Conversion", BoxButtons::Ok, BoxIcon::Information});
    Log.Header.QthOption = Log.Header.QthOption.Whole() == "1" ? "3" : "2";
    return ConvertLog(RecordLength(Log.CurrentFormat, kWpx), [](OldEntry26 &entry) {
        if (entry.RcvdExchange.Trimmed().empty())
            entry.RcvdExchange = WpxPrefix(entry.Callsign.Trimmed());
    });
}

// ---- SS, from before 1997, when the section was a number

// How far the row of a section is from its number: sections were added since.
struct SectionRange {
    i16 Year, First, Last, Added;
};
constexpr std::array kSectionRanges = {
    SectionRange{95, 1, 10, 0}, SectionRange{95, 11, 69, 1}, SectionRange{95, 70, 77, 2},
    SectionRange{96, 1, 70, 0}, SectionRange{96, 71, 78, 1},
};

// The row of "[SS Short Forms]", 0 for a number that was no section.
i16 SectionRow(i16 year, i16 number) {
    for (const SectionRange &range : kSectionRanges)
        if (range.Year == year && number >= range.First && number <= range.Last)
            return static_cast<i16>(number + range.Added);
    return 0;
}

bool ConvertSsLog() {
    const BoxAnswer answer = ShowMessageBox(
        {"This SS file is for a pre-1997 contest. ZRTLOG will convert it to ver. 5 log format.  In "
         "order to display the sections correctly, please press YES if the contest was in 1996 "
         "(78 sections) or NO for pre-1996 (77 sections).",
         "Pre-1997 SS Log.  How Many Sections?", BoxButtons::YesNo, BoxIcon::Question});
    if (Program.Ending)
        return false; // nobody has answered
    Contest.SsSectionYear = answer == BoxAnswer::Yes ? 96 : 95;
    std::string tag(Log.Header.ContestTag.Whole());
    tag[2] = '9';
    Log.Header.ContestTag = tag;
    std::string section; // a number that was no section takes that of the entry before
    return ConvertLog(kOld26Length, [&section](OldEntry26 &entry) {
        const std::string_view exchange = entry.RcvdExchange.Whole();
        if (const i16 row = SectionRow(Contest.SsSectionYear, ValueI16(exchange.substr(3))))
            section = Reference.SsShortForms[row - 1];
        entry.RcvdExchange = std::string(exchange.substr(0, 3)) + section;
    });
}

// ---- ZRT, from before the header told where the station was

void AskStationLocation() {
    const BoxAnswer answer = ShowMessageBox(
        {"This ZRT file was produced with ver. 2.0 or earlier of this program or ver. 4.5 or "
         "earlier of the DOS program.  The log file header does not indicate whether or not the "
         "log was produced by a Zarthia or out of state station.       Was the station in Zarthia?",
         "Need Station Location Info", BoxButtons::YesNo, BoxIcon::Question});
    Contest.StationInState = answer == BoxAnswer::Yes;
}

bool TellsLocation(std::string_view tag) {
    return tag.substr(3) == "IN" || tag.substr(3) == "OS";
}

} // namespace

bool BringLogUpToDate() {
    const std::string_view tag = Log.Header.ContestTag.Whole();
    switch (Contest.ContestId) {
    case kSs:
        // No log of today's format is that old.
        return Log.CurrentFormat || tag[2] == '9' || ConvertSsLog();
    case kWpx: return !HasOldWpxCode() || ConvertWpxLog();
    case kZrt:
        // The answer holds as long as the log is open.
        if (!TellsLocation(tag) && !Session.RescanInPlace)
            AskStationLocation();
        return true;
    default: return true;
    }
}

} // namespace zrt
