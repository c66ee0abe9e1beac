// Locks that keep two copies of the program apart. FileDoor hands them out; see files.h.
#pragma once

#include <string>

namespace zrt {

enum class LockResult {
    Taken,
    Held,       // by another copy of the program
    Impossible, // it is unknown whether another copy has it
};

struct FileLock {
    LockResult Result = LockResult::Impossible;
    int Error = 0;      // of Impossible, the system's error number
    std::string Holder; // of Held: "process 4711 of anna", or empty if it is not known
    int Handle = -1;    // of Taken
};

// Locks a file that serves for nothing else, for as long as this process lives. The file is made if
// need be, and opened for reading where writing is refused.
FileLock LockProcess(const std::string &path);

// Locks the file that stands under this name now, while others read and write it through handles
// of their own. What `lock` has of another file is let go only when the new lock is taken; of the
// same file it stays. A file that can only be read is locked against those who write it.
void LockWhileOpen(const std::string &path, FileLock &lock);
void Unlock(FileLock &lock);

} // namespace zrt
