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

int ReadFile(const std::string &path, FileBytes &bytes) {
    bytes.clear();
    OpenedFile file;
    if (const int error = file.Open(path, OpenMode::Read))
        return error;
    std::uint64_t length = 0;
    if (const int error = file.Length(length))
        return error;
    bytes.resize(length);
    std::size_t got = 0;
    if (const int error = file.ReadAt(0, bytes, got))
        return error;
    bytes.resize(got);
    return 0;
}

int ReadFileUpTo(const std::string &path, std::uint64_t most, FileBytes &bytes) {
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

int ReadTextFile(const std::string &path, std::string &text) {
    FileBytes bytes;
    const int error = ReadFile(path, bytes);
    text.assign(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    return error;
}

namespace {

int WriteWhole(const std::string &path, std::span<const std::byte> bytes) {
    OpenedFile file;
    if (const int error = file.Open(path, OpenMode::Create))
        return error;
    if (const int error = file.WriteAt(0, bytes))
        return error;
    if (const int error = file.Sync())
        return error;
    return file.Close();
}

} // namespace

int ReplaceFile(const std::string &path, std::span<const std::byte> bytes) {
    const std::string side = path + ".new";
    int error = WriteWhole(side, bytes);
    if (error == 0)
        error = Files.Rename(side, path);
    if (error != 0) {
        (void)Files.Remove(side); // nothing of a failed write stays behind
        return error;
    }
    return Files.SyncFolder(FolderOf(path));
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
