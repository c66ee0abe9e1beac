#include "entry/statistics.h"

#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "session/radio_state.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

class Counters : public ProgramTest {
  protected:
    static void Count(i16 contest, i16 band, char points, NewMults found = {}) {
        Contest = CwContest(contest);
        SetUpContest();
        CountContact(MakeEntry("K1ZZ", 0, 0, band, points), found);
    }
    // The CW and the SSB count after one contact of so many points.
    static std::pair<int, int> Modes(i16 contest, char points) {
        Statistics = {};
        Count(contest, 3, points);
        return {Statistics.CwCount, Statistics.SsbCount};
    }
};

using Pair = std::pair<int, int>;

TEST_F(Counters, GoByBand) {
    Count(kCqWw, 3, '3', {1, 1});
    Count(kCqWw, 3, '2');
    Count(kCqWw, 12, '1', {1, 1});
    EXPECT_EQ(Statistics.TotalPoints, 6);
    EXPECT_EQ(Statistics.TotalMults, 2);
    EXPECT_EQ(Statistics.QsosPerBand[3], 2);
    EXPECT_EQ(Statistics.QsosPerBand[12], 1);
    EXPECT_EQ(Statistics.MultsPerBand[3], 1);
    EXPECT_EQ(Statistics.PointsPerBand[3], 5);
    EXPECT_EQ(Statistics.PointsAllPerBand[3], 5);
    EXPECT_FLOAT_EQ(Statistics.PointsPerQso[3], 2.5F);
}

TEST_F(Counters, ShowNoPointsOfABandInThreeContests) {
    for (const i16 contest : {kSprint, kSs, kNaqp}) {
        Statistics = {};
        Count(contest, 3, '1');
        EXPECT_EQ(Statistics.PointsPerBand[3], 0);
        EXPECT_EQ(Statistics.PointsAllPerBand[3], 1);
        EXPECT_EQ(Statistics.CwCount + Statistics.SsbCount, 0);
    }
}

TEST_F(Counters, TellTheModeByThePoints) {
    EXPECT_EQ(Modes(kZrt, '3'), Pair(1, 0));
    EXPECT_EQ(Modes(kZrt, '2'), Pair(0, 1));
    EXPECT_EQ(Modes(kZrt, '0'), Pair(0, 0));
    EXPECT_EQ(Modes(kNeqp, '2'), Pair(1, 0));
    EXPECT_EQ(Modes(kNeqp, '1'), Pair(0, 1));
    EXPECT_EQ(Modes(kGeneric, '2'), Pair(1, 0));
    EXPECT_EQ(Modes(kGeneric, '1'), Pair(0, 1));
    EXPECT_EQ(Modes(kGeneric, '0'), Pair(0, 0));
    EXPECT_EQ(Modes(kPaqp, '1'), Pair(0, 1));
    EXPECT_EQ(Modes(kPaqp, '2'), Pair(1, 0));
    EXPECT_EQ(Modes(kPaqp, '3'), Pair(1, 0));
    EXPECT_EQ(Modes(kTenMeter, '4'), Pair(1, 0));
    EXPECT_EQ(Modes(kTenMeter, '2'), Pair(0, 1));
    EXPECT_EQ(Modes(kTenMeter, '8'), Pair(0, 1)); // as designed
    EXPECT_EQ(Modes(kTenMeter, '0'), Pair(0, 0));
    for (const i16 contest : {kArrlDx, kCqWw, kWpx, kAa, kCwOpen})
        EXPECT_EQ(Modes(contest, '1'), Pair(0, 0));
}

TEST_F(Counters, CountADupeOfPaqpUnderCw) {
    EXPECT_EQ(Modes(kPaqp, '0'), Pair(1, 0)); // any other than 10 tenths
}

TEST_F(Counters, CountPointsOfNoModeUnderNone) {
    EXPECT_EQ(Modes(kZrt, '1'), Pair(0, 0));
    EXPECT_EQ(Modes(kNeqp, '3'), Pair(0, 0));
    EXPECT_EQ(Modes(kGeneric, '5'), Pair(0, 0));
    EXPECT_EQ(Modes(kTenMeter, '1'), Pair(0, 0));
}

