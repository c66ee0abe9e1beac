// The hours of the rate sheets: rows by the minute of the contest, and the minutes off the air.
#include "postcontest/contest_hours.h"

#include "session/contests.h"

#include <gtest/gtest.h>

#include <map>
#include <numeric>
#include <vector>

namespace zrt {
namespace {

constexpr bool kLog = false, kCabrillo = true; // where the entries come from

class ContestHours : public testing::Test {
  protected:
    ContestHours() { Contest = {}; }
    ~ContestHours() override { Contest = {}; }

    static void Choose(i16 contestId, i16 session = 0) {
        Contest = {};
        Contest.ContestId = contestId;
        Contest.CWOSession = session;
    }
    static int Hour(i32 minutes) { return GetContestHour(minutes, kLog); }

    using Minutes = std::map<std::size_t, i32>; // by hour; hours with none are left out
    static Minutes Shown(const MinutesByHour &off) {
        Minutes shown;
        for (std::size_t hour = 0; hour < off.size(); ++hour)
            if (off[hour] != 0)
                shown[hour] = off[hour];
        return shown;
    }
    static Minutes Between(i32 before, i32 minutes) {
        MinutesByHour off{};
        PostTimeOff(before, minutes, kLog, off);
        return Shown(off);
    }
    static Minutes BeforeFirst(i32 minutes) {
        MinutesByHour off{};
        PostTimeOffFirst(minutes, kLog, off);
        return Shown(off);
    }
    static Minutes BehindLast(i32 minutes) {
        MinutesByHour off{};
        PostTimeOffLast(minutes, kLog, off);
        return Shown(off);
    }
};

TEST_F(ContestHours, HourOneBeginsWithTheContestAndTheLastRowTakesWhatIsBehindIt) {
    struct Row {
        i16 ContestId, Session;
        i32 Start; // minute of the first day
        int LastHour;
    };
    constexpr std::array kRows = {
        Row{kArrlDx, 0, 0, 48},     Row{kZrt, 0, 16 * 60, 30},      Row{kCqWw, 0, 0, 48},
        Row{kSprint, 0, 0, 48},     Row{kSs, 0, 21 * 60, 48},       Row{kWpx, 0, 0, 48},
        Row{kAa, 0, 0, 48},         Row{kPaqp, 0, 16 * 60, 30},     Row{kNaqp, 0, 18 * 60, 48},
        Row{kTenMeter, 0, 0, 48},   Row{kNeqp, 0, 20 * 60, 28},     Row{kCwOpen, 0, 0, 4},
        Row{kCwOpen, 1200, 720, 4}, Row{kCwOpen, 2000, 20 * 60, 4},
    };
    for (const Row &row : kRows) {
        SCOPED_TRACE(std::to_string(row.ContestId) + " session " + std::to_string(row.Session));
        Choose(row.ContestId, row.Session);
        EXPECT_EQ(Hour(row.Start), 1);
        EXPECT_EQ(Hour(row.Start + 59), 1);
        EXPECT_EQ(Hour(row.Start + 60), 2);
        EXPECT_EQ(Hour(row.Start + 119), 2);
        EXPECT_EQ(Hour(row.Start - 1), 1); // too early
        EXPECT_EQ(Hour(row.Start - 600), 1);
        EXPECT_EQ(Hour(row.Start + (row.LastHour - 1) * 60 - 1), row.LastHour - 1);
        EXPECT_EQ(Hour(row.Start + (row.LastHour - 1) * 60), row.LastHour);
        EXPECT_EQ(Hour(row.Start + row.LastHour * 60), row.LastHour); // too late
        EXPECT_EQ(Hour(18 * 1440), row.LastHour);
    }
}

TEST_F(ContestHours, AContactAfterMidnightIsInTheNinthHourOfAContestThatBeganAt1600) {
    Choose(kZrt);
    EXPECT_EQ(Hour(16 * 60 + 5), 1);
    EXPECT_EQ(Hour(1440 + 5), 9);
}

TEST_F(ContestHours, AGenericLogHasNoHours) {
    Choose(kGeneric);
    for (const i32 minutes : {0, 1, 60, 2880, 25000}) {
        EXPECT_EQ(Hour(minutes), 0);
        EXPECT_EQ(BeforeFirst(minutes), Minutes{});
        EXPECT_EQ(BehindLast(minutes), Minutes{});
        EXPECT_EQ(Between(minutes, minutes + 30), Minutes{});
    }
}

TEST_F(ContestHours, ACabrilloFileCountsFromMidnightTo48InEveryContest) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        SCOPED_TRACE(contest);
        Choose(contest, 1200);
        EXPECT_EQ(GetContestHour(0, kCabrillo), 1);
        EXPECT_EQ(GetContestHour(59, kCabrillo), 1);
        EXPECT_EQ(GetContestHour(60, kCabrillo), 2);
        EXPECT_EQ(GetContestHour(960, kCabrillo), 17);
        EXPECT_EQ(GetContestHour(2820, kCabrillo), 48);
        EXPECT_EQ(GetContestHour(2880, kCabrillo), 48);
        MinutesByHour off{};
        PostTimeOffFirst(75, kCabrillo, off);     // hour 2, minute 15
        PostTimeOff(75, 100, kCabrillo, off);     // both in hour 2
        PostTimeOffLast(45 * 60, kCabrillo, off); // hour 46, minute 0
        EXPECT_EQ(Shown(off), (Minutes{{1, 60}, {2, 15 + 25}, {46, 59}, {47, 60}, {48, 60}}));
    }
}

