#include "app/partial_window.h"

#include "entry/callsign.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/old_calls.h"
#include "entry/typing.h"
#include "session/contests.h"
#include "session/radio_state.h"
#include "session/settings.h"

#include <algorithm>

namespace zrt {

PartialWindow Partial;

namespace {

// The size that the window has at first, in twips.
constexpr int kWidth = 5900;
constexpr int kHeight = 3000;

constexpr const char *kNone = "[None]";
constexpr std::size_t kPlaceOfNone = 7; // the middle one

void Show(Label &label, std::string_view call, Color color) {
    label.Caption = FromLatin1(call);
    label.ForeColor = color;
}

void EmptyLabels() {
    for (Label &label : Partial.Match)
        Show(label, "", Color::Black);
    for (Label &label : Partial.lblSCP)
        Show(label, "", Color::Black);
}

// A dupe is red; in SS a station counts once on any band.
Color ColorOfContact(const PartialCall &row) {
    return row.BandIndex == CurrentBand() || Contest.ContestId == kSs ? Color::Red : Color::Blue;
}

void ShowInstaMatches() {
    std::size_t place = 0;
    for (const PartialCall &row : Partials.PartialCalls)
        Show(Partial.Match[place++], row.Call, ColorOfContact(row));
    for (const i16 old : Partials.OldEntries)
        Show(Partial.Match[place++], OldCalls.Rows[static_cast<std::size_t>(old)].Call,
             Color::Black);
    if (place == 0)
        Show(Partial.Match[kPlaceOfNone], kNone, Color::Magenta);
}

bool IsInLog(std::string_view call) {
    return std::any_of(Partials.PartialCalls.begin(), Partials.PartialCalls.end(),
                       [call](const PartialCall &row) { return row.Call == call; });
}

void ShowKnownCalls() {
    for (std::size_t i = 0; i < Partials.ScpEntries.size(); ++i) {
        const std::string_view call = ScpCall(Partials.ScpEntries[i]);
        Show(Partial.lblSCP[i], call, IsInLog(call) ? Color::Blue : Color::Black);
    }
}

// The call stands in the field as if it had been typed, and the keyboard is there again.
void TakeCall(const Label &label) {
    const std::string call(Trim(label.Caption));
    if (call.empty() || call == kNone || !LogForm.InData[0].Visible)
        return;
    ShowForm(LogForm);
    SetFocus(LogForm.InData[0]);
    SetFieldText(LogForm.InData[0], call);
    Entry.CallShown.clear(); // it may be the one that stands there with a mark
    CallTextChanged();
}

template <std::size_t N>
void NameLabels(std::array<Label, N> &labels, const char *name, const char *purpose,
                std::vector<NamedControl> &controls) {
    for (std::size_t i = 0; i < N; ++i) {
        Label &label = labels[i];
        label.Click = [&label] { TakeCall(label); };
        controls.push_back({name + ("(" + std::to_string(i) + ")"), &label, purpose});
    }
}

void SetOpen(bool open) {
    // Not ShowForm, which would bring the window to the front while a call is being typed.
    if (open)
        Partial.Visible = true;
    else
        HideForm(Partial);
    Settings.SCPEnabled = open;
    LogForm.mnuviewCheckPartial.Checked = open;
}

} // namespace

void RegisterPartial() {
    Partial = {};
    Partials = {};
    Partial.Caption = "Check Partial";
    Partial.Width = kWidth;
    Partial.Height = kHeight;
    Partial.CloseBox = ClosePartial;
    Partial.lblInstaMatchResults.Caption = "InstaMatch Results:";
    Partial.lblSCPResults.Caption = "Super Check Partial Results:";
    std::vector<NamedControl> controls = {
        {"lblInstaMatchResults", &Partial.lblInstaMatchResults, "Heads the calls of logs"},
        {"lblSCPResults", &Partial.lblSCPResults, "Heads the known calls"}};
    NameLabels(Partial.Match, "Match", "Call of this log or an earlier one", controls);
    NameLabels(Partial.lblSCP, "lblSCP", "Known call", controls);
    RegisterForm(Partial, "Partial", "Calls that hold what is typed", std::move(controls));
    LogForm.mnuviewCheckPartial.Click = TogglePartial;
    Typing.PartialCheck = PartialCheck;
    QsoHooks.ClearPartial = ClearPartial;
}

void OpenPartial() {
    SetOpen(true);
    PartialCheck(PlainCall(LogForm.InData[0].Text));
}

void ClosePartial() {
    SetOpen(false);
}

void TogglePartial() {
    if (Partial.Visible)
        ClosePartial();
    else
        OpenPartial();
}

void PartialCheck(std::string_view text) {
    if (!Partial.Visible && !Settings.SCPEnabled)
        return;
    EmptyLabels();
    FindPartials(text);
    if (Trim(text).empty())
        return;
    ShowInstaMatches();
    ShowKnownCalls();
    SetOpen(true);
}

void ClearPartial() {
    if (Partial.Visible)
        ForgetPartials();
}

void ForgetPartials() {
    Partials = {};
    EmptyLabels();
}

} // namespace zrt
