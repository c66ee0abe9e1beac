#include "session/settings_keys.h"

#include "session/contests.h"
#include "session/settings.h"
#include "session/user_profiles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace zrt {

namespace {

using KeyTable = std::vector<KeyRow>;

KeyTable PreferenceKeys() {
    SettingsRecord &s = Settings;
    return {
        {"YourCall", &s.YourCall},
        {"StationLatitude", &s.StationLatitude},
        {"StationLongitude", &s.StationLongitude},
        {"BackUpDrive", &s.BackUpDrive},
        {"CWActivated", &s.CWActivated},
        {"CWPTTActivated", &s.CWPTTActivated},
        {"SSBPTTActivated", &s.SSBPTTActivated},
        {"PTTByRigControl", &s.PTTByRigControl},
        {"CWPTTByWinkey", &s.CWPTTByWinkey},
        {"F9Activated", &s.F9Activated},
        {"TypingEnabled", &s.TypingEnabled},
        {"DupeSendMsgFlag", &s.DupeSendMsgFlag},
        {"CWComport", &s.CWComport},
        {"PTTComPort", &s.PTTComPort},
        {"DVKMicSwitchComPort", &s.DVKMicSwitchComPort},
        {"F9Comport", &s.F9Comport},
        {"DVKMicSwitchActivated", &s.DVKMicSwitchActivated},
        {"CWSpeakerEnabled", &s.CWSpeakerEnabled},
        {"UsePCSpeaker", &s.UsePCSpeaker},
        {"UseSoundcardSpeaker", &s.UseSoundcardSpeaker},
        {"UseDTRtoKey(1)", &s.UseDTRtoKey[0]},
        {"UseDTRtoKey(2)", &s.UseDTRtoKey[1]},
        {"CWCallCorrectEnabled", &s.CWCallCorrectEnabled},
        {"CWCorrectWholeCall", &s.CWCorrectWholeCall},
        {"Radio1Delay", Truncated{&s.Radio1Delay}},
        {"Radio2Delay", Truncated{&s.Radio2Delay}},
        {"RepeatIntervalCW", &s.RepeatIntervalCW},
        {"RepeatIntervalSSB", &s.RepeatIntervalSSB},
        {"DualCQsRepeatInterval", &s.DualCQsRepeatInterval},
        {"DualCQsPlayNumber", &s.DualCQsPlayNumber},
        {"CWSpeedIncrement", &s.CWSpeedIncrement},
        {"Weight", Limited{&s.Weight, 2.5, 4.5, 3.0}},
        {"TimingMethod", &s.TimingMethod},
        {"TimeCorrection", &s.TimeCorrection},
        {"IsGMTFlag", &s.IsGMTFlag},
        {"SendF1Enabled", &s.SendF1Enabled},
        {"LogandSendF5Enabled", &s.LogandSendF5Enabled},
        {"LogandSendF6Enabled", &s.LogandSendF6Enabled},
        {"Key1IsMapped", &s.Key1IsMapped},
        {"Key2IsMapped", &s.Key2IsMapped},
        {"Key1Mapping", &s.Key1Mapping},
        {"Key2Mapping", &s.Key2Mapping},
        {"K3MsgLengthAdjustment", Bounded{&s.K3MsgLengthAdjustment, 0, 1000}},
        {"SCPEnabled", &s.SCPEnabled},
        {"SCPSelection", &Contest.SCPSelection}, // the value in use is the one that is kept
    };
}

KeyTable WinkeyKeys() {
    SettingsRecord &s = Settings;
    return {
        {"WinkeyActivated", &s.WinkeyActivated},
        {"WinkeyComPort", &s.WinkeyComPort},
        {"WinkeySidetoneFrequency", &s.WinkeySidetoneFrequency},
        {"WinkeySidetoneOnOff", &s.WinkeySidetoneOnOff},
        {"WinkeyPotSpeedMin", &s.WinkeyPotSpeedMin},
        {"WinkeyPotSpeedMax", &s.WinkeyPotSpeedMax},
        {"WinkeyLeadTime", &s.WinkeyLeadTime},
        {"WinkeyTailTime", &s.WinkeyTailTime},
        {"WinkeyWeighting", &s.WinkeyWeighting},
        {"WinkeyKeyComp", &s.WinkeyKeyComp},
        {"WinkeyDashDotRatio", &s.WinkeyDashDotRatio},
        {"WinkeyKeyMode", &s.WinkeyKeyMode},
    };
}

KeyTable DvkKeys() {
    SettingsRecord &s = Settings;
    return {
        {"AudioPath", &s.AudioPath},
        {"DVKSendMessageEnabled", &s.DVKSendMessageEnabled},
        {"DVKSendCallEnabled", &s.DVKSendCallEnabled},
        {"DVKSendExchEnabled", &s.DVKSendExchEnabled},
        {"DVKNormalModeEnabled", &s.DVKNormalModeEnabled},
        {"DVKFastModeEnabled", &s.DVKFastModeEnabled},
        {"DVKMixedModeEnabled", &s.DVKMixedModeEnabled},
        {"DVKPrevWkdEnabled", &s.DVKPrevWkdEnabled},
        {"DVKCallMatchEnabled", &s.DVKCallMatchEnabled},
        {"DVKCallExchMode", &s.DVKCallExchMode},
        {"DVKOverlapMsec", &s.DVKOverlapMsec},
    };
}

KeyTable RadioKeys(const std::string &name, RadioSettings &radio, bool spaced) {
    const auto flag = [spaced](bool &value) {
        return spaced ? KeyTarget(SpacedFlag{&value}) : KeyTarget(&value);
    };
    return {
        {name + ".Name", &radio.Name},
        {name + ".Address", &radio.Address},
        {name + ".BaudRate", &radio.BaudRate},
        {name + ".WordLen", &radio.WordLen},
        {name + ".Parity", &radio.Parity},
        {name + ".StopBits", &radio.StopBits},
        {name + ".DTRHigh", flag(radio.DTRHigh)},
        {name + ".RTSHigh", flag(radio.RTSHigh), false, true},
    };
}

KeyTable RadioInformationKeys() {
    SettingsRecord &s = Settings;
    KeyTable keys = {
        {"Radio1ComActivated", SpacedFlag{&s.Radio1ComActivated}},
        {"Radio2ComActivated", SpacedFlag{&s.Radio2ComActivated}},
        {"Radio1ComPollInterval", &s.Radio1ComPollInterval},
        {"Radio2ComPollInterval", &s.Radio2ComPollInterval},
        {"RadioSwapDelayMsec", &s.RadioSwapDelayMsec},
        {"Radio1ComPort", &s.Radio1ComPort},
        {"Radio2ComPort", &s.Radio2ComPort},
    };
    for (const KeyTable &radio :
         {RadioKeys("Radio(1)", s.Radio[0], true), RadioKeys("Radio(2)", s.Radio[1], true)})
        keys.insert(keys.end(), radio.begin(), radio.end());
    return keys;
}

Section RadioModels(const char *header, const char *name,
                    std::array<RadioSettings, kRadioModels> &models) {
    Section section{header};
    for (RadioSettings &model : models)
        section.Groups.push_back(RadioKeys(name, model, false));
    return section;
}

KeyTable FileKeys() {
    KeyTable keys = {{"OpenFilePath", &Settings.OpenFilePath}};
    for (std::size_t i = 0; i < Settings.RecentFile.size(); ++i)
        keys.push_back({"RecentFile" + std::to_string(i + 1), &Settings.RecentFile[i]});
    return keys;
}

std::vector<Section> ExchangeSections() {
    SettingsRecord &s = Settings;
    return {
        {"[User Exchange - ARRL]", {{{"ExchangeARRLMult", &s.ExchangeARRLMult}}}},
        {"[User Exchange - AA]", {{{"ExchangeAAMult", &s.ExchangeAAMult}}}},
        {"[User Exchange - ZRT]", {{{"ExchangeZRTMult", &s.ExchangeZRTMult}}}},
        {"[User Exchange - PAQP]", {{{"ExchangePAQPMult", &s.ExchangePAQPMult}}}},
        {"[User Exchange - NEQP]", {{{"ExchangeNEQPMult", &s.ExchangeNEQPMult}}}},
        {"[User Exchange - CQWW]", {{{"ExchangeCQWWMult", &s.ExchangeCQWWMult}}}},
        {"[User Exchange - SS]",
         {{{"ExchangeSSPrec", &s.ExchangeSSPrec},
           {"ExchangeSSCall", &s.ExchangeSSCall},
           {"ExchangeSSCheck", &s.ExchangeSSCheck},
           {"ExchangeSSSection", &s.ExchangeSSSection}}}},
        {"[User Exchange - SPRINT]",
         {{{"ExchangeSprintName", &s.ExchangeSprintName},
           {"ExchangeSprintMult", &s.ExchangeSprintMult}}}},
        {"[User Exchange - NAQP]",
         {{{"ExchangeNAQPName", &s.ExchangeNAQPName}, {"ExchangeNAQPMult", &s.ExchangeNAQPMult}}}},
        {"[User Exchange - GENERIC]", {{{"ExchangeGeneric", &s.ExchangeGeneric}}}},
        {"[User Exchange - CWO]", {{{"ExchangeCWOName", &s.ExchangeCWOName}}}},
    };
}

KeyTable ProfileKeys(std::size_t place) {
    KeyTable keys;
    if (place == 0)
        keys.push_back(
            {"CurrentUserProfileName", CutText{&Profiles.CurrentUserProfileName, 20}, true});
    for (const UserProfileField &field : kUserProfileFields)
        keys.push_back({std::string("UserProfile.") + field.Key,
                        CutText{&(Profiles.Table[place].*field.Text), field.Length}});
    return keys;
}

KeyTable ExtensionKeys() {
    ExtensionsRecord &e = Extensions;
    return {
        {"StoreDecade", &e.StoreDecade},
        {"UtcFromSystem", &e.UtcFromSystem},
        {"ProtectOldLogs", &e.ProtectOldLogs},
        {"KeepKilledLog", &e.KeepKilledLog},
        {"ScpLimit", &e.ScpLimit},
        {"ExtraBaudRates", &e.ExtraBaudRates},
        {"FillCursorAtStart", &e.FillCursorAtStart},
        {"PrefillCountsAsEmpty", &e.PrefillCountsAsEmpty},
        {"InStateStateNames", &e.InStateStateNames},
        {"LogFolder", &e.LogFolder},
        {"TypedFrequencyNoRadio", &e.TypedFrequencyNoRadio},
        {"ModeCommands", &e.ModeCommands},
        {"InAreaContests", &e.InAreaContests},
    };
}

Section Numbered(const char *name, std::size_t number) {
    return {std::string("[") + name + " - " + PadLeft(std::to_string(number), 2, '0') + "]"};
}

Section IgnoredSection(std::string header) {
    Section section{std::move(header)};
    section.Ignored = true;
    return section;
}

std::vector<Section> BuildSections() {
    std::vector<Section> sections = {
        {"[Preferences]", {PreferenceKeys()}},
        {"[Winkey Settings]", {WinkeyKeys()}},
        {"[DVK Settings]", {DvkKeys()}},
        {"[Radio Information]", {RadioInformationKeys()}},
        RadioModels("[Radio Default Settings]", "RadioDefaultSettings",
                    Settings.RadioDefaultSettings),
        RadioModels("[Radio User Settings]", "RadioUserSettings", Settings.RadioUserSettings),
        {"[File Information]", {FileKeys()}},
    };
    for (std::size_t i = 0; i < kContests; ++i)
        sections.emplace_back(Numbered("CW Macros", i + 1)).Macros = Settings.Macros[i];
    for (std::size_t i = 0; i < kContests; ++i)
        sections.emplace_back(Numbered("CW Macros Display Forms", i + 1)).Labels =
            Settings.MacroLabels[i];
    for (std::size_t i = 0; i < kContests; ++i)
        sections.emplace_back(Numbered("Window Information", i + 1)).Windows = Settings.Windows[i];
    for (Section &section : ExchangeSections())
        sections.push_back(std::move(section));
    for (std::size_t i = 0; i < Profiles.Table.size(); ++i)
        sections.push_back({"[User Profile " + std::to_string(i + 1) + "]", {ProfileKeys(i)}});
    sections.push_back({"[Extensions]", {ExtensionKeys()}});
    sections.back().InFile = &Extensions.InFile;
    for (const char *header :
         {"[User Profile 5]", "[User Profile 6]", "[User Profile 7]", "[User Profile 8]",
          "[Window Coordinates - ZRT, SS, WPX]", "[User Information]"})
        sections.push_back(IgnoredSection(header));
    return sections;
}

// ---- values and their texts

constexpr std::array kDtrNames = {"None", "CW", "PTT", "F9", "DVKMicSwitch"};
constexpr std::array kCallExchNames = {"AlwaysFast", "AlwaysNormal", "MixedMode"};

// The place of a name; `otherwise` for a text that is none of them.
template <std::size_t N>
i16 PlaceOf(const std::array<const char *, N> &names, std::string_view text, i16 otherwise) {
    const auto found = std::find(names.begin(), names.end(), text);
    return found == names.end() ? otherwise : static_cast<i16>(found - names.begin());
}

template <std::size_t N> std::string NameAt(const std::array<const char *, N> &names, auto value) {
    const auto place = static_cast<std::size_t>(value);
    return place < N ? names[place] : names[0];
}

template <typename Integer> Integer Clamped(double value) {
    using Limits = std::numeric_limits<Integer>;
    return static_cast<Integer>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

// The number that a text begins with. Unlike Value() it gives back each number that NumberText
// wrote to the last bit.
double NumberOf(std::string_view text) {
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    const std::size_t first = !text.empty() && text.front() == '-' ? 1 : 0;
    if (first >= text.size() || (text[first] != '.' && (text[first] < '0' || text[first] > '9')))
        return 0; // "inf" and the like are no numbers here
    double value = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return result.ec == std::errc() ? value : 0;
}

std::string NumberText(double number) {
    if (!std::isfinite(number))
        return "0";
    std::array<char, 512> text; // the longest is 5e-324 with all its zeros
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    return {text.data(), end.ptr};
}

struct Taker {
    std::string_view Text;

    void operator()(bool *flag) const { *flag = Text == "True"; } // any other text is false
    void operator()(SpacedFlag flag) const { operator()(flag.Flag); }
    void operator()(i16 *number) const { *number = ValueI16(Text); }
    void operator()(Truncated number) const { *number.Number = Clamped<i16>(Value(Text)); }
    void operator()(i32 *number) const { *number = Clamped<i32>(std::nearbyint(Value(Text))); }
    void operator()(double *number) const { *number = NumberOf(Text); }
    void operator()(const Limited &limited) const {
        const double number = NumberOf(Text);
        const bool within = number >= limited.Lowest && number <= limited.Highest;
        *limited.Number = within ? number : limited.Default;
    }
    void operator()(Bounded number) const {
        *number.Number = std::clamp(ValueI16(Text), number.Lowest, number.Highest);
    }
    void operator()(char *letter) const {
        const bool plain = !Text.empty() && Text.front() > ' ' && Text.front() < '\x7F';
        *letter = plain ? Text.front() : ' ';
    }
    void operator()(std::string *text) const { *text = Text; }
    void operator()(CutText text) const { *text.Text = Trim(CutAt(Text, text.Length)); }
    void operator()(DtrFunction *function) const {
        *function = static_cast<DtrFunction>(PlaceOf(kDtrNames, Text, 0));
    }
    void operator()(CallExchMode *mode) const {
        *mode = static_cast<CallExchMode>(PlaceOf(kCallExchNames, Text, 1));
    }
};

struct Teller {
    std::string operator()(const bool *flag) const { return *flag ? "True" : "False"; }
    std::string operator()(SpacedFlag flag) const { return operator()(flag.Flag); }
    std::string operator()(const i16 *number) const { return std::to_string(*number); }
    std::string operator()(Truncated number) const { return std::to_string(*number.Number); }
    std::string operator()(const i32 *number) const { return std::to_string(*number); }
    std::string operator()(const double *number) const { return NumberText(*number); }
    std::string operator()(const Limited &limited) const { return NumberText(*limited.Number); }
    std::string operator()(Bounded number) const { return std::to_string(*number.Number); }
    std::string operator()(const char *letter) const {
        return *letter == ' ' ? std::string() : std::string(1, *letter);
    }
    std::string operator()(const std::string *text) const { return *text; }
    std::string operator()(CutText text) const {
        return std::string(Trim(CutAt(*text.Text, text.Length)));
    }
    std::string operator()(const DtrFunction *function) const {
        return NameAt(kDtrNames, *function);
    }
    std::string operator()(const CallExchMode *mode) const { return NameAt(kCallExchNames, *mode); }
};

} // namespace

const std::vector<Section> &SettingsSections() {
    static const std::vector<Section> sections = BuildSections();
    return sections;
}

void TakeValue(const KeyTarget &target, std::string_view text) {
    std::visit(Taker{text}, target);
}

std::string ValueText(const KeyTarget &target) {
    return std::visit(Teller{}, target);
}

std::optional<std::string> SettingText(std::string_view key) {
    for (const Section &section : SettingsSections())
        for (const KeyTable &group : section.Groups)
            for (const KeyRow &row : group)
                if (row.Key == key)
                    return ValueText(row.Target);
    return {};
}

} // namespace zrt
