// The prefixes of all countries, and the hash that finds the longest one a call begins with.
// session/reference_data fills it, entry/callsign asks it.
#pragma once

#include "session/fixed_text.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

struct PrefixEntry {
    std::string Text;
    i16 Row = 0;            // of the country; 0 if it stands before the first one
    i16 Zone = 0;           // CQ zone, 0 if the entry has none of its own
    bool WholeCall = false; // names this one call, not all that begin with it
};

// Whether the countries with a "*" before their prefix count: in CQ contests, not in ARRL DX.
enum class StarredCountries { Count, Skip };

// A text that stands in the table, and what it means, as an entry's place + 1 or 0. The first entry
// of equal ones counts. Each for StarredCountries::Count and Skip.
struct PrefixSlot {
    std::uint32_t Hash = 0;
    i32 Text = 0;                   // an entry with this text
    std::array<i32, 2> Call{};      // of a call that is this text
    std::array<i32, 2> Beginning{}; // of a longer call that begins with it
};

struct PrefixIndex {
    std::vector<PrefixEntry> Entries; // in the order of the file
    std::vector<PrefixSlot> Slots;    // open addressing; the size is a power of 2
    std::size_t UsedSlots = 0;
    std::size_t Longest = 0; // characters of the longest text
};

// An entry as the country file writes it: "=" before a whole call, the CQ zone in "()"; what stands
// in "[]", "<>", "{}" and "~~" is of no use here. A mark that is not closed runs to the end.
PrefixEntry ParsePrefix(std::string_view piece, i16 row);

void AddPrefix(PrefixIndex &index, PrefixEntry entry, bool starred);

struct FoundPrefix {
    const PrefixEntry *Entry = nullptr; // nullptr: none fits
    bool IsCall = false;                // the entry is the call itself, nothing can fit better
};
// What a run through the table finds: the first entry that equals the call; else the longest that
// the call begins with, the first of equally long ones.
FoundPrefix FindPrefix(const PrefixIndex &index, std::string_view call, StarredCountries starred);

} // namespace zrt
