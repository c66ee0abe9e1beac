// What the recount takes for a multiplier in each contest, and where stations are.
#include "postcontest/recount_world.h"

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;

class RecountMults : public RecountTest {};

// ---- ARRL DX

TEST_F(RecountMults, ArrlDxCountsTheCountryThatStandsInTheLogOncePerBand) {
    Tally("ARLCW", '1',
          {Qso("DL1AA", 1400, 3, '3', "DL"), Qso("DL2AA", 1401, 3, '3', "DL"),
           Qso("DL1AA", 1402, 4, '3', "DL"), Qso("F1AA", 1403, 3, '3', "F"),
           // An operator's correction holds against the call.
           Qso("DL9AA", 1404, 3, '3', "G")});
    EXPECT_THAT(NewMults(), ElementsAre(true, false, true, true, true));
    EXPECT_EQ(SlotMults(), (Counts{{3, 3}, {4, 1}}));
    EXPECT_EQ(Recount.TotalMults, 4);
    EXPECT_EQ(Recount.Score, 15 * 4);
}

TEST_F(RecountMults, ArrlDxCountsNeitherHomeNorStarredNorUnknownPrefixes) {
    Tally("ARLCW", '1',
          {Qso("W1AW", 1400, 3, '0', "K"), Qso("VE1AA", 1401, 3, '0', "VE"),
           Qso("IT9AA", 1402, 3, '3', "IT9"), Qso("IT9AA", 1403, 3, '3', "*IT9"),
           Qso("DL1AA", 1404, 3, '3', ""), Qso("DL1AA", 1405, 3, '3', "QQ"),
           // Those of the home country's islands do count.
           Qso("KH6AA", 1406, 3, '3', "KH6"), Qso("KL7AA", 1407, 3, '3', "KL")});
    EXPECT_THAT(NewMults(), ElementsAre(false, false, false, false, false, false, true, true));
    EXPECT_EQ(Recount.TotalMults, 2);
}

TEST_F(RecountMults, ArrlDxAnywhereElseCountsTheStatesPerBand) {
    Tally("ARLSB", '2',
          {Qso("W1AW", 1400, 11, '3', "CT"), Qso("W2AW", 1401, 11, '3', "CT"),
           Qso("W1AW", 1402, 12, '3', "CT"), Qso("W3AW", 1403, 11, '3', "AL"),
           Qso("W4AW", 1404, 11, '3', "XX"), Qso("DL1AA", 1405, 11, '3', "DL")});
    EXPECT_THAT(NewMults(), ElementsAre(true, false, true, true, false, false));
    EXPECT_EQ(SlotMults(), (Counts{{3, 2}, {4, 1}}));
    EXPECT_EQ(Recount.TotalMults, 3);
}

// ---- contests with a list

TEST_F(RecountMults, ZrtOutOfStateCountsCountiesOnceByTheirNumber) {
    Tally("ZRTOS", ' ',
          {Qso("A", 1700, 3, '3', "1"), Qso("B", 1701, 12, '2', "1"), Qso("C", 1702, 3, '3', "58"),
           Qso("D", 1703, 3, '3', "59"), Qso("E", 1704, 3, '3', "0"), Qso("F", 1705, 3, '3', "12"),
           Qso("G", 1706, 3, '3', "QQ"), Qso("H", 1707, 3, '3', "")});
    EXPECT_THAT(NewMults(), ElementsAre(true, false, true, false, false, true, false, false));
    EXPECT_EQ(Recount.TotalMults, 3);
}

TEST_F(RecountMults, ZrtInStateCountsStatesByNumberAndAnyCountyForTheHomeState) {
    Tally("ZRTIN", ' ',
          {Qso("A", 1700, 3, '3', "1"), Qso("B", 1701, 3, '3', "ALDR"),
           Qso("C", 1702, 3, '3', "AMB"), Qso("D", 1703, 3, '3', "5"), Qso("E", 1704, 3, '3', "DX"),
           Qso("F", 1705, 3, '3', "1")});
    EXPECT_THAT(NewMults(), ElementsAre(true, true, false, false, false, false));
    EXPECT_EQ(Recount.TotalMults, 2);
    EXPECT_TRUE(Multipliers.ZrtMults[kCountyRow - 1].Worked[0]);
}

