// The operator's preferences, one text file of sections and keys in the program's folder. Read
// once at start; every module reads the record, dialogs change it and have the file written.
// Members have the names of their keys. One key has its value elsewhere: SCPSelection is that of
// Contest, because each contest sets it anew.
#pragma once

#include "session/contests.h"
#include "session/settings_parts.h"

namespace zrt {

inline constexpr const char *kSettingsFile = "zrtlog125.ini";
inline constexpr std::size_t kRadioModels = 14;

// A key that the file lacks leaves its value as it is here. A port is "[none]" or its name. Tables
// by contest have their row at ContestId - 1, those by radio at its number - 1.
struct SettingsRecord {
    std::string YourCall;
    double StationLatitude = 0, StationLongitude = 0; // degrees
    std::string BackUpDrive;                          // a drive letter, a folder or "[none]"

    bool CWActivated = false, CWPTTActivated = false, SSBPTTActivated = false;
    bool PTTByRigControl = false, CWPTTByWinkey = false;
    bool F9Activated = false; // the line that switches between the radios
    bool TypingEnabled = false, DupeSendMsgFlag = false;
    std::string CWComport, PTTComPort, DVKMicSwitchComPort, F9Comport;
    bool DVKMicSwitchActivated = false;
    bool CWSpeakerEnabled = false, UsePCSpeaker = false, UseSoundcardSpeaker = false;
    std::array<DtrFunction, 2> UseDTRtoKey{};
    bool CWCallCorrectEnabled = false, CWCorrectWholeCall = false;
    i16 Radio1Delay = 0, Radio2Delay = 0;                  // 42.5 ms each
    i16 RepeatIntervalCW = 1000, RepeatIntervalSSB = 1000; // milliseconds
    i16 DualCQsRepeatInterval = 0, DualCQsPlayNumber = 0;
    std::string CWSpeedIncrement;
    double Weight = 3.0;                // dash to dot, 2.5 to 4.5
    std::string TimingMethod = "Winmm"; // "QueryPerf", "Math", "Winmm" or "VBTimer"
    std::string TimeCorrection;         // hours added to a clock that is not on UTC
    std::string IsGMTFlag;              // "True" when the machine clock is UTC
    bool SendF1Enabled = false;         // Enter in an empty call field sends F1
    bool LogandSendF5Enabled = false;   // Enter sends F5 after logging
    bool LogandSendF6Enabled = false;   // the apostrophe key logs and sends F6
    bool Key1IsMapped = false, Key2IsMapped = false;
    std::string Key1Mapping, Key2Mapping; // "[none]", "backslash", "rightbracket", "uparrow", "All"
    i16 K3MsgLengthAdjustment = 0;        // milliseconds
    bool SCPEnabled = false;

    bool WinkeyActivated = false;
    std::string WinkeyComPort;
    i16 WinkeySidetoneFrequency = 0;
    i16 WinkeySidetoneOnOff = 0; // 0 off, 1 on, 2 for the paddle only
    i16 WinkeyPotSpeedMin = 0, WinkeyPotSpeedMax = 0;
    i16 WinkeyLeadTime = 0, WinkeyTailTime = 0; // milliseconds
    i16 WinkeyWeighting = 0, WinkeyKeyComp = 0;
    std::string WinkeyDashDotRatio, WinkeyKeyMode;

    std::string AudioPath;
    bool DVKSendMessageEnabled = false, DVKSendCallEnabled = false, DVKSendExchEnabled = false;
    bool DVKNormalModeEnabled = false, DVKFastModeEnabled = false, DVKMixedModeEnabled = false;
    bool DVKPrevWkdEnabled = false, DVKCallMatchEnabled = false;
    CallExchMode DVKCallExchMode = CallExchMode::AlwaysFast;
    i16 DVKOverlapMsec = 0;

    bool Radio1ComActivated = false, Radio2ComActivated = false;
    i16 Radio1ComPollInterval = 0, Radio2ComPollInterval = 0, RadioSwapDelayMsec = 0;
    std::string Radio1ComPort, Radio2ComPort;
    std::array<RadioSettings, 2> Radio;
    std::array<RadioSettings, kRadioModels> RadioDefaultSettings, RadioUserSettings;

    std::string OpenFilePath; // the folder of the last file dialog; read as empty: FirstFolder
    std::array<std::string, 4> RecentFile; // most recent first

    std::array<std::array<std::string, 12>, kContests> Macros; // "[RADIOr][PLAYn]" and the text
    std::array<std::array<std::string, 9>, kContests> MacroLabels;
    std::array<std::array<WindowInfo, kWindowNames.size()>, kContests> Windows; // see WindowRow

    std::string ExchangeARRLMult, ExchangeAAMult, ExchangeZRTMult, ExchangePAQPMult;
    std::string ExchangeNEQPMult, ExchangeCQWWMult;
    std::string ExchangeSSPrec, ExchangeSSCall, ExchangeSSCheck, ExchangeSSSection;
    std::string ExchangeSprintName, ExchangeSprintMult, ExchangeNAQPName, ExchangeNAQPMult;
    std::string ExchangeGeneric, ExchangeCWOName;

    int UnworkedColor =
        0; // of a multiplier in the maps, as red, green, blue bytes; not in the file
    int WorkedColor = 255;

    friend bool operator==(const SettingsRecord &, const SettingsRecord &) = default;
};
extern SettingsRecord Settings;

// What operators of today need beyond the old rules. Each is off unless the section "[Extensions]"
// turns it on; the file of a first installation turns all of them on.
struct ExtensionsRecord {
    bool InFile = false;                // the file read has the section, and is written with it
    bool StoreDecade = false;           // the record keeps the decade of years from 2020
    bool UtcFromSystem = false;         // a machine clock on UTC is read as the system's UTC
    bool ProtectOldLogs = false;        // no contact is added to a log in an old format
    bool KeepKilledLog = false;         // Kill All Entries copies the log whole first
    i32 ScpLimit = 0;                   // calls of master.scp that are kept; 0: as many as ever
    bool ExtraBaudRates = false;        // the radio dialog offers rates above 19200
    bool FillCursorAtStart = false;     // the caret of a prefill stands where the number goes
    bool PrefillCountsAsEmpty = false;  // Insert takes a field with only a prefill as empty
    bool InStateStateNames = false;     // reports of an in-state ZRT log name states by their list
    bool TypedFrequencyNoRadio = false; // a typed frequency sets band and mode without a radio too
    bool ModeCommands = false;          // CW, SSB and PH in the call field change the mode
    bool InAreaContests = false;        // PAQP and NEQP logs of stations in the area
    std::string LogFolder; // what file dialogs propose first, see FirstFolder; empty: AppPath

    friend bool operator==(const ExtensionsRecord &, const ExtensionsRecord &) = default;
};
extern ExtensionsRecord Extensions;

// The folder that the file dialogs propose as long as the operator has chosen no other: LogFolder,
// where "{documents}" stands for the user's documents, or the program's folder. It need not be
// there yet.
std::string FirstFolder();

// Reads the file in Session.AppPath. Returns 0, or the system's error: then nothing was taken.
// Gives a user profile without a name one, and then writes the file at once.
[[nodiscard]] int ReadSettings();

// Writes the file whole. With `withWindows` the windows' places are taken into the rows of the open
// contest first. May pump: a failure goes to FileErrorAction.
void WriteSettings(bool withWindows);
// The same once, without a box: returns 0 or the system's error. Settings that were never read are
// not written.
[[nodiscard]] int TryWriteSettings(bool withWindows);

// A TimingMethod that is none of the four becomes "Winmm".
void CheckTimingMethod();

} // namespace zrt
