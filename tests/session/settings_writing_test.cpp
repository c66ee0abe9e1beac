#include "session/settings_world.h"

#include "session/settings_keys.h"

#include <bit>
#include <cmath>
#include <fstream>
#include <limits>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <utility>
#include <variant>

namespace zrt {
namespace {

// ---- the form of the file

constexpr std::string_view kFirstSections = R"([Preferences]
YourCall=
StationLatitude=0
StationLongitude=0
BackUpDrive=
CWActivated=False
CWPTTActivated=False
SSBPTTActivated=False
PTTByRigControl=False
CWPTTByWinkey=False
F9Activated=False
TypingEnabled=False
DupeSendMsgFlag=False
CWComport=
PTTComPort=
DVKMicSwitchComPort=
F9Comport=
DVKMicSwitchActivated=False
CWSpeakerEnabled=False
UsePCSpeaker=False
UseSoundcardSpeaker=False
UseDTRtoKey(1)=None
UseDTRtoKey(2)=None
CWCallCorrectEnabled=False
CWCorrectWholeCall=False
Radio1Delay=0
Radio2Delay=0
RepeatIntervalCW=1000
RepeatIntervalSSB=1000
DualCQsRepeatInterval=0
DualCQsPlayNumber=0
CWSpeedIncrement=
Weight=3
TimingMethod=Winmm
TimeCorrection=
IsGMTFlag=
SendF1Enabled=False
LogandSendF5Enabled=False
LogandSendF6Enabled=False
Key1IsMapped=False
Key2IsMapped=False
Key1Mapping=
Key2Mapping=
K3MsgLengthAdjustment=0
SCPEnabled=False
SCPSelection=ALL

[Winkey Settings]
WinkeyActivated=False
WinkeyComPort=
WinkeySidetoneFrequency=0
WinkeySidetoneOnOff=0
WinkeyPotSpeedMin=0
WinkeyPotSpeedMax=0
WinkeyLeadTime=0
WinkeyTailTime=0
WinkeyWeighting=0
WinkeyKeyComp=0
WinkeyDashDotRatio=
WinkeyKeyMode=

[DVK Settings]
AudioPath=
DVKSendMessageEnabled=False
DVKSendCallEnabled=False
DVKSendExchEnabled=False
DVKNormalModeEnabled=False
DVKFastModeEnabled=False
DVKMixedModeEnabled=False
DVKPrevWkdEnabled=False
DVKCallMatchEnabled=False
DVKCallExchMode=AlwaysFast
DVKOverlapMsec=0

[Radio Information]
Radio1ComActivated = False
Radio2ComActivated = False
Radio1ComPollInterval=0
Radio2ComPollInterval=0
RadioSwapDelayMsec=0
Radio1ComPort=
Radio2ComPort=
Radio(1).Name=
Radio(1).Address=
Radio(1).BaudRate=0
Radio(1).WordLen=0
Radio(1).Parity=
Radio(1).StopBits=0
Radio(1).DTRHigh = False
Radio(1).RTSHigh = False
Radio(2).Name=
Radio(2).Address=
Radio(2).BaudRate=0
Radio(2).WordLen=0
Radio(2).Parity=
Radio(2).StopBits=0
Radio(2).DTRHigh = False
Radio(2).RTSHigh = False

)";

constexpr std::string_view kFileInformation = R"([File Information]
OpenFilePath=
RecentFile1=
RecentFile2=
RecentFile3=
RecentFile4=

)";

constexpr std::string_view kExchanges = R"([User Exchange - ARRL]
ExchangeARRLMult=

[User Exchange - AA]
ExchangeAAMult=

[User Exchange - ZRT]
ExchangeZRTMult=

[User Exchange - PAQP]
ExchangePAQPMult=

[User Exchange - NEQP]
ExchangeNEQPMult=

[User Exchange - CQWW]
ExchangeCQWWMult=

[User Exchange - SS]
ExchangeSSPrec=
ExchangeSSCall=
ExchangeSSCheck=
ExchangeSSSection=

