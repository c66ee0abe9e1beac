#include "entry/utc_clock.h"

#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

class UtcClock : public ProgramTest {
  protected:
    static i16 DateOn(int year, int month, int day, i16 shift) {
        SetTime(year, month, day, 12, 0);
        return GetGMTDate(shift);
    }
};

struct ShiftRow {
    int Month, Day;
    i16 Shift;
    const char *Result; // the year's digit is added behind it
};
constexpr ShiftRow kShifts[] = {
    {1, 31, 1, "2201"},  {2, 28, 1, "2301"}, {2, 29, 1, "2301"},  {2, 1, -1, "2131"},
    {3, 31, 1, "2401"},  {3, 1, -1, "2228"}, {4, 30, 1, "2501"},  {4, 1, -1, "2331"},
    {5, 31, 1, "2601"},  {5, 1, -1, "2430"}, {6, 30, 1, "2701"},  {6, 1, -1, "2531"},
    {7, 31, 1, "2801"},  {7, 1, -1, "2630"}, {8, 31, 1, "2901"},  {8, 1, -1, "2731"},
    {9, 30, 1, "3001"},  {9, 1, -1, "2831"}, {10, 31, 1, "3101"}, {10, 1, -1, "2930"},
    {11, 30, 1, "3201"}, {12, 1, -1, "3130"}};

bool IsLeapYear(int year) {
    return year % 4 == 0;
}

TEST_F(UtcClock, ShiftsTheDayOverAMonthsEndByItsTable) {
    for (const int year : {2005, 2006, 2015, 2017, 2020, 2024, 2026}) {
        for (const ShiftRow &row : kShifts) {
            if (row.Month == 2 && row.Day == 29 && !IsLeapYear(year))
                continue;
            SCOPED_TRACE(std::to_string(year) + " " + std::to_string(row.Month) + "/" +
                         std::to_string(row.Day));
            const int digits = std::stoi(row.Result) * 10 + year % 10;
            const bool negative = year / 10 % 10 == 1;
            EXPECT_EQ(DateOn(year, row.Month, row.Day, row.Shift), negative ? -digits : digits);
        }
    }
}

// The table's own row for this day, as old as the others.
TEST_F(UtcClock, PutsTheDayBefore1NovemberOn31November) {
    EXPECT_EQ(DateOn(2005, 11, 1, -1), 31315);
    EXPECT_EQ(DateOn(2015, 11, 1, -1), -31315);
}

TEST_F(UtcClock, KnowsFourLeapYears) {
    for (const int year : {2004, 2008, 2012, 2016}) {
        const int sign = year >= 2010 ? -1 : 1;
        EXPECT_EQ(DateOn(year, 2, 28, 1), sign * (22290 + year % 10)) << year;
        EXPECT_EQ(DateOn(year, 2, 29, 1), sign * (23010 + year % 10)) << year;
        EXPECT_EQ(DateOn(year, 3, 1, -1), sign * (22290 + year % 10)) << year;
    }
}

TEST_F(UtcClock, Takes29February2020AsItIsButNeverShiftsToIt) {
    EXPECT_EQ(DateOn(2020, 2, 28, 1), 23010);
    EXPECT_EQ(DateOn(2020, 2, 29, 0), 22290);
    EXPECT_EQ(DateOn(2020, 3, 1, -1), 22280);
}

TEST_F(UtcClock, MovesTheYearsDigitWithinItsDecade) {
    EXPECT_EQ(DateOn(2005, 12, 31, 1), 21016);
    EXPECT_EQ(DateOn(2005, 1, 1, -1), 32314);
    EXPECT_EQ(DateOn(2015, 12, 31, 1), -21016);
    EXPECT_EQ(DateOn(2009, 12, 31, 1), 21019); // stays 9
    EXPECT_EQ(DateOn(2010, 1, 1, -1), -32310); // stays 0
    EXPECT_EQ(DateOn(2019, 12, 31, 1), -21019);
}

TEST_F(UtcClock, ShiftsOrdinaryDays) {
    EXPECT_EQ(DateOn(2015, 1, 9, 1), -21105);
    EXPECT_EQ(DateOn(2015, 1, 10, -1), -21095);
    EXPECT_EQ(DateOn(2015, 1, 15, 0), -21155);
    EXPECT_EQ(DateOn(2005, 12, 31, 0), 32315);
}

