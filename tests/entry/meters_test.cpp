#include "entry/meters.h"

#include "app/session_reset.h"
#include "entry/multipliers.h"
#include "entry/points.h"
#include "entry/statistics.h"
#include "session/settings.h"
#include "support/program.h"

#include <gmock/gmock.h>

#include <random>

namespace zrt {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr int kNoon = 12 * 60;

class MeterTest : public ProgramTest {
  protected:
    MeterTest() { Settings.IsGMTFlag = "True"; }

    static void Open(i16 contest) {
        ResetSession();
        OpenNewLog(contest);
    }

    // A contact at a minute counted from 15 January 2015, 00:00.
    static void Add(int minute, char points = '2', const char *call = "K1ZZ", i16 band = 3) {
        const int minuteOfDay = minute % kMinutesADay;
        const i16 n = Log.NextEntry;
        const LogEntry entry =
            MakeEntry(call, DateCode(2015, 1, 15 + minute / kMinutesADay),
                      static_cast<i16>(minuteOfDay / 60 * 100 + minuteOfDay % 60), band, points);
        Log.LogEntries[n] = entry;
        if (!IsVoid(entry))
            CountContact(entry, {});
        StampContact(n, entry, n > 1 ? EntryFields(static_cast<i16>(n - 1)) : OldEntry36{},
                     StampRule::Live);
        ++Log.NextEntry;
    }
    // Contacts at first, first + step, ...
    static void AddRow(int count, int first, int step, char points = '2') {
        for (int i = 0; i < count; ++i)
            Add(first + i * step, points);
    }
    static std::string Last10(bool force = false) { return Meters(force).Last10; }
    static std::string LastHour(bool force = false) { return Meters(force).LastHour; }
};

// ---- the last ten

TEST_F(MeterTest, TheLastTenNeedElevenContacts) {
    Open(kGeneric);
    AddRow(10, kNoon, 1);
    EXPECT_EQ(Last10(), "");
    Add(kNoon + 10);
    EXPECT_EQ(Last10(), "Last 10: 60"); // ten contacts in ten minutes
    Add(kNoon + 21);
    EXPECT_EQ(Last10(), "Last 10: 30"); // and in 20
}

TEST_F(MeterTest, TheLastTenRoundHalvesUp) {
    Open(kGeneric);
    AddRow(10, kNoon, 0);
    Add(kNoon + 16);
    EXPECT_EQ(Last10(), "Last 10: 38"); // 37.5
    Open(kGeneric);
    AddRow(10, kNoon, 0);
    Add(kNoon + 240);
    EXPECT_EQ(Last10(), "Last 10: 3"); // 2.5
}

TEST_F(MeterTest, TheLastTenOfNoTimeAreNoRate) {
    Open(kGeneric);
    AddRow(11, kNoon, 0);
    EXPECT_EQ(Last10(), "");
    Open(kGeneric);
    AddRow(11, kNoon, -1); // the clock was set back
    EXPECT_EQ(Last10(), "");
}

TEST_F(MeterTest, TheLastTenMayBeSoSlowThatNoDigitIsLeft) {
    Open(kGeneric);
    AddRow(10, 0, 0);
    Add(1200);
    EXPECT_EQ(Last10(), "Last 10: 1"); // 0.5
    Statistics.MinuteIndex[11] = 1201;
    EXPECT_EQ(Last10(), "Last 10: ");
}

TEST_F(MeterTest, TheLastTenHaveTheirOwnPointsAlone) {
    Open(kZrt);
    AddRow(5, kNoon - 60, 1, '3');
    Add(kNoon, '3'); // the ten begin behind this one
    AddRow(4, kNoon + 1, 1, '3');
    AddRow(5, kNoon + 5, 1, '2');
    Add(kNoon + 10, '0');
    EXPECT_EQ(Last10(), "Last 10: 60/132"); // 12 + 10 in ten minutes
}

TEST_F(MeterTest, PaqpCountsItsPointsInTenths) {
    Open(kPaqp);
    AddRow(10, kNoon, 0, '1');
    Add(kNoon + 60, '3');
    EXPECT_EQ(Last10(), "Last 10: 10/11"); // 9 x 1 + 1.5 = 10.5
    EXPECT_EQ(LastHour(), "Last Hr: 1/2"); // 1.5
}

TEST_F(MeterTest, AVoidKeepsItsPlaceWithoutPoints) {
    Open(kZrt);
    AddRow(10, kNoon, 1, '3');
    Add(kNoon + 10, '3', "void");
    EXPECT_EQ(Last10(), "Last 10: 60/162"); // 9 x 3
}

// ---- which meters have points

struct MeterCase {
    i16 ContestId;
    const char *Last10, *Overall, *OnBand, *LastHour;
};
// Twelve contacts of 2 points, one each 6 minutes: the last ten in 60 minutes, and the last hour
// has ten; all twelve in 66 minutes, which are 10.9 contacts and 21.8 points an hour.
constexpr MeterCase kMeterCases[] = {
    {kArrlDx, "10", "11", "On Band: 1:06", "10"},
    {kZrt, "10/20", "11/22", "Band-Mode: 1:06", "10/20"},
    {kCqWw, "10/20", "11/22", "On Band: 1:06", "10/20"},
    {kSprint, "10", "11", "On Band: 1:06", "10"},
    {kSs, "10", "11", "On Band: 1:06", "10"},
    {kWpx, "10/20", "11/22", "On Band: 1:06", "10/20"},
    {kAa, "10/20", "11/22", "On Band: 1:06", "10/20"},
    {kPaqp, "10/20", "11/22", "Band-Mode: 1:06", "10/20"},
    {kNaqp, "10", "11", "On Band: 1:06", "10"},
    {kTenMeter, "10/20", "11/22", "Mode: 1:06", "10/20"},
    {kNeqp, "10", "11/22", "Band-Mode: 1:06", "10/20"},
    {kGeneric, "10", "11", "Band-Mode: 1:06", "10"},
    {kCwOpen, "10/20", "11", "On Band: 1:06", "10"},
};

TEST_F(MeterTest, EachContestHasItsOwn) {
    for (const MeterCase &row : kMeterCases) {
        SCOPED_TRACE(row.ContestId);
        Open(row.ContestId);
        AddRow(12, kNoon, 6);
        const MeterTexts texts = Meters(false);
        EXPECT_EQ(texts.Last10, std::string("Last 10: ") + row.Last10);
        EXPECT_EQ(texts.Overall, std::string("Overall: ") + row.Overall);
        EXPECT_EQ(texts.Total, "     Total: 1:06");
        EXPECT_EQ(texts.OnBand, row.OnBand);
        EXPECT_EQ(texts.LastHour, std::string("Last Hr: ") + row.LastHour);
    }
}

// ---- all contacts, and the times

TEST_F(MeterTest, OneContactShowsNoMeters) {
    Open(kZrt);
    for (const bool force : {false, true}) {
        for (int contacts = 0; contacts < 2; ++contacts) {
            if (Log.NextEntry <= contacts)
                Add(kNoon);
            const MeterTexts texts = Meters(force);
            EXPECT_EQ(texts.Last10 + texts.Overall + texts.Total + texts.OnBand + texts.LastHour,
                      "");
        }
    }
}

TEST_F(MeterTest, AllContactsNeedOperatingTime) {
    Open(kGeneric);
    Add(kNoon);
    Add(kNoon + 16); // a pause
    EXPECT_EQ(Meters(false).Overall, "");
    EXPECT_EQ(Meters(false).Total, "     Total: 0:00");
    EXPECT_EQ(Meters(false).OnBand, "Band-Mode: 0:00");
    Add(kNoon + 17);
    EXPECT_EQ(Meters(false).Overall, "Overall: 180"); // three in one minute
    EXPECT_EQ(Meters(false).Total, "     Total: 0:01");
}

TEST_F(MeterTest, TimesAreHoursAndTwoDigitsOfMinutes) {
    Open(kCqWw);
    AddRow(2, kNoon, 1);
    Statistics.OnTimeMinutes = 48 * 60 + 9;
    Statistics.OnBandMinutes = 59;
    EXPECT_EQ(Meters(false).Total, "     Total: 48:09");
    EXPECT_EQ(Meters(false).OnBand, "On Band: 0:59");
}

// ---- the last hour

TEST_F(MeterTest, TheLastHourBeginsWhenAnHourIsOver) {
    Open(kGeneric);
    AddRow(60, kNoon, 1);
    EXPECT_EQ(LastHour(), ""); // 59 minutes
    Add(kNoon + 60);
    EXPECT_EQ(LastHour(), "Last Hr: 60"); // without the first
    Add(kNoon + 90);
    EXPECT_EQ(LastHour(), "Last Hr: 31"); // 12:31 to 13:00, and 13:30
}

TEST_F(MeterTest, TheLastHourBeginsBehindAllContactsOfItsMinute) {
    Open(kGeneric);
    AddRow(3, kNoon, 0);
    Add(kNoon + 60);
    EXPECT_EQ(LastHour(), "Last Hr: 1");
}

TEST_F(MeterTest, TheLastHourIsThatOfAPlainCount) {
    std::mt19937 random(20150115);
    Open(kGeneric);
    for (int run = 0; run < 300; ++run) {
        Log.NextEntry = static_cast<i16>(2 + random() % 100);
        i32 minute = 0;
        for (i16 n = 1; n < Log.NextEntry; ++n)
            Statistics.MinuteIndex[n] = minute += static_cast<i32>(random() % 5);
        int count = 0;
        for (i16 n = 1; n < Log.NextEntry; ++n)
            count += Statistics.MinuteIndex[n] > minute - 60;
        const bool anHour = Log.NextEntry > 2 && minute - 60 >= Statistics.MinuteIndex[1];
        EXPECT_EQ(LastHour(), anHour ? "Last Hr: " + std::to_string(count) : "") << run;
    }
}

// Edited entries leave times that run back and forth.
TEST_F(MeterTest, TheLastHourEndsOnAnyTimes) {
    std::mt19937 random(7);
    Open(kGeneric);
    for (int run = 0; run < 300; ++run) {
        Log.NextEntry = static_cast<i16>(3 + random() % 100);
        for (i16 n = 1; n < Log.NextEntry; ++n)
            Statistics.MinuteIndex[n] = static_cast<i32>(random() % 3000);
        const std::string text = LastHour();
        const i16 last = static_cast<i16>(Log.NextEntry - 1);
        if (Statistics.MinuteIndex[last] - 60 < Statistics.MinuteIndex[1]) {
            EXPECT_EQ(text, "");
            continue;
        }
        ASSERT_EQ(text.substr(0, 9), "Last Hr: ");
        const int count = std::stoi(text.substr(9));
        EXPECT_GE(count, 1); // the last one is not an hour old
        EXPECT_LT(count, last);
        // It begins where the times pass the hour.
        EXPECT_LE(Statistics.MinuteIndex[last - count], Statistics.MinuteIndex[last] - 60);
        EXPECT_GT(Statistics.MinuteIndex[last - count + 1], Statistics.MinuteIndex[last] - 60);
    }
}

TEST_F(MeterTest, AFullLogHasItsLastHour) {
    Open(kGeneric);
    for (i16 n = 1; n <= kMostEntries; ++n)
        Statistics.MinuteIndex[n] = n / 4;
    Log.NextEntry = kMostEntries + 1;
    EXPECT_EQ(LastHour(), "Last Hr: 237"); // 2250: the entries behind 8763, the last one of 2190
}

// ---- idle

class IdleMeters : public MeterTest {
  protected:
    // Eleven contacts, the last at 12:10.
    static void AddEleven() { AddRow(11, kNoon, 1); }
};

TEST_F(IdleMeters, SagUntilThePauseIsNoOperatingTime) {
    Open(kGeneric); // 15 minutes
    AddEleven();
    SetTime(2015, 1, 15, 12, 20);
    EXPECT_EQ(Last10(true), "Last 10: 30");
    EXPECT_EQ(Last10(false), "Last 10: 60");
    SetTime(2015, 1, 15, 12, 24);
    EXPECT_EQ(Last10(true), "Last 10: 25");
    SetTime(2015, 1, 15, 12, 25);
    EXPECT_EQ(Last10(true), "Last 10: 60"); // frozen
    SetTime(2015, 1, 15, 12, 10);
    EXPECT_EQ(Last10(true), "Last 10: 60");
}

TEST_F(IdleMeters, SagAsLongAsTheContestAllows) {
    Open(kWpx); // 60 minutes
    AddEleven();
    SetTime(2015, 1, 15, 13, 9);
    EXPECT_EQ(Last10(true), "Last 10: 9/17"); // ten contacts in 69 minutes, 20 points
    SetTime(2015, 1, 15, 13, 10);
    EXPECT_EQ(Last10(true), "Last 10: 60/120");
}

TEST_F(IdleMeters, LoseTheContactsOfMoreThanAnHourAgo) {
    Open(kGeneric);
    AddRow(70, kNoon, 1); // to 13:09
    SetTime(2015, 1, 15, 13, 19);
    EXPECT_EQ(LastHour(false), "Last Hr: 60");
    EXPECT_EQ(LastHour(true), "Last Hr: 50"); // from 12:20
}

TEST_F(IdleMeters, DontGoBackWithTheClock) {
    Open(kGeneric);
    AddEleven();
    SetTime(2015, 1, 15, 12, 5);
    EXPECT_EQ(Last10(true), "Last 10: 60");
}

TEST_F(IdleMeters, GoOnAcrossMidnight) {
    Open(kGeneric);
    AddRow(11, 23 * 60 + 49, 1); // to 23:59
    SetTime(2015, 1, 16, 0, 5);
    EXPECT_EQ(Last10(true), "Last 10: 38"); // 16 minutes
}

TEST_F(IdleMeters, TakeTheTimeAsTheLogDoes) {
    Open(kGeneric);
    AddRow(11, 23 * 60 + 49, 1);
    Settings.IsGMTFlag = "False";
    Settings.TimeCorrection = "5";
    SetTime(2015, 1, 15, 19, 5); // 00:05 of the next day
    EXPECT_EQ(Last10(true), "Last 10: 38");
}

TEST_F(IdleMeters, StayOnTheLastDayThatIsCounted) {
    Open(kGeneric);
    for (int day = 0; day < kMostDays; ++day)
        Add(day * kMinutesADay + 23 * 60 + 59);
    AddRow(10, (kMostDays - 1) * kMinutesADay + 23 * 60 + 59, 0);
    ASSERT_EQ(Statistics.DayCount, kMostDays);
    Statistics.MinuteIndex[kMostDays] -= 20; // the tenth entry back
    EXPECT_EQ(Last10(true), "Last 10: 30");
    SetTime(2015, 2, 2, 0, 5); // a day more isn't counted, so that this is long ago
    EXPECT_EQ(Last10(true), "Last 10: 30");
}

// ---- what only some contests show

TEST_F(MeterTest, WpxShowsTheOwnCountryOrContinentAndTheRest) {
    Open(kWpx);
    Add(kNoon);
    Add(kNoon + 1);
    Add(kNoon + 2, '0', "K1ZZ", 11); // a dupe is none of the own continent
    Add(kNoon + 3, '1', "VOID");
    Points.SameContinentCount = 1;
    EXPECT_EQ(Meters(false).SameContinent, "USA: 1");
    EXPECT_EQ(Meters(false).Dx, "DX: 2");
    Contest.QthUSA = false;
    Contest.QthVE = true;
    EXPECT_EQ(Meters(false).SameContinent, "CAN: 1");
    Contest.QthVE = false;
    Contest.QthContinent = "EU";
    EXPECT_EQ(Meters(false).SameContinent, "   EU: 1");
    EXPECT_EQ(Meters(false).Dx, "DX: 2");
}

TEST_F(MeterTest, OnlyWpxShowsContinents) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        Open(contest);
        AddRow(2, kNoon, 1);
        EXPECT_EQ(Meters(false).SameContinent.empty(), contest != kWpx) << contest;
        EXPECT_EQ(Meters(false).Dx.empty(), contest != kWpx) << contest;
    }
}

