#include "app/exit.h"

#include "app/file_menu.h"
#include "platform/dialogs.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/settings.h"

namespace zrt {

void (*CloseWinkeyer)() = [] {};

namespace {

// Asks whether the session may end; saves or drops an unnamed log as the operator says.
bool MayExit() {
    if (!SettleOwedEntries())
        return false;
    if (Log.LogState != kTemporaryName)
        return ShowMessageBox({"Exit ZRTLOG?", "Exit ZRTLOG?", BoxButtons::YesNo,
                               BoxIcon::Question}) == BoxAnswer::Yes;
    const BoxAnswer answer = ShowMessageBox(
        {"Save current log file?", "Save Log?", BoxButtons::YesNoCancel, BoxIcon::Question});
    if (answer == BoxAnswer::Yes)
        return FileSaveAs();
    if (answer == BoxAnswer::No)
        DeleteTemporaryLog();
    return answer == BoxAnswer::No;
}

} // namespace

void ExitProgram() {
    if (!MayExit())
        return;
    WriteSettings(true);
    CloseWinkeyer();
    EndProgram(0);
}

void KeepSession() {
    // What can't be written now is lost with the process: no box can ask what to do.
    (void)BringFileUpToDate();
    (void)TryWriteSettings(true);
}

void LeaveProgram() {
    if (Program.Ending)
        return;
    EndProgram(0); // first: from here on no box opens, and no wait is begun
    KeepSession();
    CloseWinkeyer();
}

} // namespace zrt
