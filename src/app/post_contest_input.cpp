#include "app/post_contest_input.h"

#include "app/log_conversion.h"
#include "app/log_header.h"
#include "app/save_path.h"
#include "entry/multipliers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "postcontest/cabrillo_input.h"
#include "postcontest/post_contest.h"
#include "session/contests.h"
#include "session/log_file.h"

#include <string_view>

namespace zrt {

namespace {

constexpr std::uint64_t kMostBytes = std::uint64_t{64} << 20; // of a file that may be a log

void Tell(const std::string &text, const std::string &title = "") {
    ShowMessageBox({text, title, BoxButtons::Ok, BoxIcon::Exclamation});
}

bool TakeCabrillo(const std::string &path, const CabrilloHead &head) {
    if (head.ContestId == kNoContest) {
        Tell("Selected Log file isn't a ARRL DX, CQWW, or WPX Cabrillo File");
        return false;
    }
    Contest = {};
    Contest.ContestId = head.ContestId;
    TakeInputPath(path);
    PostData.IsCabrilloInput = true;
    PostData.ContestName = head.ContestName;
    PostData.ContestIsCw = std::string_view(head.Mode) == "CW";
    PostData.ContestIsSsb = !PostData.ContestIsCw;
    return true;
}

// Only a log of SS from before 1997 is converted: all others are read as they are.
bool TakeLog(const std::string &path) {
    Log.LogFileName = path;
    Contest = {};
    if (!TakeLogHeader() || (Contest.ContestId != kWpx && !BringLogUpToDate()))
        return false;
    SetUpContest();
    FillMultiplierTables();
    TakePostContestLog();
    return true;
}

} // namespace

bool TakePostContestInput(const std::string &path) {
    FileBytes bytes;
    if (ReadFileUpTo(path, kMostBytes, bytes) != 0) {
        Tell("Error attempting to read file " + path + ".  It may not be a Cabrillo log file.",
             "Error in Attempting to Read Cabrillo file");
        return false;
    }
    const CabrilloHead head =
        RecogniseCabrillo({reinterpret_cast<const char *>(bytes.data()), bytes.size()});
    if (head.IsCabrillo)
        return TakeCabrillo(path, head);
    if (HasExtension(path, ".LOG")) {
        Tell("Selected Log file isn't a Cabrillo File");
        return false;
    }
    return TakeLog(path);
}

} // namespace zrt
