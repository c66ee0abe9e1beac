// Files and folders. Every byte that the program reads or writes passes this door, so that a full
// or broken disk can be tested as easily as a healthy one. Paths are UTF-8.
#pragma once

#include "platform/file_locks.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

enum class OpenMode {
    Read,   // the file must exist
    Update, // read and write; the file must exist
    Create, // write; the file is made anew, what it held is gone
};

using FileBytes = std::vector<std::byte>;

// Every procedure returns 0 or the system's error number (errno), unless it says otherwise.
struct FileDoor {
    int (*Open)(const std::string &path, OpenMode mode, int &handle) = nullptr;
    // Reads up to bytes.size() bytes; `got` is fewer only at the end of the file.
    int (*ReadAt)(int handle, std::uint64_t offset, std::span<std::byte> bytes,
                  std::size_t &got) = nullptr;
    // Writes all bytes; the file grows, with zeros in a gap.
    int (*WriteAt)(int handle, std::uint64_t offset, std::span<const std::byte> bytes) = nullptr;
    int (*Length)(int handle, std::uint64_t &length) = nullptr;
    int (*Sync)(int handle) = nullptr; // returns when the data is on the disk
    int (*Close)(int handle) = nullptr;
    int (*Remove)(const std::string &path) = nullptr;
    int (*Rename)(const std::string &from, const std::string &to) = nullptr; // replaces `to`
    int (*SyncFolder)(const std::string &folder) = nullptr; // its names are on the disk
    int (*MakeFolder)(const std::string &folder) =
        nullptr; // with those above; existing is no error
    bool (*Exists)(const std::string &path) = nullptr;
    std::vector<std::string> (*List)(const std::string &folder) = nullptr; // names of files, sorted
    // See LockProcess, LockWhileOpen and Unlock.
    FileLock (*Lock)(const std::string &path) = nullptr;
    void (*LockOpenFile)(const std::string &path, FileLock &lock) = nullptr;
    void (*Unlock)(FileLock &lock) = nullptr;
};
extern FileDoor Files;

// The door to the real disk.
FileDoor DiskFiles();

// An open file that closes itself. After a write call Close and look at its result.
class OpenedFile {
  public:
    OpenedFile() = default;
    ~OpenedFile();
    OpenedFile(const OpenedFile &) = delete;
    OpenedFile &operator=(const OpenedFile &) = delete;

    [[nodiscard]] int Open(const std::string &path, OpenMode mode);
    [[nodiscard]] int ReadAt(std::uint64_t offset, std::span<std::byte> bytes, std::size_t &got);
    [[nodiscard]] int WriteAt(std::uint64_t offset, std::span<const std::byte> bytes);
    [[nodiscard]] int Length(std::uint64_t &length);
    [[nodiscard]] int Sync();
    [[nodiscard]] int Close();

  private:
    int Handle = -1;
};

// Reads a file whole.
[[nodiscard]] int ReadFile(const std::string &path, FileBytes &bytes);
[[nodiscard]] int ReadTextFile(const std::string &path, std::string &text);
// The same for a file of no more than `most` bytes; a longer one is error EFBIG, and not read.
[[nodiscard]] int ReadFileUpTo(const std::string &path, std::uint64_t most, FileBytes &bytes);

// Writes a file whole and safely: to a side file, synced, then renamed over `path`. After an error
// `path` is as it was, or, where only its folder could not be synced, already the new one.
[[nodiscard]] int ReplaceFile(const std::string &path, std::span<const std::byte> bytes);

// Copies a file the same way.
[[nodiscard]] int CopyFile(const std::string &from, const std::string &to);

// Moves `from` to the first of the names. Those that are taken move one on each, up to a free one;
// if none is, the last one's file is lost. After an error it can be done again, and no more is
// lost.
[[nodiscard]] int MoveToFirst(const std::string &from, std::span<const std::string> names);

// The folder part of a path with its last separator, and the rest. "/" and "\" both separate.
std::string FolderOf(std::string_view path);
std::string NameOf(std::string_view path);
// `folder` with a separator at its end, and without; that of the root stays.
std::string WithSeparator(std::string folder);
std::string WithoutSeparator(std::string folder);

} // namespace zrt
