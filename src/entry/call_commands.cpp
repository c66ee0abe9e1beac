#include "entry/call_commands.h"

#include "entry/band_change.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "entry/station_hooks.h"
#include "entry/typing.h"
#include "platform/dialogs.h"
#include "session/band_plan.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"

#include <algorithm>
#include <array>

namespace zrt {

namespace {

bool IsDigits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// ---- frequencies

bool IsFrequency(std::string_view text) {
    const bool wellFormed = std::count(text.begin(), text.end(), '.') <= 1 &&
                            text.find_first_not_of("0123456789.") == std::string_view::npos;
    return wellFormed && RangeOf(static_cast<float>(Value(text))) != nullptr;
}

// ---- INT: 1 to 8 are seconds, 10 to 80 tenths, 100 to 800 hundredths, 1000 to 8000 milliseconds

// 0 for a number that is no interval.
int IntervalOf(std::string_view digits) {
    if (!IsDigits(digits) || digits.size() > 4)
        return 0;
    const int number = ValueI16(digits);
    for (const int unit : {1000, 100, 10, 1}) {
        const int smallest = 1000 / unit;
        if (number >= smallest && number <= 8 * smallest)
            return number * unit;
    }
    return 0;
}

bool IsPower(std::string_view digits) {
    return digits.empty() || (IsDigits(digits) && digits.size() <= 3);
}

bool RepeatApplies() {
    return Log.NextEntry > 1 && (Contest.ContestId == kArrlDx || Contest.ContestId == kCqWw ||
                                 Contest.ContestId == kNaqp);
}

// ---- what they do; `rest` is what stands behind the word

std::string LastExchange(const OldEntry36 &last) {
    const std::string exchange = MultText(last.RcvdExchange.Trimmed());
    switch (Contest.ContestId) {
    case kArrlDx: return Contest.StationUSVE ? std::to_string(last.RcvdNumber) : exchange;
    case kCqWw: return std::to_string(last.RcvdNumber);
    default: return last.RcvdName.Trimmed() + " " + exchange; // NAQP
    }
}

void RepeatLast(std::string_view) {
    const OldEntry36 last = EntryFields(static_cast<i16>(Log.NextEntry - 1));
    SetFieldText(LogForm.InData[0], FromLatin1(last.Callsign.Trimmed()));
    SetFieldText(LogForm.InData[1], FromLatin1(LastExchange(last)));
    CallPutBack();
    if (Contest.ContestId == kCqWw)
        LogForm.NeedPfxLabel.Caption.clear();
    SetFocus(LogForm.InData[1]);
}

bool LogRadioRuns() {
    const int radio = Radios.LogRadio - 1;
    return (radio == 0 || radio == 1) && Radios.RadioRunning[radio];
}

// A radio under control takes the band along; without one the operator has just turned the dial.
void SetFrequency(std::string_view text) {
    Station.SetRadioFrequency(Value(text));
    ClearTextCommand();
    if (Extensions.TypedFrequencyNoRadio && !LogRadioRuns())
        TakeTypedFrequency(static_cast<float>(Value(text)));
}

bool IsMode(std::string_view rest) {
    return Extensions.ModeCommands && rest.empty();
}

// A log of one mode keeps it; what was typed is selected, so that a call replaces it.
void SetMode(bool phone) {
    if (phone ? Contest.ModePhone : Contest.ModeCW) {
        ClearTextCommand();
        SwitchMode(phone);
        return;
    }
    const std::string mode = phone ? "CW" : "phone";
    const std::string other = phone ? "phone" : "CW";
    ShowMessageBox({"This log takes " + mode + " contacts only.  For " + other +
                        " start another log with File, New.",
                    "Mode", BoxButtons::Ok, BoxIcon::Exclamation});
    LogForm.InData[0].SelStart = 0;
    LogForm.InData[0].SelLength = static_cast<int>(LogForm.InData[0].Text.size());
    SetFocus(LogForm.InData[0]);
}

void SetTiming(std::string_view digit) {
    static constexpr std::array kMethods = {"Math", "VBTimer", "Winmm", "QueryPerf"};
    Settings.TimingMethod = kMethods[static_cast<std::size_t>(digit.front() - '1')];
    ClearTextCommand();
}

void ShowTiming(std::string_view) {
    Station.ToggleTimingDisplay();
    ClearTextCommand();
}

void SetInterval(std::string_view digits) {
    (IsCw(CurrentBand()) ? Settings.RepeatIntervalCW : Settings.RepeatIntervalSSB) =
        static_cast<i16>(IntervalOf(digits));
    ClearTextCommand();
}

void StoreRadio(std::string_view) {
    Station.StoreRadio();
    ClearTextCommand();
}

void RecallRadio(std::string_view) {
    if (Station.RecallRadio())
        Station.RedrawMap();
    ClearTextCommand();
}

void SetPower(std::string_view digits) {
    Station.SetPower(digits.empty() ? "100" : PadLeft(digits, 3, '0'));
    ClearTextCommand();
}

void SetTuEvery(std::string_view digit) {
    Entry.TuEvery = std::max<i16>(1, ValueI16(digit));
    ClearTextCommand();
}

// ---- the table of commands

bool Nothing(std::string_view rest) {
    return rest.empty();
}

struct CommandRow {
    std::string_view Word;
    CallCommand Command;
    bool (*Accepts)(std::string_view rest); // whether it is a command with this behind the word
    void (*Do)(std::string_view rest);
};

// Tested in this order. A frequency has no word.
constexpr std::array kCommands = {
    CommandRow{"RPT", CallCommand::Repeat, Nothing, RepeatLast},
    CommandRow{"R", CallCommand::Repeat, Nothing, RepeatLast},
    CommandRow{"", CallCommand::Frequency, IsFrequency, SetFrequency},
    CommandRow{"TMSHOW", CallCommand::ShowTiming, Nothing, ShowTiming},
    CommandRow{
        "TM", CallCommand::Timing,
        [](std::string_view rest) { return rest.size() == 1 && rest[0] >= '1' && rest[0] <= '4'; },
        SetTiming},
    CommandRow{"INT", CallCommand::Interval,
               [](std::string_view rest) { return IntervalOf(rest) > 0; }, SetInterval},
    CommandRow{"STO", CallCommand::StoreRadio, Nothing, StoreRadio},
    CommandRow{"RCL", CallCommand::RecallRadio, Nothing, RecallRadio},
    CommandRow{"PWR", CallCommand::Power, IsPower, SetPower},
    CommandRow{"TU", CallCommand::TuEvery,
               [](std::string_view rest) { return rest.size() == 1 && IsDigits(rest); },
               SetTuEvery},
    CommandRow{"CW", CallCommand::Mode, IsMode, [](std::string_view) { SetMode(false); }},
    CommandRow{"SSB", CallCommand::Mode, IsMode, [](std::string_view) { SetMode(true); }},
    CommandRow{"PH", CallCommand::Mode, IsMode, [](std::string_view) { SetMode(true); }},
};

const CommandRow *FindCommand(std::string_view text) {
    for (const CommandRow &row : kCommands)
        if (!text.empty() && text.starts_with(row.Word) &&
            row.Accepts(text.substr(row.Word.size())))
            return &row;
    return nullptr;
}

} // namespace

CallCommand ParseCallCommand(std::string_view text) {
    const CommandRow *row = FindCommand(text);
    return row == nullptr ? CallCommand::None : row->Command;
}

bool CarryOutCallCommand() {
    const std::string text = UpperCase(Trim(LogForm.InData[0].Text));
    const CommandRow *row = FindCommand(text);
    // Without a contact to repeat, and in the other contests, the letters are a call.
    if (row == nullptr || (row->Command == CallCommand::Repeat && !RepeatApplies()))
        return false;
    row->Do(std::string_view(text).substr(row->Word.size()));
    return true;
}

void ClearTextCommand() {
    LogForm.NeedPfxLabel.Caption.clear();
    LogForm.NeedPfxLabel.Visible = false;
    SetFieldText(LogForm.InData[0], "");
    CallTextChanged();
    SetFocus(LogForm.InData[0]);
}

} // namespace zrt
