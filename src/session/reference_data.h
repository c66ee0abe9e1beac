// What the program knows of the world of today: countries, known calls, multiplier lists, places in
// the maps, the Morse alphabet. Read once at start from four text files in the program's folder.
#pragma once

#include "session/fixed_text.h"
#include "session/prefix_index.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

inline constexpr i16 kMostCountries = 350;
inline constexpr i32 kMostPrefixes = 200000; // a file of today has 27,000
inline constexpr i32 kScpLimit = 44990;      // unless Extensions.ScpLimit is above 0
inline constexpr i16 kCallMatchRows = 400;
inline constexpr i16 kMostSsExtra = 17;

struct Country {
    FixedText<25> Name;
    float Latitude = 0;   // degrees, north positive
    float Longitude = 0;  // degrees, west positive
    FixedText<3> Heading; // degrees from the station; blank until HeadingTo is first asked
    FixedText<2> CQZone;
    FixedText<5> MainPrefix; // a leading "*" marks a country that counts in CQ contests only
    FixedText<2> Continent;
};

// The lists have row n at index n - 1. A row of multiplier text is as the file has it: up to three
// spellings with "/" between, the display form first.
struct ReferenceData {
    std::array<Country, kMostCountries + 1> CountryTable; // row 0 is the unknown country
    i16 CountryCount = 0;
    PrefixIndex Prefixes;
    i32 PrefixCount = 0;
    i16 CountryRowUsa = 0, CountryRowCanada = 0, CountryRowHawaii = 0, CountryRowAlaska = 0;

    // The rows of master.scp, each with LF behind it, in one block for the search; see SCPRow.
    std::string SCPTable;
    std::vector<std::uint32_t> SCPStart; // where each row begins in it
    i32 SCPCount = 0;
    bool SCPLoaded = false;

    std::array<std::string, kCallMatchRows> CallMatchTable; // the last row is always blank
    i16 CallMatchCount = 0;                                 // 400 when the file had more than 399

    // ZRT rows 1 to 58, ZRT counties 59 to 116, SS sections 117 to 199.
    std::array<std::string, 199> CommonList;
    std::array<std::string, 83> SsShortForms;
    // Sections that SS has beyond the 83.
    std::array<std::string, kMostSsExtra> SsExtraMults, SsExtraShortForms;
    i16 SsExtraMultCount = 0, SsExtraShortFormCount = 0;
    std::array<std::string, 72> SprintMults, NaqpMults;
    std::array<std::string, 67> PaqpMults, NeqpMults;
    std::array<std::string, 65> TenMults;
    std::array<std::string, 63> ArrlMults;
    // Places in the maps, in characters and lines. Sprint and NAQP have the 72 of ZRT.
    std::array<i16, 72> ZrtX{}, ZrtY{};
    std::array<i16, 83> SsX{}, SsY{};
    std::array<i16, 65> TenX{}, TenY{};
    std::array<i16, 63> ArrlX{}, ArrlY{};
    std::array<i16, 63> UsVeMultOrder{}; // the place of each row in the display by call area
    // The elements of "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234567890,./? *".
    std::array<std::string, 42> CwCharacters;
};
extern ReferenceData Reference;

// Row n, 1 to SCPCount: the mark if it has one, and the call; 11 characters at most. "*" marks a
// call of the USA or Canada, "+" one of a US possession.
std::string_view SCPRow(i32 n);
// The row that a place in the block belongs to.
i32 SCPRowAt(std::size_t place);

// The readers. Each begins with empty tables, and shows its box if the file can't be read; may
// pump.
void ReadCountries();   // keeps what was read before the failure
void ReadMasterScp();   // leaves SCPLoaded false
void ReadCallMatch();   // is silent
void ReadStartupData(); // ends the program with status 1; fills Radios.LastFrequency too

} // namespace zrt
