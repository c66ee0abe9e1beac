#include "entry/old_calls.h"

#include <algorithm>

namespace zrt {

OldCallState OldCalls;

std::size_t FindOldCall(std::string_view call) {
    const auto place = std::lower_bound(
        OldCalls.Rows.begin(), OldCalls.Rows.end(), call,
        [](const OldCallRow &row, std::string_view wanted) { return row.Call < wanted; });
    return static_cast<std::size_t>(place - OldCalls.Rows.begin());
}

std::size_t InsertOldCall(std::string_view call, std::string_view exchange) {
    const std::size_t place = FindOldCall(call);
    if (place == OldCalls.Rows.size() || OldCalls.Rows[place].Call != call) {
        OldCalls.Rows.insert(OldCalls.Rows.begin() + static_cast<std::ptrdiff_t>(place),
                             {std::string(call), std::string(exchange)});
        OldCalls.Start.clear();
    }
    return place;
}

void PrepareOldCallBlock() {
    if (OldCalls.Start.size() == OldCalls.Rows.size() + 1)
        return;
    OldCalls.Block.clear();
    OldCalls.Start.assign(1, 0);
    for (const OldCallRow &row : OldCalls.Rows) {
        OldCalls.Block += row.Call;
        OldCalls.Block += '\n';
        OldCalls.Start.push_back(static_cast<std::uint32_t>(OldCalls.Block.size()));
    }
}

} // namespace zrt
