#include "entry/typing.h"

#include "entry/callsign.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "entry/needed.h"
#include "entry/prefill.h"
#include "session/contests.h"

#include <utility>

namespace zrt {

TypingHooks Typing;

namespace {

std::string TextOf(const TextBox &field) {
    return UpperCase(Trim(ToLatin1(field.Text)));
}

// The zone of the entry in the country file, else of the call area, else of the country.
i16 ZoneOf(std::string_view call, i16 country) {
    if (CallAnalysis.LastZone > 0)
        return CallAnalysis.LastZone;
    if (const i16 zone = DefaultZone(call); zone > 0)
        return zone;
    return ValueI16(Reference.CountryTable[static_cast<std::size_t>(country)].CQZone.Whole());
}

void FillZone(i16 zone) {
    FillExchange(zone > 0 ? PadLeft(std::to_string(zone), 2, '0') : std::string());
}

// ---- the call, by contest

i16 ShowCountryOf(std::string_view call) {
    const i16 country = CountryLookup(call);
    ShowCountry(country);
    return country;
}

void ShowArrlDx(std::string_view call) {
    if (!Contest.StationUSVE)
        return;
    const i16 country = ShowCountryOf(call);
    ShowNeeded(country);
    Typing.ShowCountryLine(country, 0);
}

enum class ZoneField { Filled, Kept };

void ShowCqWw(std::string_view call, ZoneField field) {
    const i16 country = ShowCountryOf(call);
    const i16 zone = ZoneOf(call, country);
    ShowNeeded(country);
    Typing.ShowCountryLine(country, zone);
    if (field == ZoneField::Filled)
        FillZone(zone);
}

void ShowWpx(std::string_view call) {
    ShowCountryOf(call);
    ShowWpxNeed(WpxPrefix(call));
}

void ShowAa(std::string_view call) {
    ShowCountryOf(call);
    ShowAaNeed(WpxPrefix(call));
}

void ShowTenMeter(std::string_view call) {
    ShowMultNeed(ShowCountryOf(call));
}

void ShowGeneric(std::string_view call) {
    const i16 country = ShowCountryOf(call);
    ShowMultNeed(country);
    Typing.ShowCountryLine(country, 0);
}

void ShowWhatIsNeeded(std::string_view call, ZoneField field) {
    switch (Contest.ContestId) {
    case kArrlDx: ShowArrlDx(call); break;
    case kCqWw: ShowCqWw(call, field); break;
    case kWpx: ShowWpx(call); break;
    case kAa: ShowAa(call); break;
    case kTenMeter: ShowTenMeter(call); break;
    case kGeneric: ShowGeneric(call); break;
    default: break; // the others count what the exchange tells
    }
}

void HideNeeds() {
    for (Label *label : {&LogForm.NeedPfxLabel, &LogForm.LblWpxCountry, &LogForm.lblHeading})
        label->Visible = false;
}

void Analyse(std::string_view call) {
    Typing.PartialCheck(call);
    ShowCallMatches(call);
    if (call.empty())
        HideNeeds();
    else
        ShowWhatIsNeeded(call, ZoneField::Filled);
}

// ---- the exchange, by contest

void ShowExchange() {
    const std::string text = UpperCase(ToLatin1(ExchangeField().Text));
    switch (Contest.ContestId) {
    case kArrlDx:
        if (!Contest.StationUSVE)
            ARRLFindMult(text);
        break;
    case kNaqp: NaqpFindMult(text); break;
    case kCqWw:
        if (const i16 zone = ValueI16(text); zone >= 1 && zone <= kZones)
            Typing.ShowCountryLine(CountryLookup(PlainCall(CallField().Text)), zone);
        break;
    default: break;
    }
}

} // namespace

void CallTextChanged() {
    CallField().Text = UpperCase(CallField().Text); // what is pasted may be in small letters
    SaveCall();
    DropFillOfAnotherCall();
    const std::string &text = CallField().Text;
    const std::string before = std::exchange(Entry.CallShown, text);
    const std::string call = PlainCall(text);
    // The same text again was put there anew, perhaps on another band.
    const bool marksAlone = !call.empty() && text != before && call == PlainCall(before);
    if (!marksAlone)
        Analyse(call);
}

void ExchangeTextChanged() {
    EndPrefill();
    ShowExchange();
}

void ShowCallAnew() {
    Entry.InsertActive = false; // the DUPE line that Insert has shown was that of the other band
    if (const std::string call = PlainCall(CallField().Text); !call.empty()) {
        SaveCall();
        Typing.PartialCheck(call);
        if (CallMatchesShow())
            ShowCallMatches(call);
        ShowWhatIsNeeded(call, ZoneField::Kept);
        Dupecheck(call);
        ShowVerdict();
    }
    ShowExchange(); // behind the prior contacts, whose place it takes
}

void SaveCall() {
    if (std::string call = TextOf(CallField()); !call.empty())
        Entry.SavedCall = std::move(call);
}

void CallPutBack() {
    SaveCall();
    EndPrefill();
    Entry.CallShown = CallField().Text;
    HideCallMatches();
    HideNeeds();
}

} // namespace zrt