[User Exchange - SPRINT]
ExchangeSprintName=
ExchangeSprintMult=

[User Exchange - NAQP]
ExchangeNAQPName=
ExchangeNAQPMult=

[User Exchange - GENERIC]
ExchangeGeneric=

[User Exchange - CWO]
ExchangeCWOName=

)";

constexpr std::string_view kExtensions = R"([Extensions]
StoreDecade=False
UtcFromSystem=False
ProtectOldLogs=False
KeepKilledLog=False
ScpLimit=0
ExtraBaudRates=False
FillCursorAtStart=False
PrefillCountsAsEmpty=False
InStateStateNames=False
LogFolder=
TypedFrequencyNoRadio=False
ModeCommands=False
InAreaContests=False

)";

std::string Models(const std::string &name) {
    std::string text = "[Radio " + name + " Settings]\n";
    for (int i = 0; i < 14; ++i)
        for (const char *key : {"Name=", "Address=", "BaudRate=0", "WordLen=0",
                                "Parity=", "StopBits=0", "DTRHigh=False", "RTSHigh=False"})
            text += "Radio" + name + "Settings." + key + "\n";
    return text + "\n";
}

std::string Numbered(const std::string &name, const std::string &rows) {
    std::string text;
    for (const char *number :
         {"01", "02", "03", "04", "05", "06", "07", "08", "09", "10", "11", "12", "13"})
        text.append("[").append(name).append(" - ").append(number).append("]\n").append(rows) +=
            "\n";
    return text;
}

std::string Repeated(const std::string &line, int times) {
    std::string text;
    for (int i = 0; i < times; ++i)
        text += line + "\n";
    return text;
}

std::string EmptyProfiles() {
    std::string text;
    for (int number = 1; number <= 4; ++number) {
        text += "[User Profile " + std::to_string(number) + "]\n";
        if (number == 1)
            text += "CurrentUserProfileName=\n\n";
        for (const char *key : {"ProfileName", "Callsign", "Operators", "Location", "Name",
                                "Address", "City", "Country", "Club", "Rig", "Ant", "Email"})
            text += std::string("UserProfile.") + key + "=\n";
        text += "\n";
    }
    return text;
}

std::string WithCrLf(std::string_view text) {
    std::string lines;
    for (const char c : text)
        lines.append(c == '\n' ? "\r\n" : std::string(1, c));
    return lines;
}

TEST_F(SettingsFile, OfFreshSettingsIsThisToTheLetter) {
    std::string windows;
    for (const char *name :
         {"LOGFORM", "VIEWMULT", "QSOSTATS", "VIEWMAC", "AUDIO", "ZTCTY", "VIEWZNCTY", "PARTIAL"})
        windows.append(name) += " CLOSED 0 0 0 0\n";
    const std::string expected =
        std::string(kFirstSections) + Models("Default") + Models("User") +
        std::string(kFileInformation) + Numbered("CW Macros", Repeated("[RADIO0][PLAY1]", 12)) +
        Numbered("CW Macros Display Forms", Repeated("$", 9)) +
        Numbered("Window Information", windows) + std::string(kExchanges) + EmptyProfiles();
    EXPECT_EQ(SettingsText(), WithCrLf(expected));
    Extensions.InFile = true;
    EXPECT_EQ(SettingsText(), WithCrLf(expected + std::string(kExtensions)));
}

TEST_F(SettingsFile, OnlySixFlagsHaveBlanksAndOnlyWhenFalse) {
    Settings.Radio1ComActivated = Settings.Radio[0].DTRHigh = Settings.Radio[1].RTSHigh = true;
    EXPECT_TRUE(Holds("Radio1ComActivated=True"));
    EXPECT_TRUE(Holds("Radio2ComActivated = False"));
    EXPECT_TRUE(Holds("Radio(1).DTRHigh=True"));
    EXPECT_TRUE(Holds("Radio(1).RTSHigh = False"));
    EXPECT_TRUE(Holds("Radio(2).DTRHigh = False"));
    EXPECT_TRUE(Holds("Radio(2).RTSHigh=True"));
    EXPECT_TRUE(Holds("WinkeyActivated=False"));
    const std::string text = SettingsText();
    EXPECT_EQ(text.find(" = True"), std::string::npos);
    int spaced = 0;
    for (auto at = text.find(" = "); at != std::string::npos; at = text.find(" = ", at + 1))
        ++spaced;
    EXPECT_EQ(spaced, 3);
}

