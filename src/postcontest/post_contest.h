// What the files after a contest are made from besides the log: the operator's choices in the
// dialog and what follows from the log's header. The dialog fills it, all writers read it.
#pragma once

#include "session/fixed_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace zrt {

struct CategoryData {
    FixedText<20> Class;
    FixedText<12> Overlay;
    FixedText<10> Band, Mode, Power;
    FixedText<12> Station;
    friend bool operator==(const CategoryData &, const CategoryData &) = default;
};

struct PostContestState {
    CategoryData Category;
    // By the tag of the log; both are set in a contest of both modes.
    bool ContestIsCw = false, ContestIsSsb = false;
    bool RcvdIsPower = false;    // ARRL DX: the station receives powers, not states
    bool ShowRst = false;        // Generic: reports are printed
    bool ExactFrequency = false; // Cabrillo: the frequency of the radio, not of the band
    bool IsCabrilloInput = false;
    std::string ContestName;               // as the dialog heads it: "CQWW DX CW", "WPX"
    bool IsCwtFile = false;                // a Generic log of a CWOps mini-contest
    std::string InputPath;                 // of the log or Cabrillo file
    std::string BaseName;                  // of all output files: the log's path without extension
    std::vector<std::string> FilesWritten; // names without folder, in the order of writing
};
extern PostContestState PostData;

// The paths of an input; all else as in a new state. BaseName lacks the last four characters, the
// dot and the extension.
void TakeInputPath(const std::string &path);
// The same for the log Log.LogFileName, whose contest has been set up; the flags are by its header
// Log.KeptHeader.
void TakePostContestLog();

// Writes BaseName + extension (".LOG") whole, or leaves what is there as it was and returns the
// system's error. The text is as the file gets it: Latin-1, lines ended by CR LF.
[[nodiscard]] int WriteOutputFile(std::string_view extension, const std::string &text);

} // namespace zrt
