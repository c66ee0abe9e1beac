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

// Without HOME the password file says where a user is at home. Root gets a message: he may have
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

bool ChooseUserFolder() {
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

// A file that can't be read is reported by its own reader.
bool HoldsCutCopy(const std::string &path, const std::string &shipped) {
    FileBytes there, whole;
    return ReadFile(path, there) == 0 && ReadFile(shipped, whole) == 0 && IsCutCopy(there, whole);
}

// Brings what is missing or cut; all else is the operator's. Each step can be done again. The
// settings are the last: settings without data would look like a program that is set up.
int FillFolder(const std::string &defaults) {
    if (const int error = Files.MakeFolder(Session.AppPath))
        return error;
    std::vector<std::string> names;
    if (const int error = Files.List(defaults, names))
        return error == ENOENT ? 0 : error; // what is missing is reported by its readers
    std::stable_partition(names.begin(), names.end(),
                          [](const std::string &name) { return name != kSettingsFile; });
    for (const std::string &name : names) {
        const std::string path = PathInFolder(Session.AppPath + name);
        if (Files.Exists(path) && !HoldsCutCopy(path, defaults + name))
            continue;
        if (const int error = CopyFile(defaults + name, path))
            return error;
    }
    return 0;
}

} // namespace

bool TakeProgramFolder() {
    Session.AppPath = WithSeparator(ProgramFolders.ExecutableFolder());
    if (Files.Exists(Session.AppPath + kSettingsFile))
        return true; // the operator has put it together
    if (!ChooseUserFolder())
        return false;
    const std::string defaults = WithSeparator(ProgramFolders.DefaultsFolder());
    if (defaults != Session.AppPath)
        (void)WithRetry([&defaults] { return FillFolder(defaults); }); // given up: it was reported
    return !Program.Ending;
}

} // namespace zrt
