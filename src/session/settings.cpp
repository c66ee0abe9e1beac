#include "session/settings.h"

namespace zrt {

SettingsRecord Settings;
ExtensionsRecord Extensions;

void CheckTimingMethod() {
    for (const char *known : {"QueryPerf", "Math", "Winmm", "VBTimer"})
        if (Settings.TimingMethod == known)
            return;
    Settings.TimingMethod = "Winmm";
}

} // namespace zrt
