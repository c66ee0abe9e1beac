#include "postcontest/cabrillo.h"

#include "postcontest/exchange_columns.h"
#include "postcontest/post_contest.h"
#include "postcontest/recount.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/date_text.h"
#include "session/log_file.h"
#include "session/settings.h"
#include "session/user_profiles.h"
#include "session/version.h"

#include <algorithm>

namespace zrt {

namespace {

constexpr std::size_t kLineLength = 100; // about that of a contact's line

void AddLine(std::string &text, std::string_view tag, std::string_view value = "") {
    text.append(tag).append(value).append("\r\n");
}

// ---- header

struct ContestName {
    const char *Name;
    bool WithMode;
};
constexpr auto kNames = std::to_array<ContestName>({{"ARRL-DX-", true},
                                                    {"ZDXA-ZRT", false},
                                                    {"CQ-WW-", true},
                                                    {"NA-SPRINT-", true},
                                                    {"ARRL-SS-", true},
                                                    {"CQ-WPX-", true},
                                                    {"JARL-AA-", true},
                                                    {"PA-QSO-PARTY", false},
                                                    {"NAQP-", true},
                                                    {"ARRL-10", false},
                                                    {"NEQP", false},
                                                    {"GENERIC", false},
                                                    {"CWOPEN", false}});
static_assert(kNames.size() == kContests);

std::string NameOfContest() {
    const ContestName &row = kNames[static_cast<std::size_t>(Contest.ContestId) - 1];
    return std::string(row.Name) + (!row.WithMode ? "" : PostData.ContestIsCw ? "CW" : "SSB");
}

// A class and what it says; null leaves the line out. A check log says nothing.
struct ClassRow {
    const char *Class, *Operator, *Assisted, *Transmitter;
};
constexpr std::array<ClassRow, 5> kClasses = {{
    {"SINGLE-OP", "SINGLE-OP", "NON-ASSISTED", "ONE"},
    {"SINGLE-OP-ASSISTED", "SINGLE-OP", "ASSISTED", "ONE"},
    {"MULTI-ONE", "MULTI-OP", nullptr, "ONE"},
    {"MULTI-TWO", "MULTI-OP", nullptr, "TWO"},
    {"MULTI-MULTI", "MULTI-OP", nullptr, "UNLIMITED"},
}};

void AddClass(std::string &text) {
    const std::string chosen = PostData.Category.Class.Trimmed();
    const auto row = std::find_if(kClasses.begin(), kClasses.end(),
                                  [&](const ClassRow &known) { return known.Class == chosen; });
    if (row == kClasses.end())
        return;
    AddLine(text, "CATEGORY-OPERATOR: ", row->Operator);
    if (row->Assisted != nullptr)
        AddLine(text, "CATEGORY-ASSISTED: ", row->Assisted);
    AddLine(text, "CATEGORY-TRANSMITTER: ", row->Transmitter);
}

void AddCategory(std::string &text) {
    AddClass(text);
    const std::string overlay = PostData.Category.Overlay.Trimmed();
    if (!overlay.empty() && overlay != "[NONE]")
        AddLine(text, "CATEGORY-OVERLAY: ", overlay);
    AddLine(text, "CATEGORY-POWER: ", PostData.Category.Power.Trimmed());
    AddLine(text, "CATEGORY-BAND: ", PostData.Category.Band.Trimmed());
    if (ContestTable(Contest.ContestId).BothModes)
        AddLine(text, "CATEGORY-MODE: ", PostData.Category.Mode.Trimmed());
    AddLine(text, "CATEGORY-STATION: ", PostData.Category.Station.Trimmed());
}

bool NamesLocation() {
    switch (Contest.ContestId) {
    case kArrlDx:
    case kSs:
    case kTenMeter: return true;
    default: return false;
    }
}

// A field of the operator's profile.
std::string Field(const std::string &text) {
    return ToLatin1(Trim(text));
}

void AddHeader(std::string &text) {
    const UserProfile &profile = CurrentProfile();
    AddLine(text, "START-OF-LOG: 3.0");
    AddLine(text, "CALLSIGN: ", Field(profile.Callsign));
    if (NamesLocation())
        AddLine(text, "LOCATION: ", Field(profile.Location));
    AddCategory(text);
    AddLine(text, "CLAIMED-SCORE: ", std::to_string(Recount.Score));
    AddLine(text, "CLUB: ", Field(profile.Club));
    AddLine(text, "CONTEST: ", NameOfContest());
    AddLine(text, "CREATED-BY: ZRTLOG VER. ", kShortVersion);
    AddLine(text, "NAME: ", Field(profile.Name));
    for (const std::string *line : {&profile.Address, &profile.City, &profile.Country})
        AddLine(text, "ADDRESS: ", Field(*line));
    AddLine(text, "EMAIL: ", Field(profile.Email));
    AddLine(text, "OPERATORS:"); // empty for many operators too, who fill it in by hand
    for (int i = 0; i < 3; ++i)
        AddLine(text, "SOAPBOX:");
}

// ---- contacts

constexpr std::array<const char *, kBandPositions> kFrequencies = {
    "28000", "21000", "14000", " 7000", " 3500", " 1800",
    "50000", "  144", "24890", "18068", "10100"};

// What a line shows; a code that means nothing leaves what the line before it had.
struct Shown {
    std::string Frequency = std::string(5, ' ');
    std::string Mode = std::string(2, ' ');
    std::string Date = std::string(10, ' ');
};

void TakeBand(i16 bandIndex, Shown &shown) {
    const int position = BandPosition(bandIndex);
    if (position == kNoBandPosition)
        return;
    shown.Mode = IsCw(bandIndex) ? "CW" : "PH";
    shown.Frequency = kFrequencies[static_cast<std::size_t>(position) - 1];
}

// The frequency of the radio stands at the left of its column, that of a band at the right.
void TakeExactFrequency(std::string_view frequency, Shown &shown) {
    const std::string_view kHz = Trim(frequency.substr(0, frequency.find('.')));
    if (!kHz.empty() && kHz != "0")
        shown.Frequency = PadRight(kHz, 5);
}

void TakeDate(i16 n, i16 date, Shown &shown) {
    if (std::string text = IsoDateText(date, DecadeOfEntry(n)); !text.empty())
        shown.Date = std::move(text);
}

// Calls of these contests have 13 columns. ARRL 10 m shares the exchange of ARRL DX, and yet not
// its columns of the calls.
std::size_t CallColumns() {
    switch (Contest.ContestId) {
    case kArrlDx:
    case kCqWw:
    case kWpx: return 13;
    default: return 10;
    }
}

std::string OwnCall() {
    const std::string call = Field(CurrentProfile().Callsign);
    return PadRight(call.substr(0, 10), CallColumns());
}

void AddContact(std::string &text, i16 n, const std::string &ownCall, Shown &shown) {
    const OldEntry36 entry = EntryFields(n);
    if (Log.CurrentFormat && IsVoid(entry)) // voids of the old forms were ever written
        return;
    TakeBand(entry.BandIndex, shown);
    if (PostData.ExactFrequency && Log.CurrentFormat)
        TakeExactFrequency(Log.LogEntries[static_cast<std::size_t>(n)].Frequency.Trimmed(), shown);
    TakeDate(n, entry.Date, shown);
    const std::string_view report = ReportColumns(shown.Mode == "CW");
    const auto add = [&text](std::string_view column) { text.append(" ").append(column); };
    text += "QSO:";
    add(shown.Frequency);
    add(shown.Mode);
    add(shown.Date);
    add(PadLeft(std::to_string(entry.Time), 4, '0'));
    add(ownCall);
    add(report);
    text += SentColumns(entry);
    add(PadRight(entry.Callsign.Whole(), CallColumns()));
    add(report);
    text += RcvdColumns(entry);
    text += "\r\n";
}

} // namespace

std::string CabrilloText() {
    std::string text;
    text.reserve(static_cast<std::size_t>(Log.NextEntry) * kLineLength);
    AddHeader(text);
    const std::string ownCall = OwnCall();
    Shown shown;
    for (i16 n = 1; n < Log.NextEntry; ++n)
        AddContact(text, n, ownCall, shown);
    AddLine(text, "END-OF-LOG:");
    return text;
}

int WriteCabrilloFile() {
    FitSentExchange();
    return WriteOutputFile(".LOG", CabrilloText());
}

} // namespace zrt