TEST_F(SettingsFile, ValuesAreWrittenTrimmedOfLineEnds) {
    Settings.YourCall = "K1\r\nZZ\n";
    Settings.Macros[2][10] = "A\nB\r";
    Settings.MacroLabels[0][0] = "\n";
    EXPECT_TRUE(Holds("YourCall=K1ZZ"));
    EXPECT_TRUE(Holds("AB"));
    const std::string text = SettingsText();
    Read(text);
    EXPECT_EQ(Settings.Macros[2][10], "AB");
    EXPECT_EQ(Settings.MacroLabels[0][0], "$");
    EXPECT_EQ(SettingsText(), text);
}

// ---- what is written is what is read

class RandomSettings {
  public:
    explicit RandomSettings(unsigned seed) : Engine(seed) {}

    void FillAll() {
        for (const Section &section : SettingsSections()) {
            for (const auto &group : section.Groups)
                for (const KeyRow &row : group)
                    std::visit([this](auto target) { Fill(target); }, row.Target);
            for (std::size_t i = 0; i < section.Macros.size(); ++i)
                section.Macros[i] = i < 9 ? "[RADIO2][PLAY6]" + Text(20) : Text(20);
            for (std::string &label : section.Labels)
                label = "L" + Text(5);
            for (WindowInfo &window : section.Windows)
                window = {"W" + std::to_string(Below(1000)),
                          Below(2) == 0 ? "OPEN" : "CLOSED",
                          Any<i16>(),
                          Any<i16>(),
                          Any<i16>(),
                          Any<i16>()};
        }
        if (Below(2) == 0)
            Extensions = {}; // a file without the section
        else
            Extensions.InFile = true;
    }

  private:
    std::mt19937 Engine;

    int Below(int limit) { return std::uniform_int_distribution(0, limit - 1)(Engine); }
    template <typename Integer> Integer Any() {
        using Limits = std::numeric_limits<Integer>;
        return static_cast<Integer>(
            std::uniform_int_distribution<long>(Limits::min(), Limits::max())(Engine));
    }
    std::string Text(int longest) {
        static const std::vector<std::string> letters = {
            "A", "z", "9",  "=", "[",  "]",  "$",        "@",           " ",
            "#", ":", "\\", "/", "\"", "\t", "\xC3\xA9", "\xE2\x82\xAC"};
        std::string text;
        for (int i = Below(longest + 1); i > 0; --i)
            text += letters[static_cast<std::size_t>(Below(static_cast<int>(letters.size())))];
        return std::string(Trim(text));
    }
    double Number() {
        for (;;) {
            const std::uint64_t bits = std::uniform_int_distribution<std::uint64_t>()(Engine);
            const auto any = std::bit_cast<double>(bits);
            if (std::isfinite(any))
                return any;
        }
    }

    void Fill(bool *flag) { *flag = Below(2) == 0; }
    void Fill(SpacedFlag flag) { Fill(flag.Flag); }
    void Fill(i16 *number) { *number = Any<i16>(); }
    void Fill(Truncated number) { Fill(number.Number); }
    void Fill(i32 *number) { *number = Any<i32>(); }
    void Fill(double *number) { *number = Number(); }
    void Fill(Bounded bounded) {
        *bounded.Number = static_cast<i16>(
            std::uniform_int_distribution<int>(bounded.Lowest, bounded.Highest)(Engine));
    }
    void Fill(Limited limited) {
        *limited.Number = std::uniform_real_distribution(limited.Lowest, limited.Highest)(Engine);
    }
    void Fill(char *letter) { *letter = " NEO"[Below(4)]; }
    void Fill(std::string *text) { *text = Text(30); }
    void Fill(CutText text) { *text.Text = Text(static_cast<int>(text.Length)); }
    void Fill(DtrFunction *function) { *function = static_cast<DtrFunction>(Below(5)); }
    void Fill(CallExchMode *mode) { *mode = static_cast<CallExchMode>(Below(3)); }
};

