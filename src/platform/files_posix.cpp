// The file door on a POSIX system.
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zrt {

namespace {

constexpr mode_t kNewFileMode = 0644;
constexpr mode_t kPrivateMode = 0600;
constexpr mode_t kNewFolderMode = 0777; // less what the umask takes
constexpr int kMostLinks = 40;          // more are a ring
constexpr std::time_t kOldSideSeconds = 24L * 3600;

// Side files are ".zrtlog-", eight letters or digits, ".new", those of run.sh as well: short, and
// like no file that an operator would make.
constexpr std::string_view kSideBegin = ".zrtlog-";
constexpr std::string_view kSideEnd = ".new";
constexpr std::size_t kSideLetters = 8;
constexpr std::string_view kLetters =
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

// Makes a system call, again and again while a signal interrupts it. Returns its result.
template <typename Call> auto Uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

// 0 for a regular file.
int ErrorOfKind(mode_t mode) {
    if (S_ISDIR(mode))
        return EISDIR;
    return S_ISREG(mode) ? 0 : kNotRegularFile;
}

// A pipe without a writer, and some devices, would keep the program waiting: nothing but regular
// files stays open, and none of it is asked before that is known.
int OpenRegular(const std::string &path, int flags, mode_t mode, int &handle) {
    handle = Uninterrupted(
        [&] { return ::open(path.c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, mode); });
    if (handle < 0) // of a socket, and of a pipe that is to be written
        return errno == ENXIO ? kNotRegularFile : errno;
    struct stat status {};
    const int error = ::fstat(handle, &status) != 0 ? errno : ErrorOfKind(status.st_mode);
    if (error == 0)
        return 0;
    ::close(handle);
    handle = -1;
    return error;
}

int OpenFile(const std::string &path, OpenMode mode, int &handle) {
    switch (mode) {
    case OpenMode::Read: return OpenRegular(path, O_RDONLY, 0, handle);
    case OpenMode::Update: return OpenRegular(path, O_RDWR, 0, handle);
    case OpenMode::Create: break;
    }
    return OpenRegular(path, O_RDWR | O_CREAT | O_TRUNC, kNewFileMode, handle);
}

// ---- side files

std::string RandomSideName() {
    std::timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    static std::uint64_t made = 0; // no two names of one instant are the same
    std::uint64_t number = static_cast<std::uint64_t>(now.tv_nsec) + (++made << 40) +
                           (static_cast<std::uint64_t>(::getpid()) << 24);
    number *= 0x9E3779B97F4A7C15U; // spreads it over all letters
    std::string name(kSideBegin);
    for (std::size_t i = 0; i < kSideLetters; ++i, number /= kLetters.size())
        name += kLetters[number % kLetters.size()];
    return name + std::string(kSideEnd);
}

bool IsSideName(std::string_view name) {
    if (name.size() != kSideBegin.size() + kSideLetters + kSideEnd.size() ||
        !name.starts_with(kSideBegin) || !name.ends_with(kSideEnd))
        return false;
    return name.substr(kSideBegin.size(), kSideLetters).find_first_not_of(kLetters) ==
           std::string_view::npos;
}

// Mode and owner of the file that is to be replaced. A file system without them refuses; the bytes
// count more.
void TakeOver(int handle, const struct stat &old) {
    constexpr auto kSameUser = static_cast<uid_t>(-1);
    if (::fchown(handle, old.st_uid, old.st_gid) != 0)
        (void)!::fchown(handle, kSameUser, old.st_gid); // a member of the group may
    (void)::fchmod(handle, old.st_mode & 0777);
}

int CreateSide(const std::string &path, std::string &side, int &handle) {
    handle = -1;
    side.clear();
    struct stat old {};
    const bool replaces = ::stat(path.c_str(), &old) == 0;
    if (const int error = replaces ? ErrorOfKind(old.st_mode) : 0)
        return error;
    constexpr int kMostTries = 100;
    int error = EEXIST;
    std::string name;
    for (int i = 0; i < kMostTries && error == EEXIST; ++i) {
        name = FolderOf(path) + RandomSideName();
        error = OpenRegular(name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW,
                            replaces ? kPrivateMode : kNewFileMode, handle);
    }
    if (error != 0)
        return error;
    side = name;
    if (replaces)
        TakeOver(handle, old);
    return 0;
}

int ReadAt(int handle, std::uint64_t offset, std::span<std::byte> bytes, std::size_t &got) {
    got = 0;
    while (got < bytes.size()) {
        const auto n = Uninterrupted([&] {
            return ::pread(handle, bytes.data() + got, bytes.size() - got,
                           static_cast<off_t>(offset + got));
        });
        if (n < 0)
            return errno;
        if (n == 0)
            break;
        got += static_cast<std::size_t>(n);
    }
    return 0;
}

int WriteAt(int handle, std::uint64_t offset, std::span<const std::byte> bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const auto n = Uninterrupted([&] {
            return ::pwrite(handle, bytes.data() + written, bytes.size() - written,
                            static_cast<off_t>(offset + written));
        });
        if (n < 0)
            return errno;
        if (n == 0)
            return ENOSPC;
        written += static_cast<std::size_t>(n);
    }
    return 0;
}

int LengthOf(int handle, std::uint64_t &length) {
    struct stat status {};
    if (::fstat(handle, &status) != 0)
        return errno;
    length = static_cast<std::uint64_t>(status.st_size);
    return 0;
}

int SyncHandle(int handle) {
    return Uninterrupted([&] { return ::fdatasync(handle); }) == 0 ? 0 : errno;
}

int CloseHandle(int handle) {
    // The handle is gone even after EINTR; the data was synced before.
    return ::close(handle) == 0 || errno == EINTR ? 0 : errno;
}

int RemoveFile(const std::string &path) {
    return Uninterrupted([&] { return ::unlink(path.c_str()); }) == 0 ? 0 : errno;
}

int RenameFile(const std::string &from, const std::string &to) {
    return Uninterrupted([&] { return ::rename(from.c_str(), to.c_str()); }) == 0 ? 0 : errno;
}

int SyncFolder(const std::string &folder) {
    const char *path = folder.empty() ? "." : folder.c_str();
    const int handle = Uninterrupted([&] { return ::open(path, O_RDONLY | O_CLOEXEC); });
    if (handle < 0)
        return errno;
    int error = Uninterrupted([&] { return ::fsync(handle); }) == 0 ? 0 : errno;
    // Some file systems can't sync a folder; there is nothing more to do on those.
    if (error == EINVAL || error == EOPNOTSUPP || error == ENOTSUP)
        error = 0;
    ::close(handle);
    return error;
}

// ---- folders and names

bool IsFolder(const std::string &path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

int MakeFolder(const std::string &folder) {
    for (auto end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
        const std::string above = folder.substr(0, end);
        if (::mkdir(above.c_str(), kNewFolderMode) != 0) {
            const int error = errno; // EEXIST, or EROFS and EACCES of one that exists
            if (!IsFolder(above))
                return error;
        }
        if (end == std::string::npos)
            return 0;
    }
}

bool FileExists(const std::string &path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) == 0)
        return true;
    return errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG;
}

