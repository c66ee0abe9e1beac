#include "app/main_window.h"

#include "app/about_box.h"
#include "app/band_mode.h"
#include "app/exit.h"
#include "app/file_menu.h"
#include "entry/keyboard.h"
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

void WriteClocks() {
    const ClockTexts texts = ClockLabels();
    LogForm.TimeGMTLabel.Caption = texts.Gmt;
    LogForm.TimeLocalLabel.Caption = texts.Local;
}

// A disk that was full may have room again: the contacts that are owed to it are tried quietly,
// while the warning stays in sight.
void RetryOwedEntries() {
    if (Log.Unwritten.empty())
        return;
    if (WriteOwedEntries() == 0)
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

void WireFields() {
    for (i16 i = 0; i < 2; ++i) {
        LogForm.InData[i].KeyDown = [i](int &keyCode, int shift) {
            InDataKeyDown(i, keyCode, shift);
        };
        LogForm.InData[i].KeyPress = [i](int &charCode) { InDataKeyPress(i, charCode); };
    }
    LogForm.AddButton.Click = [] { LogQso(0, 0); };
    LogForm.CancelButton.Click = EscAction;
}

void WireMenus() {
    LogForm.mnuFileNew.Click = FileNew;
    LogForm.mnuFileSave.Click = [] { (void)FileSaveAs(); }; // a failure has been told
    LogForm.mnuFileExit.Click = ExitProgram;
    LogForm.mnuModeCW.Click = [] { SwitchMode(false); };
    LogForm.mnuModePhone.Click = [] { SwitchMode(true); };
    LogForm.mnuBandMode.Click = ShowBandMode;
    LogForm.mnuHelpAbout.Click = ShowAboutBox;
    LogForm.CloseBox = ExitProgram;
}

} // namespace

void WireMainWindow() {
    WireFields();
    WireMenus();
    LogForm.Timer1.Tick = Tick;
}

void StartMainClock() {
    ClockState = {};
    WriteClocks();
    StartTimer(LogForm.Timer1, kTickMs);
}

} // namespace zrt
