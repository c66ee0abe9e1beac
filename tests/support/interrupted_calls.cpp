#include "support/interrupted_calls.h"

#include <cerrno>
#include <cstddef>

#include <dirent.h>
#include <sys/types.h>

// The linker's own names: --wrap=open turns a call of open into one of __wrap_open.
// NOLINTBEGIN(bugprone-reserved-identifier, misc-use-internal-linkage)
extern "C" {
int __real_open(const char *path, int flags, mode_t mode);
ssize_t __real_pread(int handle, void *bytes, std::size_t length, off_t offset);
ssize_t __real_pwrite(int handle, const void *bytes, std::size_t length, off_t offset);
int __real_close(int handle);
int __real_unlink(const char *path);
int __real_rename(const char *from, const char *to);
int __wrap_open(const char *path, int flags, mode_t mode);
struct dirent *__real_readdir(DIR *folder);
struct dirent *__wrap_readdir(DIR *folder);
ssize_t __wrap_pread(int handle, void *bytes, std::size_t length, off_t offset);
ssize_t __wrap_pwrite(int handle, const void *bytes, std::size_t length, off_t offset);
int __wrap_fdatasync(int handle);
int __wrap_fsync(int handle);
int __wrap_close(int handle);
int __wrap_unlink(const char *path);
int __wrap_rename(const char *from, const char *to);
}

namespace zrt {

InterruptedCallsState InterruptedCalls;

namespace {

bool HasFault(const char *name) {
    InterruptedCalls.Done.emplace_back(name);
    return static_cast<int>(InterruptedCalls.Done.size()) == InterruptedCalls.FaultAt;
}

bool IsInterrupted(const char *name) {
    if (!HasFault(name) || InterruptedCalls.Halves)
        return false;
    errno = InterruptedCalls.Error;
    return true;
}

// The number of bytes to move; -1 for a call that is interrupted.
ssize_t LengthToMove(const char *name, std::size_t length) {
    if (!HasFault(name))
        return static_cast<ssize_t>(length);
    errno = EINTR;
    return InterruptedCalls.Halves ? static_cast<ssize_t>((length + 1) / 2) : -1;
}

} // namespace

} // namespace zrt

// open has an argument more when it creates; the door always gives it, or does not need it.
int __wrap_open(const char *path, int flags, mode_t mode) {
    if (zrt::InterruptedCalls.BeforeOpen != nullptr)
        zrt::InterruptedCalls.BeforeOpen(path);
    return zrt::IsInterrupted("open") ? -1 : __real_open(path, flags, mode);
}

ssize_t __wrap_pread(int handle, void *bytes, std::size_t length, off_t offset) {
    const ssize_t move = zrt::LengthToMove("pread", length);
    return move < 0 ? -1 : __real_pread(handle, bytes, static_cast<std::size_t>(move), offset);
}

ssize_t __wrap_pwrite(int handle, const void *bytes, std::size_t length, off_t offset) {
    const ssize_t move = zrt::LengthToMove("pwrite", length);
    return move < 0 ? -1 : __real_pwrite(handle, bytes, static_cast<std::size_t>(move), offset);
}

// Not done: a test has no time to wait for the disk.
int __wrap_fdatasync(int) {
    return zrt::IsInterrupted("fdatasync") ? -1 : 0;
}

int __wrap_fsync(int) {
    return zrt::IsInterrupted("fsync") ? -1 : 0;
}

// An interrupted close has closed.
int __wrap_close(int handle) {
    const bool interrupted = zrt::IsInterrupted("close");
    const int result = __real_close(handle);
    if (!interrupted)
        return result;
    errno = EINTR;
    return -1;
}

int __wrap_unlink(const char *path) {
    return zrt::IsInterrupted("unlink") ? -1 : __real_unlink(path);
}

int __wrap_rename(const char *from, const char *to) {
    return zrt::IsInterrupted("rename") ? -1 : __real_rename(from, to);
}

// The names come, and then the error in place of the end. No name of a contact is at stake: not
// counted.
struct dirent *__wrap_readdir(DIR *folder) {
    struct dirent *entry = __real_readdir(folder);
    if (entry == nullptr && zrt::InterruptedCalls.ReaddirError != 0)
        errno = zrt::InterruptedCalls.ReaddirError;
    return entry;
}
// NOLINTEND(bugprone-reserved-identifier, misc-use-internal-linkage)