TEST_F(RecountMults, SprintCountsEachStateOnceButTheEleventhNever) {
    Tally("SP CW", ' ',
          {Qso("A", 1, 3, '1', "1"), Qso("B", 2, 4, '1', "1"), Qso("C", 3, 3, '1', "11"),
           Qso("D", 4, 3, '1', "72"), Qso("E", 5, 3, '1', "73"), Qso("F", 6, 3, '1', "DX")});
    EXPECT_THAT(NewMults(), ElementsAre(true, false, false, true, false, false));
    EXPECT_EQ(Recount.TotalMults, 2);
}

TEST_F(RecountMults, SsCountsEachSectionOnceByItsShortForm) {
    Tally("SS9CW", ' ',
          {Qso("A", 2100, 3, '2', "B72CT"), Qso("B", 2101, 4, '2', "A68CT"),
           Qso("C", 2102, 3, '2', "Q01EM"), Qso("D", 2103, 3, '2', "Q01QQ"),
           Qso("E", 2104, 3, '2', "Q01"), Qso("F", 2105, 3, '2', "")});
    EXPECT_THAT(NewMults(), ElementsAre(true, false, true, false, false, false));
    EXPECT_EQ(Recount.TotalMults, 2);
    EXPECT_EQ(Recount.Score, 12 * 2);
}

TEST_F(RecountMults, SsCountsAllOfItsSectionsAndThoseAddedSince) {
    MakeFile("ZRTLOG126.DAT", BytesOf("ZRTLOG126.DAT") +
                                  "\r\n[SS Extra Mults]\r\n2\r\nGH\r\nTER\r\n"
                                  "[SS Extra Short Forms]\r\n2,GX,TX\r\n");
    ReadStartupData();
    ASSERT_EQ(Reference.SsExtraMultCount, 2);
    std::vector<LogEntry> entries;
    for (const std::string &section : Reference.SsShortForms)
        entries.push_back(Qso("A", 2100, 3, '2', "A11" + section));
    entries.push_back(Qso("A", 2100, 3, '2', "A11GX"));
    entries.push_back(Qso("A", 2100, 3, '2', "A11TX"));
    entries.push_back(Qso("A", 2100, 3, '2', "A11TX"));
    Tally("SS9CW", ' ', entries);
    EXPECT_EQ(Recount.TotalMults, 85);
    EXPECT_TRUE(NewMults()[84]);
    EXPECT_FALSE(NewMults()[85]);
}

TEST_F(RecountMults, PaqpAndNeqpCountTheir67CountiesOnce) {
    for (const char *tag : {"PAQOS", "NEQOS"}) {
        SCOPED_TRACE(tag);
        std::vector<LogEntry> entries;
        for (int row = 0; row <= 69; ++row)
            entries.push_back(
                Qso("A", 2000, row % 2 == 0 ? i16{3} : i16{11}, '1', std::to_string(row)));
        entries.push_back(Qso("A", 2000, 5, '1', "67"));
        Tally(tag, ' ', entries);
        EXPECT_EQ(Recount.TotalMults, 67);
        EXPECT_FALSE(NewMults()[0]);
        EXPECT_TRUE(NewMults()[67]);
        EXPECT_FALSE(NewMults()[68]);
        EXPECT_FALSE(NewMults()[70]);
        EXPECT_EQ(SlotMults(), (Counts{{3, 67}}));
        EXPECT_EQ(Shown(Recount.MultsByCode), (Counts{{3, 33}, {11, 34}}));
    }
}

TEST_F(RecountMults, NaqpCountsEachStateOncePerBand) {
    Tally("NA SB", ' ',
          {Qso("A", 1800, 11, '1', "1"), Qso("B", 1801, 11, '1', "1"), Qso("C", 1802, 12, '1', "1"),
           Qso("D", 1803, 14, '1', "72"), Qso("E", 1804, 14, '1', "73"),
           Qso("F", 1805, 14, '1', "DX"), Qso("G", 1806, 14, '1', "")});
    EXPECT_THAT(NewMults(), ElementsAre(true, false, true, true, false, false, false));
    EXPECT_EQ(SlotMults(), (Counts{{3, 1}, {4, 1}, {6, 1}}));
    EXPECT_EQ(Recount.TotalMults, 3);
}

// ---- contests without a list

