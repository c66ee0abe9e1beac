#include "app/program_folder.h"

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/data_files.h"
#include "session/file_errors.h"
#include "session/session_flags.h"
#include "session/settings.h"

#include <algorithm>
#include <cerrno>

namespace zrt {

namespace {

constexpr std::size_t kDiskBlock = 512;

// Without HOME the password file says where a user is at home. That is told to root, who may have
// become root on the way and expects the files of the user that he was.
void TellGuessedHome() {
    if (ProgramFolders.RootWithoutHome())
        ShowMessageBox({"ZRTLOG runs as root, and HOME is not set.  Settings and unnamed logs are "
                        "in " +
                            Session.AppPath +
                            ".  If that is not your folder, end ZRTLOG, set "
                            "HOME, and start it again.",
                        "ZRTLOG", BoxButtons::Ok, BoxIcon::Exclamation});
}

// The folder of the executable if the settings stand there, else the user's own.
bool ChooseFolder() {
    Session.AppPath = WithSeparator(ProgramFolders.ExecutableFolder());
    if (Files.Exists(Session.AppPath + kSettingsFile))
        return true;
    const std::string folder = ProgramFolders.UserFolder();
    if (folder.empty()) {
        ShowMessageBox({"ZRTLOG finds no home directory for its files.  Set HOME and start it "
                        "again.",
                        "ZRTLOG", BoxButtons::Ok, BoxIcon::Critical});
        EndProgram(1);
        return false;
    }
    Session.AppPath = WithSeparator(folder);
    TellGuessedHome();
    return true;
}

// Whether `there` is what a full disk has left of a copy of `shipped`: its beginning, up to the end
// of a block or to within a line. One who shortens a file by hand leaves whole lines.
bool IsCutCopy(const FileBytes &there, const FileBytes &shipped) {
    if (there.size() >= shipped.size() || !std::equal(there.begin(), there.end(), shipped.begin()))
        return false;
    const auto isLineEnd = [](std::byte byte) {
        return byte == std::byte{'\n'} || byte == std::byte{'\r'};
    };
    return there.size() % kDiskBlock == 0 || !isLineEnd(there.back());
}

// A file that can't be read is told of by its own reader.
bool HoldsCutCopy(const std::string &path, const std::string &shipped) {
    FileBytes there, whole;
    return ReadFile(path, there) == 0 && ReadFile(shipped, whole) == 0 && IsCutCopy(there, whole);
}

// Each step can be done again. The settings, which say that the folder is filled, are the last: a
// crash or an error before them leaves the rest to the next time.
int FillFolder(const std::string &defaults) {
    if (const int error = Files.MakeFolder(Session.AppPath))
        return error;
    const auto path = [](const std::string &name) { return PathInFolder(Session.AppPath + name); };
    const bool filled = Files.Exists(path(kSettingsFile)) &&
                        !HoldsCutCopy(path(kSettingsFile), defaults + kSettingsFile);
    std::vector<std::string> names;
    if (const int error = Files.List(defaults, names))
        return filled || error == ENOENT ? 0 : error; // without any the reader of the settings ends
    std::stable_partition(names.begin(), names.end(),
                          [](const std::string &name) { return name != kSettingsFile; });
    for (const std::string &name : names) {
        const bool there = Files.Exists(path(name));
        if (there ? !HoldsCutCopy(path(name), defaults + name) : filled)
            continue;
        if (const int error = CopyFile(defaults + name, path(name)))
            return error;
    }
    return 0;
}

} // namespace

bool TakeProgramFolder() {
    if (!ChooseFolder())
        return false;
    const std::string defaults = WithSeparator(ProgramFolders.DefaultsFolder());
    if (defaults == Session.AppPath)
        return true;
    (void)WithRetry([&defaults] { return FillFolder(defaults); }); // given up: he was told
    return !Program.Ending;
}

} // namespace zrt
