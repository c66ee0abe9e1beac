// Forced into each source of the build that tools/mutate.py makes. All mutants of that build are
// compiled in; Mutant(N) is true for the one that the environment switches on.
#pragma once

#include <cstdlib>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zrt_mutants {

constexpr int kMost = 1 << 16;

// The file in which byte N becomes 1 when Mutant(N) is asked, shared with all child processes. It is
// opened past open(), which a test may have fail.
inline unsigned char *MapReached() {
    const char *name = std::getenv("ZRT_MUTANTS_REACHED");
    if (name == nullptr)
        return nullptr;
    const long file = ::syscall(SYS_openat, AT_FDCWD, name, O_RDWR);
    void *bytes = ::mmap(nullptr, kMost, PROT_READ | PROT_WRITE, MAP_SHARED, static_cast<int>(file), 0);
    ::syscall(SYS_close, file);
    if (bytes == MAP_FAILED)
        std::abort();
    return static_cast<unsigned char *>(bytes);
}

inline int Chosen() {
    const char *number = std::getenv("ZRT_MUTANT");
    return number == nullptr ? 0 : std::atoi(number);
}

} // namespace zrt_mutants

inline bool Mutant(int number) {
    static const int chosen = zrt_mutants::Chosen();
    static unsigned char *const reached = zrt_mutants::MapReached();
    if (reached != nullptr)
        reached[number] = 1;
    return number == chosen;
}