TEST_F(RecountMults, CqWwCountsCountriesAndZonesPerBandAndOwnCountryToo) {
    Tally("WW CW", '2',
          {Qso("DL1AA", 1, 3, '3', "DL", 14), Qso("F1AA", 2, 3, '3', "F", 14),
           Qso("DL2AA", 3, 3, '3', "DL", 14), Qso("DL1AA", 4, 4, '3', "DL", 14),
           Qso("DL3AA", 5, 3, '3', "DL", 40), Qso("W1AW", 6, 3, '0', "K", 5),
           Qso("IT9AA", 7, 3, '3', "*IT9", 15), Qso("I1AA", 8, 3, '3', "I", 15),
           Qso("QQ1AA", 9, 3, '3', "", 41), Qso("QQ1AA", 9, 3, '3', "", 0)});
    // The zones 0 and 41 are none, and the call of an unknown country counts by its zone alone.
    EXPECT_EQ(Recount.Hours[1].Mults, 2 + 1 + 0 + 2 + 1 + 2 + 2 + 1);
    EXPECT_THAT(NewMults(),
                ElementsAre(true, true, false, true, true, true, true, true, false, false));
    EXPECT_EQ(SlotMults(), (Counts{{3, 9}, {4, 2}}));
    EXPECT_EQ(Recount.TotalMults, 11);
}

TEST_F(RecountMults, TheTotalIsThatOfTheSixBandsWhereTheSheetsHaveSix) {
    // Records with a code of 6 m: counted in their slot and in no total.
    Tally("WW CW", '4', {Qso("DL1AA", 1, 6, '3', "", 14), Qso("DL1AA", 1, 7, '3', "", 14)});
    EXPECT_EQ(SlotMults(), (Counts{{6, 2}, {7, 2}}));
    EXPECT_EQ(Recount.TotalMults, 2);
    Tally("ARLCW", '1', {Qso("DL1AA", 1, 6, '3', "DL"), Qso("DL1AA", 1, 7, '3', "DL")});
    EXPECT_EQ(Recount.TotalMults, 1);
    Tally("AA CW", ' ', {Qso("JA1AA", 1, 6, '3', "JA1"), Qso("JA1AA", 1, 7, '3', "JA1")});
    EXPECT_EQ(Recount.TotalMults, 1);
    Tally("NA CW", ' ', {Qso("A", 1800, 6, '1', "7"), Qso("A", 1800, 7, '1', "7")});
    EXPECT_EQ(Recount.TotalMults, 1);
    Tally("ZRTOS", ' ', {Qso("A", 1800, 6, '3', "7"), Qso("A", 1800, 7, '3', "8")});
    EXPECT_EQ(Recount.TotalMults, 2);
    Tally("WPXCW", '2', {Qso("A", 1800, 6, '3', "DL1"), Qso("A", 1800, 7, '3', "DL2")});
    EXPECT_EQ(Recount.TotalMults, 2);
}

TEST_F(RecountMults, WpxCountsStoredPrefixesAsTheyStandAndMakesThoseThatAreBlank) {
    Tally("WPXCW", '2',
          {Qso("VP2MAA", 1, 3, '3', "VP2M"), Qso("VP2EAA", 2, 3, '3', "VP2E"),
           Qso("VP2VAA", 3, 3, '3', "VP2"), Qso("VP2MAA", 4, 4, '3', "VP2M"),
           Qso("DL1AA", 5, 3, '3', "LY200"), Qso("DL1AA", 6, 3, '3', ""),
           Qso("DL1BB", 7, 3, '3', "DL1"), Qso("LY2000A", 8, 3, '3', "")});
    EXPECT_THAT(NewMults(), ElementsAre(true, true, true, false, true, true, false, false));
    EXPECT_EQ(Recount.TotalMults, 5);
    EXPECT_EQ(Multipliers.WpxPrefixes.size(), 5U);
    EXPECT_THAT(Multipliers.WpxPrefixes,
                testing::ElementsAre("DL1", "LY200", "VP2", "VP2E", "VP2M"));
}

TEST_F(RecountMults, AaCountsPrefixesPerBandAndForgetsThoseBehindThe150th) {
    std::vector<LogEntry> entries;
    const auto add = [&](int prefix, i16 band) {
        entries.push_back(Qso("JA1AA", 1, band, '1', "J" + std::to_string(prefix)));
    };
    for (int prefix = 1; prefix <= 150; ++prefix)
        add(prefix, 3);
    for (const int prefix : {1, 150, 151, 151, 151})
        add(prefix, 3);
    add(1, 4);
    add(1, 4);
    Tally("AA CW", ' ', entries);
    // What finds no room counts each time.
    EXPECT_EQ(SlotMults(), (Counts{{3, 153}, {4, 1}}));
    EXPECT_EQ(Recount.TotalMults, 154);
    EXPECT_FALSE(NewMults()[150]);
    EXPECT_FALSE(NewMults()[151]);
    EXPECT_TRUE(NewMults()[154]);
    EXPECT_TRUE(NewMults()[155]);
    EXPECT_FALSE(NewMults()[156]);
}

