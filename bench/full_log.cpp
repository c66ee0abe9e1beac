#include "bench/full_log.h"

#include "app/file_menu.h"
#include "app/partial_window.h"
#include "bench/bench_folder.h"
#include "entry/old_calls.h"
#include "platform/files.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/reference_data.h"
#include "session/settings.h"

namespace zrt {

namespace {

constexpr std::size_t kOldCalls = 10000;
constexpr const char *kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

// Contacts as a contest has them: calls of many areas, four bands, a contact in about 19 seconds.
LogEntry ContactNumber(int n) {
    LogEntry entry;
    std::string call = n % 3 == 0 ? "DL" : n % 3 == 1 ? "K" : "JA";
    call += std::to_string(n % 10);
    for (int rest = n; rest > 0; rest /= 26)
        call += kLetters[rest % 26];
    const int minutes = n * 48 * 60 / kMostEntries;
    entry.Callsign = call;
    entry.Date = DateCode(2015, 10, 24 + minutes / 1440);
    entry.Time = static_cast<i16>(minutes / 60 % 24 * 100 + minutes % 60);
    entry.BandIndex = static_cast<i16>(1 + n / 500 % 4);
    entry.SentNumber = static_cast<i16>(n);
    entry.RcvdNumber = 14;
    entry.RcvdExchange = "DL";
    entry.Points = "3";
    return entry;
}

} // namespace

bool MakeFullLog(const std::string &folder, i16 contestId) {
    ContestState contest;
    contest.ContestId = contestId;
    contest.ModeCW = contest.QthUSA = contest.StationUSVE = true;
    contest.ModePhone = ContestTable(contestId).BothModes;
    Log.LogFileName = folder + "FULL.ZRT";
    Log.KeptHeader = BuildHeader(contest);
    Log.CurrentFormat = true;
    Log.NextEntry = kMostEntries + 1;
    for (i16 n = 1; n < Log.NextEntry; ++n) {
        Log.LogEntries[n] = ContactNumber(n);
        Log.Unwritten.push_back(n);
    }
    Settings.RecentFile[0] = Log.LogFileName;
    return CreateLogFile() == 0 && WriteOwedEntries() == 0;
}

bool OpenFullLog(const std::string &folder, i16 contestId) {
    StartInFolder(folder);
    Files.Sync = [](int) { return 0; };
    if (!MakeFullLog(folder, contestId))
        return false;
    Log.LogState = kNoLog; // or the menu asks
    FileOpenRecent(1);
    return Log.NextEntry == kMostEntries + 1 && Contest.ContestId == contestId;
}

bool OpenPartialWithAllCalls() {
    OldCalls = {};
    OldCalls.ShowOldCalls = true;
    for (i32 n = 1; n <= Reference.SCPCount && OldCalls.Rows.size() < kOldCalls; n += 8)
        InsertOldCall(ScpCall(n), "WW14");
    OpenPartial();
    return Reference.SCPLoaded && OldCalls.Rows.size() == kOldCalls;
}

const std::vector<std::string> &TypedCalls() {
    static const std::vector<std::string> kCalls = {
        "DL1ABC", "K1ZZ", "JA1XYZ", "VE3/G4ABC", "KH6XX", "QQQQQQ", "XY0QQX", "JA",
        "DL",     "UA9",  "PY2",    "9A",        "Z",     "K",      "1",      "A1A"};
    return kCalls;
}

} // namespace zrt
