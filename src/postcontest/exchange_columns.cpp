#include "postcontest/exchange_columns.h"

#include "entry/multipliers.h"
#include "postcontest/post_contest.h"
#include "session/contests.h"
#include "session/settings.h"

#include <algorithm>

namespace zrt {

namespace {

constexpr std::size_t kNumberColumns = 4;

std::string Number(i16 number) {
    return PadLeft(std::to_string(number), kNumberColumns);
}

std::string Columns(std::string_view text, std::size_t width) {
    return PadRight(text, width);
}

std::string Setting(const std::string &text, std::size_t width) {
    return Columns(ToLatin1(text), width);
}

// ---- received

// The row of a table that a stored text begins with, 0 for none. The tables of the running contest
// want a number alone; the files have always taken "7A" for row 7.
i16 RowOfNumber(const MultTable &table, std::string_view stored) {
    const i32 row = RoundToEven(std::clamp(Value(TrimRight(stored)), 0.0, 1e4));
    return row <= static_cast<i32>(table.size()) ? static_cast<i16>(row) : i16{0};
}

std::string NameOfRow(const MultTable &table, i16 row) {
    return ToLatin1(table[static_cast<std::size_t>(row) - 1].Spellings[0]);
}

std::string NameOrText(const MultTable &table, const OldEntry36 &entry) {
    const i16 row = RowOfNumber(table, entry.RcvdExchange.Whole());
    return row != 0 ? NameOfRow(table, row) : entry.RcvdExchange.Trimmed();
}

// A number in the log of a station at home is the row of a state; yet it was always printed as the
// county of that row, unless the extension is on.
std::string ZrtCounty(const OldEntry36 &entry) {
    const std::string_view stored = entry.RcvdExchange.Whole();
    if (std::any_of(stored.begin(), stored.end(), [](char c) { return c >= 'A' && c <= 'Z'; }))
        return entry.RcvdExchange.Trimmed();
    const bool asCounty = Contest.StationInState && !Extensions.InStateStateNames;
    return NameOrText(asCounty ? Multipliers.ZrtCounties : Multipliers.ZrtMults, entry);
}

// Hawaii never counts in the Sprint, and stays the number that it is stored as.
std::string SprintState(const OldEntry36 &entry) {
    if (RowOfNumber(Multipliers.SprintMults, entry.RcvdExchange.Whole()) == kSprintHomelessRow)
        return entry.RcvdExchange.Trimmed();
    return NameOrText(Multipliers.SprintMults, entry);
}

std::string NaqpState(const OldEntry36 &entry) {
    const i16 row = RowOfNumber(Multipliers.NaqpMults, entry.RcvdExchange.Whole());
    return row != 0 ? NameOfRow(Multipliers.NaqpMults, row)
                    : entry.RcvdExchange.Trimmed().substr(0, 3);
}

// Precedence, check and the short form of the section, which is written out.
std::string SsPieces(const OldEntry36 &entry) {
    const std::string_view stored = entry.RcvdExchange.Whole();
    const i16 row = SsSectionRow(stored.substr(3));
    const std::string section =
        row != 0 ? NameOfRow(Multipliers.SsMults, row) : std::string(stored.substr(3));
    return std::string(stored.substr(0, 1)) + " " + std::string(stored.substr(1, 2)) + " " +
           Columns(section, 3);
}

std::string ArrlExchange(const OldEntry36 &entry, bool number) {
    return PadLeft(number ? std::to_string(entry.RcvdNumber) : entry.RcvdExchange.Trimmed(), 5);
}

// ---- sent

// The first "#" of the operator's text stands for the number.
std::string GenericSent(const OldEntry36 &entry) {
    std::string text = ToLatin1(Settings.ExchangeGeneric);
    if (const auto place = text.find('#'); place != std::string::npos)
        text.replace(place, 1, " " + Number(entry.SentNumber) + " ");
    return text + "   ";
}

// A multiplier that the station sends, and the characters that it has in the file.
struct SentCut {
    i16 ContestId;
    std::string SettingsRecord::*Text;
    std::size_t Length;
};
constexpr std::array<SentCut, 5> kSentCuts = {{{kZrt, &SettingsRecord::ExchangeZRTMult, 10},
                                               {kPaqp, &SettingsRecord::ExchangePAQPMult, 10},
                                               {kNeqp, &SettingsRecord::ExchangeNEQPMult, 5},
                                               {kSprint, &SettingsRecord::ExchangeSprintMult, 3},
                                               {kNaqp, &SettingsRecord::ExchangeNAQPMult, 3}}};

} // namespace

std::string_view ReportColumns(bool qsoIsCw) {
    constexpr std::string_view kCwReport = "599 ", kPhoneReport = "59  ";
    switch (Contest.ContestId) {
    case kArrlDx:
    case kCqWw:
    case kWpx:
    case kAa: return PostData.ContestIsCw ? kCwReport : kPhoneReport;
    case kTenMeter:
    case kNeqp: return qsoIsCw ? kCwReport : kPhoneReport;
    case kGeneric: return !PostData.ShowRst ? "" : qsoIsCw ? kCwReport : kPhoneReport;
    default: return "";
    }
}

std::string SentColumns(const OldEntry36 &entry) {
    std::string number = Number(entry.SentNumber);
    switch (Contest.ContestId) {
    case kArrlDx:
    case kTenMeter: return Setting(Settings.ExchangeARRLMult, 6);
    case kZrt: return number + " " + Setting(Settings.ExchangeZRTMult, 10);
    case kCqWw: return Setting(Settings.ExchangeCQWWMult, 6);
    case kSprint:
        return number + " " + Setting(Settings.ExchangeSprintName, 10) + " " +
               Setting(Settings.ExchangeSprintMult, 3);
    case kSs:
        return number + " " + ToLatin1(Settings.ExchangeSSPrec) + " " +
               ToLatin1(Settings.ExchangeSSCheck) + " " + ToLatin1(Settings.ExchangeSSSection);
    case kWpx: return number;
    case kAa: return Setting(Settings.ExchangeAAMult, 2);
    case kPaqp: return number + " " + Setting(Settings.ExchangePAQPMult, 10);
    case kNaqp:
        return Setting(Settings.ExchangeNAQPName, 10) + " " + Setting(Settings.ExchangeNAQPMult, 3);
    case kNeqp: return Setting(Settings.ExchangeNEQPMult, 6);
    case kGeneric: return GenericSent(entry);
    case kCwOpen: return number + "  " + Setting(Settings.ExchangeCWOName, 10);
    default: return "";
    }
}

std::string RcvdColumns(const OldEntry36 &entry) {
    std::string number = Number(entry.RcvdNumber);
    const std::string name(entry.RcvdName.Whole());
    switch (Contest.ContestId) {
    case kArrlDx: return ArrlExchange(entry, PostData.RcvdIsPower);
    case kZrt: return number + " " + Columns(ZrtCounty(entry), 10);
    case kSprint: return number + " " + name + " " + Columns(SprintState(entry), 6);
    case kSs: return number + " " + SsPieces(entry);
    case kCqWw:
    case kWpx:
    case kAa: return number;
    case kPaqp: return number + " " + Columns(NameOrText(Multipliers.PaqpMults, entry), 10);
    case kNaqp: return name + " " + Columns(NaqpState(entry), 3);
    case kTenMeter: return ArrlExchange(entry, entry.RcvdNumber != 0);
    case kNeqp: return Columns(NameOrText(Multipliers.NeqpMults, entry), 10);
    case kGeneric: return std::string(Trim(name + std::string(entry.RcvdExchange.Whole())));
    case kCwOpen: return number + "  " + name;
    default: return "";
    }
}

void FitSentExchange() {
    for (const SentCut &cut : kSentCuts)
        if (cut.ContestId == Contest.ContestId)
            Settings.*cut.Text = CutAt(Settings.*cut.Text, cut.Length);
    if (Contest.ContestId == kSs && Settings.ExchangeSSSection.size() == 2)
        Settings.ExchangeSSSection += ' ';
}

} // namespace zrt
