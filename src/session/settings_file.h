// The settings file as text: what ReadSettings and WriteSettings do between the file and the
// records. Tests and the fuzzer call it without a disk.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zrt {

// A file that is longer is refused as unreadable (EFBIG): nobody has such settings.
inline constexpr std::size_t kLongestSettingsFile = std::size_t{16} << 20;

// Takes every value that the text holds; what it does not hold stays as it is. Bytes that are not
// valid UTF-8 as a whole are Latin-1. Does not name profiles.
void TakeSettingsText(std::string_view bytes);

// The file's text of what the records hold, with CR LF line ends.
std::string SettingsText();

} // namespace zrt