TEST_F(RecountMults, TenMetersCountsStatesByModeAndCountriesByMode) {
    Tally("TEN  ", ' ',
          {Qso("W1AW", 1, 1, '4', "CT"), Qso("W2AW", 2, 1, '4', "CT"), Qso("W1AW", 3, 9, '2', "CT"),
           Qso("VE1AA", 4, 1, '4', "AL"), Qso("W1AW", 5, 1, '4', "QQ"),
           Qso("DL1AA", 6, 1, '4', "DL"), Qso("DL2AA", 7, 1, '4', "DL"),
           Qso("DL1AA", 8, 9, '2', "DL"), Qso("KH6AA", 9, 1, '4', "HI"),
           Qso("KL7AA", 10, 9, '2', "AK"), Qso("QQ1AA", 11, 9, '2', "")});
    EXPECT_THAT(NewMults(),
                ElementsAre(true, false, true, true, false, true, false, true, true, true, false));
    EXPECT_EQ(Multipliers.TenCwMults, 3);
    EXPECT_EQ(Multipliers.TenSsbMults, 2);
    EXPECT_EQ(Shown(Recount.MultsByCode), (Counts{{1, 4}, {9, 3}}));
    EXPECT_EQ(Recount.TotalMults, 7);
}

TEST_F(RecountMults, GenericCountsCountriesByBandAndMode) {
    Tally("GEN  ", ' ',
          {Qso("DL1AA", 1, 3, '2'), Qso("DL2AA", 2, 3, '2'), Qso("DL1AA", 3, 11, '1'),
           Qso("DL1AA", 4, 21, '2'), Qso("F1AA", 5, 3, '2'), Qso("QQ1AA", 6, 3, '2')});
    EXPECT_THAT(NewMults(), ElementsAre(true, false, true, true, true, false));
    EXPECT_EQ(Shown(Recount.MultsByCode), (Counts{{3, 2}, {11, 1}, {21, 1}}));
    EXPECT_EQ(SlotMults(), (Counts{{3, 3}, {13, 1}}));
    EXPECT_EQ(Recount.TotalMults, 4);
    EXPECT_EQ(Recount.Score, 11 * 4);
    EXPECT_EQ(Recount.CwtMults, 0);
}

TEST_F(RecountMults, AMiniContestCountsItsCallsBesideTheCountries) {
    Take(Bytes("GEN  ", ' ',
               {Qso("DL1AA", 1, 3, '2'), Qso("DL1AA", 2, 4, '2'), Qso("DL2AA", 3, 3, '2'),
                Qso("VOID", 4, 3, '2'), Qso("W1AW", 5, 21, '2'), Qso("DL2AA", 6, 3, '0')}));
    PostData.IsCwtFile = true;
    ASSERT_EQ(PostTally(), 0);
    EXPECT_EQ(Shown(Recount.CwtMultsByCode), (Counts{{3, 2}, {21, 1}}));
    EXPECT_EQ(Recount.CwtMults, 3);
    EXPECT_EQ(Recount.TotalMults, 3); // DL on two bands and K on one
    EXPECT_THAT(NewMults(), ElementsAre(true, true, false, false, true, false));
}

TEST_F(RecountMults, CwOpenCountsEachCallOnce) {
    Tally("CWOCW", '1',
          {Qso("W1AW", 1200, 3, '1'), Qso("W1AW", 1201, 4, '1'), Qso("W2AW", 1202, 4, '1'),
           Qso("VOID", 1203, 4, '1'), Qso("W1AW/4", 1204, 4, '1')});
    EXPECT_THAT(NewMults(), ElementsAre(true, false, true, false, true));
    EXPECT_EQ(SlotMults(), (Counts{{3, 1}, {4, 2}}));
    EXPECT_EQ(Recount.TotalMults, 3);
    EXPECT_EQ(Recount.Score, 4 * 3);
}

// ---- continents

