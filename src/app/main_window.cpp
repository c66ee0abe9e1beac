#include "app/main_window.h"

#include "app/about_box.h"
#include "app/backup.h"
#include "app/band_mode.h"
#include "app/edit_menu.h"
#include "app/exit.h"
#include "app/file_menu.h"
#include "app/help_menu.h"
#include "app/post_contest.h"
#include "entry/band_change.h"
#include "entry/keyboard.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/prefill.h"
#include "entry/typing.h"

namespace zrt {

namespace {

void WireFields() {
    for (i16 i = 0; i < 2; ++i) {
        LogForm.InData[i].KeyDown = [i](int &keyCode, int shift) {
            InDataKeyDown(i, keyCode, shift);
        };
        LogForm.InData[i].KeyPress = [i](int &charCode) { InDataKeyPress(i, charCode); };
    }
    LogForm.InData[0].Change = CallTextChanged;
    LogForm.InData[1].Change = ExchangeTextChanged;
    LogForm.InData[0].LostFocus = CallFieldLostFocus;
    LogForm.InData[1].GotFocus = ExchangeFieldGotFocus;
    LogForm.AddButton.Click = [] { LogQso(0, 0); };
    LogForm.CancelButton.Click = EscAction;
}

void WireMenus() {
    LogForm.mnuFileNew.Click = FileNew;
    LogForm.mnuFileOpen.Click = [] { FileOpen(0); };
    for (int i = 0; i < 4; ++i)
        LogForm.mnuFileRecent[i].Click = [i] { FileOpenRecent(i + 1); };
    LogForm.mnuFileBackup.Click = BackupLog;
    LogForm.mnuFileSave.Click = [] { (void)FileSaveAs(); }; // a failure has been told
    LogForm.mnuFilePostContest.Click = [] { OpenPostContest(false); };
    LogForm.mnuFilePostCabrillo.Click = [] { OpenPostContest(true); };
    LogForm.mnuFileExit.Click = ExitProgram;
    LogForm.mnuEditLast.Click = EditLastEntry;
    LogForm.mnuEditKillLast.Click = KillLastEntry;
    LogForm.mnuEditKillAll.Click = KillAllEntries;
    LogForm.mnuEditMarkDecade.Click = MarkDecade;
    LogForm.mnuModeCW.Click = [] { SwitchMode(false); };
    LogForm.mnuModePhone.Click = [] { SwitchMode(true); };
    LogForm.mnuBandMode.Click = ShowBandMode;
    LogForm.mnuHelpContents.Click = ShowHelpContents;
    LogForm.mnuHelpContestRules.Click = ShowHelpContestRules;
    LogForm.mnuHelpKeyboardCommands.Click = ShowHelpKeyboardCommands;
    LogForm.mnuHelpAbout.Click = ShowAboutBox;
    LogForm.CloseBox = ExitProgram;
}

} // namespace

void WireMainWindow() {
    WireFields();
    WireMenus();
}

} // namespace zrt
