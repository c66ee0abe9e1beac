// The sections of the settings file and the keys and rows in them, each with the place of its
// value: the one list that reading, writing and asking for a value by its name go by.
#pragma once

#include "session/settings_parts.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zrt {

// Text of at most Length characters; the rest is cut on reading.
struct CutText {
    std::string *Text;
    std::size_t Length;
};
struct Truncated {
    i16 *Number; // the fraction is cut off, not rounded
};
// A number outside of its limits reads as the default.
struct Limited {
    double *Number;
    double Lowest, Highest, Default;
};
// A number outside of its limits reads as the nearer of them.
struct Bounded {
    i16 *Number;
    i16 Lowest, Highest;
};
// Written "Key = False" with blanks when false, "Key=True" when true: so the files of all years.
struct SpacedFlag {
    bool *Flag;
};

// Where the value of a key goes, and with that its type.
using KeyTarget =
    std::variant<bool *, SpacedFlag, i16 *, Truncated, i32 *, double *, Limited, Bounded, char *,
                 std::string *, CutText, DtrFunction *, CallExchMode *>;

struct KeyRow {
    std::string Key;
    KeyTarget Target;
    bool BlankAfter = false; // an empty line is written behind it
    bool EndsGroup = false;  // what follows it belongs to the next group
};

struct Section {
    std::string Header;
    // Of a section of keys: its keys; more than one table where the same keys come again.
    std::vector<std::vector<KeyRow>> Groups = {};
    // Of a section of bare rows, one of these. A row behind the last is ignored.
    std::span<std::string> Macros = {}, Labels = {};
    std::span<WindowInfo> Windows = {};
    bool *InFile = nullptr; // set when the section is read; written only if it is set
    bool Ignored = false;   // known from other versions: its lines are skipped, it is never written
};

// In the order of the file.
const std::vector<Section> &SettingsSections();

// Takes a value from its text, and gives the text that it is written with.
void TakeValue(const KeyTarget &target, std::string_view text);
std::string ValueText(const KeyTarget &target);

// The value of a key as text, by its name; of keys that come more than once the first. Nothing for
// an unknown key.
std::optional<std::string> SettingText(std::string_view key);

} // namespace zrt