TEST_F(RecountMults, AStationIsOnItsContinentOrInOneOfThreeCountries) {
    const auto rowOf = [](const char *call) {
        const int row = ContinentOfCall(call);
        return std::string(row < 0 ? "NONE" : kContinentRows[static_cast<std::size_t>(row)]);
    };
    EXPECT_EQ(rowOf("W1AW"), "US");
    EXPECT_EQ(rowOf("KH6AA"), "OC");
    EXPECT_EQ(rowOf("KL7AA"), "NA");
    EXPECT_EQ(rowOf("VE3AA"), "VE");
    EXPECT_EQ(rowOf("JA1AA"), "JA");
    EXPECT_EQ(rowOf("4X1AA"), "AS");
    EXPECT_EQ(rowOf("DL1AA"), "EU");
    EXPECT_EQ(rowOf("EA8AA"), "AF");
    EXPECT_EQ(rowOf("PY1AA"), "SA");
    EXPECT_EQ(rowOf("VK1AA"), "OC");
    EXPECT_EQ(rowOf("QQ1AA"), "NONE");
    EXPECT_EQ(rowOf(""), "NONE");
    // These are in the Caribbean, whatever the country file says.
    for (const char *call :
         {"PJ5AA", "PJ6AA", "PJ7AA", "PJ8AA", "VP2MAA", "VP2EAA", "VP5AA", "VP9AA", "PJ7/DL1AA"})
        EXPECT_EQ(rowOf(call), "NA") << call;
    for (const char *call : {"PJ2AA", "PJ4AA", "PJ9AA", "VP6AA", "VP8AA"})
        EXPECT_EQ(rowOf(call), "NONE") << call; // the country file of the tests has none of them
}

TEST_F(RecountMults, JapanIsTheMainlandAloneAndTheCaribbeanGoesByThePrefixOfThePlace) {
    MakeFile("cty.dat", BytesOf("cty.dat") +
                            "Ogasawara:  27:  45:  AS:   27.05:  -142.20:   -10.0:  JD/o:\r\n"
                            "    JD1;\r\n");
    ReadCountries();
    EXPECT_STREQ(kContinentRows[static_cast<std::size_t>(ContinentOfCall("JD1AA"))], "AS");
    EXPECT_STREQ(kContinentRows[static_cast<std::size_t>(ContinentOfCall("JA1AA"))], "JA");
    EXPECT_STREQ(kContinentRows[static_cast<std::size_t>(ContinentOfCall("DL1AA/VP9"))], "NA");
}

TEST_F(RecountMults, WithoutACountryFileAStationIsNowhere) {
    Reference = {};
    for (const char *call : {"W1AW", "VE3AA", "JA1AA", "DL1AA"})
        EXPECT_EQ(ContinentOfCall(call), -1) << call;
}

TEST_F(RecountMults, ContinentsAreCountedByBandWithTheDupesButNotTheVoids) {
    Tally("WW CW", '4',
          {Qso("DL1AA", 1, 3, '3'), Qso("F1AA", 2, 3, '0'), Qso("VOID", 3, 3, '3'),
           Qso("W1AW", 4, 4, '3'), Qso("QQ1AA", 5, 3, '3'), Qso("PJ7AA", 6, 3, '3')});
    const auto &on20 = Recount.ContinentsByCode[3];
    const auto &on40 = Recount.ContinentsByCode[4];
    EXPECT_THAT(on20, ElementsAre(0, 0, 1, 0, 0, 0, 2, 0, 0));
    EXPECT_THAT(on40, ElementsAre(1, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST_F(RecountMults, ContinentsAreCountedWhereTheSheetsShowThem) {
    struct Row {
        const char *Tag;
        char QthOption;
        i32 Counted;
    };
    constexpr std::array kRows = {Row{"ARLCW", '1', 1}, Row{"ARLCW", '2', 0}, Row{"ZRTOS", ' ', 0},
                                  Row{"WW CW", '2', 1}, Row{"SP CW", ' ', 0}, Row{"SS9CW", ' ', 0},
                                  Row{"WPXSB", '2', 1}, Row{"AA CW", ' ', 1}, Row{"PAQOS", ' ', 0},
                                  Row{"NA CW", ' ', 0}, Row{"TEN  ", ' ', 0}, Row{"NEQOS", ' ', 0},
                                  Row{"GEN  ", ' ', 1}, Row{"CWOCW", '1', 0}};
    for (const Row &row : kRows) {
        Tally(row.Tag, row.QthOption, {Qso("DL1AA", 2130, 3, '1')});
        EXPECT_EQ(Recount.ContinentsByCode[3][6], row.Counted) << row.Tag << row.QthOption;
    }
}

} // namespace
} // namespace zrt
