// The file door on a POSIX system.
#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zrt {

namespace {

constexpr mode_t kNewFileMode = 0644;

// Makes a system call, again and again while a signal interrupts it. Returns its result.
template <typename Call> auto Uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

int OpenFile(const std::string &path, OpenMode mode, int &handle) {
    int flags = O_CLOEXEC;
    switch (mode) {
    case OpenMode::Read: flags |= O_RDONLY; break;
    case OpenMode::Update: flags |= O_RDWR; break;
    case OpenMode::Create: flags |= O_RDWR | O_CREAT | O_TRUNC; break;
    }
    handle = Uninterrupted([&] { return ::open(path.c_str(), flags, kNewFileMode); });
    return handle < 0 ? errno : 0;
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
    if (S_ISDIR(status.st_mode))
        return EISDIR;
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
    // Some file systems can't sync a folder and say EINVAL; there is nothing more to do on those.
    const bool synced = Uninterrupted([&] { return ::fsync(handle); }) == 0 || errno == EINVAL;
    const int error = synced ? 0 : errno;
    ::close(handle);
    return error;
}

int MakeFolder(const std::string &folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return error.value();
}

bool FileExists(const std::string &path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

std::vector<std::string> ListFiles(const std::string &folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(folder, error)) {
        std::error_code entryError;
        if (entry.is_regular_file(entryError))
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

FileDoor DiskFiles() {
    return {OpenFile,    ReadAt,     WriteAt,     LengthOf,      SyncHandle,
            CloseHandle, RemoveFile, RenameFile,  SyncFolder,    MakeFolder,
            FileExists,  ListFiles,  LockProcess, LockWhileOpen, Unlock};
}

} // namespace zrt