int ListFiles(const std::string &folder, std::vector<std::string> &names) {
    names.clear();
    DIR *open = ::opendir(folder.empty() ? "." : folder.c_str());
    if (open == nullptr)
        return errno;
    int error = 0;
    while (true) {
        errno = 0;
        const dirent *entry = ::readdir(open);
        if (entry == nullptr) {
            error = errno;
            break;
        }
        struct stat status {};
        if (::fstatat(::dirfd(open), entry->d_name, &status, 0) == 0 && S_ISREG(status.st_mode))
            names.emplace_back(entry->d_name);
    }
    ::closedir(open);
    std::sort(names.begin(), names.end());
    return error;
}

int FollowLinks(const std::string &path, std::string &target) {
    target = path;
    for (int i = 0; i < kMostLinks; ++i) {
        std::array<char, PATH_MAX> next{};
        const ssize_t length = ::readlink(target.c_str(), next.data(), next.size());
        if (length < 0) // no link, or not there
            return errno == EINVAL || errno == ENOENT ? 0 : errno;
        const std::string_view name(next.data(), static_cast<std::size_t>(length));
        target = name.starts_with('/') ? std::string(name) : FolderOf(target) + std::string(name);
    }
    return ELOOP;
}

void RemoveOldSides(const std::string &folder) {
    std::vector<std::string> names;
    (void)ListFiles(folder, names); // what is not seen stays for the next time
    const std::time_t now = std::time(nullptr);
    for (const std::string &name : names) {
        const std::string path = folder + name;
        struct stat status {};
        if (IsSideName(name) && ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
            now - status.st_mtime > kOldSideSeconds)
            (void)RemoveFile(path);
    }
}

} // namespace

FileDoor DiskFiles() {
    return {OpenFile,    CreateSide,  ReadAt,         WriteAt,     LengthOf,      SyncHandle,
            CloseHandle, RemoveFile,  RenameFile,     SyncFolder,  MakeFolder,    FileExists,
            ListFiles,   FollowLinks, RemoveOldSides, LockProcess, LockWhileOpen, Unlock};
}

} // namespace zrt
