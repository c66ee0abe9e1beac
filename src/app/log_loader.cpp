#include "app/log_loader.h"

#include "app/background.h"
#include "app/contest_chooser.h"
#include "app/main_clock.h"
#include "app/rescan.h"
#include "app/session_reset.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/session_flags.h"

namespace zrt {

LogLoaderHooks LoaderHooks;

namespace {

constexpr const char *kErrorTitle = "File or Disk Error";
constexpr std::size_t kTaskWidth = 40; // characters of a file name that fit the progress window

void TellNotALog() {
    ShowMessageBox({"The file " + NameOf(Log.LogFileName) + " is not a ZRT log.", kErrorTitle,
                    BoxButtons::Ok, BoxIcon::Exclamation});
}

void GiveUpLog() {
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

bool RefuseIncompatible(const LogHeader &header) {
    if (header.IncompatibleMark <= 0)
        return false;
    ShowMessageBox(
        {"The log selected was written with an earlier version of this program or with version "
         "3.5 or earlier of ZRT for DOS.  This program and versions 4.1 and later of ZRT for DOS "
         "use a slightly different file format that is incompatible with earlier versions.  If "
         "you wish to convert the log file to this new format, load the file into ZRT for DOS, "
         "version 4.5 or later and follow instructions.",
         "Incompatible file format error", BoxButtons::Ok, BoxIcon::Critical});
    EndProgram(0);
    return true;
}

bool TakeHeader() {
    const int error = ReadHeader(Log.LogFileName, Log.Header);
    const bool known = error == 0 && (Contest.ContestId != kNoContest ||
                                      ContestOfTag(Log.Header.ContestTag.Whole()) != kNoContest);
    if (!known) {
        TellNotALog();
        GiveUpLog();
        return false;
    }
    Log.KeptHeader = Log.Header;
    if (RefuseIncompatible(Log.Header))
        return false;
    Log.CurrentFormat = Log.Header.FormatFlag == 1;
    TakeContest(Log.Header);
    return true;
}

bool OpenExistingLog() {
    ShowForm(LogForm);
    if (Session.ReplacingLog || Session.RescanInPlace) {
        ResetSession();
        ShowForm(LogForm);
    }
    return TakeHeader();
}

void ShowProgress(const char *task) {
    BkgdForm.lblTask.Caption = task + ShortenMiddle(NameOf(Log.LogFileName), kTaskWidth);
    BkgdForm.lblEntryNr.Caption = "Log Entry Nr:";
    BkgdForm.Visible = true;
}

void TellBeyond(i32 beyond) {
    const i32 kept = Log.NextEntry - 1;
    ShowMessageBox({"The log holds " + std::to_string(kept + beyond) + " entries; only the first " +
                        std::to_string(kept) + " are read, and no contact can be added.",
                    "Log Full", BoxButtons::Ok, BoxIcon::Exclamation});
}

bool TakeEntries() {
    ShowProgress("Loading: ");
    i32 beyond = 0;
    const bool read = WithRetry([&beyond] { return ReadEntries(Contest.ContestId, beyond); });
    if (read) {
        ShowProgress("Processing: ");
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

void ShowOpenLog() {
    ShowEntryFields();
    ShowScore();
    ShowOwedEntries();
    WriteClocks();
    const std::string name =
        Log.LogState == kUsersName ? NameOf(Log.LogFileName) : std::string("[Unnamed]");
    LogForm.lblLog.Caption = LogLabel(LabelTable::Load, name);
    LoaderHooks.ShowWindows();
    SetFocus(LogForm.InData[0]);
}

} // namespace

void LoadLog() {
    Session.ChooserCancelled = false;
    Log.CurrentFormat = false;
    const bool newLog = Session.NewLogRequested;
    if (newLog ? !MakeNewLog() : !OpenExistingLog())
        return;
    SetUpContest();
    LoaderHooks.FillMultiplierTable();
    // A new log that replaces an old one has no entries to read.
    const bool nothingToRead =
        Session.ReplacingLog && !Session.OpenLogRequested && !Session.RescanInPlace;
    if (nothingToRead)
        Session.ReplacingLog = false;
    else if (!TakeEntries())
        return;
    SetBands();
    LoaderHooks.CalibrateCw();
    ShowOpenLog();
}

} // namespace zrt
