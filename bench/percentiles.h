// The distribution of what a benchmark measures: an operator feels the slowest key, not the mean.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <vector>

namespace zrt {

using Values = std::vector<double>;

// Adds the counters p50_UNIT, p99_UNIT and max_UNIT.
void ReportPercentiles(benchmark::State &state, Values values, const std::string &unit);

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
    void Report(benchmark::State &state) { ReportPercentiles(state, Microseconds, "us"); }

  private:
    Values Microseconds;
};

} // namespace zrt
