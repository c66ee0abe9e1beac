#include "postcontest/sent_exchange.h"

#include "entry/multipliers.h"
#include "postcontest/post_contest.h"
#include "session/contests.h"

#include <algorithm>

namespace zrt {

namespace {

using Text = std::string SettingsRecord::*;

// The sent exchange of a contest: the operator's texts behind a prefix.
struct SentRow {
    const char *Prefix;
    ExchangeFields Fields;
};
constexpr const char *kReport = nullptr; // as prefix: "599 " or "59 " by the mode of the log

// clang-format off
constexpr auto kSent = std::to_array<SentRow>({
    {kReport,   {"Multiplier", {&SettingsRecord::ExchangeARRLMult}}},
    {"# ",      {"Multiplier", {&SettingsRecord::ExchangeZRTMult}}},
    {kReport,   {"Zone", {&SettingsRecord::ExchangeCQWWMult}}},
    {"# ",      {"Name          Mult", {&SettingsRecord::ExchangeSprintName, &SettingsRecord::ExchangeSprintMult}}},
    {"# ",      {"Prec    Call        Ck      Section",
                 {&SettingsRecord::ExchangeSSPrec, &SettingsRecord::ExchangeSSCall,
                  &SettingsRecord::ExchangeSSCheck, &SettingsRecord::ExchangeSSSection}}},
    {kReport,   {"", {}}},
    {kReport,   {"Age", {&SettingsRecord::ExchangeAAMult}}},
    {"# ",      {"Multiplier", {&SettingsRecord::ExchangePAQPMult}}},
    {"",        {"Name          Mult", {&SettingsRecord::ExchangeNAQPName, &SettingsRecord::ExchangeNAQPMult}}},
    {"59(9) ",  {"Multiplier", {&SettingsRecord::ExchangeARRLMult}}},
    {"59(9) ",  {"Multiplier", {&SettingsRecord::ExchangeNEQPMult}}},
    {"",        {"Exchange", {&SettingsRecord::ExchangeGeneric}}},
    {"# ",      {"Name", {&SettingsRecord::ExchangeCWOName}}},
});
static_assert(kSent.size() == kContests);
// clang-format on

const SentRow &RowOfContest() {
    return kSent[static_cast<std::size_t>(Contest.ContestId) - 1];
}

std::string Report() {
    return PostData.ContestIsCw ? "599 " : "59 ";
}

bool IsBlank(const std::string &text) {
    return Trim(text).empty();
}

// ---- faults

// Out of state the station sends its state, which no county list holds.
std::optional<ExchangeFault> CountyFault(const std::string &county) {
    const bool known = FindMult(Multipliers.ZrtCounties, county) != 0;
    if (!Contest.StationInState || known || county.empty())
        return {};
    return ExchangeFault{"County Is not a standard ZRT county abbreviation.  Use it anyway?",
                         "County Error", true};
}

std::optional<ExchangeFault> SsFault(std::span<const std::string> texts) {
    constexpr const char *kTitle = "Exchange Error";
    constexpr std::string_view kPrecedences = "ABMQSU";
    const std::string &precedence = texts[0], &check = texts[2], &section = texts[3];
    if (precedence.size() != 1 || kPrecedences.find(precedence) == std::string_view::npos)
        return ExchangeFault{"Precedence Error -- Must be A, B, M, Q, S, or U", kTitle, false, 0};
    if (FindMult(Multipliers.SsMults, section) == 0)
        return ExchangeFault{"Section is Invalid.", kTitle, false, 3};
    const bool digits = check.size() == 2 && std::all_of(check.begin(), check.end(), [](char c) {
                            return c >= '0' && c <= '9';
                        });
    if (!digits)
        return ExchangeFault{"Check Must be between 00 and 99", kTitle, false, 2};
    return {};
}

} // namespace

const ExchangeFields &SentExchangeFields() {
    return RowOfContest().Fields;
}

std::string SentExchangeText() {
    if (Contest.ContestId == kWpx)
        return Report() + "#";
    const SentRow &row = RowOfContest();
    std::string text = row.Prefix != kReport ? row.Prefix : Report();
    std::string_view between;
    for (const Text field : row.Fields.Texts) {
        if (field == nullptr)
            break;
        text.append(between).append(Settings.*field);
        between = " ";
    }
    return text;
}

bool SentExchangeIsMissing() {
    if (Contest.ContestId == kGeneric) // may be sent by any rule
        return false;
    const auto &texts = RowOfContest().Fields.Texts;
    return std::any_of(texts.begin(), texts.end(), [](Text field) {
        // The call in the exchange of SS stands in its own column of the file.
        return field != nullptr && field != &SettingsRecord::ExchangeSSCall &&
               IsBlank(Settings.*field);
    });
}

std::optional<ExchangeFault> FindExchangeFault(std::span<const std::string> texts) {
    switch (Contest.ContestId) {
    case kZrt: return CountyFault(texts[0]);
    case kSs: return SsFault(texts);
    default: return {};
    }
}

} // namespace zrt
