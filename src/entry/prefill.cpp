#include "entry/prefill.h"

#include "entry/callsign.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "entry/needed.h"
#include "entry/old_calls.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/settings.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace zrt {

PrefillState Prefill;

namespace {

bool IsOneOf(std::initializer_list<i16> contests) {
    return std::find(contests.begin(), contests.end(), Contest.ContestId) != contests.end();
}

// ---- from the log

// Each gives the field's text for an entry of the open log.

std::string ArrlText(const OldEntry36 &entry) {
    const std::string text =
        Contest.StationUSVE ? std::to_string(entry.RcvdNumber) : entry.RcvdExchange.Trimmed();
    return text + " ";
}

std::string NumberText(const OldEntry36 &entry) {
    return std::to_string(entry.RcvdNumber) + " ";
}

std::string CountyText(const OldEntry36 &entry) {
    return " " + MultText(entry.RcvdExchange.Trimmed()) + " ";
}

// A state, or the prefix of a country whose stations send serials: the number takes its place.
std::string TenText(const OldEntry36 &entry) {
    return " " + entry.RcvdExchange.Trimmed() + " ";
}

std::string SprintText(const OldEntry36 &entry) {
    return " " + entry.RcvdName.Trimmed() + " " + MultText(entry.RcvdExchange.Trimmed()) + " ";
}

std::string NaqpText(const OldEntry36 &entry) {
    return entry.RcvdName.Trimmed() + " " + MultText(entry.RcvdExchange.Trimmed()) + " ";
}

std::string CwOpenText(const OldEntry36 &entry) {
    return entry.RcvdName.Trimmed() + " ";
}

std::string GenericText(const OldEntry36 &entry) {
    return entry.RcvdExchange.Trimmed() + " ";
}

// ---- from an earlier log

// Each gives the field's text, without the blank behind it, for what stands behind the tag. Empty
// for no fill.

std::string AsItIs(std::string_view text) {
    return std::string(text);
}

std::string OldTen(std::string_view text) {
    return FindMult(Multipliers.TenMults, text, 1) != 0 ? std::string(text) : std::string();
}

// The last two characters are the multiplier, what stands before them the name.
std::string NameAndMult(std::string_view text) {
    const std::size_t split = text.size() < 2 ? 0 : text.size() - 2;
    const std::string_view mult = Trim(text.substr(split));
    return std::string(Trim(text.substr(0, split))) + " " + MultText(mult) + " ";
}

std::string OldCwOpen(std::string_view text) {
    return std::string(text) + " ";
}

// Precedence, two digits of the check, two letters of the section; shown as check, precedence and
// section.
std::string OldSs(std::string_view text) {
    const i16 row = text.size() == 5 ? SsSectionRow(text.substr(3)) : i16{0};
    if (row == 0)
        return {};
    return std::string(text.substr(1, 2)) + " " + text[0] + " " +
           Multipliers.SsMults[static_cast<std::size_t>(row) - 1].Spellings[0];
}

// ---- the table of contests

struct FillRow {
    std::string (*FromLog)(const OldEntry36 &entry); // nullptr: the number differs each time
    std::string (*FromOldLog)(std::string_view text);
};

// By ContestId - 1.
constexpr auto kFills = std::to_array<FillRow>({
    {ArrlText, AsItIs},        // ARRL DX
    {CountyText, MultText},    // ZRT
    {NumberText, AsItIs},      // CQ WW, the zone
    {SprintText, NameAndMult}, // Sprint
    {nullptr, OldSs},          // SS
    {nullptr, nullptr},        // WPX
    {NumberText, AsItIs},      // AA, the age
    {CountyText, MultText},    // PAQP
    {NaqpText, NameAndMult},   // NAQP
    {TenText, OldTen},         // ARRL 10 m
    {CountyText, MultText},    // NEQP
    {GenericText, AsItIs},     // Generic
    {CwOpenText, OldCwOpen},   // CW Open
});
static_assert(kFills.size() == kContests);

const FillRow *FillOfContest() {
    return Contest.ContestId == kNoContest
               ? nullptr
               : &kFills[static_cast<std::size_t>(Contest.ContestId) - 1];
}

// The number that is yet to come stands in front of the rest in these.
bool NumberComesFirst() {
    return IsOneOf({kZrt, kPaqp, kSprint, kCwOpen});
}

void ShowNeededBands(const std::string &text) {
    if (Contest.ContestId == kArrlDx && !Contest.StationUSVE)
        ARRLFindMult(UpperCase(Trim(text)));
    else if (Contest.ContestId == kNaqp)
        NaqpFindMult(UpperCase(text));
}

bool TagFits(std::string_view exchange) {
    const std::string_view tag = ContestTable(Contest.ContestId).Tag;
    return Contest.ContestId == kCwOpen || exchange.substr(0, 2) == tag.substr(0, 2);
}

// The field is empty, or holds what was filled in for this entry and nothing else.
bool NothingIsTyped() {
    const std::string &text = ExchangeField().Text;
    return text.empty() || (text == Prefill.Text && Prefill.NextEntry == Log.NextEntry);
}

// The box about a portable station gives the focus to the exchange field: its call has just been
// checked. A wiped entry has no box behind it.
bool BoxHasChecked(const std::string &call) {
    return std::exchange(Entry.PortableAsked, false) && IsCheckedAlready(call);
}

} // namespace

