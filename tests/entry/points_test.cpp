#include "entry/points.h"

#include "entry/log_form.h"
#include "support/program.h"

namespace zrt {
namespace {

class Points : public ProgramTest {
  protected:
    // The points on each of the 24 codes, as one text.
    static std::string OnEveryCode(i16 contest, const char *call = "K1ZZ") {
        Contest.ContestId = contest;
        std::string points;
        for (i16 band = 1; band <= 24; ++band)
            points += PointsFor(MakeEntry(call, 0, 0, band, ' '));
        return points;
    }
};

// The codes 21 to 23 (CW on 12, 17 and 30 m) count as SSB in three contests and as CW in Generic.
TEST_F(Points, FollowContestAndBand) {
    EXPECT_EQ(OnEveryCode(kArrlDx), "333333333333333333333333");
    EXPECT_EQ(OnEveryCode(kZrt), "333333332222222222222222");
    EXPECT_EQ(OnEveryCode(kSprint), "111111111111111111111111");
    EXPECT_EQ(OnEveryCode(kSs), "222222222222222222222222");
    EXPECT_EQ(OnEveryCode(kPaqp), "333322331111111111111111");
    EXPECT_EQ(OnEveryCode(kNaqp), "111111111111111111111111");
    EXPECT_EQ(OnEveryCode(kTenMeter), "444444442222222222222222");
    EXPECT_EQ(OnEveryCode(kNeqp), "222222221111111111111111");
    EXPECT_EQ(OnEveryCode(kGeneric), "222222221111111111112222");
    EXPECT_EQ(OnEveryCode(kCwOpen), "111111111111111111111111");
}

TEST_F(Points, OfATenMeterNoviceOrTechnicianOnCwAreEight) {
    EXPECT_EQ(OnEveryCode(kTenMeter, "KA1ZZ/T"), "888888882222222222222222");
    EXPECT_EQ(OnEveryCode(kTenMeter, "KA1ZZ/N"), "888888882222222222222222");
    EXPECT_EQ(OnEveryCode(kTenMeter, "KA1ZZ/T4"), "444444442222222222222222");
    EXPECT_EQ(OnEveryCode(kTenMeter, "KA1ZT"), "444444442222222222222222");
}

TEST_F(Points, OfACountyLineAreNone) {
    Entry.CountyLineFlag = true;
    EXPECT_EQ(OnEveryCode(kZrt), std::string(24, '0'));
    EXPECT_EQ(OnEveryCode(kSs), std::string(24, '2'));
}

TEST_F(Points, OfCqWwWpxAndAaGoByTheCountry) {
    PointsByCountry = [](const OldEntry36 &entry) {
        return entry.Callsign.Trimmed() == "VK1ZZ" ? '6' : '1';
    };
    for (const i16 contest : {kCqWw, kWpx, kAa}) {
        EXPECT_EQ(OnEveryCode(contest, "VK1ZZ"), std::string(24, '6'));
        EXPECT_EQ(OnEveryCode(contest, "K1ZZ"), std::string(24, '1'));
    }
}

TEST_F(Points, CountAsTheirDigit) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        if (contest == kPaqp)
            continue;
        Contest.ContestId = contest;
        for (char digit = '0'; digit <= '9'; ++digit)
            EXPECT_EQ(NumericPoints(digit), digit - '0');
    }
}

TEST_F(Points, OfPaqpCountInTenthsAndAThreeIs15) {
    Contest.ContestId = kPaqp;
    EXPECT_EQ(NumericPoints('0'), 0);
    EXPECT_EQ(NumericPoints('1'), 10);
    EXPECT_EQ(NumericPoints('2'), 20);
    EXPECT_EQ(NumericPoints('3'), 15);
}

TEST_F(Points, OfADamagedRecordAreNone) {
    for (const char odd : {' ', '\0', '-', 'A', '\xFF'})
        EXPECT_EQ(NumericPoints(odd), 0);
}

} // namespace
} // namespace zrt
