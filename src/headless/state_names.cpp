#include "headless/state_names.h"

#include "entry/dupes.h"
#include "entry/keyboard.h"
#include "entry/log_form.h"
#include "entry/station_hooks.h"
#include "entry/statistics.h"
#include "headless/devices.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/reference_data.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "session/settings_keys.h"
#include "session/user_profiles.h"

#include <charconv>
#include <cstdio>
#include <map>

namespace zrt {

namespace {

std::string AsText(bool flag) {
    return flag ? "True" : "False";
}

std::string AsText(i16 number) {
    return std::to_string(number);
}

std::string AsText(i32 number) {
    return std::to_string(number);
}

std::string AsText(std::size_t number) {
    return std::to_string(number);
}

std::string AsText(float number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.7g", static_cast<double>(number));
    return text;
}

std::string AsText(const std::string &text) {
    return text;
}

template <std::size_t N> std::string AsText(const FixedText<N> &text) {
    return FromLatin1(text.Trimmed());
}

using Scalar = std::string (*)();

const std::map<std::string, Scalar, std::less<>> kScalars = {
    {"NextEntry", [] { return AsText(Log.NextEntry); }},
    {"CurrentFormat", [] { return AsText(Log.CurrentFormat); }},
    {"LogFileName", [] { return AsText(Log.LogFileName); }},
    {"LogState", [] { return AsText(Log.LogState); }},
    {"ContestTag", [] { return AsText(Log.KeptHeader.ContestTag); }},
    {"QthOption", [] { return AsText(Log.KeptHeader.QthOption); }},
    {"ChooserCancelled", [] { return AsText(Session.ChooserCancelled); }},
    {"ReplacingLog", [] { return AsText(Session.ReplacingLog); }},
    {"NewLogRequested", [] { return AsText(Session.NewLogRequested); }},
    {"OpenLogRequested", [] { return AsText(Session.OpenLogRequested); }},
    {"RescanInPlace", [] { return AsText(Session.RescanInPlace); }},
    {"CWTimingReady", [] { return AsText(Session.CWTimingReady); }},
    {"ContestId", [] { return AsText(Contest.ContestId); }},
    {"ModeCW", [] { return AsText(Contest.ModeCW); }},
    {"ModePhone", [] { return AsText(Contest.ModePhone); }},
    {"StationInState", [] { return AsText(Contest.StationInState); }},
    {"StationUSVE", [] { return AsText(Contest.StationUSVE); }},
    {"QthUSA", [] { return AsText(Contest.QthUSA); }},
    {"QthVE", [] { return AsText(Contest.QthVE); }},
    {"QthContinent", [] { return AsText(Contest.QthContinent); }},
    {"CWOSession", [] { return AsText(Contest.CWOSession); }},
    {"SsSectionYear", [] { return AsText(Contest.SsSectionYear); }},
    {"OffTimeGap", [] { return AsText(Contest.OffTimeGap); }},
    {"SCPSelection", [] { return AsText(Contest.SCPSelection); }},
    {"CurrentBand", [] { return AsText(CurrentBand()); }},
    {"BandIndex", [] { return AsText(Radios.BandIndex); }},
    {"LogRadio", [] { return AsText(Radios.LogRadio); }},
    {"TXRadio", [] { return AsText(Radios.TXRadio); }},
    {"Radio1BandMode", [] { return AsText(Radios.RadioBandMode[0]); }},
    {"Radio2BandMode", [] { return AsText(Radios.RadioBandMode[1]); }},
    {"NewMultFlag", [] { return AsText(Entry.NewMultFlag); }},
    {"NewMultRow", [] { return AsText(Entry.NewMultRow); }},
    {"ParseError", [] { return AsText(Entry.ParseError); }},
    {"DupeFlag", [] { return AsText(Entry.DupeFlag); }},
    {"SendAfterLog", [] { return AsText(Entry.SendAfterLog); }},
    {"CountyLineFlag", [] { return AsText(Entry.CountyLineFlag); }},
    {"LastSendHadCall", [] { return AsText(Entry.LastSendHadCall); }},
    {"TuEvery", [] { return AsText(Entry.TuEvery); }},
    {"TuCount", [] { return AsText(Entry.TuCount); }},
    {"RITClearOnTU", [] { return AsText(Keyboard.RITClearOnTU); }},
    {"QuickMemPos", [] { return AsText(Keyboard.QuickMemPos); }},
    {"RequestCount", [] { return AsText(Requests.Made.size()); }},
    {"LastRequest",
     [] { return AsText(Requests.Made.empty() ? std::string() : Requests.Made.back()); }},
    {"SavedCall", [] { return AsText(Entry.SavedCall); }},
    {"CurrentCallCount", [] { return AsText(Dupes.CurrentCalls.size()); }},
    {"PortableCount", [] { return AsText(Dupes.PortableTable.size()); }},
    {"TotalPoints", [] { return AsText(Statistics.TotalPoints); }},
    {"TotalMults", [] { return AsText(Statistics.TotalMults); }},
    {"Score", [] { return AsText(Statistics.Score); }},
    {"CwCount", [] { return AsText(Statistics.CwCount); }},
    {"SsbCount", [] { return AsText(Statistics.SsbCount); }},
    {"CwMinutes", [] { return AsText(Statistics.CwMinutes); }},
    {"SsbMinutes", [] { return AsText(Statistics.SsbMinutes); }},
    {"DayCount", [] { return AsText(Statistics.DayCount); }},
    {"OnTimeMinutes", [] { return AsText(Statistics.OnTimeMinutes); }},
    {"OnBandMinutes", [] { return AsText(Statistics.OnBandMinutes); }},
    {"CountryCount", [] { return AsText(Reference.CountryCount); }},
    {"PrefixCount", [] { return AsText(Reference.PrefixCount); }},
    {"SCPCount", [] { return AsText(Reference.SCPCount); }},
    {"SCPLoaded", [] { return AsText(Reference.SCPLoaded); }},
    {"HelpPage", [] { return NameOf(Devices.HelpPage); }}, // opened last, without its folder
    {"CallMatchCount", [] { return AsText(Reference.CallMatchCount); }},
};

struct Array {
    std::string (*Element)(std::size_t index);
    std::size_t Lowest, Highest;
};

const std::map<std::string, Array, std::less<>> kArrays = {
    {"ActiveBands", {[](std::size_t i) { return AsText(Contest.ActiveBands[i - 1]); }, 1, 12}},
    {"QsosPerBand",
     {[](std::size_t i) { return AsText(Statistics.QsosPerBand[i]); }, 1, kBandCodes}},
    {"MultsPerBand",
     {[](std::size_t i) { return AsText(Statistics.MultsPerBand[i]); }, 1, kBandCodes}},
    {"PointsPerBand",
     {[](std::size_t i) { return AsText(Statistics.PointsPerBand[i]); }, 1, kBandCodes}},
    {"PointsAllPerBand",
     {[](std::size_t i) { return AsText(Statistics.PointsAllPerBand[i]); }, 1, kBandCodes}},
    {"PointsPerQso",
     {[](std::size_t i) { return AsText(Statistics.PointsPerQso[i]); }, 1, kBandCodes}},
    {"MinutesPerBand",
     {[](std::size_t i) { return AsText(Statistics.MinutesPerBand[i]); }, 1, kBandCodes}},
    {"MinuteIndex",
     {[](std::size_t i) { return AsText(Statistics.MinuteIndex[i]); }, 1, kMostEntries}},
    {"RecentFile", {[](std::size_t i) { return AsText(Settings.RecentFile[i - 1]); }, 1, 4}},
    {"QuickMem", {[](std::size_t i) { return AsText(Keyboard.QuickMem[i - 1]); }, 1, 5}},
    {"ProfileName",
     {[](std::size_t i) { return AsText(Profiles.Table[i - 1].ProfileName); }, 1, 4}},
    {"CallHash", {[](std::size_t i) { return AsText(Dupes.CallHash[i]); }, 1, kMostEntries}},
    {"CallText", {[](std::size_t i) { return AsText(Dupes.CallText[i]); }, 1, kMostEntries}},
};

std::optional<std::string> ElementValue(std::string_view name) {
    const auto open = name.find('(');
    if (open == std::string_view::npos || name.back() != ')')
        return {};
    const auto array = kArrays.find(name.substr(0, open));
    std::size_t index = 0;
    const char *end = name.data() + name.size() - 1;
    const auto parsed = std::from_chars(name.data() + open + 1, end, index);
    if (array == kArrays.end() || parsed.ptr != end || index < array->second.Lowest ||
        index > array->second.Highest)
        return {};
    return array->second.Element(index);
}

} // namespace

std::optional<std::string> StateValue(const std::string &name) {
    const auto scalar = kScalars.find(name);
    if (scalar != kScalars.end())
        return scalar->second();
    const auto setting = SettingText(name); // a key of the settings file
    return setting ? setting : ElementValue(name);
}

} // namespace zrt
