// The search for partial calls as plain loops over the tables: what the scan must find, and what it
// is measured against.
#pragma once

#include "entry/dupes.h"
#include "entry/old_calls.h"
#include "entry/partial_calls.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/reference_data.h"

#include <string>
#include <vector>

namespace zrt {

inline std::vector<i16> PlainMatches(const std::string &text) {
    std::vector<i16> found;
    for (i16 n = 1; n < Log.NextEntry && found.size() < kMostPartials; ++n)
        if (Dupes.CallText[static_cast<std::size_t>(n)].Trimmed().find(text) != std::string::npos)
            found.push_back(n);
    return found;
}

inline std::vector<i16> PlainOldCalls(const std::string &text, std::size_t most) {
    std::vector<i16> found;
    for (std::size_t i = 0; i < OldCalls.Rows.size() && found.size() < most; ++i)
        if (OldCalls.Rows[i].Call.find(text) != std::string::npos)
            found.push_back(static_cast<i16>(i));
    return found;
}

inline std::vector<i32> PlainKnownCalls(const std::string &text) {
    std::vector<i32> found;
    for (i32 n = 1; n <= Reference.SCPCount && found.size() < kMostKnownPartials; ++n) {
        const std::string_view row = SCPRow(n);
        if (row.find(text) == std::string_view::npos)
            continue;
        const bool star = row.starts_with('*');
        if (Contest.SCPSelection == "US" && !star && !row.starts_with('+'))
            continue;
        if (Contest.SCPSelection == "DX" && star)
            continue;
        found.push_back(n);
    }
    return found;
}

} // namespace zrt
