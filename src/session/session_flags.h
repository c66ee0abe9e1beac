// The flags by which the menus, the start routine and the log loader speak with each other.
#pragma once

#include <string>

namespace zrt {

struct SessionFlags {
    bool ChooserCancelled = false; // the contest chooser or the file dialog was cancelled
    bool ReplacingLog = false;     // a log is open and a new one is to replace it
    bool NewLogRequested = false;  // the next LoadLog builds a new log
    bool OpenLogRequested = false; // the next LoadLog opens an existing log
    bool RescanInPlace = false;    // LoadLog re-reads the same file and keeps the windows
    bool CWTimingReady = false;    // the CW timing calibration has run
    bool SettingsRead = false;     // the settings are those of the file, which may be written now
    std::string AppPath;           // the program's folder, with a separator at its end
    std::string HelpFile;
};
extern SessionFlags Session;

inline constexpr const char *kTempLogName = "!temp%!!.zrb";

} // namespace zrt
