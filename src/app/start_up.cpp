#include "app/start_up.h"

#include "app/about_box.h"
#include "app/background.h"
#include "app/band_mode.h"
#include "app/contest_chooser.h"
#include "app/main_clock.h"
#include "app/main_window.h"
#include "app/partial_window.h"
#include "app/post_contest.h"
#include "app/program_folder.h"
#include "app/recent_files.h"
#include "app/recovery.h"
#include "app/session_reset.h"
#include "app/user_info.h"
#include "entry/log_form.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/reference_data.h"
#include "session/session_flags.h"
#include "session/settings.h"

#include <algorithm>

namespace zrt {

namespace {

// Only the operator can say whether another copy is at work. The temporary log has a lock of its
// own, by which recovery still finds out.
bool GoesOnWithoutLock(int error) {
    return ShowMessageBox({"The folder " + Session.AppPath +
                               " can't be locked: " + SystemErrorText(error) +
                               ".  Without the lock two copies of ZRTLOG could work in it, and "
                               "spoil each other's logs.  Go on all the same?",
                           "ZRTLOG", BoxButtons::YesNo, BoxIcon::Exclamation, 2}) == BoxAnswer::Yes;
}

// Two copies in one folder would take each other's temporary log for that of a crash.
bool TakeLock() {
    const FileLock lock = Files.Lock(Session.AppPath + "zrtlog.lock");
    if (lock.Result == LockResult::Taken)
        return true;
    if (lock.Result == LockResult::Held)
        ShowMessageBox({"ZRTLOG is already running.  Use the copy that is open.", "ZRTLOG",
                        BoxButtons::Ok, BoxIcon::Exclamation});
    else if (GoesOnWithoutLock(lock.Error))
        return true;
    EndProgram(1);
    return false;
}

bool TakeSettings() {
    if (ReadSettings() != 0) {
        ShowMessageBox({"Can't find or read startup files zrtlog125.ini or zrtlog121.dat.  Make "
                        "sure they are in the same drive/directory used to start program.",
                        "Error Reading Initiation Files", BoxButtons::Ok, BoxIcon::Critical});
        EndProgram(1);
        return false;
    }
    ShowRecentFiles();
    return true;
}

// The user's own values of the model that each radio is; a radio of another model keeps its own.
void TakeRadioSettings() {
    const auto &models = Settings.RadioUserSettings;
    for (RadioSettings &radio : Settings.Radio) {
        const auto model = std::find_if(models.begin(), models.end(), [&radio](const auto &row) {
            return row.Name == radio.Name;
        });
        if (model != models.end())
            radio = *model;
    }
}

// False if the program is ending.
bool ReadReferenceData() {
    ReadCountries();
    ReadMasterScp();
    ReadCallMatch();
    TakeRadioSettings();
    ReadStartupData();
    return !Program.Ending;
}

} // namespace

void RegisterWindows() {
    RegisterLogForm();
    RegisterContestChooser();
    RegisterBandMode();
    RegisterAboutBox();
    RegisterBackground();
    RegisterPartial();
    RegisterUserInfo();
    RegisterPostContest();
    WireMainWindow();
}

void StartProgram() {
    if (!TakeProgramFolder())
        return;
    Session.HelpFile = Session.AppPath + "zrtlog127Help.chm";
    if (!TakeLock())
        return;
    ShowSplash();
    Screen.BusyPointer = true;
    CheckTimingMethod();
    ResetSession();
    if (!TakeSettings() || !ReadReferenceData())
        return;
    Screen.BusyPointer = false;
    ShowForm(LogForm);
    StartMainClock();
    Log.LogFileName = Session.AppPath + kTempLogName;
    OfferRecovery();
}

} // namespace zrt
