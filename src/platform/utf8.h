// Characters of UTF-8 texts.
#pragma once

#include <string>
#include <string_view>

namespace zrt {

// Takes the first character off a text that is not empty; a broken one counts as its first byte.
int TakeCharacter(std::string_view &text);
std::string Utf8(int character);

} // namespace zrt