// ---- pauses

TEST_F(ContestHours, TenMinutesAreNoPauseAndElevenAre) {
    Choose(kCqWw);
    EXPECT_EQ(Between(20, 30), Minutes{});
    EXPECT_EQ(Between(20, 31), (Minutes{{1, 11}}));
    EXPECT_EQ(Between(0, 59), (Minutes{{1, 59}}));
    EXPECT_EQ(Between(20, 20), Minutes{});
    EXPECT_EQ(Between(50, 20), Minutes{}); // a clock that was set back
}

TEST_F(ContestHours, APauseOverTheEdgeOfAnHourCountsInBothHoursHoweverShortItsParts) {
    Choose(kCqWw);
    EXPECT_EQ(Between(55, 65), Minutes{});                 // 00:55 to 01:05
    EXPECT_EQ(Between(55, 66), (Minutes{{1, 4}, {2, 6}})); // 00:55 to 01:06
    EXPECT_EQ(Between(53, 64), (Minutes{{1, 6}, {2, 4}})); // 00:53 to 01:04
    EXPECT_EQ(Between(49, 60), (Minutes{{1, 10}}));        // 00:49 to 01:00
    EXPECT_EQ(Between(59, 71), (Minutes{{2, 11}}));        // 00:59 to 01:11
}

TEST_F(ContestHours, HoursWithinAPauseAreOffAsAWhole) {
    Choose(kCqWw);
    // 00:30 to 04:10
    EXPECT_EQ(Between(30, 250), (Minutes{{1, 29}, {2, 60}, {3, 60}, {4, 60}, {5, 10}}));
    // 10:00 to 12:00
    EXPECT_EQ(Between(600, 720), (Minutes{{11, 59}, {12, 60}}));
}

TEST_F(ContestHours, ThePauseIsInTheHoursOfTheContest) {
    Choose(kNaqp);
    // 19:50 to 22:20 of a contest that began at 18:00
    EXPECT_EQ(Between(1190, 1340), (Minutes{{2, 9}, {3, 60}, {4, 60}, {5, 20}}));
    Choose(kCwOpen, 1200);
    EXPECT_EQ(Between(720 + 50, 720 + 75), (Minutes{{1, 9}, {2, 15}}));
}

TEST_F(ContestHours, BehindTheLastHourThePauseFallsIntoIt) {
    Choose(kCqWw);
    EXPECT_EQ(Between(2885, 2910), (Minutes{{48, 25}}));
    EXPECT_EQ(Between(2885, 3100), (Minutes{{48, 215}}));
    EXPECT_EQ(Between(2800, 2900), (Minutes{{47, 19}, {48, 20}})); // 46:40 to 48:20
    Choose(kZrt);
    EXPECT_EQ(Between(900, 950), (Minutes{{1, 50}})); // before the contest
}

TEST_F(ContestHours, PausesOfOneHourAddUp) {
    Choose(kCqWw);
    MinutesByHour off{};
    PostTimeOff(0, 15, kLog, off);
    PostTimeOff(15, 20, kLog, off);
    PostTimeOff(20, 40, kLog, off);
    EXPECT_EQ(Shown(off), (Minutes{{1, 35}}));
}

// ---- before the first entry and behind the last