TEST_F(MeterTest, ContestsOfBothModesShowTheirTimes) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        Open(contest);
        Statistics.SsbMinutes = 61;
        Statistics.CwMinutes = 7;
        const bool bothModes = contest == kZrt || contest == kPaqp || contest == kTenMeter ||
                               contest == kNeqp || contest == kGeneric;
        EXPECT_EQ(Meters(false).ModeTimes, bothModes ? "SSB/CW: 1:01/0:07" : "") << contest;
    }
}

TEST_F(MeterTest, HalfMinutesNeverMakeASixtiethMinute) {
    Open(kGeneric);
    Statistics.SsbMinutes = 59.5F;
    Statistics.CwMinutes = 2.5F;
    EXPECT_EQ(Meters(false).ModeTimes, "SSB/CW: 1:00/0:03");
}

TEST_F(MeterTest, NothingIsShownWithoutALog) {
    for (const bool force : {false, true}) {
        const MeterTexts texts = Meters(force);
        EXPECT_EQ(texts.Last10 + texts.Overall + texts.Total + texts.OnBand + texts.LastHour +
                      texts.SameContinent + texts.Dx + texts.ModeTimes,
                  "");
    }
    EXPECT_THAT(BandTable().Titles, SizeIs(0));
    EXPECT_THAT(BandTable().Columns, SizeIs(0));
}

