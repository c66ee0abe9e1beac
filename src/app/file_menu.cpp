#include "app/file_menu.h"

#include "app/log_loader.h"
#include "app/log_lock.h"
#include "app/recent_files.h"
#include "app/recovery.h"
#include "app/save_path.h"
#include "app/session_reset.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/data_files.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"

namespace zrt {

namespace {

std::string TemporaryPath() {
    return Session.AppPath + kTempLogName;
}

// An unnamed log is to go: it gets a name, is given up, or stays (false).
bool OfferToSave(const char *question, const char *title) {
    const BoxAnswer answer =
        ShowMessageBox({question, title, BoxButtons::YesNoCancel, BoxIcon::Question});
    // A Save As that is cancelled or fails must not lead to the deletion of the only copy.
    return answer != BoxAnswer::Cancel && (answer != BoxAnswer::Yes || FileSaveAs());
}

// The log is gone from the program, and its windows are cleared.
void CloseLog() {
    Session.ReplacingLog = Log.LogState != kNoLog;
    if (Session.ReplacingLog)
        WriteSettings(true);
    DeleteTemporaryLog();
    UnlockLog();
    Log.LogState = kNoLog;
    Session.RescanInPlace = false;
    ResetSession();
}

// Whether the open log may be replaced; asks about it, and lets it go.
bool LetGoOfLog(const std::string &question) {
    if (Log.LogState == kUsersName) {
        const BoxAnswer answer = ShowMessageBox(
            {question, "Log Already Opened", BoxButtons::YesNo, BoxIcon::Question, 2});
        if (answer != BoxAnswer::Yes || !SettleOwedEntries())
            return false;
    } else if (Log.LogState == kTemporaryName) {
        if (!OfferToSave("Save current log file? ", "Save Current File?"))
            return false;
    }
    CloseLog();
    ShowForm(LogForm);
    return true;
}

// The source goes only when the copy is safely on the disk. That of a log with a name stays: it may
// be on a disk that comes back.
bool MoveLogTo(const std::string &path) {
    const std::string source = Log.LogFileName;
    if (!WithRetry([&path] { return SaveLogTo(path); }))
        return false;
    if (Log.LogState == kTemporaryName)
        (void)Files.Remove(source); // a temporary log that stays is offered as recovery
    Log.LogState = kUsersName;
    return true;
}

// The folder that the settings propose is made before its first log.
void MakeLogFolder() {
    if (Settings.OpenFilePath == FirstFolder() && !Files.Exists(Settings.OpenFilePath))
        (void)Files.MakeFolder(Settings.OpenFilePath); // without it the dialog opens elsewhere
}

// Whether a name is to be asked for.
bool HasSomethingToSave() {
    // Where the log's own disk fails the log is saved to another one, from memory.
    const bool onDisk = BringFileUpToDate() == 0;
    ShowOwedEntries();
    if (!onDisk || Log.LogState == kTemporaryName)
        return true;
    ShowMessageBox({"There is nothing to save: each contact is on the disk, in " + Log.LogFileName +
                        ", from the moment it is logged.",
                    "Save As", BoxButtons::Ok, BoxIcon::Information});
    return false;
}

} // namespace

void FileNew() {
    if (!LetGoOfLog("A log file is already open.  Do you want to start a new one? "))
        return;
    Session.OpenLogRequested = false;
    Session.NewLogRequested = true;
    Log.LogFileName = TemporaryPath();
    if (!WithRetry(KeepStrayLog)) {
        Session.ReplacingLog = false;
        return;
    }
    LoadLog(0);
    if (Session.ChooserCancelled || Log.LogState == kNoLog) {
        Session.ReplacingLog = false;
        return;
    }
    Log.LogState = kTemporaryName;
    LogForm.lblLog.Caption = LogLabel(LabelTable::New, "[Unnamed]");
}

void FileOpen(int fileNumber) {
    const std::string path = fileNumber > 0 ? Settings.RecentFile[fileNumber - 1UL] : std::string();
    if (!LetGoOfLog("A log file is already open.  Do you want to open a different one?"))
        return;
    // The log before it may have got its name just now, and a place in front of the others.
    if (fileNumber > 0 && Settings.RecentFile[fileNumber - 1UL] != path) {
        TakeRecentFile(path);
        fileNumber = 1;
    }
    Session.OpenLogRequested = true;
    Session.NewLogRequested = false;
    Contest.ContestId =
        kNoContest; // a file that is no log must not pass as one of the last contest
    LoadLog(fileNumber);
    Session.ReplacingLog = Session.ChooserCancelled = false;
}

void FileOpenRecent(int fileNumber) {
    std::string &path = Settings.RecentFile[static_cast<std::size_t>(fileNumber) - 1];
    if (!Files.Exists(path))
        path = PathInFolder(path);
    OpenedFile file;
    if (file.Open(path, OpenMode::Read) == 0) {
        FileOpen(fileNumber);
        return;
    }
    ShowMessageBox({"The selected data file " + path + " doesn't exist.  Make another selection.",
                    "File Opening Error", BoxButtons::Ok, BoxIcon::Exclamation});
}

bool FileSaveAs() {
    WriteSettings(true);
    if (!HasSomethingToSave())
        return true;
    MakeLogFolder();
    const auto path = ShowFileDialog({"Save Current Log As", Settings.OpenFilePath,
                                      "ZRT logs (*.ZRT)|*.ZRT|All files (*.*)|*.*", "ZRT", true});
    if (!path || !MayWriteTo(*path, "Log file", ".ZRT") || !MayReplaceLog(*path) ||
        !MoveLogTo(*path))
        return false;
    ShowOwedEntries();
    TakeRecentFile(*path);
    WriteSettings(true);
    LogForm.lblLog.Caption = LogLabel(LabelTable::SaveAs, NameOf(*path));
    LogForm.mnuFileBackup.Enabled = true;
    return true;
}

bool SettleLog() {
    if (Log.LogState == kUsersName)
        return SettleOwedEntries();
    if (Log.LogState == kNoLog)
        return true;
    if (!OfferToSave("Save current log file?", "Save Current Log?"))
        return false;
    if (Log.LogState == kTemporaryName) { // given up
        PutLogAway();
        ShowForm(LogForm);
    }
    return true;
}

void PutLogAway() {
    CloseLog();
    Session.ReplacingLog = false;
}

void DeleteTemporaryLog() {
    if (Log.LogState == kTemporaryName && Log.LogFileName == TemporaryPath())
        (void)Files.Remove(Log.LogFileName); // what stays is offered as recovery at the next start
}

bool SettleOwedEntries() {
    while (const int error = BringFileUpToDate()) {
        ShowOwedEntries();
        const BoxAnswer answer = ShowMessageBox(
            {SystemErrorText(error) + ".  Contacts of the log are not on disk.  Press Abort to "
                                      "return to the log, Retry to write them again, or Ignore "
                                      "to go on without them.",
             "File or Disk Error", BoxButtons::AbortRetryIgnore, BoxIcon::Critical});
        if (answer != BoxAnswer::Retry)
            return answer == BoxAnswer::Ignore;
    }
    ShowOwedEntries();
    return true;
}

} // namespace zrt
