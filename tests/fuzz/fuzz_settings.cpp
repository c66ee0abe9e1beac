// A settings file of any bytes: it is read, and what is then written is read to the same bytes
// again.
#include "session/contests.h"
#include "session/settings.h"
#include "session/settings_file.h"
#include "session/user_profiles.h"

#include <cstdint>
#include <cstdlib>

namespace zrt {
namespace {

void TakeAfresh(std::string_view bytes) {
    Settings = {};
    Extensions = {};
    Profiles = {};
    Contest = {};
    TakeSettingsText(bytes);
}

} // namespace
} // namespace zrt

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    zrt::TakeAfresh({reinterpret_cast<const char *>(data), size});
    const std::string written = zrt::SettingsText();
    zrt::TakeAfresh(written);
    if (zrt::SettingsText() != written)
        std::abort();
    return 0;
}