TEST_F(Counters, OfADamagedBandTouchNoBand) {
    for (const i16 band : {i16{0}, i16{-1}, i16{25}, i16{32767}})
        Count(kGeneric, band, '1');
    for (int band = 1; band <= 24; ++band)
        EXPECT_EQ(Statistics.QsosPerBand[band], 0);
    EXPECT_EQ(Statistics.TotalPoints, 4);
}

TEST_F(Counters, ScoreIsPointsTimesMultipliers) {
    Contest.ContestId = kSs;
    Statistics.TotalPoints = 2000;
    Statistics.TotalMults = 83;
    ComputeScore();
    EXPECT_EQ(Statistics.Score, 166000);
}

TEST_F(Counters, ScoreOfPaqpRoundsTenthsToTheEvenNumber) {
    Count(kPaqp, 3, '3', {1, 1}); // 15 tenths and a multiplier
    ComputeScore();
    EXPECT_EQ(Statistics.Score, 2);
    Statistics.TotalPoints = 25;
    ComputeScore();
    EXPECT_EQ(Statistics.Score, 2);
    Statistics.TotalPoints = 35;
    ComputeScore();
    EXPECT_EQ(Statistics.Score, 4);
    Statistics.TotalMults = 3;
    ComputeScore();
    EXPECT_EQ(Statistics.Score, 10); // 10.5
}

TEST(WithCommas, MarksNumbersOf4To7Digits) {
    EXPECT_EQ(WithCommas(0), "0");
    EXPECT_EQ(WithCommas(999), "999");
    EXPECT_EQ(WithCommas(1234), "1,234");
    EXPECT_EQ(WithCommas(12345), "12,345");
    EXPECT_EQ(WithCommas(123456), "123,456");
    EXPECT_EQ(WithCommas(1234567), "1,234,567");
    EXPECT_EQ(WithCommas(12345678), "12345678");
}

// ---- the stamps

class Stamps : public ProgramTest {
  protected:
    static void Open(i16 contest) {
        Settings.IsGMTFlag = "True";
        QsoHooks = {};
        QsoHooks.ParseExchange = [](ParsedExchange &) {}; // any exchange will do
        OpenNewLog(contest);
    }
    static void LogAt(int day, int hour, int minute, i16 band = 3) {
        SetTime(2015, 1, day, hour, minute);
        CurrentBand() = band;
        LogContact("K" + std::to_string(Log.NextEntry) + "ZZ", "5");
    }
};

TEST_F(Stamps, AreMinutesOfTheDayOnTheFirstDay) {
    Open(kGeneric);
    LogAt(15, 0, 5);
    LogAt(15, 14, 37);
    EXPECT_EQ(Statistics.MinuteIndex[1], 5);
    EXPECT_EQ(Statistics.MinuteIndex[2], 14 * 60 + 37);
    EXPECT_EQ(Statistics.DayCount, 1);
}

TEST_F(Stamps, CountDaysByDatesThatDiffer) {
    Open(kSs);
    LogAt(15, 23, 59);
    LogAt(16, 0, 1);
    LogAt(20, 0, 1); // a jump of days is one day
    EXPECT_EQ(Statistics.DayCount, 3);
    EXPECT_EQ(Statistics.MinuteIndex[2], 1440 + 1);
    EXPECT_EQ(Statistics.MinuteIndex[3], 2 * 1440 + 1);
}

TEST_F(Stamps, CountNoFirstDayWhileLogging) {
    Open(kSs);
    LogAt(15, 20, 59); // a re-scan would take this for the second day
    EXPECT_EQ(Statistics.DayCount, 1);
    EXPECT_EQ(Statistics.MinuteIndex[1], 20 * 60 + 59);
}

TEST_F(Stamps, StopCountingAtTheEighteenthDay) {
    Open(kGeneric);
    for (int day = 1; day <= 20; ++day)
        LogAt(day, 12, 0);
    EXPECT_EQ(Statistics.DayCount, 18);
    EXPECT_EQ(Statistics.MinuteIndex[17], 16 * 1440 + 720);
    EXPECT_EQ(Statistics.MinuteIndex[18], 17 * 1440 + 720);
    EXPECT_EQ(Statistics.MinuteIndex[19], 17 * 1440 + 720);
    EXPECT_EQ(Statistics.MinuteIndex[20], 17 * 1440 + 720);
}

