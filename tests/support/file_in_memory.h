// A folder with one file in it that never touches a disk. For fuzzers, and for tests of readers.
#pragma once

#include "platform/files.h"
#include "session/session_flags.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace zrt {

struct FileInMemory {
    std::string Name;
    std::string Bytes;
    std::size_t BreaksAt = std::string::npos; // what stands from here on can't be read
};
inline FileInMemory memoryFile;

// Makes the file the only one there is, in the program's folder.
inline void PutFileInMemory(std::string name, std::string content) {
    Session.AppPath = "memory/";
    memoryFile = {std::move(name), std::move(content)};
    Files = {};
    Files.Open = [](const std::string &path, OpenMode mode, int &handle) {
        handle = 1;
        const bool found = path == Session.AppPath + memoryFile.Name;
        return found && mode == OpenMode::Read ? 0 : ENOENT;
    };
    Files.Length = [](int, std::uint64_t &length) {
        length = memoryFile.Bytes.size();
        return 0;
    };
    Files.ReadAt = [](int, std::uint64_t offset, std::span<std::byte> bytes, std::size_t &got) {
        const std::size_t end = std::min(memoryFile.Bytes.size(), memoryFile.BreaksAt);
        const std::size_t from = std::min<std::size_t>(offset, end);
        got = std::min(bytes.size(), end - from);
        std::memcpy(bytes.data(), memoryFile.Bytes.data() + from, got);
        return got < bytes.size() && memoryFile.BreaksAt <= memoryFile.Bytes.size() ? EIO : 0;
    };
    Files.Close = [](int) { return 0; };
    Files.List = [](const std::string &, std::vector<std::string> &names) {
        names = {memoryFile.Name};
        return 0;
    };
}

} // namespace zrt
