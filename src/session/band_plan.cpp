#include "session/band_plan.h"

#include "session/bands.h"
#include "session/contests.h"

#include <algorithm>

namespace zrt {

namespace {

constexpr int k17m = 10;

} // namespace

const BandRange *RangeOf(float kHz) {
    const auto *const range =
        std::find_if(kBandPlan.begin(), kBandPlan.end(), [kHz](const BandRange &row) {
            return kHz >= row.Lowest && kHz <= row.Highest;
        });
    return range == kBandPlan.end() ? nullptr : range;
}

i16 FrequencyToBandMode(float kHz) {
    const BandRange *range = RangeOf(kHz);
    if (range == nullptr)
        return 0;
    const bool cwOnly = range->HighestCw == range->Highest || !Contest.ModePhone;
    if (cwOnly || (Contest.ModeCW && kHz <= range->HighestCw))
        return CodeInMode(range->Position, false);
    // In a log of both modes a frequency of 17 m phone names no band: it leaves the band as it is.
    if (range->Position == k17m && Contest.ModeCW)
        return 0;
    return CodeInMode(range->Position, true);
}

} // namespace zrt