bool FillExchange(const std::string &text) {
    if (!NothingIsTyped())
        return false;
    TextBox &field = ExchangeField();
    SetFieldText(field, text);
    if (Extensions.FillCursorAtStart && NumberComesFirst())
        field.SelStart = 0;
    Prefill = {text, PlainCall(CallField().Text), Log.NextEntry};
    return true;
}

void DropFillOfAnotherCall() {
    if (NothingIsTyped() && Prefill.Call != PlainCall(CallField().Text))
        SetFieldText(ExchangeField(), "");
}

bool IsPrefillOnly() {
    return Extensions.PrefillCountsAsEmpty && !ExchangeField().Text.empty() && NothingIsTyped();
}

void EndPrefill() {
    Prefill.Text.clear();
}

void FillFromLog() {
    const FillRow *row = FillOfContest();
    const i16 n = Dupes.LastMatch;
    if (row == nullptr || row->FromLog == nullptr || n < 1 || n >= Log.NextEntry)
        return;
    const std::string text = FromLatin1(row->FromLog(EntryFields(n)));
    if (text.empty())
        return;
    if (FillExchange(text))
        ShowNeededBands(text);
}

void FillFromOldLog() {
    const FillRow *row = FillOfContest();
    const std::string call = UpperCase(ToLatin1(Trim(LogForm.InData[0].Text)));
    const std::size_t place = FindOldCall(call);
    if (row == nullptr || row->FromOldLog == nullptr || place == OldCalls.Rows.size() ||
        OldCalls.Rows[place].Call != call || !TagFits(OldCalls.Rows[place].Exchange))
        return;
    const std::string_view exchange = Trim(OldCalls.Rows[place].Exchange);
    const std::string found =
        row->FromOldLog(exchange.substr(std::min<std::size_t>(2, exchange.size())));
    if (found.empty())
        return;
    const std::string text = FromLatin1(found) + " ";
    std::string guess = text;
    std::transform(guess.begin(), guess.end(), guess.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    if (FillExchange(guess))
        ShowNeededBands(text);
}

void ShowVerdict() {
    LogForm.InData[0].ForeColor = Entry.DupeFlag ? Color::Red : Color::Black;
    if (!Entry.DupeFlag) {
        // A DUPE line that still shows is that of the call as it was before.
        LogForm.lblDupe.Caption.clear();
        LogForm.lblDupe.Visible = false;
        LogForm.lblCallsign.Visible = LogForm.lblExchange.Visible = true;
    } else if (!Entry.InsertActive) {
        DupeLabelShow();
    }
}

void ExchangeFieldGotFocus() {
    const std::string call(Trim(LogForm.InData[0].Text));
    if (Entry.ParseError || IsNextCounty(call))
        return;
    if (BoxHasChecked(call))
        Dupes.PortableMatch = false;
    else
        Dupecheck(call);
    ShowVerdict();
    if (Dupes.SeenBefore)
        FillFromLog();
    else if (OldCalls.ShowOldCalls)
        FillFromOldLog();
}

void CallFieldLostFocus() {
    if (LogForm.ActiveControl == &ExchangeField())
        HideCallMatches();
}

} // namespace zrt
