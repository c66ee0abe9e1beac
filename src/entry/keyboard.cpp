#include "entry/keyboard.h"

#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/prefill.h"
#include "platform/keys.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"

#include <algorithm>
#include <array>

namespace zrt {

KeyboardHooks KeyHooks;

namespace {

struct KeyEvent {
    i16 FieldIndex;
    int KeyCode;
    int Shift;
};

// 10, 12, 15, 17, 20, 30, 40, 80, 160 m, 2 m, 6 m, as band positions.
constexpr std::array<int, kBandPositions> kBandRing = {1, 9, 2, 10, 3, 11, 4, 5, 6, 8, 7};

bool CtrlOrAlt(const KeyEvent &event) {
    return (event.Shift & (kCtrl | kAlt)) != 0;
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

// A call that is checked anew on another band shows what it is there.
void RecheckCall() {
    if (LogForm.InData[0].Text.empty())
        return;
    QsoHooks.Dupecheck(UpperCase(Trim(LogForm.InData[0].Text)));
    ShowVerdict();
}

void TakeBand(i16 bandIndex) {
    Radios.BandIndex = bandIndex;
    if (Radios.LogRadio == 1 || Radios.LogRadio == 2)
        Radios.RadioBandMode[Radios.LogRadio - 1] = bandIndex;
    WriteQSONrLabel();
    KeyHooks.BandChanged();
    RecheckCall();
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
    KeyRow{'Z', 'Z', CtrlOrAlt, [](const KeyEvent &) { WipeEntry(); }},
    KeyRow{'X', 'X', CtrlOrAlt, [](const KeyEvent &) { WipeEntry(); }},
    KeyRow{kKeyDown, kKeyDown, Ctrl, [](const KeyEvent &) { StepBand(false); }},
    KeyRow{kKeyUp, kKeyUp, Ctrl, [](const KeyEvent &) { StepBand(true); }},
    KeyRow{kKeyLeft, kKeyRight, Ctrl, [](const KeyEvent &) { SwitchMode(IsCw(CurrentBand())); }},
    KeyRow{kKeySpace, kKeySpace, Always, FlipField},
    KeyRow{kKeyEnter, kKeyEnter, Always,
           [](const KeyEvent &event) { LogQso(event.FieldIndex, static_cast<i16>(event.Shift)); }},
    KeyRow{kKeyApostrophe, kKeyApostrophe, SendsF6,
           [](const KeyEvent &event) {
               Entry.SendAfterLog = true;
               LogQso(event.FieldIndex, static_cast<i16>(event.Shift));
           }},
};

} // namespace

void InDataKeyDown(i16 fieldIndex, int &keyCode, int shift) {
    Entry.SendAfterLog = false;
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
    if (charCode >= 'a' && charCode <= 'z')
        charCode += 'A' - 'a';
    const bool swallowed = charCode == '"' || charCode == '\'' ||
                           (charCode == ' ' && (fieldIndex == 0 || BlankFlips()));
    if (swallowed)
        charCode = 0;
}

void EscAction() {
    WipeEntry();
}

void StepBand(bool upwards) {
    const int position = BandPosition(CurrentBand());
    const auto here = std::find(kBandRing.begin(), kBandRing.end(), position);
    auto place = static_cast<std::size_t>(here == kBandRing.end() ? 0 : here - kBandRing.begin());
    const std::size_t step = upwards ? kBandRing.size() - 1 : 1;
    for (std::size_t i = 0; i < kBandRing.size(); ++i) {
        place = (place + step) % kBandRing.size();
        if (Contest.ActiveBands[kBandRing[place] - 1])
            break;
    }
    TakeBand(CodeInMode(kBandRing[place], IsPhone(CurrentBand())));
}

void SwitchMode(bool phone) {
    const int position = BandPosition(CurrentBand());
    const bool allowed = phone ? Contest.ModePhone : Contest.ModeCW;
    if (!allowed || position == kNoBandPosition || phone == IsPhone(CurrentBand()))
        return;
    const i16 bandIndex = CodeInMode(position, phone);
    if (Radios.LogRadio == 1 || Radios.LogRadio == 2) {
        auto &frequencies = Radios.RadioFrequency[Radios.LogRadio - 1];
        frequencies[bandIndex] = frequencies[CurrentBand()];
    }
    TakeBand(bandIndex);
}

} // namespace zrt
