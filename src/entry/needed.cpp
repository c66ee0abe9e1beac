#include "entry/needed.h"

#include "entry/callsign.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "entry/prior_contacts.h"
#include "session/contests.h"
#include "session/radio_state.h"
#include "session/settings.h"

#include <string>

namespace zrt {

namespace {

constexpr std::size_t kPrefixWidth = 12;

// A CW log has its flags at the CW codes, a phone log at the phone codes of the same six bands.
std::string NeededBands(const MultRow &row) {
    constexpr int kBands = 6;
    const int first = Contest.ModePhone ? kPhoneCodes[0] : kCwCodes[0];
    std::string bands;
    for (int band = first; band < first + kBands; ++band) {
        if (row.Worked[static_cast<std::size_t>(band)])
            continue;
        const std::string name(Trim(ShortBandName(band)));
        bands += (bands.empty() ? "" : " ") + (band == CurrentBand() ? "[" + name + "]" : name);
    }
    return bands;
}

// Nothing of it shows while the text is no multiplier.
void ShowNeededOn(Label &label, const MultTable &table, std::string_view text) {
    const i16 row = FindMult(table, text, 1);
    if (row == 0) {
        label.Visible = false;
        return;
    }
    HidePriorContacts();
    const MultRow &found = table[static_cast<std::size_t>(row) - 1];
    label.ForeColor = Color::Black;
    ShowLabel(label, found.Spellings[0] + " needed on  " + NeededBands(found));
}

std::string Padded(std::string_view prefix) {
    const std::size_t padding = prefix.size() < kPrefixWidth ? kPrefixWidth - prefix.size() : 0;
    return std::string(padding / 2, ' ') + std::string(prefix);
}

void ShowNeed(std::string_view prefix, bool needed) {
    LogForm.NeedPfxLabel.ForeColor = needed ? Color::Red : Color::Blue;
    ShowLabel(LogForm.NeedPfxLabel, Padded(prefix) + (needed ? " NEEDED" : " Worked"));
}

bool IsRow(i16 country) {
    return country > 0 && country <= kMostCountries;
}

bool IsOneOf(i16 country, std::initializer_list<i16> rows) {
    for (const i16 row : rows)
        if (country == row)
            return true;
    return false;
}

// In ARRL DX a station of the USA or Canada gets nothing for these two.
bool CountsHere(i16 country) {
    return IsRow(country) &&
           (Contest.ContestId != kArrlDx ||
            !IsOneOf(country, {Reference.CountryRowUsa, Reference.CountryRowCanada}));
}

struct ModesNeeded {
    bool Cw, Ssb;
};

ModesNeeded NeededByMode(i16 country) {
    const auto row = static_cast<std::size_t>(country);
    if (Contest.ContestId == kGeneric)
        return {Multipliers.GenericCwCountry[row] == 0, Multipliers.GenericSsbCountry[row] == 0};
    const CountsByBand &worked = Multipliers.CountryWorked[row];
    return {worked[kCwCodes[0]] == 0, worked[kPhoneCodes[0]] == 0};
}

bool HasModeNeeds(i16 country) {
    if (!IsRow(country))
        return false;
    if (Contest.ContestId == kGeneric)
        return country != Reference.CountryRowHawaii;
    return !IsOneOf(country, {Reference.CountryRowUsa, Reference.CountryRowCanada,
                              Reference.CountryRowHawaii, Reference.CountryRowAlaska});
}

} // namespace

void ARRLFindMult(std::string_view text) {
    const std::string_view mult = Trim(text);
    if (mult.size() < 2)
        return;
    LogForm.LabelNeededOn.Visible = false;
    ShowNeededOn(LogForm.Modelabel, Multipliers.ArrlMults, mult);
}

void NaqpFindMult(std::string_view text) {
    const std::string_view trimmed = TrimLeft(text);
    const auto blank = trimmed.find(' ');
    const std::string_view mult =
        blank == std::string_view::npos ? std::string_view() : Trim(trimmed.substr(blank));
    ShowNeededOn(LogForm.LabelNeededOn, Multipliers.NaqpMults, mult);
}

void ShowNeeded(i16 country) {
    if (!CountsHere(country) || !IsBandCode(CurrentBand())) {
        LogForm.NeedPfxLabel.Visible = false;
        return;
    }
    const CountsByBand &worked = Multipliers.CountryWorked[static_cast<std::size_t>(country)];
    ShowNeed(DisplayPrefix(country), worked[static_cast<std::size_t>(CurrentBand())] == 0);
}

void ShowWpxNeed(std::string_view prefix) {
    ShowNeed(prefix, InsertPrefix(prefix, true).IsNew);
}

void ShowAaNeed(std::string_view prefix) {
    ShowNeed(prefix, AaPrefixIsNew(prefix, CurrentBand()));
}

void ShowMultNeed(i16 country) {
    if (!HasModeNeeds(country)) {
        LogForm.NeedPfxLabel.Visible = false;
        return;
    }
    const auto [cw, ssb] = NeededByMode(country);
    LogForm.NeedPfxLabel.ForeColor = cw || ssb ? Color::Red : Color::Blue;
    ShowLabel(LogForm.NeedPfxLabel, Padded(DisplayPrefix(country)) +
                                        (cw ? "  CW NEEDED" : "  CW Worked") +
                                        (ssb ? "  SSB NEEDED" : "  SSB Worked"));
}

void ShowCountry(i16 country) {
    if (!IsRow(country)) {
        LogForm.LblWpxCountry.Visible = LogForm.lblHeading.Visible = false;
        return;
    }
    ShowLabel(LogForm.LblWpxCountry,
              Reference.CountryTable[static_cast<std::size_t>(country)].Name.Trimmed());
    const bool placeKnown = Settings.StationLatitude != 0 || Settings.StationLongitude != 0;
    if (placeKnown)
        ShowLabel(LogForm.lblHeading, std::to_string(HeadingTo(country)) + "\xC2\xB0");
    else
        LogForm.lblHeading.Visible = false;
}

} // namespace zrt
