#include "bench/percentiles.h"

#include <algorithm>
#include <cmath>

namespace zrt {

void ReportPercentiles(benchmark::State &state, Values values, const std::string &unit) {
    if (values.empty())
        return;
    std::sort(values.begin(), values.end());
    // By the nearest rank: of fewer than a hundred values the 99th percentile is the greatest.
    const auto at = [&values](double share) {
        return values[static_cast<std::size_t>(
                          std::ceil(share * static_cast<double>(values.size()))) -
                      1];
    };
    state.counters["p50_" + unit] = at(0.50);
    state.counters["p99_" + unit] = at(0.99);
    state.counters["max_" + unit] = values.back();
}

} // namespace zrt
