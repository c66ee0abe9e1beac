#include "support/faulty_files.h"

#include "platform/files.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <stdexcept>
#include <utility>

namespace zrt {

FaultyFilesState FaultyFiles;

namespace {

constexpr std::size_t kMostOperations = 20'000; // of a program that does not end

FileDoor real;

struct OpenHandle {
    std::string Path;
    std::string Name; // what it is counted as: a side file has that of the file it will replace
    OpenMode Mode = OpenMode::Read;
};
std::map<int, OpenHandle> handles;

// ---- what a power cut undoes

std::map<std::string, std::string> unsynced; // what was in those files before

// A name that was made, moved or removed, and is not on the disk before its folder is synced.
struct NameChange {
    std::string Folder;
    std::function<void()> Undo;
};
std::vector<NameChange> unsyncedNames; // in their order

bool TracksPower() {
    return FaultyFiles.Kind == FaultKind::PowerCut || FaultyFiles.Kind == FaultKind::NamesKept;
}

std::string BytesOfFile(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const std::string &path, const std::string &bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

void TakeUnsynced(const std::string &path) {
    if (TracksPower() && !unsynced.contains(path))
        unsynced[path] = BytesOfFile(path); // empty if there is none yet
}

void MoveUnsynced(const std::string &from, const std::string &to) {
    unsynced.erase(to);
    if (auto node = unsynced.extract(from)) {
        node.key() = to;
        node.mapped().clear();
        unsynced.insert(std::move(node));
    }
}

void TakeNameChange(const std::string &path, std::function<void()> undo) {
    if (FaultyFiles.Kind == FaultKind::PowerCut)
        unsyncedNames.push_back({FolderOf(path), std::move(undo)});
}

// Puts the file of this path back as the disk has it now.
std::function<void()> Restoring(const std::string &path) {
    if (!TracksPower() || !std::filesystem::exists(path))
        return [] {};
    const auto old = unsynced.find(path);
    return [path, bytes = old == unsynced.end() ? BytesOfFile(path) : old->second] {
        WriteFile(path, bytes);
    };
}

} // namespace

void CutPower() {
    FaultyFiles.Crashed = true;
    for (const auto &[path, bytes] : unsynced)
        WriteFile(path, bytes);
    unsynced.clear();
    for (; !unsyncedNames.empty(); unsyncedNames.pop_back())
        unsyncedNames.back().Undo();
}

namespace {

// ---- the faults

int ErrorOfFault(const FileOperation &operation) {
    FaultyFiles.Failed.push_back(operation);
    switch (FaultyFiles.Kind) {
    case FaultKind::Fails:
    case FaultKind::HalfWritten: return FaultyFiles.Error;
    case FaultKind::StaysFull: FaultyFiles.Full = true; return ENOSPC;
    case FaultKind::Crash:
    case FaultKind::TornCrash: FaultyFiles.Crashed = true; break;
    case FaultKind::PowerCut:
    case FaultKind::NamesKept: CutPower(); break;
    }
    return EIO;
}

// Counts an operation. Returns 0 if it is to be done, else the error of its fault.
int Count(const char *name, const std::string &path, bool forReading = false) {
    if (FaultyFiles.Crashed)
        return EIO;
    const FileOperation operation = {name, NameOf(path), forReading};
    FaultyFiles.Done.push_back(operation);
    if (FaultyFiles.Full && operation.Name == std::string("WriteAt")) {
        FaultyFiles.Failed.push_back(operation);
        return ENOSPC;
    }
    if (static_cast<int>(FaultyFiles.Done.size()) != FaultyFiles.FaultAt)
        return 0;
    return ErrorOfFault(operation);
}

int CountOf(const char *name, int handle) {
    const OpenHandle &open = handles[handle];
    return Count(name, open.Name, open.Mode == OpenMode::Read);
}

// ---- the door

void TakeNewFile(const std::string &path, bool existed) {
    if (!existed)
        TakeNameChange(path, [path] { std::filesystem::remove(path); });
}

int Open(const std::string &path, OpenMode mode, int &handle) {
    if (FaultyFiles.Done.size() > kMostOperations)
        throw std::runtime_error("the program does not stop using the disk");
    const char *name = mode == OpenMode::Create ? "Create" : "Open";
    if (const int error = Count(name, path, mode == OpenMode::Read))
        return error;
    if (mode == OpenMode::Create)
        TakeUnsynced(path);
    const bool existed = std::filesystem::exists(path);
    const int error = real.Open(path, mode, handle);
    if (error != 0)
        return error;
    handles[handle] = {path, path, mode};
    TakeNewFile(path, existed);
    return 0;
}

int CreateSide(const std::string &path, std::string &side, int &handle) {
    if (const int error = Count("Create", path))
        return error;
    if (const int error = real.CreateSide(path, side, handle))
        return error;
    handles[handle] = {side, path, OpenMode::Create};
    TakeUnsynced(side);
    TakeNewFile(side, false);
    return 0;
}

int ReadAt(int handle, std::uint64_t offset, std::span<std::byte> bytes, std::size_t &got) {
    got = 0;
    const int error = CountOf("ReadAt", handle);
    return error != 0 ? error : real.ReadAt(handle, offset, bytes, got);
}

int WriteAt(int handle, std::uint64_t offset, std::span<const std::byte> bytes) {
    const auto failed = FaultyFiles.Failed.size();
    const bool wasUp = !FaultyFiles.Crashed && !FaultyFiles.Full;
    const int error = CountOf("WriteAt", handle);
    if (error == 0) {
        TakeUnsynced(handles[handle].Path);
        return real.WriteAt(handle, offset, bytes);
    }
    const bool halves = FaultyFiles.Kind == FaultKind::HalfWritten ||
                        FaultyFiles.Kind == FaultKind::StaysFull ||
                        FaultyFiles.Kind == FaultKind::TornCrash;
    if (wasUp && halves && FaultyFiles.Failed.size() > failed)
        (void)real.WriteAt(handle, offset, bytes.first(bytes.size() / 2));
    return error;
}

int Length(int handle, std::uint64_t &length) {
    const int error = CountOf("Length", handle);
    return error != 0 ? error : real.Length(handle, length);
}

int Sync(int handle) {
    const int error = CountOf("Sync", handle);
    if (error == 0)
        unsynced.erase(handles[handle].Path);
    return error;
}

// The handle is gone, whatever the result.
int Close(int handle) {
    const int error = CountOf("Close", handle);
    (void)real.Close(handle);
    handles.erase(handle);
    return error;
}

int Remove(const std::string &path) {
    if (const int error = Count("Remove", path))
        return error;
    const auto restore = Restoring(path);
    if (const int error = real.Remove(path))
        return error;
    unsynced.erase(path);
    TakeNameChange(path, restore);
    return 0;
}

int Rename(const std::string &from, const std::string &to) {
    if (const int error = Count("Rename", to))
        return error;
    const auto restore = Restoring(to);
    if (const int error = real.Rename(from, to))
        return error;
    MoveUnsynced(from, to);
    TakeNameChange(to, [from, to, restore] {
        std::filesystem::rename(to, from);
        restore();
    });
    return 0;
}

int SyncFolder(const std::string &folder) {
    const int error =
        Count("SyncFolder", FaultyFiles.Done.empty() ? "" : FaultyFiles.Done.back().File);
    if (error == 0)
        std::erase_if(unsyncedNames, [&folder](const NameChange &change) {
            return change.Folder == WithSeparator(folder);
        });
    return error;
}

int MakeFolder(const std::string &folder) {
    const int error = Count("MakeFolder", folder);
    return error != 0 ? error : real.MakeFolder(folder);
}

} // namespace

void InstallFaultyFiles() {
    real = DiskFiles();
    handles.clear();
    unsynced.clear();
    unsyncedNames.clear();
    Files.Open = Open;
    Files.CreateSide = CreateSide;
    Files.ReadAt = ReadAt;
    Files.WriteAt = WriteAt;
    Files.Length = Length;
    Files.Sync = Sync;
    Files.Close = Close;
    Files.Remove = Remove;
    Files.Rename = Rename;
    Files.SyncFolder = SyncFolder;
    Files.MakeFolder = MakeFolder;
}

} // namespace zrt
