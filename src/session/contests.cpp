#include "session/contests.h"

#include "session/bands.h"

#include <cassert>

namespace zrt {

ContestState Contest;

namespace {

constexpr auto kMode = TagLetters::Mode;
constexpr auto kLocation = TagLetters::Location;
constexpr auto kNone = TagLetters::None;

constexpr auto kTable = std::to_array<ContestRow>({
    // clang-format off
    // chooser                              tag    letters    both   gap  bands  SCP    labels: load, new, save as
    {"ARRL DX Contest",                    "ARL", kMode,     false, 15, 1, 6,  "DX",  "ARRL DX",     "ARRL DX",   "ARRL DX"},
    {"ZRT -- ZDXA Zarthia QSO Party ",     "ZRT", kLocation, true,  15, 1, 8,  "ALL", "ZRT",         "ZRT",       "ZRT"},
    {"CQWW DX Contest",                    "WW ", kMode,     false, 15, 1, 6,  "ALL", "CQWW DX",     "CQWW DX",   "CQWW DX"},
    {"Sprint -- NCJ NA Sprint",            "SP ", kMode,     false, 15, 3, 5,  "US",  "Sprint ",     "Sprint ",   "Sprint "},
    {"SS -- ARRL Sweepstakes",             "SS9", kMode,     false, 30, 1, 6,  "US",  "SS ",         "SS ",       "SS "},
    {"WPX -- CQ Prefix Contest",           "WPX", kMode,     false, 60, 1, 6,  "ALL", "WPX",         "WPX",       "WPX"},
    {"AA -- JARL All Asian Contest",       "AA ", kMode,     false, 15, 1, 6,  "ALL", "AA ",         "AA ",       "AA "},
    {"PAQP -- Pennsylvania QSO Party",     "PAQ", kLocation, true,  15, 1, 8,  "US",  "PAQP",        "PAQP",      "PAQP"},
    {"NAQP -- North American QSO Party",   "NA ", kMode,     false, 30, 1, 6,  "US",  "NAQP",        "NAQP ",     "NA "},
    {"ARRL 10 Meter Contest",              "TEN", kNone,     true,  15, 1, 1,  "ALL", "ARRL 10m",    "ARRL 10m",  ""},
    {"NEQP -- New England QSO Party",      "NEQ", kLocation, true,  15, 1, 8,  "US",  "NEQP",        "NEQP",      "NEQP"},
    {"[GENERIC] -- Generic Logging",       "GEN", kNone,     true,  15, 1, 11, "ALL", "Generic Log", "[Generic]", "[Generic]"},
    {"CWO -- CW Ops CW Open",              "CWO", kMode,     false, 15, 1, 6,  "ALL", "CWO",         "CWO",       ""},
    // clang-format on
});
static_assert(kTable.size() == kContests);

struct TagRow {
    std::string_view Letters;
    i16 ContestId;
};
constexpr auto kTags = std::to_array<TagRow>({{"AR", kArrlDx},
                                              {"ZR", kZrt},
                                              {"CW", kCwOpen},
                                              {"GE", kGeneric},
                                              {"PA", kPaqp},
                                              {"NE", kNeqp},
                                              {"NA", kNaqp},
                                              {"TE", kTenMeter},
                                              {"WW", kCqWw},
                                              {"SP", kSprint},
                                              {"WP", kWpx},
                                              {"SS", kSs},
                                              {"AA", kAa}});
static_assert(kTags.size() == kContests);

// The location codes of CQ WW and WPX: "2" USA, "3" VE, "4" to "9" the continents.
std::string LocationCode(const ContestState &contest) {
    if (contest.QthUSA)
        return "2";
    if (contest.QthVE)
        return "3";
    for (std::size_t i = 0; i < kContinents.size(); ++i)
        if (contest.QthContinent == kContinents[i])
            return std::to_string(4 + i);
    return " ";
}

std::string QthOptionOf(const ContestState &contest) {
    switch (contest.ContestId) {
    case kArrlDx: return contest.StationUSVE ? "1" : "2";
    case kCqWw:
    case kWpx: return LocationCode(contest);
    case kCwOpen: return contest.CWOSession == 1200 ? "1" : contest.CWOSession == 2000 ? "2" : "3";
    default: return " ";
    }
}

void TakeLocationCode(char code) {
    Contest.QthUSA = code == '2';
    Contest.QthVE = code == '3';
    if (code >= '4' && code <= '9')
        Contest.QthContinent = kContinents[code - '4'];
}

// Logs of old versions have "0" and "1" in place of "2" and "3"; any other code counts as the USA.
void TakeWpxLocationCode(char code) {
    TakeLocationCode(code == '1' ? '3' : code >= '2' && code <= '9' ? code : '2');
}

void TakeModes(const ContestRow &row, std::string_view letters) {
    Contest.ModeCW = row.BothModes || letters == "CW";
    Contest.ModePhone = row.BothModes || !Contest.ModeCW;
}

void TakeLocation(std::string_view letters, char code) {
    switch (Contest.ContestId) {
    case kArrlDx: Contest.StationUSVE = code != '2'; break;
    case kZrt:
        if (letters == "IN" || letters == "OS")
            Contest.StationInState = letters == "IN";
        break;
    case kCqWw: TakeLocationCode(code); break;
    case kWpx: TakeWpxLocationCode(code); break;
    case kCwOpen: Contest.CWOSession = code == '1' ? 1200 : code == '2' ? 2000 : 0; break;
    default: break;
    }
}

// The contests whose label has no mode: 2, 8, 10 and 12, and 11 in the labels of New and Save As.
bool LabelHasMode(LabelTable table, i16 contestId) {
    switch (contestId) {
    case kZrt:
    case kPaqp:
    case kTenMeter:
    case kGeneric: return false;
    case kNeqp: return table == LabelTable::Load;
    default: return true;
    }
}

constexpr std::size_t kLongestLabelName = 30;

} // namespace

const ContestRow &ContestTable(i16 contestId) {
    assert(contestId >= 1 && contestId <= kContests);
    return kTable[contestId - 1];
}

LogHeader BuildHeader(const ContestState &contest) {
    const ContestRow &row = ContestTable(contest.ContestId);
    std::string tag = row.Tag;
    switch (row.Letters) {
    case kMode: tag += contest.ModeCW ? "CW" : "SB"; break;
    case kLocation: tag += contest.StationInState ? "IN" : "OS"; break;
    case kNone: break;
    }
    LogHeader header;
    header.FormatFlag = 1;
    header.ContestTag = tag;
    header.QthOption = QthOptionOf(contest);
    return header;
}

i16 ContestOfTag(std::string_view contestTag) {
    for (const TagRow &row : kTags)
        if (contestTag.substr(0, 2) == row.Letters)
            return row.ContestId;
    return kNoContest;
}

void TakeContest(const LogHeader &header) {
    const std::string_view tag = header.ContestTag.Whole();
    if (const i16 found = ContestOfTag(tag))
        Contest.ContestId = found;
    Contest.ModeCW = Contest.ModePhone = false;
    Contest.QthUSA = Contest.QthVE = false;
    Contest.QthContinent.clear();
    if (Contest.ContestId == kNoContest)
        return;
    const std::string_view letters = tag.substr(3);
    TakeModes(ContestTable(Contest.ContestId), letters);
    TakeLocation(letters, header.QthOption.Whole().front());
    if (Contest.ContestId == kSs)
        Contest.SsSectionYear = 97;
}

void TakeArea(const LogHeader &header) {
    if (Contest.ContestId == kPaqp || Contest.ContestId == kNeqp)
        Contest.StationInState = header.ContestTag.Whole().substr(3) == "IN";
}

void SetUpContest() {
    const ContestRow &row = ContestTable(Contest.ContestId);
    Contest.OffTimeGap = row.OffTimeGap;
    Contest.SCPSelection = row.SCPSelection;
    // A station in the USA or Canada works the others, and the others work it.
    if (Contest.ContestId == kArrlDx && !Contest.StationUSVE)
        Contest.SCPSelection = "US";
    for (int position = 1; position <= kNoBandPosition; ++position)
        Contest.ActiveBands[position - 1] = position >= row.FirstBand && position <= row.LastBand;
}

std::string LogLabel(LabelTable table, std::string_view fileName) {
    const ContestRow &row = ContestTable(Contest.ContestId);
    std::string label = "Log: " + ShortenMiddle(fileName, kLongestLabelName) + " - - Contest: ";
    switch (table) {
    case LabelTable::Load: label += row.LoadLabel; break;
    case LabelTable::New: label += row.NewLabel; break;
    case LabelTable::SaveAs: label += row.SaveAsLabel; break;
    }
    if (LabelHasMode(table, Contest.ContestId))
        label += Contest.ModeCW ? " CW" : " SSB";
    return label;
}

std::string ShortenMiddle(std::string_view name, std::size_t length) {
    constexpr std::string_view kGap = "...";
    const std::size_t characters = CharactersOf(name);
    if (characters <= length)
        return std::string(name);
    const std::size_t kept = length - kGap.size();
    const std::size_t left = kept / 2;
    const std::size_t dropped = characters - (kept - left);
    return std::string(CutAt(name, left)) + std::string(kGap) +
           std::string(name.substr(CutAt(name, dropped).size()));
}

} // namespace zrt
