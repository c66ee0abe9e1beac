// The values of a session by name, as a scenario asks for them. Called by the runner through
// main() of zrtlog-scenario.
#pragma once

#include <optional>
#include <string>

namespace zrt {

// "NextEntry", "TotalPoints", "QsosPerBand(3)"; flags are "True" and "False". Nothing for a name
// that no module has.
std::optional<std::string> StateValue(const std::string &name);

} // namespace zrt
