#include "session/version.h"

namespace zrt {

const std::string kVersion = ZRT_VERSION;
const std::string kShortVersion = kVersion.substr(0, kVersion.rfind('.'));

} // namespace zrt