// ---- the table by bands

class BandTableTest : public MeterTest {
  protected:
    static void Set(i16 code, int contacts, float minutes, int points = 0, int mults = 0) {
        Statistics.QsosPerBand[code] = contacts;
        Statistics.MinutesPerBand[code] = minutes;
        Statistics.PointsPerBand[code] = points;
        Statistics.MultsPerBand[code] = mults;
    }
    static void SetCountries(i16 code, i16 countries, i16 zones) {
        Multipliers.CountriesPerBand[static_cast<std::size_t>(code)] = countries;
        Multipliers.ZonesPerBand[static_cast<std::size_t>(code)] = zones;
    }
    static std::vector<std::string> Heads() {
        std::vector<std::string> heads;
        for (const BandColumn &column : BandTable().Columns)
            heads.push_back(column.front());
        return heads;
    }
    static BandColumn Column(const std::string &head) {
        for (const BandColumn &column : BandTable().Columns)
            if (column.front() == head)
                return column;
        return {};
    }
};

TEST_F(BandTableTest, HasTheRowsOfTheContest) {
    const auto titles = [](i16 contest) {
        Open(contest);
        return BandTable().Titles;
    };
    for (const i16 contest : {kArrlDx, kSprint, kSs, kNaqp, kCwOpen})
        EXPECT_THAT(titles(contest), ElementsAre("", "QSOs:", "Hours:", " Qs/Hr:", "Mults:"));
    for (const i16 contest : {kZrt, kPaqp, kNeqp})
        EXPECT_THAT(titles(contest),
                    ElementsAre("SSB/CW", "QSOs:", " Qs/Hr:", " Pts/Hr:", "Mults"));
    EXPECT_THAT(titles(kCqWw), ElementsAre("", "QSOs:", "Pts:", " Pts/Q:", " Qs/Hr:", "Pts/Hr:",
                                           "Cties:", "Zones:"));
    for (const i16 contest : {kWpx, kAa})
        EXPECT_THAT(titles(contest),
                    ElementsAre("", "QSOs:", "Pts:", " Pts/Q:", " Qs/Hr:", "Pts/Hr:", "Pfxs:"));
    EXPECT_THAT(titles(kTenMeter),
                ElementsAre("", "QSOs:", " Qs/Hr:", " Pts/Hr:", "W/VE Mults:", "DX Mults:"));
    EXPECT_THAT(titles(kGeneric), ElementsAre("SSB/CW", "QSOs:", " Qs/Hr:", "Cties:"));
}

