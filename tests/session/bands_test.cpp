#include "session/bands.h"

#include <gtest/gtest.h>

namespace zrt {
namespace {

struct BandRow {
    int Position;
    i16 Cw;
    i16 Phone;
    const char *Short;
    const char *Long;
};
constexpr BandRow kRows[] = {
    {1, 1, 9, "10 ", "10m"},    {2, 2, 10, "15 ", "15m"},  {3, 3, 11, "20 ", "20m"},
    {4, 4, 12, "40 ", "40m"},   {5, 5, 13, "80 ", "80m"},  {6, 6, 14, "160", "160"},
    {7, 7, 15, "6m ", "6m "},   {8, 8, 16, "2m ", "2m "},  {9, 21, 17, "12 ", "12m"},
    {10, 22, 18, "17 ", "17m"}, {11, 23, 19, "30 ", "30m"}};

TEST(Bands, HaveTheirNamesAndCodes) {
    for (const BandRow &row : kRows) {
        SCOPED_TRACE(row.Long);
        EXPECT_STREQ(kBandNamesShort[row.Position - 1], row.Short);
        EXPECT_STREQ(kBandNamesLong[row.Position - 1], row.Long);
        EXPECT_EQ(CodeInMode(row.Position, false), row.Cw);
        EXPECT_EQ(CodeInMode(row.Position, true), row.Phone);
        for (const i16 code : {row.Cw, row.Phone}) {
            EXPECT_EQ(BandPosition(code), row.Position);
            EXPECT_STREQ(ShortBandName(code), row.Short);
            EXPECT_STREQ(LongBandName(code), row.Long);
        }
        EXPECT_TRUE(IsCw(row.Cw));
        EXPECT_TRUE(IsPhone(row.Phone));
    }
}

TEST(Bands, HaveATwelfthBlankRow) {
    EXPECT_EQ(kBandNamesShort.size(), 12U);
    EXPECT_STREQ(kBandNamesShort[11], "   ");
    EXPECT_STREQ(kBandNamesLong[11], "   ");
}

TEST(Bands, TheCodes20And24AreValidIndexesWithoutABand) {
    for (const int code : {20, 24}) {
        EXPECT_TRUE(IsBandCode(code));
        EXPECT_EQ(BandPosition(code), kNoBandPosition);
        EXPECT_STREQ(LongBandName(code), "   ");
    }
    EXPECT_TRUE(IsPhone(20));
}

TEST(Bands, OutsideOf1To24AreNoCodes) {
    for (const int code : {0, -1, 25, 32767, -32768}) {
        EXPECT_FALSE(IsBandCode(code));
        EXPECT_EQ(BandPosition(code), kNoBandPosition);
    }
}

} // namespace
} // namespace zrt
