#include "session/settings.h"

#include "platform/files.h"

#include <array>
#include <variant>

namespace zrt {

SettingsRecord Settings;
ExtensionsRecord Extensions;

namespace {

// Where the value of a key goes.
using Target = std::variant<bool *, i16 *, std::string *>;

struct KeyRow {
    std::string_view Section;
    std::string_view Key;
    Target Value;
};

constexpr std::string_view kPreferences = "[Preferences]";
constexpr std::string_view kExtensions = "[Extensions]";

const std::array kKeys = {
    KeyRow{kPreferences, "RepeatIntervalCW", &Settings.RepeatIntervalCW},
    KeyRow{kPreferences, "RepeatIntervalSSB", &Settings.RepeatIntervalSSB},
    KeyRow{kPreferences, "TimingMethod", &Settings.TimingMethod},
    KeyRow{kPreferences, "TimeCorrection", &Settings.TimeCorrection},
    KeyRow{kPreferences, "IsGMTFlag", &Settings.IsGMTFlag},
    KeyRow{kPreferences, "SendF1Enabled", &Settings.SendF1Enabled},
    KeyRow{kPreferences, "LogandSendF5Enabled", &Settings.LogandSendF5Enabled},
    KeyRow{kPreferences, "LogandSendF6Enabled", &Settings.LogandSendF6Enabled},
    KeyRow{kExtensions, "StoreDecade", &Extensions.StoreDecade},
    KeyRow{kExtensions, "UtcFromSystem", &Extensions.UtcFromSystem},
    KeyRow{kExtensions, "ProtectOldLogs", &Extensions.ProtectOldLogs},
};

void Take(const Target &target, std::string_view value) {
    if (auto *const *flag = std::get_if<bool *>(&target))
        **flag = value == "True"; // any other text is false
    else if (auto *const *number = std::get_if<i16 *>(&target))
        **number = ValueI16(value);
    else
        *std::get<std::string *>(target) = value;
}

void TakeKey(std::string_view section, std::string_view key, std::string_view value) {
    for (const KeyRow &row : kKeys)
        if (row.Section == section && row.Key == key)
            Take(row.Value, value);
}

// The next line of the text, without its line end.
std::string_view NextLine(std::string_view &rest) {
    const auto end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

} // namespace

int ReadSettings(const std::string &path) {
    std::string text;
    if (const int error = ReadTextFile(path, text))
        return error;
    std::string section;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::string_view line = NextLine(rest);
        const std::string_view trimmed = Trim(line);
        if (trimmed.empty())
            continue;
        if (trimmed.front() == '[' && trimmed.back() == ']') {
            section = trimmed;
            continue;
        }
        const auto equals = line.find('=');
        if (equals != std::string_view::npos)
            TakeKey(section, Trim(line.substr(0, equals)), Trim(line.substr(equals + 1)));
    }
    return 0;
}

void CheckTimingMethod() {
    for (const char *known : {"QueryPerf", "Math", "Winmm", "VBTimer"})
        if (Settings.TimingMethod == known)
            return;
    Settings.TimingMethod = "Winmm";
}

} // namespace zrt