TEST_F(BandTableTest, HasAValueForEachRow) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        Open(contest);
        const BandTableTexts table = BandTable();
        EXPECT_FALSE(table.Columns.empty());
        for (const BandColumn &column : table.Columns) {
            EXPECT_THAT(column, SizeIs(table.Titles.size()));
            for (std::size_t row = 1; row < column.size(); ++row)
                EXPECT_EQ(column[row], "--") << contest;
        }
    }
}

TEST_F(BandTableTest, HasTheBandsOfTheContest) {
    Open(kCqWw);
    EXPECT_THAT(Heads(), ElementsAre("10m", "15m", "20m", "40m", "80m", "160"));
    Open(kSprint);
    EXPECT_THAT(Heads(), ElementsAre("20m", "40m", "80m"));
    Open(kPaqp);
    EXPECT_THAT(Heads(), ElementsAre("10m", "15m", "20m", "40m", "80m", "160", "6m", "2m"));
    Open(kGeneric);
    EXPECT_THAT(Heads(), ElementsAre("10m", "15m", "20m", "40m", "80m", "160", "6m", "2m", "12m",
                                     "17m", "30m"));
    Open(kTenMeter);
    EXPECT_THAT(Heads(), ElementsAre("CW", "PH"));
}

TEST_F(BandTableTest, KeepsABandThatHasContacts) {
    Open(kSprint);
    Contest.ActiveBands = {};
    EXPECT_THAT(Heads(), ElementsAre());
    Set(23, 1, 0); // CW on 30 m
    Set(9, 1, 0);  // phone on 10 m
    EXPECT_THAT(Heads(), ElementsAre("10m", "30m"));
}

