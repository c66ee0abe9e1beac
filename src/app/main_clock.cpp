#include "app/main_clock.h"

#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/utc_clock.h"
#include "platform/events.h"
#include "session/log_file.h"

namespace zrt {

namespace {

constexpr int kTickMs = 1000;
constexpr int kTicksPerStatistics = 10;

struct MainClock {
    int Ticks = 0;
};
MainClock ClockState;

// A disk that was full may have room again: the contacts that are owed to it are tried quietly,
// while the warning stays in sight.
void RetryOwedEntries() {
    if (IsOwedToDisk() && WriteOwedEntries() == 0)
        ShowOwedEntries();
}

void Tick() {
    WriteClocks();
    ++ClockState.Ticks;
    if (ClockState.Ticks % kTicksPerStatistics != 0 || Log.LogState == kNoLog)
        return;
    QsoHooks.UpdateStatistics(true);
    RetryOwedEntries();
}

} // namespace

void StartMainClock() {
    ClockState = {};
    LogForm.Timer1.Tick = Tick;
    WriteClocks();
    StartTimer(LogForm.Timer1, kTickMs);
}

void WriteClocks() {
    const ClockTexts texts = ClockLabels();
    LogForm.TimeGMTLabel.Caption = texts.Gmt;
    LogForm.TimeLocalLabel.Caption = texts.Local;
}

} // namespace zrt