TEST_F(SettingsFile, ReadingWhatWasWrittenGivesTheSameValuesAndBytes) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        RandomSettings(seed).FillAll();
        const std::string text = SettingsText();
        const SettingsRecord settings = Settings;
        const ExtensionsRecord extensions = Extensions;
        const ProfilesState profiles = Profiles;
        const std::string selection = Contest.SCPSelection;
        Read(text);
        ASSERT_EQ(SettingsText(), text) << "seed " << seed;
        ASSERT_TRUE(Settings == settings) << "seed " << seed;
        ASSERT_TRUE(Extensions == extensions) << "seed " << seed;
        ASSERT_TRUE(Profiles == profiles) << "seed " << seed;
        ASSERT_EQ(Contest.SCPSelection, selection);
    }
}

// The shipped file leaves the folder open, which the program fills in when it reads the file.
TEST_F(SettingsFile, OfAFirstInstallationIsWrittenAsItIs) {
    std::ifstream file(ZRT_SHIPPED_SETTINGS, std::ios::binary);
    std::ostringstream shipped;
    shipped << file.rdbuf();
    std::string bytes = shipped.str();
    ASSERT_GT(bytes.size(), 1000U);
    MakeFile(kSettingsFile, bytes);
    ForgetSettings();
    ASSERT_EQ(ReadSettings(), 0);
    EXPECT_EQ(BytesOf(kSettingsFile), bytes) << "its profiles have names";
    const std::string folder = "\r\nOpenFilePath=";
    if (const auto at = bytes.find(folder + "\r\n"); at != std::string::npos)
        bytes.insert(at + folder.size(), FirstFolder());
    WriteSettings(false);
    EXPECT_EQ(BytesOf(kSettingsFile), bytes);
}

TEST_F(SettingsFile, EveryKeyHasAValueOfItsOwn) {
    std::set<std::string> headers;
    for (const Section &section : SettingsSections()) {
        EXPECT_TRUE(headers.insert(section.Header).second) << section.Header;
        std::set<std::string> keys;
        for (const KeyRow &row :
             section.Groups.empty() ? std::vector<KeyRow>() : section.Groups.front())
            EXPECT_TRUE(keys.insert(row.Key).second) << row.Key;
    }
    EXPECT_EQ(headers.size(), 68U);
    EXPECT_EQ(SettingText("Radio(2).BaudRate"), "0");
    Settings.Radio[1].BaudRate = 4800;
    EXPECT_EQ(SettingText("Radio(2).BaudRate"), "4800");
    EXPECT_EQ(SettingText("Surprise"), std::nullopt);
}

struct Address {
    const void *Place;
    template <typename Value> Address(Value *value) : Place(value) {}
    Address(SpacedFlag flag) : Place(flag.Flag) {}
    Address(Truncated number) : Place(number.Number) {}
    Address(Limited number) : Place(number.Number) {}
    Address(Bounded number) : Place(number.Number) {}
    Address(CutText text) : Place(text.Text) {}
};

const void *PlaceOf(std::string_view key) {
    for (const Section &section : SettingsSections())
        for (const auto &group : section.Groups)
            for (const KeyRow &row : group)
                if (row.Key == key)
                    return std::visit([](auto target) { return Address(target).Place; },
                                      row.Target);
    return nullptr;
}

