// The letters of the call areas of the USA and Canada, as ranges in text order. For the marks of
// the known calls (session/reference_data) and the analysis of calls (entry/callsign).
#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace zrt {

// First and last of a run of equally long texts; both belong to it.
struct TextRange {
    std::string_view First;
    std::string_view Last;
};

constexpr bool InRanges(std::string_view text, std::span<const TextRange> ranges) {
    return std::any_of(ranges.begin(), ranges.end(), [text](const TextRange &range) {
        return text >= range.First && text <= range.Last;
    });
}

// The two-letter areas; a first letter K, N or W that none of these tables holds is the USA too.
inline constexpr std::array kUsAreas = {TextRange{"AA", "AG"}, TextRange{"AI", "AK"}};
inline constexpr std::array kCanadianAreas = {TextRange{"CF", "CK"}, TextRange{"CY", "CZ"},
                                              TextRange{"VA", "VG"}, TextRange{"VO", "VO"},
                                              TextRange{"VX", "VY"}, TextRange{"XJ", "XO"}};
// US calls of the Caribbean and Alaska, and of the Pacific.
inline constexpr std::array kUsNorthAmerica = {
    TextRange{"KP", "KP"}, TextRange{"NP", "NP"}, TextRange{"WP", "WP"}, TextRange{"AL", "AL"},
    TextRange{"KL", "KL"}, TextRange{"NL", "NL"}, TextRange{"WL", "WL"}};
inline constexpr std::array kUsPacific = {TextRange{"AH", "AH"}, TextRange{"KH", "KH"},
                                          TextRange{"NH", "NH"}, TextRange{"WH", "WH"}};

constexpr bool BeginsWithUsLetter(std::string_view call) {
    return !call.empty() && (call[0] == 'K' || call[0] == 'N' || call[0] == 'W');
}

} // namespace zrt
