// The distribution of what a benchmark measures: an operator feels the slowest key, not the mean.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <vector>

namespace zrt {

class Percentiles {
  public:
    // Runs `work` once, timed; the benchmark takes the time as its own (UseManualTime).
    template <typename Work> void Time(benchmark::State &state, Work work) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(took.count());
        Microseconds.push_back(took.count() * 1e6);
    }
    // Adds the counters p50_us, p99_us and max_us.
    void Report(benchmark::State &state);

  private:
    std::vector<double> Microseconds;
};

} // namespace zrt