TEST_F(SettingsFile, EachKeyIsTheMemberOfItsName) {
#define MEMBER(name)                                                                               \
    { #name, &Settings.name }
#define EXTENSION(name)                                                                            \
    { #name, &Extensions.name }
    const std::pair<std::string, Address> members[] = {
        MEMBER(YourCall),
        MEMBER(StationLatitude),
        MEMBER(StationLongitude),
        MEMBER(BackUpDrive),
        MEMBER(CWActivated),
        MEMBER(CWPTTActivated),
        MEMBER(SSBPTTActivated),
        MEMBER(PTTByRigControl),
        MEMBER(CWPTTByWinkey),
        MEMBER(F9Activated),
        MEMBER(TypingEnabled),
        MEMBER(DupeSendMsgFlag),
        MEMBER(CWComport),
        MEMBER(PTTComPort),
        MEMBER(DVKMicSwitchComPort),
        MEMBER(F9Comport),
        MEMBER(DVKMicSwitchActivated),
        MEMBER(CWSpeakerEnabled),
        MEMBER(UsePCSpeaker),
        MEMBER(UseSoundcardSpeaker),
        MEMBER(CWCallCorrectEnabled),
        MEMBER(CWCorrectWholeCall),
        MEMBER(Radio1Delay),
        MEMBER(Radio2Delay),
        MEMBER(RepeatIntervalCW),
        MEMBER(RepeatIntervalSSB),
        MEMBER(DualCQsRepeatInterval),
        MEMBER(DualCQsPlayNumber),
        MEMBER(CWSpeedIncrement),
        MEMBER(Weight),
        MEMBER(TimeCorrection),
        MEMBER(IsGMTFlag),
        MEMBER(SendF1Enabled),
        MEMBER(LogandSendF5Enabled),
        MEMBER(LogandSendF6Enabled),
        MEMBER(Key1IsMapped),
        MEMBER(Key2IsMapped),
        MEMBER(Key1Mapping),
        MEMBER(Key2Mapping),
        MEMBER(K3MsgLengthAdjustment),
        MEMBER(SCPEnabled),
        MEMBER(WinkeyActivated),
        MEMBER(WinkeyComPort),
        MEMBER(WinkeySidetoneFrequency),
        MEMBER(WinkeySidetoneOnOff),
        MEMBER(WinkeyPotSpeedMin),
        MEMBER(WinkeyPotSpeedMax),
        MEMBER(WinkeyLeadTime),
        MEMBER(WinkeyTailTime),
        MEMBER(WinkeyWeighting),
        MEMBER(WinkeyKeyComp),
        MEMBER(WinkeyDashDotRatio),
        MEMBER(WinkeyKeyMode),
        MEMBER(AudioPath),
        MEMBER(DVKSendMessageEnabled),
        MEMBER(DVKSendCallEnabled),
        MEMBER(DVKSendExchEnabled),
        MEMBER(DVKNormalModeEnabled),
        MEMBER(DVKFastModeEnabled),
        MEMBER(DVKMixedModeEnabled),
        MEMBER(DVKPrevWkdEnabled),
        MEMBER(DVKCallMatchEnabled),
        MEMBER(DVKCallExchMode),
        MEMBER(DVKOverlapMsec),
        MEMBER(Radio1ComActivated),
        MEMBER(Radio2ComActivated),
        MEMBER(Radio1ComPollInterval),
        MEMBER(Radio2ComPollInterval),
        MEMBER(RadioSwapDelayMsec),
        MEMBER(Radio1ComPort),
        MEMBER(Radio2ComPort),
        MEMBER(ExchangeARRLMult),
        MEMBER(ExchangeAAMult),
        MEMBER(ExchangeZRTMult),
        MEMBER(ExchangePAQPMult),
        MEMBER(ExchangeNEQPMult),
        MEMBER(ExchangeCQWWMult),
        MEMBER(ExchangeSSPrec),
        MEMBER(ExchangeSSCall),
        MEMBER(ExchangeSSCheck),
        MEMBER(ExchangeSSSection),
        MEMBER(ExchangeSprintName),
        MEMBER(ExchangeSprintMult),
        MEMBER(ExchangeNAQPName),
        MEMBER(ExchangeNAQPMult),
        MEMBER(ExchangeGeneric),
        MEMBER(ExchangeCWOName),
        MEMBER(OpenFilePath),
        MEMBER(TimingMethod),
        EXTENSION(StoreDecade),
        EXTENSION(UtcFromSystem),
        EXTENSION(ProtectOldLogs),
        EXTENSION(KeepKilledLog),
        EXTENSION(ScpLimit),
        EXTENSION(ExtraBaudRates),
        EXTENSION(FillCursorAtStart),
        EXTENSION(PrefillCountsAsEmpty),
        EXTENSION(InStateStateNames),
        EXTENSION(LogFolder),
        EXTENSION(TypedFrequencyNoRadio),
        EXTENSION(ModeCommands),
        EXTENSION(InAreaContests),
        {"UseDTRtoKey(1)", &Settings.UseDTRtoKey[0]},
        {"UseDTRtoKey(2)", &Settings.UseDTRtoKey[1]},
        {"RecentFile1", &Settings.RecentFile[0]},
        {"RecentFile4", &Settings.RecentFile[3]},
        {"Radio(1).Name", &Settings.Radio[0].Name},
        {"Radio(1).Address", &Settings.Radio[0].Address},
        {"Radio(1).BaudRate", &Settings.Radio[0].BaudRate},
        {"Radio(1).WordLen", &Settings.Radio[0].WordLen},
        {"Radio(1).Parity", &Settings.Radio[0].Parity},
        {"Radio(1).StopBits", &Settings.Radio[0].StopBits},
        {"Radio(1).DTRHigh", &Settings.Radio[0].DTRHigh},
        {"Radio(1).RTSHigh", &Settings.Radio[0].RTSHigh},
        {"Radio(2).RTSHigh", &Settings.Radio[1].RTSHigh},
        {"RadioDefaultSettings.Name", &Settings.RadioDefaultSettings[0].Name},
        {"RadioUserSettings.Name", &Settings.RadioUserSettings[0].Name},
        {"CurrentUserProfileName", &Profiles.CurrentUserProfileName},
        {"UserProfile.ProfileName", &Profiles.Table[0].ProfileName},
        {"UserProfile.Callsign", &Profiles.Table[0].Callsign},
        {"UserProfile.Operators", &Profiles.Table[0].Operators},
        {"UserProfile.Location", &Profiles.Table[0].Location},
        {"UserProfile.Name", &Profiles.Table[0].Name},
        {"UserProfile.Address", &Profiles.Table[0].Address},
        {"UserProfile.City", &Profiles.Table[0].City},
        {"UserProfile.Country", &Profiles.Table[0].Country},
        {"UserProfile.Club", &Profiles.Table[0].Club},
        {"UserProfile.Rig", &Profiles.Table[0].Rig},
        {"UserProfile.Ant", &Profiles.Table[0].Ant},
        {"UserProfile.Email", &Profiles.Table[0].Email},
    };
#undef MEMBER
#undef EXTENSION
    for (const auto &[key, member] : members)
        EXPECT_EQ(PlaceOf(key), member.Place) << key;
    EXPECT_EQ(PlaceOf("SCPSelection"), &Contest.SCPSelection);
}

TEST_F(SettingsFile, NoTwoPlacesInTheFileAreOneValue) {
    std::set<const void *> places;
    for (const Section &section : SettingsSections()) {
        for (const auto &group : section.Groups)
            for (const KeyRow &row : group)
                EXPECT_TRUE(
                    std::visit([&](auto target) { return places.insert(Address(target).Place); },
                               row.Target)
                        .second)
                    << section.Header << " " << row.Key;
        for (const std::string &row : section.Macros)
            EXPECT_TRUE(places.insert(&row).second) << section.Header;
        for (const std::string &row : section.Labels)
            EXPECT_TRUE(places.insert(&row).second) << section.Header;
        for (const WindowInfo &row : section.Windows)
            EXPECT_TRUE(places.insert(&row).second) << section.Header;
    }
}

} // namespace
} // namespace zrt