TEST_F(Stamps, AddGapsUpToTheOffTime) {
    Open(kGeneric); // 15 minutes
    LogAt(15, 12, 0);
    LogAt(15, 12, 15); // counts
    EXPECT_EQ(Statistics.OnTimeMinutes, 15);
    LogAt(15, 12, 31); // a minute more does not
    EXPECT_EQ(Statistics.OnTimeMinutes, 15);
    LogAt(15, 12, 31);
    LogAt(15, 12, 34);
    EXPECT_EQ(Statistics.OnTimeMinutes, 18);
    EXPECT_EQ(Statistics.OnBandMinutes, 18);
    EXPECT_FLOAT_EQ(Statistics.MinutesPerBand[3], 18);
}

TEST_F(Stamps, BearATimeThatRunsBack) {
    Open(kGeneric);
    LogAt(15, 12, 10);
    LogAt(15, 12, 0);
    EXPECT_EQ(Statistics.OnTimeMinutes, 0);
    EXPECT_FLOAT_EQ(Statistics.MinutesPerBand[3], 0);
    EXPECT_FLOAT_EQ(Statistics.CwMinutes, 0);
}

TEST_F(Stamps, GoOnAcrossMidnight) {
    Open(kGeneric);
    LogAt(15, 23, 58);
    LogAt(16, 0, 3);
    EXPECT_EQ(Statistics.OnTimeMinutes, 5);
}

TEST_F(Stamps, ResetTheTimeOnTheBandAtAChange) {
    Open(kGeneric);
    LogAt(15, 12, 0, 3);
    LogAt(15, 12, 4, 3);
    EXPECT_EQ(Statistics.OnBandMinutes, 4);
    LogAt(15, 12, 10, 4); // counts for the contest, not for the band
    EXPECT_EQ(Statistics.OnBandMinutes, 0);
    EXPECT_EQ(Statistics.OnTimeMinutes, 10);
    LogAt(15, 12, 11, 4);
    EXPECT_EQ(Statistics.OnBandMinutes, 1);
    EXPECT_FLOAT_EQ(Statistics.MinutesPerBand[3], 4 + 3); // half of the gap to each
    EXPECT_FLOAT_EQ(Statistics.MinutesPerBand[4], 3 + 1);
}

TEST_F(Stamps, SplitTheModeTimeAtAChangeOfMode) {
    Open(kGeneric);
    LogAt(15, 12, 0, 3);
    LogAt(15, 12, 5, 11);
    EXPECT_FLOAT_EQ(Statistics.CwMinutes, 2.5F);
    EXPECT_FLOAT_EQ(Statistics.SsbMinutes, 2.5F);
    LogAt(15, 12, 9, 12); // another band, the same mode
    EXPECT_FLOAT_EQ(Statistics.SsbMinutes, 6.5F);
    LogAt(15, 12, 11, 23); // CW on 30 m
    EXPECT_FLOAT_EQ(Statistics.CwMinutes, 3.5F);
}

TEST_F(Stamps, AllowAMinuteMoreForTheModeTime) {
    Open(kGeneric);
    LogAt(15, 12, 0);
    LogAt(15, 12, 16);
    EXPECT_FLOAT_EQ(Statistics.CwMinutes, 16);
    EXPECT_FLOAT_EQ(Statistics.MinutesPerBand[3], 0);
    EXPECT_EQ(Statistics.OnTimeMinutes, 0);
    LogAt(15, 12, 33);
    EXPECT_FLOAT_EQ(Statistics.CwMinutes, 16);
}

TEST_F(Stamps, HaveNoModeTimeInContestsOfOneMode) {
    Open(kSs);
    LogAt(15, 12, 0);
    LogAt(15, 12, 5);
    EXPECT_FLOAT_EQ(Statistics.CwMinutes + Statistics.SsbMinutes, 0);
    EXPECT_EQ(Statistics.OnTimeMinutes, 5);
}

TEST_F(Stamps, UseTheContestsOwnGap) {
    Open(kWpx); // 60 minutes
    LogAt(15, 12, 0);
    LogAt(15, 13, 0);
    EXPECT_EQ(Statistics.OnTimeMinutes, 60);
}

} // namespace
} // namespace zrt
