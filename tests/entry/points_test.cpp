#include "entry/points.h"

#include "app/session_reset.h"
#include "entry/log_form.h"
#include "session/reference_data.h"
#include "support/program.h"

#include <vector>

namespace zrt {
namespace {

class PointsOfContact : public ProgramTest {
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
TEST_F(PointsOfContact, FollowContestAndBand) {
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

TEST_F(PointsOfContact, OfATenMeterNoviceOrTechnicianOnCwAreEight) {
    EXPECT_EQ(OnEveryCode(kTenMeter, "KA1ZZ/T"), "888888882222222222222222");
    EXPECT_EQ(OnEveryCode(kTenMeter, "KA1ZZ/N"), "888888882222222222222222");
    EXPECT_EQ(OnEveryCode(kTenMeter, "KA1ZZ/T4"), "444444442222222222222222");
    EXPECT_EQ(OnEveryCode(kTenMeter, "KA1ZT"), "444444442222222222222222");
}

TEST_F(PointsOfContact, OfACountyLineAreNone) {
    Entry.CountyLineFlag = true;
    EXPECT_EQ(OnEveryCode(kZrt), std::string(24, '0'));
    EXPECT_EQ(OnEveryCode(kSs), std::string(24, '2'));
}

TEST_F(PointsOfContact, CountAsTheirDigit) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        if (contest == kPaqp)
            continue;
        Contest.ContestId = contest;
        for (char digit = '0'; digit <= '9'; ++digit)
            EXPECT_EQ(NumericPoints(digit), digit - '0');
    }
}

TEST_F(PointsOfContact, OfPaqpCountInTenthsAndAThreeIs15) {
    Contest.ContestId = kPaqp;
    EXPECT_EQ(NumericPoints('0'), 0);
    EXPECT_EQ(NumericPoints('1'), 10);
    EXPECT_EQ(NumericPoints('2'), 20);
    EXPECT_EQ(NumericPoints('3'), 15);
}

TEST_F(PointsOfContact, OfADamagedRecordAreNone) {
    for (const char odd : {' ', '\0', '-', 'A', '\xFF'})
        EXPECT_EQ(NumericPoints(odd), 0);
}

// ---- by the country

class PointsByCountry : public PointsOfContact {
  protected:
    PointsByCountry() { ReadCountries(); }
    static void StandIn(std::string_view place) {
        Contest.QthUSA = place == "USA";
        Contest.QthVE = place == "VE";
        Contest.QthContinent = place.size() == 2 && place != "VE" ? place : "";
    }
};

struct CqWwRow {
    const char *Station;
    const char *Call;
    char Points;
};
constexpr CqWwRow kCqWwRows[] = {
    {"USA", "K1ZZ", '0'},     {"USA", "VE3ZZ", '2'},    {"USA", "XE1ZZ", '2'},
    {"USA", "KP4ZZ", '2'},    {"USA", "AL7ZZ", '2'},    {"USA", "C6A", '2'},
    {"USA", "KH6ZZ", '3'},    {"USA", "DL1ZZ", '3'},    {"USA", "QQ1ZZ", '3'},
    {"USA", "W1ZZ/VE3", '2'}, {"USA", "KH6ZZ/W1", '0'}, {"USA", "", '3'},
    {"VE", "VE3ZZ", '0'},     {"VE", "XM3ZZ", '0'},     {"VE", "K1ZZ", '2'},
    {"VE", "XE1ZZ", '2'},     {"VE", "CM2ZZ", '2'},     {"VE", "KH6ZZ", '3'},
    {"VE", "JA1ZZ", '3'},     {"VE", "QQ1ZZ", '3'},     {"EU", "DL1ZZ", '1'},
    {"EU", "F1ZZ", '1'},      {"EU", "UA3ZZ", '1'},     {"EU", "UA9ZZ", '3'},
    {"EU", "K1ZZ", '3'},      {"EU", "EA8ZZ", '3'},     {"EU", "QQ1ZZ", '3'},
    {"EU", "", '3'},          {"EU", "F/W1ZZ", '1'},    {"NA", "K1ZZ", '2'},
    {"NA", "VE3ZZ", '2'},     {"NA", "XE1ZZ", '2'},     {"NA", "KH6ZZ", '3'},
    {"NA", "P40ZZ", '3'},     {"NA", "QQ1ZZ", '3'},     {"OC", "VK3ZZ", '1'},
    {"OC", "KH6ZZ", '1'},     {"OC", "K1ZZ", '3'},      {"AS", "JA1ZZ", '1'},
    {"AS", "4X1ZZ", '1'},     {"AS", "UA3ZZ", '3'},     {"SA", "LU1ZZ", '1'},
    {"SA", "P40ZZ", '1'},     {"SA", "CM2ZZ", '3'},     {"AF", "ZS1ZZ", '1'},
    {"AF", "EA8ZZ", '1'},     {"AF", "EA1ZZ", '3'}};

TEST_F(PointsByCountry, OfCqWwAreFewerNearby) {
    for (const CqWwRow &row : kCqWwRows) {
        StandIn(row.Station);
        EXPECT_EQ(OnEveryCode(kCqWw, row.Call), std::string(24, row.Points))
            << row.Call << " from " << row.Station;
    }
    EXPECT_EQ(Points.SameContinentCount, 0); // counted in WPX alone
}

// High and low bands at a station in the USA or Canada, and elsewhere, where the codes 8 and 16 to
// 19 and 24 are high.
std::string AtHome(char high, char low) {
    return std::string(3, high) + std::string(5, low) + std::string(3, high) + std::string(13, low);
}

std::string Elsewhere(char high, char low) {
    const std::string four(4, low);
    return std::string(3, high) + four + std::string(4, high) + four + std::string(4, high) + four +
           high;
}

struct WpxRow {
    const char *Station;
    const char *Call;
    std::string Points;
    bool Same; // counts as the own country or continent
};
const std::vector<WpxRow> &WpxRows() {
    static const std::vector<WpxRow> rows = {
        {"USA", "K1ZZ", AtHome('1', '1'), true},     {"USA", "VE3ZZ", AtHome('2', '4'), false},
        {"USA", "XE1ZZ", AtHome('2', '4'), false},   {"USA", "DL1ZZ", AtHome('3', '6'), false},
        {"USA", "QQ1ZZ", AtHome('3', '6'), false},   {"VE", "VE3ZZ", AtHome('1', '1'), true},
        {"VE", "K1ZZ", AtHome('2', '4'), false},     {"VE", "KP4ZZ", AtHome('2', '4'), false},
        {"VE", "VK3ZZ", AtHome('3', '6'), false},    {"NA", "XE1ZZ", Elsewhere('2', '4'), true},
        {"NA", "K1ZZ", Elsewhere('2', '4'), true},   {"NA", "DL1ZZ", Elsewhere('3', '6'), false},
        {"EU", "DL1ZZ", Elsewhere('1', '2'), true},  {"EU", "K1ZZ", Elsewhere('3', '6'), false},
        {"EU", "QQ1ZZ", Elsewhere('3', '6'), false}, {"SA", "PY1ZZ", Elsewhere('1', '2'), true},
    };
    return rows;
}

TEST_F(PointsByCountry, OfWpxDoubleOnTheLowBands) {
    for (const WpxRow &row : WpxRows()) {
        StandIn(row.Station);
        Points = {};
        EXPECT_EQ(OnEveryCode(kWpx, row.Call), row.Points) << row.Call << " from " << row.Station;
        EXPECT_EQ(Points.SameContinentCount, row.Same ? 24 : 0)
            << row.Call << " from " << row.Station;
    }
}

TEST_F(PointsByCountry, OfAnAustralianOn40MetersFromCanadaAreSix) {
    StandIn("VE");
    Contest.ContestId = kWpx;
    EXPECT_EQ(PointsFor(MakeEntry("VK3ZZ", 0, 0, 12, ' ')), '6');
}

// A header may tell no location: then no call is of the own continent.
TEST_F(PointsByCountry, OfAStationNowhereAreThoseOfAnotherContinent) {
    StandIn("");
    EXPECT_EQ(OnEveryCode(kCqWw, "K1ZZ"), std::string(24, '3'));
    EXPECT_EQ(OnEveryCode(kCqWw, "QQ1ZZ"), std::string(24, '3'));
    EXPECT_EQ(OnEveryCode(kWpx, "QQ1ZZ"), Elsewhere('3', '6'));
    EXPECT_EQ(Points.SameContinentCount, 0);
}

TEST_F(PointsByCountry, OfAaAreForAsiaAlone) {
    const std::string asia = "111123111111231111111111";
    EXPECT_EQ(OnEveryCode(kAa, "JA1ZZ"), asia);
    EXPECT_EQ(OnEveryCode(kAa, "UA9ZZ"), asia);
    EXPECT_EQ(OnEveryCode(kAa, "4X1ZZ"), asia);
    for (const char *call : {"K1ZZ", "DL1ZZ", "VK3ZZ", "UA3ZZ", "QQ1ZZ", ""})
        EXPECT_EQ(OnEveryCode(kAa, call), std::string(24, '0')) << call;
}

TEST_F(PointsByCountry, OfADamagedBandAreHarmless) {
    for (const i16 band : {i16{-32768}, i16{-1}, i16{0}, i16{25}, i16{32767}})
        for (const i16 contest : {kCqWw, kWpx, kAa})
            for (const char *station : {"USA", "VE", "EU"}) {
                StandIn(station);
                Contest.ContestId = contest;
                const char points = PointsFor(MakeEntry("JA1ZZ", 0, 0, band, ' '));
                EXPECT_TRUE(points >= '1' && points <= '6');
            }
}

TEST_F(PointsByCountry, OfTheOwnContinentAreForgottenWithTheLog) {
    Points.SameContinentCount = 5;
    ResetSession();
    EXPECT_EQ(Points.SameContinentCount, 0);
}

TEST_F(PointsByCountry, OfTheOwnContinentAreCountedAgainWhenALogIsRead) {
    const auto entry = [](const char *call, char points) {
        return EntryBytes(MakeEntry(call, -21155, 1200, 3, points));
    };
    // The header and what follows it up to the first entry fill a record.
    LoadTemporary(HeaderBytes("WPXCW", '2') + std::string(kEntryLength - kHeaderLength, '\0') +
                  entry("K1ZZ", '1') + entry("DL1ZZ", '3') + entry("K1ZZ", '0') +
                  entry("VOID", '1') + entry("N2ZZ", '1'));
    ASSERT_EQ(Contest.ContestId, kWpx);
    EXPECT_EQ(Points.SameContinentCount, 2); // neither the dupe nor the void
}

} // namespace
} // namespace zrt