TEST_F(ContestHours, TheHoursBeforeTheFirstEntryAreOff) {
    Choose(kCqWw);
    EXPECT_EQ(BeforeFirst(0), Minutes{});
    EXPECT_EQ(BeforeFirst(10), Minutes{}); // 10 minutes are no pause
    EXPECT_EQ(BeforeFirst(11), (Minutes{{1, 11}}));
    EXPECT_EQ(BeforeFirst(59), (Minutes{{1, 59}}));
    EXPECT_EQ(BeforeFirst(60), (Minutes{{1, 60}}));
    EXPECT_EQ(BeforeFirst(2 * 60 + 30), (Minutes{{1, 60}, {2, 60}, {3, 30}}));
    Choose(kZrt);
    EXPECT_EQ(BeforeFirst(16 * 60 + 11), (Minutes{{1, 11}}));
    EXPECT_EQ(BeforeFirst(17 * 60 + 5), (Minutes{{1, 60}}));
}

TEST_F(ContestHours, TheHoursBehindTheLastEntryAreOff) {
    Choose(kCqWw);
    EXPECT_EQ(BehindLast(47 * 60 + 59), Minutes{});
    EXPECT_EQ(BehindLast(47 * 60 + 49), Minutes{}); // 10 minutes to the minute 59
    EXPECT_EQ(BehindLast(47 * 60 + 48), (Minutes{{48, 11}}));
    EXPECT_EQ(BehindLast(47 * 60), (Minutes{{48, 59}}));
    EXPECT_EQ(BehindLast(45 * 60 + 30), (Minutes{{46, 29}, {47, 60}, {48, 60}}));
}

TEST_F(ContestHours, TheMinutesBehindTheLastEntryStopAtTheLastHourOfTheContest) {
    struct Row {
        i16 ContestId, Session;
        i32 Start;
        int LastHour;
    };
    constexpr std::array kRows = {
        Row{kArrlDx, 0, 0, 48},     Row{kZrt, 0, 16 * 60, 30},     Row{kCqWw, 0, 0, 48},
        Row{kSprint, 0, 0, 4},      Row{kSs, 0, 21 * 60, 30},      Row{kWpx, 0, 0, 48},
        Row{kAa, 0, 0, 48},         Row{kPaqp, 0, 16 * 60, 30},    Row{kNaqp, 0, 18 * 60, 12},
        Row{kTenMeter, 0, 0, 48},   Row{kNeqp, 0, 20 * 60, 28},    Row{kCwOpen, 0, 0, 4},
        Row{kCwOpen, 1200, 720, 4}, Row{kCwOpen, 2000, 20 * 60, 4}};
    for (const Row &row : kRows) {
        SCOPED_TRACE(std::to_string(row.ContestId) + " session " + std::to_string(row.Session));
        Choose(row.ContestId, row.Session);
        // At minute 20 of the hour before the last but one.
        const i32 minutes = row.Start + (row.LastHour - 3) * 60 + 20;
        const auto last = static_cast<std::size_t>(row.LastHour);
        EXPECT_EQ(BehindLast(minutes), (Minutes{{last - 2, 39}, {last - 1, 60}, {last, 60}}));
    }
}

TEST_F(ContestHours, AnEntryBehindTheHoursOfASingleOperatorHasItsOwnRowAlone) {
    Choose(kNaqp);
    EXPECT_EQ(BehindLast(18 * 60 + 14 * 60 + 10), (Minutes{{15, 49}}));
    Choose(kSprint);
    EXPECT_EQ(BehindLast(4 * 60), (Minutes{{5, 59}}));
}

TEST_F(ContestHours, ALogOfOneEntryIsOffBeforeAndBehindIt) {
    Choose(kCwOpen, 2000);
    MinutesByHour off{};
    PostTimeOffFirst(21 * 60 + 30, kLog, off);
    PostTimeOffLast(21 * 60 + 30, kLog, off);
    EXPECT_EQ(Shown(off), (Minutes{{1, 60}, {2, 30 + 29}, {3, 60}, {4, 60}}));
}

TEST_F(ContestHours, BearsAnyTimeOfADamagedRecord) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        Choose(contest, 1200);
        MinutesByHour off{};
        for (i32 minutes = -20000; minutes <= 45000; minutes += 337) {
            const int hour = Hour(minutes);
            ASSERT_GE(hour, contest == kGeneric ? 0 : 1) << minutes;
            ASSERT_LE(hour, kContestHours) << minutes;
            PostTimeOffFirst(minutes, kLog, off);
            PostTimeOff(minutes, minutes + 300, kLog, off);
            PostTimeOffLast(minutes, kLog, off);
        }
        for (const i32 minutes : off)
            ASSERT_GE(minutes, 0);
        ASSERT_EQ(off[0], 0);
    }
}

TEST_F(ContestHours, AMinuteBeforeMidnightOfADamagedRecordIsOneOfItsHour) {
    Choose(kCqWw);
    EXPECT_EQ(BeforeFirst(-20), (Minutes{{1, 40}})); // the minute 40 of the hour before
}

} // namespace
} // namespace zrt
