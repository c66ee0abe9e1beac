#include "entry/dupes.h"

#include <algorithm>

namespace zrt {

DupeState Dupes;

namespace {

bool CallBelow(const CallAndBand &a, const CallAndBand &b) {
    return a.Call.Whole() < b.Call.Whole();
}

void RecordPortable(std::string_view call, PortableTie tie) {
    if (call.find('/') == std::string_view::npos || Dupes.PortableTable.size() >= kMostPortables)
        return;
    const FixedText<10> full(call);
    for (const PortableRow &row : Dupes.PortableTable)
        if (row.FullCall == full)
            return;
    Dupes.PortableTable.push_back({full, BaseCall(call, tie)});
}

} // namespace

std::string_view BaseCall(std::string_view call, PortableTie tie) {
    const auto slash = call.find('/');
    if (slash == std::string_view::npos)
        return call;
    const std::string_view left = call.substr(0, slash);
    const std::string_view right = call.substr(slash + 1);
    if (left.size() == right.size())
        return tie == PortableTie::Left ? left : right;
    return left.size() > right.size() ? left : right;
}

std::size_t InsertCall(std::string_view call, i16 bandIndex, bool findOnly) {
    auto &calls = Dupes.CurrentCalls;
    const CallAndBand entry{call, bandIndex};
    const auto [first, end] = std::equal_range(calls.begin(), calls.end(), entry, CallBelow);
    if (findOnly)
        return static_cast<std::size_t>(first - calls.begin());
    auto place = std::find(first, end, entry);
    if (place == end)
        place = calls.insert(end, entry);
    return static_cast<std::size_t>(place - calls.begin());
}

void RecordCall(i16 n, std::string_view call, i16 bandIndex, PortableTie tie) {
    Dupes.CallHash[n] = TextHash(call);
    Dupes.CallText[n] = call;
    InsertCall(call, bandIndex, false);
    RecordPortable(call, tie);
}

} // namespace zrt
