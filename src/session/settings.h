// The operator's preferences, one text file of sections and keys in the program's folder. Read
// once at start; every module reads the record.
#pragma once

#include "session/fixed_text.h"

#include <string>

namespace zrt {

inline constexpr const char *kSettingsFile = "zrtlog125.ini";

// A key that the file lacks leaves its value as it is here.
struct SettingsRecord {
    i16 RepeatIntervalCW = 1000; // milliseconds
    i16 RepeatIntervalSSB = 1000;
    std::string TimingMethod = "Winmm"; // "QueryPerf", "Math", "Winmm" or "VBTimer"
    std::string TimeCorrection;         // hours added to a clock that is not on UTC
    std::string IsGMTFlag;              // "True" when the machine clock is UTC
    bool SendF1Enabled = false;         // Enter in an empty call field sends F1
    bool LogandSendF5Enabled = false;   // Enter sends F5 after logging
    bool LogandSendF6Enabled = false;   // the apostrophe key logs and sends F6
    int UnworkedColor = 0;              // of a multiplier in the maps, as red, green, blue bytes
    int WorkedColor = 255;
};
extern SettingsRecord Settings;

// What operators of today need beyond the old rules. Each is off unless the section "[Extensions]"
// turns it on; the file of a first installation turns all of them on.
struct ExtensionsRecord {
    bool StoreDecade = false;    // the record keeps the decade of years from 2020
    bool UtcFromSystem = false;  // a machine clock on UTC is read as the system's UTC
    bool ProtectOldLogs = false; // no contact is added to a log in an old format
};
extern ExtensionsRecord Extensions;

// Reads the file. Returns 0, or the system's error: then nothing was taken.
[[nodiscard]] int ReadSettings(const std::string &path);

// A TimingMethod that is none of the four becomes "Winmm".
void CheckTimingMethod();

} // namespace zrt
