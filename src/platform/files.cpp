#include "platform/files.h"

#include <cerrno>

namespace zrt {

FileDoor Files;

OpenedFile::~OpenedFile() {
    if (Handle >= 0)
        (void)Files.Close(Handle); // a file that was written is closed by its writer, who looks
}

int OpenedFile::Open(const std::string &path, OpenMode mode) {
    return Files.Open(path, mode, Handle);
}

int OpenedFile::CreateSide(const std::string &path, std::string &side) {
    return Files.CreateSide(path, side, Handle);
}

int OpenedFile::ReadAt(std::uint64_t offset, std::span<std::byte> bytes, std::size_t &got) {
    return Files.ReadAt(Handle, offset, bytes, got);
}

int OpenedFile::WriteAt(std::uint64_t offset, std::span<const std::byte> bytes) {
    return Files.WriteAt(Handle, offset, bytes);
}

int OpenedFile::Length(std::uint64_t &length) {
    return Files.Length(Handle, length);
}

int OpenedFile::Sync() {
    return Files.Sync(Handle);
}

int OpenedFile::Close() {
    const int handle = Handle;
    Handle = -1;
    return Files.Close(handle);
}

int ReadFileUpTo(const std::string &path, std::uint64_t most, FileBytes &bytes) {
    bytes.clear();
    OpenedFile file;
    std::uint64_t length = 0;
    if (const int error = file.Open(path, OpenMode::Read))
        return error;
    if (const int error = file.Length(length))
        return error;
    if (length > most)
        return EFBIG;
    bytes.resize(length);
    std::size_t got = 0;
    const int error = file.ReadAt(0, bytes, got);
    bytes.resize(got);
    return error;
}

int ReadFile(const std::string &path, FileBytes &bytes) {
    return ReadFileUpTo(path, kMostFileBytes, bytes);
}

int ReadTextFile(const std::string &path, std::string &text) {
    FileBytes bytes;
    const int error = ReadFile(path, bytes);
    text.assign(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    return error;
}

namespace {

// A new side file of `path` with these bytes, on the disk. It has a name after an error too, if it
// was made.
int WriteSide(const std::string &path, std::span<const std::byte> bytes, std::string &side) {
    OpenedFile file;
    if (const int error = file.CreateSide(path, side))
        return error;
    if (const int error = file.WriteAt(0, bytes))
        return error;
    if (const int error = file.Sync())
        return error;
    return file.Close();
}

// Nothing of a failed step stays behind.
int RemoveSideAfter(int error, const std::string &side) {
    if (error != 0 && !side.empty())
        (void)Files.Remove(side);
    return error;
}

} // namespace

int ReplaceFile(const std::string &path, std::span<const std::byte> bytes) {
    std::string target, side;
    if (const int error = Files.FollowLinks(path, target))
        return error;
    Files.RemoveOldSides(FolderOf(target));
    int error = WriteSide(target, bytes, side);
    if (error == 0)
        error = Files.Rename(side, target);
    return error != 0 ? RemoveSideAfter(error, side) : Files.SyncFolder(FolderOf(target));
}

int CopyFile(const std::string &from, const std::string &to) {
    FileBytes bytes;
    if (const int error = ReadFile(from, bytes))
        return error;
    return ReplaceFile(to, bytes);
}

int MoveToFirst(const std::string &from, std::span<const std::string> names) {
    std::size_t place = 0;
    while (place + 1 < names.size() && Files.Exists(names[place]))
        ++place;
    for (; place > 0; --place)
        if (const int error = Files.Rename(names[place - 1], names[place]))
            return error;
    return Files.Rename(from, names[0]);
}

int CopyToFirst(const std::string &from, std::span<const std::string> names) {
    FileBytes bytes;
    std::string side;
    if (const int error = ReadFile(from, bytes))
        return error;
    Files.RemoveOldSides(FolderOf(names[0]));
    int error = WriteSide(names[0], bytes, side);
    if (error == 0)
        error = MoveToFirst(side, names);
    return RemoveSideAfter(error, side);
}

std::string FolderOf(std::string_view path) {
    const auto last = path.find_last_of("/\\");
    return last == std::string_view::npos ? std::string() : std::string(path.substr(0, last + 1));
}

std::string NameOf(std::string_view path) {
    const auto last = path.find_last_of("/\\");
    return std::string(last == std::string_view::npos ? path : path.substr(last + 1));
}

std::string WithSeparator(std::string folder) {
    if (folder.empty() || (folder.back() != '/' && folder.back() != '\\'))
        folder += '/';
    return folder;
}

std::string WithoutSeparator(std::string folder) {
    if (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\'))
        folder.pop_back();
    return folder;
}

} // namespace zrt
