// The multipliers of the open contest: the tables of what counts, and what of them is worked. The
// loader fills the tables; LogQso and the re-scan mark them by one and the same core.
#pragma once

#include "entry/parsed_exchange.h"
#include "session/bands.h"
#include "session/log_entry.h"
#include "session/reference_data.h"

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

inline constexpr std::size_t kMostAaPrefixes =
    150; // of a band; a further one counts again and again
inline constexpr std::size_t kMostCwoCalls = 1000;
inline constexpr i16 kZones = 40;
inline constexpr i16 kCountyRow = 5; // of the ZRT states: the home state, worked by its counties
inline constexpr i16 kSprintHomelessRow = 11;   // Hawaii never counts in the Sprint
inline constexpr i16 kCwFlag = 0, kSsbFlag = 1; // of a row in ARRL 10 m

// A row of a table. A spelling that is empty matches nothing.
struct MultRow {
    std::array<std::string, 3>
        Spellings; // the first one is for display, but in NeqpMults the third
    // By BandIndex 1 to 14 in ARRL DX and NAQP, by kCwFlag and kSsbFlag in ARRL 10 m; where a
    // multiplier counts once in the contest the flag is at 0.
    std::array<bool, 15> Worked{};
};
using MultTable = std::vector<MultRow>; // row n is at n - 1

using CountsByBand = std::array<i16, kBandCodeRows>; // by BandIndex; the row 0 stays unused

struct MultiplierState {
    MultTable ZrtMults; // states of a station at home, counties of any other
    MultTable ZrtCounties;
    MultTable PaqpMults, NeqpMults, SprintMults, SsMults, ArrlMults, NaqpMults, TenMults;

    std::map<std::string, i16, std::less<>> SsRows; // by short form

    // Contacts by country row and band, and by zone and band; the rows 0 stay unused.
    std::vector<CountsByBand> CountryWorked = std::vector<CountsByBand>(kMostCountries + 1);
    std::vector<CountsByBand> ZoneWorked = std::vector<CountsByBand>(kZones + 1);
    CountsByBand CountriesPerBand{}, ZonesPerBand{};
    std::vector<i16> GenericCwCountry = std::vector<i16>(kMostCountries + 1);
    std::vector<i16> GenericSsbCountry = std::vector<i16>(kMostCountries + 1);
    std::array<std::vector<std::string>, kBandCodeRows> AaPrefixes;
    std::vector<std::string> WpxPrefixes; // sorted
    std::vector<FixedText<10>> CwoCalls;
    i16 TenCwMults = 0, TenSsbMults = 0;
};
extern MultiplierState Multipliers;

// Fills the tables of the open contest from the reference data, with nothing worked; all others
// are empty.
void FillMultiplierTables();

// The row, from 1, with this text among its first `spellings` spellings; 0 for none.
i16 FindMult(const MultTable &table, std::string_view text, int spellings = 3);

// A stored exchange for the operator: the first spelling of the row that it names, or the text as
// it stands where it is no row. Hawaii in the Sprint stays the number it is stored as.
std::string MultText(std::string_view stored);

// The two-letter form of an SS section, by its row; sections of today have theirs behind the 83.
const std::string &SsShortForm(i16 row);
// The row with a short form, 0 for none.
i16 SsSectionRow(std::string_view shortForm);

// What a contact adds to the multipliers. ARRL 10 m counts states and CW Open calls without a band.
struct NewMults {
    i16 Total = 0;
    i16 OnBand = 0;
    friend bool operator==(const NewMults &, const NewMults &) = default;
};

// Marks the multipliers of a contact that is being logged, a dupe too, and fills its RcvdExchange.
// May set its Points to "0" (the own continent's countries in ARRL DX), and Entry.NewMultFlag,
// NewMultRow and CountyContact.
NewMults ApplyMultiplier(LogEntry &entry, const ParsedExchange &parsed);

// Marks the multipliers of a contact as it is stored, when a log is read.
NewMults ReplayMultiplier(const OldEntry36 &entry);
// The same in ARRL DX at a station in the USA or Canada, with a country that the caller knows.
NewMults ReplayCountry(i16 country, i16 bandIndex);

// The place of a prefix, cut to the 5 characters that are stored, in WpxPrefixes. With testOnly
// nothing is inserted.
struct PrefixPlace {
    std::size_t Position;
    bool IsNew;
};
PrefixPlace InsertPrefix(std::string_view prefix, bool testOnly);
bool AaPrefixIsNew(std::string_view prefix, i16 bandIndex);

// Generic: the countries with a contact in the mode.
i16 CountriesWorked(const std::vector<i16> &contacts);

} // namespace zrt
