// Any bytes under the name of a log, opened as a recent one: header, conversions, entries, re-scan.
#include "app/file_menu.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "fuzz/memory_files.h"
#include "headless/devices.h"
#include "platform/dialogs.h"
#include "platform/program.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"

#include <cstdlib>

namespace {

constexpr const char *kPath = "/logs/any.ZRT";

void StartOnce() {
    zrt::InstallHeadlessDoors();
    zrt::Dialogs.Box = [](const zrt::MessageBox &box) {
        return box.Buttons == zrt::BoxButtons::YesNo         ? zrt::BoxAnswer::Yes
               : box.Buttons == zrt::BoxButtons::RetryCancel ? zrt::BoxAnswer::Cancel
                                                             : zrt::BoxAnswer::Ok;
    };
    zrt::RegisterWindows();
    zrt::Session.AppPath = "/program/";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const bool started = [] {
        StartOnce();
        return true;
    }();
    (void)started;
    zrt::InstallMemoryFiles();
    zrt::PutMemoryFile(kPath, data, size);
    zrt::Program = {};
    zrt::Contest = {};
    zrt::Log.LogState = zrt::kNoLog;
    zrt::Settings.RecentFile[0] = kPath;
    zrt::FileOpenRecent(1);
    // What is open has entries within the limits, and a window that says so.
    if (zrt::Log.LogState != zrt::kNoLog && !zrt::Program.Ending &&
        (zrt::Log.NextEntry < 1 || zrt::Log.NextEntry > zrt::kMostEntries + 1 ||
         !zrt::LogForm.InData[0].Visible))
        std::abort();
    return 0;
}
