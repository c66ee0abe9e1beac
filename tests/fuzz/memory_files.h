// Files that live in memory, for fuzzers: nothing on the disk is read, written or waited for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zrt {

// Replaces the door to the disk by an empty one in memory.
void InstallMemoryFiles();
void PutMemoryFile(const std::string &path, const std::uint8_t *data, std::size_t size);

} // namespace zrt