TEST_F(BandTableTest, OfPlainContestsHasTheTime) {
    Open(kArrlDx);
    Set(3, 90, 72.5F, 270, 41);
    Set(4, 1, 0, 3, 1);
    Set(5, 2, 0.5F);
    // 90 x 60 / 72.5 is 74.5
    EXPECT_THAT(Column("20m"), ElementsAre("20m", "90", "1:13", "74", "41"));
    EXPECT_THAT(Column("40m"), ElementsAre("40m", "1", "--", "--", "1"));
    EXPECT_THAT(Column("80m"), ElementsAre("80m", "2", "0:01", "240", "--"));
}

TEST_F(BandTableTest, OfCqWwHasCountriesAndZones) {
    Open(kCqWw);
    Set(3, 4, 30, 11, 3);
    SetCountries(3, 2, 1);
    EXPECT_THAT(Column("20m"), ElementsAre("20m", "4", "11", "2.75", "8", "22", "2", "1"));
    Set(3, 3, 30, 8, 3); // 2.666
    EXPECT_THAT(Column("20m"), ElementsAre("20m", "3", "8", "2.67", "6", "16", "2", "1"));
    Set(3, 8, 60, 1, 0); // 0.125
    EXPECT_THAT(Column("20m"), ElementsAre("20m", "8", "1", "0.13", "8", "1", "2", "1"));
    Set(3, 2, 30, 0, 0); // the own country
    SetCountries(3, 0, 0);
    EXPECT_THAT(Column("20m"), ElementsAre("20m", "2", "--", "--", "4", "--", "--", "--"));
}

