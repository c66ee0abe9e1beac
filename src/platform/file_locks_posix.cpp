#include "platform/file_locks.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <functional>
#include <string_view>

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zrt {

namespace {

// The lock of a log is on one byte far behind its records. Servers of shared disks may refuse what
// others read or write in a locked range, and the log is written through other handles.
//
// It belongs to the open file description and not to the process: the log is opened and closed for
// each contact, and a lock of the process would end with the first close.
constexpr off_t kLockedByte = off_t{1} << 62;
// A second byte tells who has it: its place behind the first one is made of computer and process.
constexpr off_t kFirstMark = kLockedByte + 1;
constexpr off_t kMarks = off_t{1} << 60;
constexpr int kProcessBits = 32;
constexpr std::uint64_t kMostComputers = 1U << 24;

constexpr mode_t kNewFileMode = 0644;

int OpenHandle(const std::string &path, int flags) {
    int handle = -1;
    do // a FIFO must not keep the program waiting
        handle = ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, kNewFileMode);
    while (handle < 0 && errno == EINTR);
    return handle;
}

bool WritingIsRefused() {
    return errno == EACCES || errno == EPERM || errno == EROFS || errno == ETXTBSY;
}

FileLock Impossible(int error) {
    return {LockResult::Impossible, error, {}, -1};
}

struct flock Range(short type, off_t start, off_t length) {
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = start;
    range.l_len = length;
    return range;
}

bool Lock(int handle, short type, off_t byte) {
    struct flock range = Range(type, byte, 1);
    int result = -1;
    do
        result = ::fcntl(handle, F_OFD_SETLK, &range);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

std::uint64_t ThisComputer() {
    std::array<char, 256> name{};
    if (::gethostname(name.data(), name.size() - 1) != 0)
        return 0;
    return std::hash<std::string_view>()(name.data()) % kMostComputers;
}

off_t MarkOf(std::uint64_t computer, pid_t process) {
    return kFirstMark + static_cast<off_t>(computer << kProcessBits) + process;
}

std::string UserOf(const std::string &process) {
    struct stat status {};
    if (::stat(("/proc/" + process).c_str(), &status) != 0)
        return {};
    const struct passwd *user = ::getpwuid(status.st_uid);
    return user == nullptr ? std::string() : " of " + std::string(user->pw_name);
}

// Who has marked this file; empty if no mark is found.
std::string HolderOf(int handle) {
    struct flock range = Range(F_WRLCK, kFirstMark, kMarks);
    if (::fcntl(handle, F_OFD_GETLK, &range) != 0 || range.l_type == F_UNLCK || range.l_len != 1)
        return {};
    const auto mark = static_cast<std::uint64_t>(range.l_start - kFirstMark);
    const std::string process = std::to_string(mark & 0xFFFFFFFFU);
    const bool here = mark >> kProcessBits == ThisComputer();
    return "process " + process + (here ? UserOf(process) : " on another computer");
}

bool IsFileOf(int handle, const std::string &path) {
    struct stat opened {
    }, named{};
    return handle >= 0 && ::fstat(handle, &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

FileLock LockFile(const std::string &path) {
    short type = F_WRLCK;
    int handle = OpenHandle(path, O_RDWR);
    if (handle < 0 && WritingIsRefused()) {
        type = F_RDLCK; // the other kind wants a handle that writes
        handle = OpenHandle(path, O_RDONLY);
    }
    if (handle < 0)
        return Impossible(errno);
    if (Lock(handle, type, kLockedByte)) {
        (void)Lock(handle, type, MarkOf(ThisComputer(), ::getpid())); // only for the message
        return {LockResult::Taken, 0, {}, handle};
    }
    const int error = errno;
    FileLock lock = Impossible(error);
    if (error == EAGAIN || error == EACCES) // the two ways of systems to say "held"
        lock = {LockResult::Held, 0, HolderOf(handle), -1};
    ::close(handle);
    return lock;
}

} // namespace

FileLock LockProcess(const std::string &path) {
    int handle = OpenHandle(path, O_RDWR | O_CREAT);
    if (handle < 0 && WritingIsRefused())
        handle = OpenHandle(path, O_RDONLY);
    if (handle < 0)
        return Impossible(errno);
    // This kind needs no handle that writes.
    if (::flock(handle, LOCK_EX | LOCK_NB) == 0)
        return {LockResult::Taken, 0, {}, handle};
    const int error = errno;
    ::close(handle);
    return error == EWOULDBLOCK ? FileLock{LockResult::Held, 0, {}, -1} : Impossible(error);
}

void LockWhileOpen(const std::string &path, FileLock &lock) {
    if (IsFileOf(lock.Handle, path)) {
        lock = {LockResult::Taken, 0, {}, lock.Handle};
        return;
    }
    FileLock taken = LockFile(path);
    if (taken.Result == LockResult::Taken)
        Unlock(lock);
    else
        taken.Handle = lock.Handle;
    lock = taken;
}

void Unlock(FileLock &lock) {
    if (lock.Handle >= 0)
        ::close(lock.Handle);
    lock = {};
}

} // namespace zrt
