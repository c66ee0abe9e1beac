#include "bench/percentiles.h"

#include <algorithm>

namespace zrt {

void Percentiles::Report(benchmark::State &state) {
    if (Microseconds.empty())
        return;
    std::sort(Microseconds.begin(), Microseconds.end());
    const auto at = [this](double share) {
        return Microseconds[static_cast<std::size_t>(share *
                                                     static_cast<double>(Microseconds.size() - 1))];
    };
    state.counters["p50_us"] = at(0.50);
    state.counters["p99_us"] = at(0.99);
    state.counters["max_us"] = Microseconds.back();
}

} // namespace zrt