TEST_F(BandTableTest, OfOneModeCountsEveryContactOfTheBand) {
    Open(kWpx);
    Set(4, 1, 10, 6, 1);
    Set(12, 2, 20, 2, 1);
    EXPECT_THAT(Column("40m"), ElementsAre("40m", "3", "8", "2.67", "6", "16", "2"));
    Open(kAa);
    Set(6, 2, 30, 6, 2);
    EXPECT_THAT(Column("160"), ElementsAre("160", "2", "6", "3.00", "4", "12", "2"));
}

TEST_F(BandTableTest, OfQsoPartiesHasPairs) {
    for (const i16 contest : {kZrt, kNeqp}) {
        Open(contest);
        Set(3, 12, 60, 36, 4);
        Set(11, 5, 30, 10, 0);
        Set(7, 1, 0, 3, 1);
        EXPECT_THAT(Column("20m"), ElementsAre("20m", "5/12", "10/12", "20/36", "0/4"));
        EXPECT_THAT(Column("6m"), ElementsAre("6m", "0/1", "--", "--", "0/1"));
        EXPECT_THAT(Column("15m"), ElementsAre("15m", "--", "--", "--", "--"));
    }
}

TEST_F(BandTableTest, OfPaqpCountsTenths) {
    Open(kPaqp);
    Set(3, 3, 60, 45, 0);
    Set(11, 2, 60, 20, 1);
    EXPECT_THAT(Column("20m"), ElementsAre("20m", "2/3", "2/3", "2/5", "1/0")); // 4.5
}

