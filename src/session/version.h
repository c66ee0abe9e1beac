// The version of the program, which CMakeLists.txt names.
#pragma once

#include <string>

namespace zrt {

extern const std::string kVersion;      // "12.7.0"
extern const std::string kShortVersion; // "12.7", as the files for the sponsors have it

} // namespace zrt
