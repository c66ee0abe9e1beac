#include "app/recent_files.h"

#include "entry/log_form.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/settings.h"

#include <algorithm>

namespace zrt {

namespace {

constexpr std::size_t kMenuWidth = 60; // characters of a path that a menu shows

} // namespace

void TakeRecentFile(const std::string &path) {
    Settings.OpenFilePath = WithoutSeparator(FolderOf(path));
    auto &recent = Settings.RecentFile;
    if (recent.front() == path)
        return;
    std::shift_right(recent.begin(), recent.end(), 1);
    recent.front() = path;
    ShowRecentFiles();
}

void ShowRecentFiles() {
    for (std::size_t i = 0; i < Settings.RecentFile.size(); ++i) {
        const std::string &path = Settings.RecentFile[i];
        MenuItem &entry = LogForm.mnuFileRecent[i];
        entry.Caption = std::to_string(i + 1) + "  " + ShortenMiddle(path, kMenuWidth);
        entry.Visible = !path.empty();
    }
    LogForm.mnuFileRecentBar.Visible =
        std::any_of(LogForm.mnuFileRecent.begin(), LogForm.mnuFileRecent.end(),
                    [](const MenuItem &entry) { return entry.Visible; });
}

} // namespace zrt
