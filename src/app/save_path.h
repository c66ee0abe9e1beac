// The name that a save dialog returned.
#pragma once

#include <string>
#include <string_view>

namespace zrt {

// Whether a path ends in an extension like ".ZRT", whatever the case.
bool HasExtension(std::string_view path, std::string_view extension);

// Whether a file may be written there: `what` ("Log file") must have the extension, and the
// operator agrees to overwrite a file that exists. May pump.
bool MayWriteTo(const std::string &path, const std::string &what, const std::string &extension);

} // namespace zrt
