// The text files in the program's folder that the operator replaces from year to year: found, read
// whole, taken line by line. For session/reference_data and session/startup_data.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zrt {

// The path as its folder has it, whatever the case of the letters of its name: files that come from
// elsewhere are written in capitals or not. As given if there is such a file, or none at all.
std::string PathInFolder(const std::string &path);

// Reads the file of this name, in any case of its letters, from the program's folder. Returns 0 or
// the system's error; then `text` holds the whole lines that were read before it.
[[nodiscard]] int ReadDataFile(std::string_view name, std::string &text);

// Takes the next line off `rest`, without its end: CR, LF or CR LF.
std::string_view NextLine(std::string_view &rest);

} // namespace zrt
