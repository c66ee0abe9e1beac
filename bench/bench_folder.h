// A program folder for a benchmark, and the program started in it on the headless doors.
#pragma once

#include <string>

namespace zrt {

// A folder on the disk that the benchmarks are run from; a memory file system would sync for free.
class BenchFolder {
  public:
    BenchFolder();
    ~BenchFolder();
    BenchFolder(const BenchFolder &) = delete;
    BenchFolder &operator=(const BenchFolder &) = delete;
    std::string Path; // with a separator at its end
};

// Fills the folder like that of a first start, and starts the program afresh.
void StartInFolder(const std::string &folder);

} // namespace zrt
