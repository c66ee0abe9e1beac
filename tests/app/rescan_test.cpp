#include "app/rescan.h"

#include "app/log_loader.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/statistics.h"
#include "platform/files.h"
#include "session/bands.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

#include <random>

namespace zrt {
namespace {

struct Contact {
    const char *Call;
    int Day; // of January 2015
    i16 Time;
    i16 Band = 3;
    char Points = '2';
};

class Rescan : public ProgramTest {
  protected:
    static void Load(const char *tag, std::initializer_list<Contact> contacts) {
        std::string bytes = HeaderBytes(tag, '2') + std::string(34, '\0');
        for (const Contact &c : contacts)
            bytes +=
                EntryBytes(MakeEntry(c.Call, DateCode(2015, 1, c.Day), c.Time, c.Band, c.Points));
        LoadTemporary(bytes);
    }
};

TEST_F(Rescan, PutsAnEarlyFirstEntryOnTheSecondDay) {
    struct Row {
        const char *Tag;
        i16 Begins;
    };
    for (const Row &row :
         {Row{"SS9CW", 2100}, Row{"ZRTOS", 1600}, Row{"PAQOS", 1600}, Row{"NEQOS", 2000}}) {
        const i16 before = static_cast<i16>(row.Begins - 41); // a minute before the full hour
        BeginProcess(Devices.ProgramFolder);
        Load(row.Tag, {{"K1ZZ", 15, before}});
        EXPECT_EQ(Statistics.DayCount, 2) << row.Tag;
        EXPECT_EQ(Statistics.MinuteIndex[1], 1440 + row.Begins / 100 * 60 - 1);
        BeginProcess(Devices.ProgramFolder);
        Load(row.Tag, {{"K1ZZ", 15, row.Begins}});
        EXPECT_EQ(Statistics.DayCount, 1) << row.Tag;
    }
    for (const char *tag : {"GEN  ", "WW CW", "WPXCW", "ARLCW", "SP CW", "NA CW", "TEN  "}) {
        BeginProcess(Devices.ProgramFolder);
        Load(tag, {{"K1ZZ", 15, 0}});
        EXPECT_EQ(Statistics.DayCount, 1) << tag;
    }
}

TEST_F(Rescan, CutsTheDayBackToTheLastOneOfTheContest) {
    struct Row {
        const char *Tag;
        i16 LastDay;
    };
    for (const Row &row : {Row{"SS9CW", 3}, Row{"WW CW", 2}, Row{"ZRTOS", 2}, Row{"TEN  ", 2}}) {
        BeginProcess(Devices.ProgramFolder);
        Load(row.Tag, {{"K1ZZ", 1, 2200}, {"K2ZZ", 2, 2200}, {"K3ZZ", 3, 2200}, {"K4ZZ", 4, 2200}});
        EXPECT_EQ(Statistics.DayCount, row.LastDay) << row.Tag;
        EXPECT_EQ(Statistics.MinuteIndex[4], (row.LastDay - 1) * 1440 + 22 * 60);
    }
}

TEST_F(Rescan, StopsAtTheEighteenthDayInGeneric) {
    std::string bytes = HeaderBytes("GEN  ") + std::string(34, '\0');
    for (int day = 1; day <= 25; ++day)
        bytes += EntryBytes(MakeEntry("K1ZZ", DateCode(2015, 1, day), 1200, 3, '2'));
    LoadTemporary(bytes);
    EXPECT_EQ(Statistics.DayCount, 18);
    EXPECT_EQ(Statistics.MinuteIndex[25], 17 * 1440 + 720);
}

TEST_F(Rescan, CountsAGapOfTheOffTimeAndNoMinuteMore) {
    Load("GEN  ", {{"K1ZZ", 15, 1200}, {"K2ZZ", 15, 1215}, {"K3ZZ", 15, 1231}});
    EXPECT_EQ(Statistics.OnTimeMinutes, 15);
}

TEST_F(Rescan, CountsTheGapForTheBandEvenAtAChange) {
    Load("GEN  ", {{"K1ZZ", 15, 1200}, {"K2ZZ", 15, 1204}, {"K3ZZ", 15, 1210, 4}});
    EXPECT_EQ(Statistics.OnBandMinutes, 6);
    EXPECT_EQ(Statistics.OnTimeMinutes, 10);
}

TEST_F(Rescan, SkipsAVoidButKeepsItsPlace) {
    Load("GEN  ", {{"K1ZZ", 15, 1200}, {"Void", 15, 1203, 12}, {"K3ZZ", 15, 1205}});
    EXPECT_EQ(Statistics.QsosPerBand[3], 2);
    EXPECT_EQ(Statistics.QsosPerBand[12], 0);
    EXPECT_EQ(Statistics.TotalPoints, 4);
    EXPECT_EQ(Statistics.CwCount, 2);
    EXPECT_EQ(Dupes.CallText[2].Trimmed(), "Void"); // the rows stay aligned
    EXPECT_EQ(Dupes.CallText[3].Trimmed(), "K3ZZ");
    EXPECT_EQ(Dupes.CurrentCalls.size(), 3U);
    EXPECT_EQ(Statistics.MinuteIndex[2], Statistics.MinuteIndex[1]);
    EXPECT_EQ(Statistics.MinuteIndex[3], 12 * 60 + 5);
    EXPECT_EQ(Statistics.OnTimeMinutes, 5);
}

TEST_F(Rescan, GivesAVoidAtTheBeginningItsOwnStamp) {
    Load("GEN  ", {{"VOID", 15, 1200}, {"K2ZZ", 15, 1205}});
    EXPECT_EQ(Statistics.MinuteIndex[1], 720);
    EXPECT_EQ(Statistics.MinuteIndex[2], 725);
}

TEST_F(Rescan, ComparesDatesWithThoseOfVoidsToo) {
    Load("GEN  ", {{"K1ZZ", 15, 2359}, {"VOID", 16, 1}, {"K3ZZ", 16, 2}});
    EXPECT_EQ(Statistics.DayCount, 2);
    EXPECT_EQ(Statistics.MinuteIndex[2], 23 * 60 + 59);
    EXPECT_EQ(Statistics.MinuteIndex[3], 1440 + 2);
}

TEST_F(Rescan, TakesTheRightSideOfAPortableTie) {
    Load("GEN  ", {{"AB1/CD2", 15, 1200}});
    ASSERT_EQ(Dupes.PortableTable.size(), 1U);
    EXPECT_EQ(Dupes.PortableTable[0].BaseCall.Trimmed(), "CD2");
}

TEST_F(Rescan, ReplaysMultipliersOfEveryEntryButVoids) {
    static std::string seen;
    seen.clear();
    Replay.ReplayMultiplier = [](const OldEntry36 &entry) {
        seen += entry.Callsign.Trimmed() + " ";
        return entry.Callsign.Trimmed() == "K1ZZ";
    };
    Load("SS9CW", {{"K1ZZ", 15, 2200}, {"VOID", 15, 2201}, {"K3ZZ", 15, 2202, 3, '0'}});
    EXPECT_EQ(seen, "K1ZZ K3ZZ ");
    EXPECT_EQ(Statistics.TotalMults, 1);
    EXPECT_EQ(Statistics.Score, 2);
    EXPECT_EQ(LogForm.ScoreLabel.Caption, "Score: 2");
}

TEST_F(Rescan, RecordsTheCallsOfCwOpen) {
    static int recorded;
    recorded = 0;
    Replay.RecordCwOpenCall = [](const OldEntry36 &) { ++recorded; };
    Load("CWOCW", {{"K1ZZ", 15, 1200}, {"VOID", 15, 1201}});
    EXPECT_EQ(recorded, 1);
}

TEST_F(Rescan, LeavesPointsAsStored) {
    Load("GEN  ", {{"K1ZZ", 15, 1200, 3, '7'}, {"K1ZZ", 15, 1201, 3, '0'}});
    EXPECT_EQ(Statistics.TotalPoints, 7);
    EXPECT_EQ(Log.LogEntries[1].Points.Whole(), "7");
}

// ---- logging and reading again must lead to the same state

struct Derived {
    std::vector<FixedText<10>> CallText;
    std::vector<i16> CallHash;
    std::vector<CallAndBand> CurrentCalls;
    std::vector<std::string> Portables; // the full calls: the two paths split a tie differently
    StatisticsState Statistics;
};

Derived Snapshot() {
    Derived derived{Dupes.CallText, Dupes.CallHash, Dupes.CurrentCalls, {}, Statistics};
    for (const PortableRow &row : Dupes.PortableTable)
        derived.Portables.push_back(row.FullCall.Trimmed());
    return derived;
}

std::string RandomCall(std::mt19937 &random) {
    const auto upTo = [&random](int n) { return static_cast<int>(random() % n); };
    std::string call(1, "KWNADGJ"[upTo(7)]);
    call += static_cast<char>('0' + upTo(10));
    for (int i = upTo(2); i >= 0; --i)
        call += static_cast<char>('A' + upTo(6));
    if (upTo(10) == 0)
        call += upTo(2) == 0 ? "/P" : "/VE3";
    if (upTo(20) == 0)
        call += '?';
    return call;
}

void LogRandomContacts(std::mt19937 &random, int contacts) {
    Settings.IsGMTFlag = "True";
    SetTime(2015, 1, 1, 12, 0);
    for (int n = 0; n < contacts; ++n) {
        PassMinutes(random() % 8 == 0 ? static_cast<int>(random() % 40)
                                      : static_cast<int>(random() % 4));
        if (random() % 10 == 0)
            CurrentBand() = CodeInMode(1 + static_cast<int>(random() % 11), random() % 2 == 0);
        LogContact(RandomCall(random), "NOTE");
    }
}

void ExpectSame(const Derived &live, const Derived &replayed) {
    EXPECT_EQ(live.CallText, replayed.CallText);
    EXPECT_EQ(live.CallHash, replayed.CallHash);
    EXPECT_TRUE(live.CurrentCalls == replayed.CurrentCalls);
    EXPECT_EQ(live.Portables, replayed.Portables);
    const StatisticsState &a = live.Statistics;
    const StatisticsState &b = replayed.Statistics;
    EXPECT_EQ(a.TotalPoints, b.TotalPoints);
    EXPECT_EQ(a.TotalMults, b.TotalMults);
    EXPECT_EQ(a.Score, b.Score);
    EXPECT_EQ(a.QsosPerBand, b.QsosPerBand);
    EXPECT_EQ(a.MultsPerBand, b.MultsPerBand);
    EXPECT_EQ(a.PointsPerBand, b.PointsPerBand);
    EXPECT_EQ(a.PointsAllPerBand, b.PointsAllPerBand);
    EXPECT_EQ(a.PointsPerQso, b.PointsPerQso);
    EXPECT_EQ(a.MinutesPerBand, b.MinutesPerBand);
    EXPECT_EQ(a.CwCount, b.CwCount);
    EXPECT_EQ(a.SsbCount, b.SsbCount);
    EXPECT_EQ(a.CwMinutes, b.CwMinutes);
    EXPECT_EQ(a.SsbMinutes, b.SsbMinutes);
    EXPECT_EQ(a.DayCount, b.DayCount);
    EXPECT_EQ(a.MinuteIndex, b.MinuteIndex);
    EXPECT_EQ(a.OnTimeMinutes, b.OnTimeMinutes);
    // OnBandMinutes is left out: the two paths count a band change differently.
}

// Dupes are found by a plain search, as the dupe check of a later module will.
void FindDupesPlainly() {
    QsoHooks.Dupecheck = [](const std::string &text) {
        std::string call = text;
        std::erase(call, '?');
        Entry.DupeFlag = false;
        for (int n = 1; n < Log.NextEntry; ++n)
            if (Log.LogEntries[n].Callsign.Trimmed() == call &&
                Log.LogEntries[n].BandIndex == CurrentBand())
                Entry.DupeFlag = true;
    };
}

TEST_F(Rescan, LeadsToTheStateOfTheLiveLog) {
    for (unsigned seed = 1; seed <= 50; ++seed) {
        SCOPED_TRACE(seed);
        BeginProcess(Devices.ProgramFolder);
        Files.Sync = [](int) { return 0; }; // 15000 contacts need no real disk
        FindDupesPlainly();
        OpenNewLog(kGeneric);
        std::mt19937 random(seed);
        LogRandomContacts(random, 300);
        ASSERT_EQ(Log.NextEntry, 301);
        ASSERT_GT(Statistics.TotalPoints, 0);
        ASSERT_GT(Statistics.OnTimeMinutes, 0);
        const Derived live = Snapshot();
        const std::vector<LogEntry> entries = Log.LogEntries;
        const i16 band = CurrentBand();
        const i16 lastBand = Log.LogEntries[300].BandIndex;

        BeginProcess(Devices.ProgramFolder);
        LoadTemporary(BytesOf(kTempLog));
        ASSERT_EQ(Log.NextEntry, 301);
        EXPECT_TRUE(Log.LogEntries == entries);
        EXPECT_EQ(CurrentBand(), lastBand);
        EXPECT_EQ(band, lastBand);
        ExpectSame(live, Snapshot());
        if (HasFailure())
            break;
    }
}

} // namespace
} // namespace zrt
