#include "entry/keyboard.h"

#include "entry/band_change.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/prefill.h"
#include "entry/station_hooks.h"
#include "entry/typing.h"
#include "platform/keys.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"

#include <algorithm>
#include <array>

namespace zrt {

KeyboardState Keyboard;

namespace {

struct KeyEvent {
    i16 FieldIndex;
    int KeyCode;
    int Shift;
};

bool CtrlOrAlt(const KeyEvent &event) {
    return (event.Shift & (kCtrl | kAlt)) != 0;
}

bool Alt(const KeyEvent &event) {
    return (event.Shift & kAlt) != 0;
}

bool OnCw(const KeyEvent &) {
    return IsCw(CurrentBand());
}

bool Ctrl(const KeyEvent &event) {
    return (event.Shift & kCtrl) != 0;
}

bool Always(const KeyEvent &) {
    return true;
}

bool SendsF6(const KeyEvent &) {
    return Settings.LogandSendF6Enabled;
}

// In these contests the exchange is one word, and the blank flips between the fields.
bool BlankFlips() {
    switch (Contest.ContestId) {
    case kArrlDx:
    case kWpx:
    case kAa:
    case kTenMeter:
    case kNeqp: return true;
    default: return false;
    }
}

void FlipField(const KeyEvent &event) {
    if (event.FieldIndex == 0)
        SetFocus(LogForm.InData[1]);
    else if (BlankFlips())
        SetFocus(LogForm.InData[0]);
}

// ---- messages

// Shift alone repeats the message. F5 and F6 by hand begin the count of the full messages anew.
void SendFunctionKey(const KeyEvent &event) {
    const bool sent = SendMessage(event.KeyCode, event.Shift == kShift);
    if (sent && IsCw(CurrentBand()) && (event.KeyCode == kKeyF5 || event.KeyCode == kKeyF6))
        Entry.TuCount = 1;
}

void SendCallField(const KeyEvent &) {
    Station.SendText(Trim(CallField().Text));
}

void OpenKeyboardCw(const KeyEvent &) {
    Station.OpenKeyboardCw();
}

void ChangeSpeed(int steps) {
    if (!Station.CwIsBeingSent())
        Station.ChangeCWSpeed(steps);
}

// Fast, normal, mixed and round again, without those that are switched off.
void StepVoiceMode() {
    using enum CallExchMode;
    CallExchMode &mode = Settings.DVKCallExchMode;
    const bool fast = Settings.DVKFastModeEnabled;
    const bool normal = Settings.DVKNormalModeEnabled;
    const bool mixed = Settings.DVKMixedModeEnabled;
    switch (mode) {
    case AlwaysFast: mode = normal ? AlwaysNormal : mixed ? MixedMode : AlwaysFast; break;
    case AlwaysNormal: mode = mixed ? MixedMode : fast ? AlwaysFast : AlwaysNormal; break;
    case MixedMode: mode = fast ? AlwaysFast : normal ? AlwaysNormal : MixedMode; break;
    }
    Station.VoiceModeChanged();
}

// ---- Insert

// The call is checked as if the operator had gone on; the DUPE line is shown here, so that the
// exchange field does not show it a second time.
void CheckForInsert(const KeyEvent &event) {
    Entry.InsertActive = true;
    SaveCall();
    if (event.FieldIndex != 0)
        return;
    QsoHooks.Dupecheck(UpperCase(Trim(CallField().Text)));
    ShowVerdict();
    if (Entry.DupeFlag)
        QsoHooks.DupeLabelShow();
}

void InsertOnPhone(const KeyEvent &event) {
    CheckForInsert(event);
    const bool speaks = LogForm.CheckCall.Checked || LogForm.CheckExchange.Checked;
    if (speaks)
        Station.SayCallAndExchange(LogForm.CheckCall.Checked, LogForm.CheckExchange.Checked);
    if (speaks || (event.FieldIndex == 0 && Entry.DupeFlag))
        SetFocus(ExchangeField());
}

// Whether the exchange goes out behind the call: nothing has been received yet, or what stands in
// the field begins with a blank, as a fill does that waits for its number.
bool ExchangeIsYetToCome(const KeyEvent &event) {
    const std::string &text = ExchangeField().Text;
    const bool plain = event.Shift != kShift && event.Shift != kAlt;
    return text.empty() || IsPrefillOnly() || (text.front() == ' ' && plain);
}

void InsertOnCw(const KeyEvent &event) {
    constexpr int kCallAndExchange = 10, kExchangeAlone = 11, kDupe = 12; // rows of the macros
    Station.BeginFirstCall();
    CheckForInsert(event);
    if (event.FieldIndex == 0 && Entry.DupeFlag && Settings.DupeSendMsgFlag) {
        Station.SendRow(kDupe);
        EscAction();
        return;
    }
    Station.SendRow(ExchangeIsYetToCome(event) ? kCallAndExchange : kExchangeAlone);
    const bool empty = CallField().Text.empty() && ExchangeField().Text.empty();
    SetFocus(empty ? CallField() : ExchangeField());
}

// ---- remembered calls

void WipeAll(const KeyEvent &) {
    WipeEntry();
    CallTextChanged(); // no call: nothing of it shows any longer
}

bool CallIsTyped(const KeyEvent &event) {
    return CtrlOrAlt(event) && !Trim(CallField().Text).empty();
}

void RememberCall(const KeyEvent &) {
    constexpr std::size_t kLongestCall = 10;
    auto &calls = Keyboard.QuickMem;
    std::shift_right(calls.begin(), calls.end(), 1);
    calls.front() = CutAt(UpperCase(Trim(CallField().Text)), kLongestCall);
    WipeEntry();
}

// The call arrives as if it were typed.
void RecallMemory(i16 position) {
    Keyboard.QuickMemPos = position;
    const std::string &call = Keyboard.QuickMem[static_cast<std::size_t>(position) - 1];
    if (call.empty())
        return;
    SetFieldText(CallField(), call);
    Entry.CallShown.clear();
    CallTextChanged();
}

void RecallNewest(const KeyEvent &) {
    RecallMemory(1);
}

void RecallBack(const KeyEvent &) {
    RecallMemory(Keyboard.QuickMemPos > 1 ? static_cast<i16>(Keyboard.QuickMemPos - 1) : i16{5});
}

void RecallOn(const KeyEvent &) {
    RecallMemory(Keyboard.QuickMemPos < 5 ? static_cast<i16>(Keyboard.QuickMemPos + 1) : i16{1});
}

// ---- two radios

void SwitchRadio(const KeyEvent &event) {
    if (CtrlOrAlt(event))
        Station.SwapTransmitRadio();
    else
        Station.SetActiveRadio();
    ShowBandAnew();
}

// The other radio logs, on the band that it was left on.
void SwapLoggedRadio(const KeyEvent &) {
    const bool toSecond = Radios.LogRadio == 1;
    Radios.RadioBandMode[toSecond ? 0 : 1] = CurrentBand();
    Radios.LogRadio = toSecond ? 2 : 1;
    CurrentBand() = Radios.RadioBandMode[toSecond ? 1 : 0];
    ShowLabel(LogForm.ActiveLogLabel, toSecond ? "Log R2" : "Log R1");
    LogForm.ActiveLogLabel.ForeColor = LogForm.QSONrLabel.ForeColor =
        toSecond ? Color::Red : Color::Blue;
    ShowBandAnew();
}

struct KeyRow {
    int FirstKey;
    int LastKey;
    bool (*Applies)(const KeyEvent &event);
    void (*Do)(const KeyEvent &event);
};

// Tested in this order; the first row that applies ends the handler and uses the key up, but for
// the blank, which goes on to the character handler.
constexpr std::array kKeyTable = {
    KeyRow{kKeyF1, kKeyF7, Always, SendFunctionKey},
    KeyRow{kKeyF11, kKeyF12, Always, SendFunctionKey},
    KeyRow{kKeyCapsLock, kKeyCapsLock, OnCw, OpenKeyboardCw},
    KeyRow{kKeyF8, kKeyF8, OnCw, SendCallField},
    KeyRow{kKeyF9, kKeyF9, Always, SwitchRadio},
    KeyRow{kKeyF10, kKeyF10, Always, SwapLoggedRadio},
    KeyRow{'Z', 'Z', CtrlOrAlt, WipeAll},
    KeyRow{'X', 'X', CtrlOrAlt, WipeAll},
    KeyRow{'W', 'W',
           [](const KeyEvent &event) { return CtrlOrAlt(event) && Station.WinkeyIsOpen(); },
           [](const KeyEvent &) { Station.CycleWinkeySpeedMode(); }},
    KeyRow{'R', 'R', Ctrl,
           [](const KeyEvent &) { Keyboard.RITClearOnTU = !Keyboard.RITClearOnTU; }},
    KeyRow{kKeyPageUp, kKeyPageUp, Always, [](const KeyEvent &) { ChangeSpeed(1); }},
    KeyRow{kKeyPageDown, kKeyPageDown, Always, [](const KeyEvent &) { ChangeSpeed(-1); }},
    KeyRow{'M', 'M', CallIsTyped, RememberCall},
    KeyRow{kKeyLeft, kKeyLeft, Alt, RecallNewest},
    KeyRow{kKeyRight, kKeyRight, Alt, RecallNewest},
    KeyRow{kKeyUp, kKeyUp, Alt, RecallBack},
    KeyRow{kKeyDown, kKeyDown, Alt, RecallOn},
    KeyRow{kKeyDown, kKeyDown, Ctrl, [](const KeyEvent &) { StepBand(false); }},
    KeyRow{kKeyUp, kKeyUp, Ctrl, [](const KeyEvent &) { StepBand(true); }},
    KeyRow{kKeyLeft, kKeyLeft, Ctrl, [](const KeyEvent &) { SwitchMode(IsCw(CurrentBand())); }},
    KeyRow{kKeyRight, kKeyRight, Ctrl, [](const KeyEvent &) { SwitchMode(IsCw(CurrentBand())); }},
    KeyRow{kKeySpace, kKeySpace, Always, FlipField},
    KeyRow{kKeyEnter, kKeyEnter, Always,
           [](const KeyEvent &event) { LogQso(event.FieldIndex, static_cast<i16>(event.Shift)); }},
    KeyRow{kKeyApostrophe, kKeyApostrophe, SendsF6,
           [](const KeyEvent &event) {
               Entry.SendAfterLog = true;
               LogQso(event.FieldIndex, static_cast<i16>(event.Shift));
           }},
    KeyRow{kKeyInsert, kKeyInsert, OnCw, InsertOnCw},
    KeyRow{kKeyInsert, kKeyInsert, Always, InsertOnPhone},
};

// ---- extra keys

bool IsMapped(const std::string &mapping, const KeyEvent &event) {
    const bool upArrow = event.KeyCode == kKeyUp && event.Shift == 0;
    const bool all = mapping == "All";
    return ((all || mapping == "backslash") && Keyboard.BackslashHit) ||
           ((all || mapping == "rightbracket") && Keyboard.RightBracketHit) ||
           ((all || mapping == "uparrow") && upArrow);
}

void ForgetHits() {
    Keyboard.BackslashHit = Keyboard.RightBracketHit = false;
}

// Two keys may stand for Insert and for F9.
int MappedKey(const KeyEvent &event) {
    const bool isInsert = Settings.Key1IsMapped && IsMapped(Settings.Key1Mapping, event);
    const bool isF9 = !isInsert && Settings.Key2IsMapped && IsMapped(Settings.Key2Mapping, event);
    if (isInsert || isF9)
        ForgetHits();
    return isInsert ? kKeyInsert : isF9 ? kKeyF9 : event.KeyCode;
}

// True if the character is a key of its own, and no text.
bool ActsAsKey(int charCode) {
    switch (charCode) {
    case ']': Keyboard.RightBracketHit = true; break;
    case '\\': Keyboard.BackslashHit = true; break;
    case '+':
    case '-':
    case '!':
        if (IsCw(CurrentBand()))
            ChangeSpeed(charCode == '+' ? 1 : -1);
        else
            StepVoiceMode();
        return true;
    default: return charCode == '"' || charCode == '\'';
    }
    int key = kKeyRight; // does nothing unless it is mapped
    InDataKeyDown(0, key, 0);
    return true;
}

} // namespace

void InDataKeyDown(i16 fieldIndex, int &keyCode, int shift) {
    if (Log.LogState == kNoLog) { // the fields are hidden, but the keyboard may still be theirs
        if ((shift & kAlt) == 0)  // Alt opens the menus
            keyCode = kKeyNone;
        return;
    }
    Entry.SendAfterLog = false;
    keyCode = MappedKey({fieldIndex, keyCode, shift});
    Entry.InsertActive = false;
    const KeyEvent event{fieldIndex, keyCode, shift};
    for (const KeyRow &row : kKeyTable) {
        if (keyCode < row.FirstKey || keyCode > row.LastKey || !row.Applies(event))
            continue;
        if (keyCode != kKeySpace)
            keyCode = kKeyNone;
        row.Do(event);
        return;
    }
}

void InDataKeyPress(i16 fieldIndex, int &charCode) {
    if (Log.LogState == kNoLog) {
        charCode = 0;
        return;
    }
    if (charCode >= 'a' && charCode <= 'z')
        charCode += 'A' - 'a';
    ForgetHits();
    const bool swallowed =
        ActsAsKey(charCode) || (charCode == ' ' && (fieldIndex == 0 || BlankFlips()));
    if (swallowed)
        charCode = 0;
}

void EscAction() {
    if (!Station.CancelSending()) {
        WipeEntry();
        CallTextChanged();
    }
    LogForm.TimeLocalLabel.Visible = true;
    LogForm.LabelSendingMsg.Visible = false;
    CallField().ForeColor = Color::Black;
}

} // namespace zrt
