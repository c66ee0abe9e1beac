#include "fuzz/memory_files.h"

#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <map>

namespace zrt {

namespace {

std::map<std::string, FileBytes> stored;
std::map<int, std::string> opened;
int lastHandle = 0;

int Open(const std::string &path, OpenMode mode, int &handle) {
    if (mode == OpenMode::Create)
        stored[path].clear();
    else if (!stored.contains(path))
        return ENOENT;
    handle = ++lastHandle;
    opened[handle] = path;
    return 0;
}

int ReadAt(int handle, std::uint64_t offset, std::span<std::byte> bytes, std::size_t &got) {
    const FileBytes &file = stored[opened.at(handle)];
    const auto from = std::min<std::uint64_t>(offset, file.size());
    got = std::min<std::size_t>(bytes.size(), file.size() - from);
    std::copy_n(file.begin() + static_cast<std::ptrdiff_t>(from), got, bytes.begin());
    return 0;
}

int WriteAt(int handle, std::uint64_t offset, std::span<const std::byte> bytes) {
    FileBytes &file = stored[opened.at(handle)];
    file.resize(std::max<std::size_t>(file.size(), offset + bytes.size()));
    std::ranges::copy(bytes, file.begin() + static_cast<std::ptrdiff_t>(offset));
    return 0;
}

int Length(int handle, std::uint64_t &length) {
    length = stored[opened.at(handle)].size();
    return 0;
}

int Close(int handle) {
    opened.erase(handle);
    return 0;
}

int Remove(const std::string &path) {
    return stored.erase(path) > 0 ? 0 : ENOENT;
}

int Rename(const std::string &from, const std::string &to) {
    const auto file = stored.find(from);
    if (file == stored.end())
        return ENOENT;
    FileBytes bytes = std::move(file->second);
    stored.erase(file);
    stored[to] = std::move(bytes);
    return 0;
}

int List(const std::string &folder, std::vector<std::string> &names) {
    names.clear();
    for (const auto &[path, bytes] : stored)
        if (FolderOf(path) == WithSeparator(folder))
            names.push_back(NameOf(path));
    return 0;
}

// There is one writer, and nothing crashes: one name is enough.
int CreateSide(const std::string &path, std::string &side, int &handle) {
    side = FolderOf(path) + ".side";
    return Open(side, OpenMode::Create, handle);
}

int FollowLinks(const std::string &path, std::string &target) {
    target = path;
    return 0;
}

} // namespace

void InstallMemoryFiles() {
    stored.clear();
    opened.clear();
    Files = {};
    Files.Open = Open;
    Files.CreateSide = CreateSide;
    Files.ReadAt = ReadAt;
    Files.WriteAt = WriteAt;
    Files.Length = Length;
    Files.Sync = [](int) { return 0; };
    Files.Close = Close;
    Files.Remove = Remove;
    Files.Rename = Rename;
    Files.SyncFolder = [](const std::string &) { return 0; };
    Files.MakeFolder = [](const std::string &) { return 0; };
    Files.Exists = [](const std::string &path) { return stored.contains(path); };
    Files.List = List;
    Files.FollowLinks = FollowLinks;
    Files.RemoveOldSides = [](const std::string &) {};
    Files.Lock = [](const std::string &) { return FileLock{LockResult::Taken, 0, {}, -1}; };
    Files.LockOpenFile = [](const std::string &, FileLock &lock) {
        lock.Result = LockResult::Taken;
    };
    Files.Unlock = [](FileLock &lock) { lock = {}; };
}

void PutMemoryFile(const std::string &path, const std::uint8_t *data, std::size_t size) {
    FileBytes &file = stored[path];
    file.resize(size);
    std::transform(data, data + size, file.begin(),
                   [](std::uint8_t byte) { return std::byte{byte}; });
}

} // namespace zrt
