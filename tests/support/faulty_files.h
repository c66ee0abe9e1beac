// A file door whose n-th operation fails, for the sweeps over every fault that a disk can have. It
// stands in front of the real disk and counts what reaches it; asking for names and locks is not
// counted: no contact depends on it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zrt {

struct FileOperation {
    const char *Name = ""; // "Open", "Create", "WriteAt", ...
    std::string File;      // the last part of its path; of SyncFolder: that of the one before
    bool ForReading = false;
};

enum class FaultKind {
    Fails,       // nothing is done
    HalfWritten, // a write brings its first half to the file
    StaysFull,   // the same, and no write after it brings anything, until FaultyFiles.Full is false
    Crash,       // from then on nothing is done
    TornCrash,   // the same, after half of a write
    PowerCut,    // the same, and what was not synced is gone: contents, and names of their folders
    NamesKept,   // the same, but the names had come to the disk by themselves
};

struct FaultyFilesState {
    int FaultAt = 0; // the operation with the fault, counted from 1; 0 for none
    FaultKind Kind = FaultKind::Fails;
    int Error = 0; // of the failed operation, an errno

    std::vector<FileOperation> Done;   // all operations so far, in their order
    std::vector<FileOperation> Failed; // those with a fault
    bool Full = false;
    bool Crashed = false;
};
extern FaultyFilesState FaultyFiles;

// Now, and not at FaultAt; the kind must have been PowerCut or NamesKept since the beginning.
void CutPower();

// Puts the faulty door into Files. What FaultyFiles holds stays. Sync and SyncFolder are counted,
// and do nothing.
void InstallFaultyFiles();

} // namespace zrt
