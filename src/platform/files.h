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

// The error of a path that is a pipe, a device or a socket. The system has no number for it: the
// texts of session/file_errors have one.
inline constexpr int kNotRegularFile = 10'001;

// Above this a file is none of ours. Readers that know a closer limit name it.
inline constexpr std::uint64_t kMostFileBytes = std::uint64_t{64} << 20;

// Every procedure returns 0 or the system's error number (errno), unless it says otherwise.
struct FileDoor {
    // Opens regular files only, and never waits.
    int (*Open)(const std::string &path, OpenMode mode, int &handle) = nullptr;
    // Makes an empty file in the folder of `path` under a short name that nothing had, with the
    // mode and, where that is permitted, the owner of `path` if there is such a file.
    int (*CreateSide)(const std::string &path, std::string &side, int &handle) = nullptr;
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
    // Returns when its names are on the disk; 0 too where the file system has no such operation.
    int (*SyncFolder)(const std::string &folder) = nullptr;
    int (*MakeFolder)(const std::string &folder) =
        nullptr; // with those above; existing is no error
    // True too of a name that can't be looked at: only what is surely not there may be written
    // over.
    bool (*Exists)(const std::string &path) = nullptr;
    // The names of the files in a folder, sorted; after an error those that were read before it.
    int (*List)(const std::string &folder, std::vector<std::string> &names) = nullptr;
    // The path that a link at `path` leads to, over all links; `path` itself if it is none.
    int (*FollowLinks)(const std::string &path, std::string &target) = nullptr;
    // Removes files of CreateSide that a crash left in the folder more than a day ago.
    void (*RemoveOldSides)(const std::string &folder) = nullptr;
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
    [[nodiscard]] int CreateSide(const std::string &path, std::string &side);
    [[nodiscard]] int ReadAt(std::uint64_t offset, std::span<std::byte> bytes, std::size_t &got);
    [[nodiscard]] int WriteAt(std::uint64_t offset, std::span<const std::byte> bytes);
    [[nodiscard]] int Length(std::uint64_t &length);
    [[nodiscard]] int Sync();
    [[nodiscard]] int Close();

  private:
    int Handle = -1;
};

// Reads a file whole, if it has no more than `most` bytes; a longer one is error EFBIG, and neither
// read nor given memory. The other two have the limit kMostFileBytes.
[[nodiscard]] int ReadFileUpTo(const std::string &path, std::uint64_t most, FileBytes &bytes);
[[nodiscard]] int ReadFile(const std::string &path, FileBytes &bytes);
[[nodiscard]] int ReadTextFile(const std::string &path, std::string &text);

// Writes a file whole and safely: to a side file, synced, then renamed over `path`. After an error
// `path` is as it was, or, where only its folder could not be synced, already the new one. A link
// stays a link, mode and owner stay as they are.
[[nodiscard]] int ReplaceFile(const std::string &path, std::span<const std::byte> bytes);

// Copies a file of no more than kMostFileBytes the same way.
[[nodiscard]] int CopyFile(const std::string &from, const std::string &to);

// Moves `from` to the first of the names. Those that are taken move one on each, up to a free one;
// if none is, the last one's file is lost. After an error it can be done again, and no more is
// lost. CopyToFirst leaves `from` where it is. Neither syncs the folder: an error of that, done
// again, would move the files once more.
[[nodiscard]] int MoveToFirst(const std::string &from, std::span<const std::string> names);
[[nodiscard]] int CopyToFirst(const std::string &from, std::span<const std::string> names);

// The folder part of a path with its last separator, and the rest. "/" and "\" both separate.
std::string FolderOf(std::string_view path);
std::string NameOf(std::string_view path);
// `folder` with a separator at its end, and without; that of the root stays.
std::string WithSeparator(std::string folder);
std::string WithoutSeparator(std::string folder);

} // namespace zrt
