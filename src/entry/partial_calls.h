// The calls that hold what is typed anywhere in them: of the open log, of earlier logs, and the
// known calls. The window of partial calls asks with each key and shows what is found.
#pragma once

#include "session/fixed_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace zrt {

inline constexpr std::size_t kMostPartials = 15; // of the log and of earlier logs together
inline constexpr std::size_t kMostKnownPartials = 20;

struct PartialCall {
    std::string Call;
    i16 BandIndex = 0;
    friend bool operator==(const PartialCall &, const PartialCall &) = default;
};

struct PartialState {
    std::vector<i16> MatchEntries;         // entries of the log, ascending
    std::vector<i16> OldEntries;           // places in OldCalls.Rows, ascending
    std::vector<i32> ScpEntries;           // rows of master.scp, ascending
    std::vector<PartialCall> PartialCalls; // those of MatchEntries, sorted by call
};
extern PartialState Partials;

// Finds the first calls that hold the text (Latin-1, upper case; blanks around it don't count) into
// the state above. Nothing holds an empty text.
void FindPartials(std::string_view text);

// A row of master.scp without its mark.
std::string_view ScpCall(i32 row);

} // namespace zrt
