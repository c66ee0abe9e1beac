// A scenario as text: lines, words, quotes and blocks. Called by the runner of scenario.h.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

struct ScriptWord {
    std::string Text;
    bool Quoted = false; // a text; an unquoted word may be a number or hex digits
};

struct ScriptLine {
    int Number = 0;   // from 1
    std::string Text; // as written, without blanks around it
    bool Comment = false;
    std::vector<ScriptWord> Words;
    std::optional<std::string> Block; // with its line ends
    std::string Error;                // why the line can't be understood; else empty
};

// Blank lines are left out.
std::vector<ScriptLine> ParseScript(std::string_view text);

// The text in double quotes, as a script would write it.
std::string Quoted(std::string_view text);

// Whole numbers only: nothing for anything else.
std::optional<long long> WholeNumber(std::string_view text);

// The bytes of the words from `first` on: quoted texts as they are, others as pairs of hex digits.
// Nothing if a word is neither.
std::optional<std::string> BytesOf(const std::vector<ScriptWord> &words, std::size_t first);
std::string HexText(std::string_view bytes); // "46 41 3B"

} // namespace zrt