TEST_F(BandTableTest, OfGenericHasTheBandsBetween) {
    Open(kGeneric);
    Set(23, 6, 20, 12);
    Set(19, 1, 20, 1);
    SetCountries(23, 3, 0);
    EXPECT_THAT(Column("30m"), ElementsAre("30m", "1/6", "3/18", "0/3"));
}

// Eleven contacts on CW, one of them of 8 points, which is counted under phone.
TEST_F(BandTableTest, OfTenMetersHasTheModes) {
    Open(kTenMeter);
    Set(1, 11, 60, 48, 3);
    Set(9, 3, 30, 6, 0);
    Statistics.CwCount = 10;
    Statistics.SsbCount = 4;
    Statistics.CwMinutes = 60;
    Statistics.SsbMinutes = 30;
    Multipliers.TenCwMults = 2;
    EXPECT_THAT(Column("CW"), ElementsAre("CW", "11", "11", "40", "2", "3"));
    EXPECT_THAT(Column("PH"), ElementsAre("PH", "3", "6", "16", "--", "--"));
    Multipliers.TenSsbMults = 1;
    EXPECT_EQ(Column("PH")[4], "1");
    EXPECT_EQ(Column("CW")[4], "2");
}

TEST_F(BandTableTest, HasRatesUpTo999) {
    Open(kCqWw);
    const auto rates = [](int contacts, float minutes, int points) {
        Set(3, contacts, minutes, points);
        return std::pair{Column("20m")[4], Column("20m")[5]};
    };
    using Rates = std::pair<std::string, std::string>;
    EXPECT_EQ(rates(998, 60, 999), Rates("998", "999"));
    EXPECT_EQ(rates(1000, 60, 2000), Rates("999", "999"));
    EXPECT_EQ(rates(1, 0.5F, 3), Rates("120", "360"));
    EXPECT_EQ(rates(40, 2, 40), Rates("999", "999"));
    EXPECT_EQ(rates(1, 600, 1), Rates("0", "0")); // a rate, though a slow one
    EXPECT_EQ(rates(9000, 0.5F, 54000), Rates("999", "999"));
}

TEST_F(BandTableTest, FollowsTheLog) {
    Open(kZrt);
    Add(kNoon, '3', "K1ZZ", 3);
    Add(kNoon + 10, '3', "K2ZZ", 3);
    Add(kNoon + 20, '2', "K3ZZ", 11); // five minutes to each mode
    EXPECT_THAT(Column("20m"), ElementsAre("20m", "1/2", "12/8", "24/24", "--"));
    EXPECT_EQ(Meters(false).ModeTimes, "SSB/CW: 0:05/0:15");
}

} // namespace
} // namespace zrt
