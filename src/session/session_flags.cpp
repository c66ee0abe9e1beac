#include "session/session_flags.h"

namespace zrt {

SessionFlags Session;

} // namespace zrt
