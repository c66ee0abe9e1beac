#include "bench/full_log.h"

#include "session/contests.h"
#include "session/log_file.h"
#include "session/settings.h"

namespace zrt {

namespace {

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

} // namespace zrt
