#include "session/radio_state.h"

namespace zrt {

RadioState Radios;

} // namespace zrt