TEST_F(UtcClock, TakesAClockOnUtcAsItStands) {
    Settings.IsGMTFlag = "True";
    Settings.TimeCorrection = "7";
    SetTime(2015, 1, 15, 23, 59);
    EXPECT_EQ(TimeNow().Time, 2359);
    EXPECT_EQ(TimeNow().Date, -21155);
    SetTime(2015, 1, 15, 0, 5);
    EXPECT_EQ(TimeNow().Time, 5);
}

TEST_F(UtcClock, MovesALocalClockForwardOverMidnight) {
    Settings.TimeCorrection = "5";
    SetTime(2015, 1, 15, 18, 59);
    EXPECT_EQ(TimeNow().Time, 2359);
    EXPECT_EQ(TimeNow().Date, -21155);
    SetTime(2015, 1, 15, 19, 0);
    EXPECT_EQ(TimeNow().Time, 0);
    EXPECT_EQ(TimeNow().Date, -21165);
    SetTime(2015, 12, 31, 22, 30);
    EXPECT_EQ(TimeNow().Time, 330);
    EXPECT_EQ(TimeNow().Date, -21016);
}

TEST_F(UtcClock, MovesALocalClockBackOverMidnight) {
    Settings.TimeCorrection = "-9";
    SetTime(2015, 1, 15, 9, 0);
    EXPECT_EQ(TimeNow().Time, 0);
    EXPECT_EQ(TimeNow().Date, -21155);
    SetTime(2015, 1, 15, 8, 59);
    EXPECT_EQ(TimeNow().Time, 2359);
    EXPECT_EQ(TimeNow().Date, -21145);
    SetTime(2015, 1, 1, 0, 30);
    EXPECT_EQ(TimeNow().Time, 1530);
    EXPECT_EQ(TimeNow().Date, -32314);
}

TEST_F(UtcClock, NeedsTheExactTextTrue) {
    Settings.TimeCorrection = "1";
    for (const char *text : {"", "true", "False", "-1"}) {
        Settings.IsGMTFlag = text;
        EXPECT_EQ(TimeNow().Time, 1537) << text;
    }
}

TEST_F(UtcClock, ReadsTheSystemsUtcWithItsKey) {
    Devices.ZoneMinutes = 330; // five hours and a half
    SetTime(2020, 2, 28, 20, 0);
    Settings.IsGMTFlag = "True";
    EXPECT_EQ(TimeNow().Time, 130); // the machine's clock as it stands
    EXPECT_EQ(TimeNow().Date, 22290);
    Extensions.UtcFromSystem = true;
    EXPECT_EQ(TimeNow().Time, 2000);
    EXPECT_EQ(TimeNow().Date, 22280);
    Settings.IsGMTFlag = "False"; // a local clock is a local clock
    Settings.TimeCorrection = "-5";
    EXPECT_EQ(TimeNow().Time, 2030);
    EXPECT_EQ(TimeNow().Date, 22280);
}

TEST_F(UtcClock, TellsTheDecadeFrom2020) {
    Settings.IsGMTFlag = "True";
    for (const auto &[year, decade] :
         {std::pair{2009, ' '}, {2019, ' '}, {2020, '2'}, {2029, '2'}, {2030, '3'}, {2099, '9'}}) {
        SetTime(year, 6, 15, 12, 0);
        EXPECT_EQ(TimeNow().Decade, decade) << year;
    }
}

TEST_F(UtcClock, LabelsAClockOnUtc) {
    Settings.IsGMTFlag = "True";
    Settings.TimeCorrection = "-5";
    SetTime(2015, 1, 15, 3, 7);
    EXPECT_EQ(ClockLabels().Gmt, "GMT: 0307");
    EXPECT_EQ(ClockLabels().Local, "LocalTime: 2207");
}

TEST_F(UtcClock, LabelsALocalClock) {
    Settings.TimeCorrection = "5";
    SetTime(2015, 1, 15, 22, 7);
    EXPECT_EQ(ClockLabels().Gmt, "GMT: 0307");
    EXPECT_EQ(ClockLabels().Local, "Local Time: 2207");
}

} // namespace
} // namespace zrt
