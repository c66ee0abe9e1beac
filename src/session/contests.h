// The thirteen contests: what follows from the choice of one, and what the open log's contest is.
#pragma once

#include "session/log_entry.h"

#include <array>
#include <string>
#include <string_view>

namespace zrt {

enum ContestNumber : i16 {
    kNoContest = 0,
    kArrlDx = 1,
    kZrt = 2,
    kCqWw = 3,
    kSprint = 4,
    kSs = 5,
    kWpx = 6,
    kAa = 7,
    kPaqp = 8,
    kNaqp = 9,
    kTenMeter = 10,
    kNeqp = 11,
    kGeneric = 12,
    kCwOpen = 13
};
inline constexpr i16 kContests = 13;

// What the letters behind the tag in the header tell.
enum class TagLetters { Mode, Location, None };

struct ContestRow {
    const char *ChooserRow; // the text in the chooser's list
    const char *Tag;        // the first three letters of ContestTag
    TagLetters Letters;
    bool BothModes; // CW and phone in one log
    i16 OffTimeGap; // the longest pause in minutes that still counts as operating time
    int FirstBand;  // the positions of the bands that are active at first
    int LastBand;
    const char *SCPSelection; // which calls of master.scp match: "ALL", "US" or "DX"
    // The names in the log label: of the loader, of File, New and of Save As. They differ, and
    // the operators of many years know them so.
    const char *LoadLabel;
    const char *NewLabel;
    const char *SaveAsLabel;
};

// The row of a ContestId, 1 to 13.
const ContestRow &ContestTable(i16 contestId);

struct ContestState {
    i16 ContestId = kNoContest;
    bool ModeCW = false;
    bool ModePhone = false;
    bool StationInState = false;        // 2, 8, 11
    bool StationUSVE = false;           // 1
    bool QthUSA = false, QthVE = false; // 3, 6
    std::string QthContinent;           // 3, 6, where both are false
    i16 CWOSession = 0;                 // 13: 1200, 2000 or 0
    i16 SsSectionYear = 0;              // 5: 97, or 95 and 96 in logs from before
    i16 OffTimeGap = 15;                // minutes
    std::string SCPSelection = "ALL";
    std::array<bool, 12> ActiveBands{}; // index position - 1
};
extern ContestState Contest;

// The six continents in the order of the chooser's list and of the header's codes "4" to "9".
inline constexpr std::array<const char *, 6> kContinents = {"AF", "AS", "EU", "NA", "OC", "SA"};

// The header of a new log of the contest as chosen.
LogHeader BuildHeader(const ContestState &contest);

// The ContestId that the first two letters of a tag name, kNoContest for none.
i16 ContestOfTag(std::string_view contestTag);

// Takes contest, mode and location from a header; a tag that names no contest leaves the
// ContestId. What the header does not tell of is cleared, but for StationInState, which only a
// ZRT header tells.
void TakeContest(const LogHeader &header);

// PAQP and NEQP: StationInState as the header tells it, which TakeContest leaves out.
void TakeArea(const LogHeader &header);

// The set-up that follows from the contest: OffTimeGap, SCPSelection and the active bands.
void SetUpContest();

enum class LabelTable { Load, New, SaveAs };
// "Log: " name " - - Contest: " contest, with " CW" or " SSB" where the table has it.
std::string LogLabel(LabelTable table, std::string_view fileName);

// A name of more than `length` characters loses its middle, with "..." between the two ends.
std::string ShortenMiddle(std::string_view name, std::size_t length);

} // namespace zrt
