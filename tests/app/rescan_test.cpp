#include "app/rescan.h"

#include "app/log_loader.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/points.h"
#include "entry/statistics.h"
#include "platform/files.h"
#include "session/bands.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

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

TEST_F(Rescan, CutsNoDayOfALogInAnOldForm) {
    std::string bytes = HeaderBytes("SS9CW");
    bytes[4] = 0;
    for (int day = 1; day <= 5; ++day)
        bytes += EntryBytes(MakeEntry("K1ZZ", DateCode(1998, 10, day), 2200, 3, '2')).substr(0, 26);
    LoadTemporary(bytes);
    ASSERT_FALSE(Log.CurrentFormat);
    EXPECT_EQ(Statistics.DayCount, 5);
    EXPECT_EQ(Statistics.MinuteIndex[5], 4 * 1440 + 22 * 60);
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
    Load("CWOCW", {{"K1ZZ", 15, 2200}, {"VOID", 15, 2201}, {"K3ZZ", 15, 2202, 3, '0'}});
    EXPECT_EQ(Statistics.TotalMults, 2); // a dupe counts, a void doesn't
    EXPECT_EQ(Statistics.Score, 4);
    EXPECT_EQ(LogForm.ScoreLabel.Caption, "Score: 4");
    EXPECT_FALSE(Entry.NewMultFlag);
}

TEST_F(Rescan, CountsTheOwnContinentInWpxButNotTheDupes) {
    Load("WPXCW",
         {{"K1ZZ", 15, 2200, 3, '1'}, {"K1ZZ", 15, 2201, 3, '0'}, {"G3ZZ", 15, 2202, 3, '3'}});
    EXPECT_EQ(Points.SameContinentCount, 1);
    EXPECT_EQ(Statistics.TotalPoints, 4);
}

TEST_F(Rescan, LeavesPointsAsStored) {
    Load("GEN  ", {{"K1ZZ", 15, 1200, 3, '7'}, {"K1ZZ", 15, 1201, 3, '0'}});
    EXPECT_EQ(Statistics.TotalPoints, 7);
    EXPECT_EQ(Log.LogEntries[1].Points.Whole(), "7");
}

} // namespace
} // namespace zrt
