#include "app/log_loader.h"

#include "app/background.h"
#include "app/contest_chooser.h"
#include "app/log_conversion.h"
#include "app/log_header.h"
#include "app/log_lock.h"
#include "app/main_clock.h"
#include "app/partial_window.h"
#include "app/recent_files.h"
#include "app/rescan.h"
#include "app/session_reset.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/multipliers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/contests.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/session_flags.h"
#include "session/settings.h"

#include <algorithm>

namespace zrt {

LogLoaderHooks LoaderHooks;

namespace {

constexpr std::size_t kTaskWidth = 40; // characters of a file name that fit the progress window

// The log that the operator asks for, locked. False if he cancels, or if another copy has it.
bool TakeLogName(int fileNumber) {
    if (Session.RescanInPlace || Log.LogState == kTemporaryName)
        return true;
    if (fileNumber == 0) {
        const auto path = ShowFileDialog(
            {"Open Existing ZRT Log File", Settings.OpenFilePath, "ZRT logs (*.ZRT)|*.ZRT", "ZRT"});
        if (!path) {
            Session.ChooserCancelled = true;
            return false;
        }
        Log.LogFileName = *path;
    } else {
        Log.LogFileName = Settings.RecentFile[static_cast<std::size_t>(fileNumber) - 1];
    }
    if (!MayOpenLog())
        return false;
    Log.LogState = kUsersName;
    return true;
}

void GiveUpLog() {
    UnlockLog();
    Log.LogState = kNoLog;
    ShowForm(LogForm);
}

bool MakeNewLog() {
    if (!ChooseNewLog()) {
        ShowForm(LogForm);
        return false;
    }
    if (!WithRetry(CreateLogFile)) {
        GiveUpLog();
        return false;
    }
    ShowForm(LogForm);
    return true;
}

void RememberLog() {
    if (NameOf(Log.LogFileName) != kTempLogName) // gone tomorrow
        TakeRecentFile(Log.LogFileName);
    WriteSettings(false);
}

bool OpenExistingLog(int fileNumber) {
    if (!TakeLogName(fileNumber)) {
        GiveUpLog();
        return false;
    }
    RememberLog();
    ShowForm(LogForm);
    if (Session.ReplacingLog || Session.RescanInPlace) {
        ResetSession();
        ShowForm(LogForm);
    }
    if (TakeLogHeader() && BringLogUpToDate()) {
        LockLog(); // a conversion has put another file in its place
        return true;
    }
    if (!Program.Ending)
        GiveUpLog();
    return false;
}

void ShowProgress(const char *task, i16 entry) {
    BkgdForm.lblTask.Caption = task + ShortenMiddle(NameOf(Log.LogFileName), kTaskWidth);
    BkgdForm.lblEntryNr.Caption = "Log Entry Nr: " + std::to_string(entry);
    BkgdForm.Visible = true;
}

void TellBeyond(i32 beyond) {
    const i32 kept = Log.NextEntry - 1;
    ShowMessageBox({"The log holds " + std::to_string(kept + beyond) + " entries; only the first " +
                        std::to_string(kept) + " are read, and no contact can be added.",
                    "Log Full", BoxButtons::Ok, BoxIcon::Exclamation});
}

bool TakeEntries() {
    ShowProgress("Loading: ", 1);
    i32 beyond = 0;
    const bool read = WithRetry([&beyond] { return ReadEntries(Contest.ContestId, beyond); });
    if (read) {
        ShowProgress("Processing: ", static_cast<i16>(Log.NextEntry - 1));
        RescanLog();
    }
    BkgdForm.Visible = false;
    if (!read)
        GiveUpLog();
    else if (beyond > 0)
        TellBeyond(beyond);
    return read;
}

i16 FirstBand() {
    if (Contest.ContestId == kTenMeter)
        return 1;
    return Contest.ModeCW ? 3 : 11; // 20 m
}

void SetBands() {
    const i16 band = Log.NextEntry > 1 ? EntryFields(static_cast<i16>(Log.NextEntry - 1)).BandIndex
                                       : FirstBand();
    Radios.BandIndex = band;
    Radios.RadioBandMode = {band, band};
    Radios.LogRadio = Radios.TXRadio = 1;
}

// The windows' places in the contest. A row without a size tells of no place: the window stays
// where it is, in its default size.
void PlaceWindows() {
    constexpr i16 kLeastMacroHeight = 3100; // twips; all rows of it show
    constexpr i16 kLeastAudioWidth = 3000;
    const auto &rows = Settings.Windows[static_cast<std::size_t>(Contest.ContestId) - 1];
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const NamedForm *form = FindForm(kWindowNames[i]);
        const WindowInfo &row = rows[i];
        if (form == nullptr)
            continue;
        Form &window = *form->Record;
        if (row.Height <= 0 || row.Width <= 0) {
            window.Width = form->DefaultWidth;
            window.Height = form->DefaultHeight;
            continue;
        }
        window.Left = row.Left;
        window.Top = row.Top;
        window.Placed = true;
        window.Width = i == kAudio ? std::max(row.Width, kLeastAudioWidth) : row.Width;
        window.Height = i == kViewMac ? std::max(row.Height, kLeastMacroHeight) : row.Height;
    }
}

void ShowOpenLog() {
    ShowEntryFields();
    ShowScore();
    ShowOwedEntries();
    WriteClocks();
    const std::string name =
        Log.LogState == kUsersName ? NameOf(Log.LogFileName) : std::string("[Unnamed]");
    LogForm.lblLog.Caption = LogLabel(LabelTable::Load, name);
    if (!Session.RescanInPlace) // which keeps the line as it was
        ShowLastContact();
    LoaderHooks.ShowWindows();
    const auto &windows = Settings.Windows[static_cast<std::size_t>(Contest.ContestId) - 1];
    if (!Session.RescanInPlace && windows[kPartial].State == "OPEN")
        OpenPartial();
    SetFocus(LogForm.InData[0]);
}

} // namespace

void LoadLog(int fileNumber) {
    Session.ChooserCancelled = false;
    Log.CurrentFormat = false;
    const bool newLog = Session.NewLogRequested;
    if (newLog ? !MakeNewLog() : !OpenExistingLog(fileNumber))
        return;
    SetUpContest();
    FillMultiplierTables();
    // A new log that replaces an old one has no entries to read.
    const bool nothingToRead =
        Session.ReplacingLog && !Session.OpenLogRequested && !Session.RescanInPlace;
    if (nothingToRead)
        Session.ReplacingLog = false;
    else if (!TakeEntries())
        return;
    SetBands();
    PlaceWindows();
    LoaderHooks.CalibrateCw();
    ShowOpenLog();
}

} // namespace zrt
