// Bands: their names, and the codes that hold band and mode in one number.
#pragma once

#include "session/fixed_text.h"

#include <array>

namespace zrt {

// A band position is 1 to 11 in the order of these tables. Row 12, blank, stands for none.
inline constexpr int kBandPositions = 11;
inline constexpr int kNoBandPosition = 12;

// For log lines and fixed columns, index position - 1.
inline constexpr std::array<const char *, 12> kBandNamesShort = {
    "10 ", "15 ", "20 ", "40 ", "80 ", "160", "6m ", "2m ", "12 ", "17 ", "30 ", "   "};
// For labels.
inline constexpr std::array<const char *, 12> kBandNamesLong = {
    "10m", "15m", "20m", "40m", "80m", "160", "6m ", "2m ", "12m", "17m", "30m", "   "};

// A BandIndex is 1 to 24: CW 1 to 8 and 21 to 23, phone 9 to 19. 20 and 24 are unused, but valid
// as an index. A table by BandIndex has a row 0 that stays unused.
inline constexpr i16 kBandCodes = 24;
inline constexpr std::size_t kBandCodeRows = kBandCodes + 1;
// What stands in a file in the place of a code outside 1 to 24 is taken as this one (2m phone).
inline constexpr i16 kBandOfBadCode = 16;

// The codes of the eleven positions, index position - 1.
inline constexpr std::array<i16, 11> kCwCodes = {1, 2, 3, 4, 5, 6, 7, 8, 21, 22, 23};
inline constexpr std::array<i16, 11> kPhoneCodes = {9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19};

constexpr bool IsBandCode(int bandIndex) {
    return bandIndex >= 1 && bandIndex <= kBandCodes;
}

constexpr bool IsPhone(int bandIndex) {
    return bandIndex >= 9 && bandIndex <= 20;
}

constexpr bool IsCw(int bandIndex) {
    return !IsPhone(bandIndex);
}

// The position of a code, kNoBandPosition for a code that has none.
constexpr int BandPosition(int bandIndex) {
    if (bandIndex >= 1 && bandIndex <= 8)
        return bandIndex;
    if (bandIndex >= 9 && bandIndex <= 19)
        return bandIndex - 8;
    if (bandIndex >= 21 && bandIndex <= 23)
        return bandIndex - 12;
    return kNoBandPosition;
}

// The code of a position (1 to 11) in the mode of another code.
constexpr i16 CodeInMode(int position, bool phone) {
    return phone ? kPhoneCodes[position - 1] : kCwCodes[position - 1];
}

constexpr const char *ShortBandName(int bandIndex) {
    return kBandNamesShort[BandPosition(bandIndex) - 1];
}

constexpr const char *LongBandName(int bandIndex) {
    return kBandNamesLong[BandPosition(bandIndex) - 1];
}

} // namespace zrt
