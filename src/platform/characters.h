// Characters of texts: to and from UTF-8, and those that a field has a place for.
#pragma once

#include <string>
#include <string_view>

namespace zrt {

// Takes the first character off a text that is not empty; a broken one counts as its first byte.
int TakeCharacter(std::string_view &text);
std::string Utf8(int character);

// The character as a line of text has it: a blank for a tab, a line end or a blank of another kind,
// 0 for one that can't be seen.
int PlainCharacter(int character);

} // namespace zrt
