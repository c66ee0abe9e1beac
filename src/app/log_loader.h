// The log loader: builds a new log or reads one, and rebuilds all derived state. The menus, the
// start routine and the editors call it, with the flags of session/session_flags set before.
#pragma once

namespace zrt {

struct LogLoaderHooks {
    // The contest's multiplier table, before the entries are scanned.
    void (*FillMultiplierTable)() = [] {};
    // The windows of the open log, in the places of the settings.
    void (*ShowWindows)() = [] {};
    void (*CalibrateCw)() = [] {};
};
extern LogLoaderHooks LoaderHooks;

// Loads what the flags ask for; the log's name is LogFileName. If it can't, the operator has been
// told, LogState is 0 and the main window shows without a log. May pump.
void LoadLog();

} // namespace zrt
