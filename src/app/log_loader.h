// The log loader: builds a new log or reads one, and rebuilds all derived state. The menus, the
// start routine and the editors call it, with the flags of session/session_flags set before.
#pragma once

namespace zrt {

struct LogLoaderHooks {
    // The windows of the open log, in the places of the settings.
    void (*ShowWindows)() = [] {};
    void (*CalibrateCw)() = [] {};
};
extern LogLoaderHooks LoaderHooks;

// Loads what the flags ask for: a new log; the log LogFileName, when it is recovered or read again;
// otherwise the recent log fileNumber, 1 to 4, or for 0 the one that the operator chooses in a
// dialog. If it can't, the operator has been told, LogState is 0 and the main window shows without
// a log. May pump.
void LoadLog(int fileNumber);

} // namespace zrt
