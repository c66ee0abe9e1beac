#include "session/date_text.h"

#include "session/contests.h"
#include "session/log_file.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace zrt {
namespace {

TEST(DateText, ReadsTheCodeOfEachDecade) {
    EXPECT_EQ(DateText(DateCode(1999, 1, 2), ' '), "1/02/99");
    EXPECT_EQ(DateText(DateCode(1998, 12, 31), ' '), "12/31/98");
    EXPECT_EQ(DateText(DateCode(2000, 1, 1), ' '), "1/01/00");
    EXPECT_EQ(DateText(DateCode(2009, 9, 30), ' '), "9/30/09");
    EXPECT_EQ(DateText(DateCode(2004, 10, 5), ' '), "10/05/04");
    EXPECT_EQ(DateText(DateCode(2008, 12, 25), ' '), "12/25/08");
    EXPECT_EQ(DateText(DateCode(2010, 1, 1), ' '), "1/01/10");
    EXPECT_EQ(DateText(DateCode(2019, 11, 23), ' '), "11/23/19");
}

TEST(DateText, TakesTheDecadeMarkForYearsThatReadAs200xOnly) {
    EXPECT_EQ(DateText(DateCode(2026, 10, 24), ' '), "10/24/06");
    EXPECT_EQ(DateText(DateCode(2026, 10, 24), '2'), "10/24/26");
    EXPECT_EQ(DateText(DateCode(2091, 1, 1), '9'), "1/01/91");
    EXPECT_EQ(DateText(DateCode(2006, 10, 24), '1'), "10/24/06");
    EXPECT_EQ(DateText(DateCode(2006, 10, 24), '\0'), "10/24/06");
    EXPECT_EQ(DateText(DateCode(2015, 10, 24), '2'), "10/24/15");
    EXPECT_EQ(DateText(DateCode(1995, 10, 24), '2'), "10/24/95");
}

TEST(DateText, BearsAnyCode) {
    EXPECT_EQ(DateText(0, ' '), "0/00/90");
    EXPECT_EQ(DateText(32767, ' '), "12/76/07");
    EXPECT_EQ(DateText(-32768, ' '), "12/76/18");
}

TEST(DateText, OfAnEntryIsThatOfTheLogsForm) {
    Log = {};
    Contest = {};
    Log.NextEntry = 2;
    Log.CurrentFormat = true;
    Log.LogEntries[1].Date = DateCode(2026, 1, 15);
    Log.LogEntries[1].Reserved = "2";
    EXPECT_EQ(EntryDateText(1), "1/15/26");
    Log.CurrentFormat = false;
    Log.OldEntries26[1].Date = DateCode(2006, 1, 15);
    EXPECT_EQ(EntryDateText(1), "1/15/06");
    Log = {};
}

// ---- YYYY-MM-DD

TEST(IsoDateText, HasEveryDateOfTheNinetiesAndOfTheTwoDecadesBehindThem) {
    constexpr std::array kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int year = 1990; year <= 2019; ++year)
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= kDays[static_cast<std::size_t>(month) - 1]; ++day) {
                const std::string text = std::to_string(year) + (month < 10 ? "-0" : "-") +
                                         std::to_string(month) + (day < 10 ? "-0" : "-") +
                                         std::to_string(day);
                ASSERT_EQ(IsoDateText(DateCode(year, month, day), ' '), text);
            }
}

TEST(IsoDateText, TakesTheDecadeMarkForYearsThatReadAs200xOnly) {
    EXPECT_EQ(IsoDateText(DateCode(2026, 10, 24), ' '), "2006-10-24");
    EXPECT_EQ(IsoDateText(DateCode(2026, 10, 24), '2'), "2026-10-24");
    EXPECT_EQ(IsoDateText(DateCode(2091, 1, 1), '9'), "2091-01-01");
    EXPECT_EQ(IsoDateText(DateCode(2006, 10, 24), '1'), "2006-10-24");
    EXPECT_EQ(IsoDateText(DateCode(2006, 10, 24), 'x'), "2006-10-24");
    EXPECT_EQ(IsoDateText(DateCode(2006, 10, 24), '\0'), "2006-10-24");
    EXPECT_EQ(IsoDateText(DateCode(2015, 10, 24), '2'), "2015-10-24");
    EXPECT_EQ(IsoDateText(DateCode(1995, 10, 24), '2'), "1995-10-24");
    EXPECT_EQ(IsoDateText(DateCode(1995, 1, 24), '2'), "1995-01-24");
}

TEST(IsoDateText, OfACodeThatIsNoDateIsEmptyOrItsDigits) {
    for (const int code : {0, 1, 15, 116, 999, -999})
        EXPECT_EQ(IsoDateText(static_cast<i16>(code), ' '), "") << code;
    EXPECT_EQ(IsoDateText(1000, ' '), "1990-01-00");
    EXPECT_EQ(IsoDateText(9999, ' '), "1999-09-99");
    EXPECT_EQ(IsoDateText(32767, ' '), "2007-12-76");
    EXPECT_EQ(IsoDateText(-32768, ' '), "2018-12-76");
}

} // namespace
} // namespace zrt
