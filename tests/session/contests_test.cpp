#include "session/contests.h"

#include "support/program.h"

namespace zrt {
namespace {

class Contests : public ProgramTest {};

TEST_F(Contests, HaveTheirRowsInTheChooser) {
    constexpr const char *kRows[] = {"ARRL DX Contest",
                                     "ZRT -- ZDXA Zarthia QSO Party ",
                                     "CQWW DX Contest",
                                     "Sprint -- NCJ NA Sprint",
                                     "SS -- ARRL Sweepstakes",
                                     "WPX -- CQ Prefix Contest",
                                     "AA -- JARL All Asian Contest",
                                     "PAQP -- Pennsylvania QSO Party",
                                     "NAQP -- North American QSO Party",
                                     "ARRL 10 Meter Contest",
                                     "NEQP -- New England QSO Party",
                                     "[GENERIC] -- Generic Logging",
                                     "CWO -- CW Ops CW Open"};
    for (i16 id = 1; id <= kContests; ++id)
        EXPECT_STREQ(ContestTable(id).ChooserRow, kRows[id - 1]);
}

struct HeaderRow {
    i16 ContestId;
    bool First; // CW, or inside the area
    char QthOption;
    const char *Where; // the location of 1, 3 and 6, or the hours of 13
    const char *Tag;
};
constexpr HeaderRow kHeaders[] = {
    {1, true, '1', "US/VE", "ARLCW"}, {1, false, '1', "US/VE", "ARLSB"},
    {1, true, '2', "DX", "ARLCW"},    {1, false, '2', "DX", "ARLSB"},
    {2, true, ' ', "", "ZRTIN"},      {2, false, ' ', "", "ZRTOS"},
    {3, true, '2', "USA", "WW CW"},   {3, false, '3', "VE", "WW SB"},
    {3, true, '4', "AF", "WW CW"},    {3, false, '5', "AS", "WW SB"},
    {3, true, '6', "EU", "WW CW"},    {3, false, '7', "NA", "WW SB"},
    {3, true, '8', "OC", "WW CW"},    {3, false, '9', "SA", "WW SB"},
    {4, true, ' ', "", "SP CW"},      {4, false, ' ', "", "SP SB"},
    {5, true, ' ', "", "SS9CW"},      {5, false, ' ', "", "SS9SB"},
    {6, true, '2', "USA", "WPXCW"},   {6, false, '3', "VE", "WPXSB"},
    {6, true, '4', "AF", "WPXCW"},    {6, false, '5', "AS", "WPXSB"},
    {6, true, '6', "EU", "WPXCW"},    {6, false, '7', "NA", "WPXSB"},
    {6, true, '8', "OC", "WPXCW"},    {6, false, '9', "SA", "WPXSB"},
    {7, true, ' ', "", "AA CW"},      {7, false, ' ', "", "AA SB"},
    {8, true, ' ', "", "PAQIN"},      {8, false, ' ', "", "PAQOS"},
    {9, true, ' ', "", "NA CW"},      {9, false, ' ', "", "NA SB"},
    {10, true, ' ', "", "TEN  "},     {11, true, ' ', "", "NEQIN"},
    {11, false, ' ', "", "NEQOS"},    {12, true, ' ', "", "GEN  "},
    {13, true, '1', "1200", "CWOCW"}, {13, true, '2', "2000", "CWOCW"},
    {13, true, '3', "0000", "CWOCW"}};

ContestState ChosenAs(const HeaderRow &row) {
    const std::string where = row.Where;
    ContestState contest;
    contest.ContestId = row.ContestId;
    const bool both = ContestTable(row.ContestId).BothModes;
    contest.ModeCW = row.First || both;
    contest.ModePhone = !row.First || both;
    contest.StationInState =
        row.First && ContestTable(row.ContestId).Letters == TagLetters::Location;
    contest.StationUSVE = where == "US/VE";
    contest.QthUSA = where == "USA";
    contest.QthVE = where == "VE";
    if (where.size() == 2 && !contest.QthVE && where != "DX")
        contest.QthContinent = where;
    if (row.ContestId == kCwOpen)
        contest.CWOSession = ValueI16(where);
    return contest;
}

TEST_F(Contests, WriteTheirHeadersByteForByte) {
    for (const HeaderRow &row : kHeaders) {
        SCOPED_TRACE(std::string(row.Tag) + row.QthOption);
        EXPECT_EQ(HexOf(BuildHeader(ChosenAs(row))), Hex(HeaderBytes(row.Tag, row.QthOption)));
    }
}

TEST_F(Contests, ReadTheirHeadersBack) {
    for (const HeaderRow &row : kHeaders) {
        SCOPED_TRACE(std::string(row.Tag) + row.QthOption);
        const ContestState chosen = ChosenAs(row);
        // What the contest before has left behind
        Contest = {};
        Contest.ContestId = row.ContestId == 1 ? i16{2} : i16{1};
        Contest.ModeCW = Contest.ModePhone = Contest.QthUSA = Contest.QthVE = true;
        Contest.QthContinent = "OC";
        LogHeader header = BuildHeader(chosen);
        TakeContest(header);
        EXPECT_EQ(Contest.ContestId, chosen.ContestId);
        EXPECT_EQ(Contest.ModeCW, chosen.ModeCW);
        EXPECT_EQ(Contest.ModePhone, chosen.ModePhone);
        EXPECT_EQ(Contest.QthUSA, chosen.QthUSA);
        EXPECT_EQ(Contest.QthVE, chosen.QthVE);
        EXPECT_EQ(Contest.QthContinent, chosen.QthContinent);
        if (row.ContestId == kArrlDx) {
            EXPECT_EQ(Contest.StationUSVE, chosen.StationUSVE);
        }
        if (row.ContestId == kZrt) {
            EXPECT_EQ(Contest.StationInState, chosen.StationInState);
        }
        if (row.ContestId == kCwOpen) {
            EXPECT_EQ(Contest.CWOSession, chosen.CWOSession);
        }
    }
}

TEST_F(Contests, AreKnownByTheFirstTwoLettersOfTheTagAlone) {
    constexpr std::pair<const char *, i16> kTags[] = {
        {"AR", 1},  {"ZR", 2}, {"CW", 13}, {"GE", 12}, {"PA", 8}, {"NE", 11}, {"NA", 9},
        {"TE", 10}, {"WW", 3}, {"SP", 4},  {"WP", 6},  {"SS", 5}, {"AA", 7}};
    for (const auto &[letters, id] : kTags) {
        EXPECT_EQ(ContestOfTag(std::string(letters) + "###"), id);
        EXPECT_EQ(ContestOfTag(letters), id);
    }
    for (const char *foreign : {"XX", "", "A", "ar", " A", "GNERI"})
        EXPECT_EQ(ContestOfTag(foreign), kNoContest) << foreign;
}

LogHeader HeaderWith(const char *tag, const char *qth = " ") {
    LogHeader header;
    header.FormatFlag = 1;
    header.ContestTag = tag;
    header.QthOption = qth;
    return header;
}

TEST_F(Contests, AForeignTagLeavesTheContestAsItWas) {
    Contest.ContestId = kSs;
    TakeContest(HeaderWith("XYZCW"));
    EXPECT_EQ(Contest.ContestId, kSs);
    EXPECT_TRUE(Contest.ModeCW);
}

TEST_F(Contests, ArrlDxIsInTheUsaForAnyCodeButTwo) {
    for (const char *code : {"1", " ", "0", "9"}) {
        TakeContest(HeaderWith("ARLCW", code));
        EXPECT_TRUE(Contest.StationUSVE) << code;
    }
    TakeContest(HeaderWith("ARLCW", "2"));
    EXPECT_FALSE(Contest.StationUSVE);
}

TEST_F(Contests, PaqpAndNeqpKeepTheStationsAreaWhateverTheHeaderSays) {
    for (const char *tag : {"PAQIN", "PAQOS", "NEQIN", "NEQOS", "TEN  "})
        for (const bool inside : {true, false}) {
            Contest.StationInState = inside;
            TakeContest(HeaderWith(tag));
            EXPECT_EQ(Contest.StationInState, inside) << tag;
        }
}

TEST_F(Contests, TheAreaOfPaqpAndNeqpIsReadWhereItIsWanted) {
    for (const char *tag : {"PAQIN", "PAQOS", "NEQIN", "NEQOS"})
        for (const bool before : {true, false}) {
            Contest.StationInState = before;
            TakeContest(HeaderWith(tag));
            TakeArea(HeaderWith(tag));
            EXPECT_EQ(Contest.StationInState, std::string_view(tag).ends_with("IN")) << tag;
        }
    Contest.StationInState = true;
    TakeContest(HeaderWith("TEN  "));
    TakeArea(HeaderWith("TEN  "));
    EXPECT_TRUE(Contest.StationInState); // of no other contest
}

TEST_F(Contests, WpxTakesTheOldCodesZeroAndOneAndTheUsaForUnknownOnes) {
    for (const char *code : {"0", " ", "X"}) {
        TakeContest(HeaderWith("WPXCW", code));
        EXPECT_TRUE(Contest.QthUSA && !Contest.QthVE) << code;
    }
    TakeContest(HeaderWith("WPXCW", "1"));
    EXPECT_TRUE(Contest.QthVE && !Contest.QthUSA);
}

TEST_F(Contests, CqWwWithAnUnknownCodeHasNoLocation) {
    TakeContest(HeaderWith("WW CW", "1"));
    EXPECT_FALSE(Contest.QthUSA || Contest.QthVE);
    EXPECT_EQ(Contest.QthContinent, "");
}

TEST_F(Contests, CwOpenTakesAnyOtherCodeForTheThirdSession) {
    TakeContest(HeaderWith("CWOCW", "7"));
    EXPECT_EQ(Contest.CWOSession, 0);
}

TEST_F(Contests, ALetterPairThatIsNotCwMeansPhone) {
    TakeContest(HeaderWith("AA XX"));
    EXPECT_TRUE(Contest.ModePhone && !Contest.ModeCW);
}

struct SetUpRow {
    i16 ContestId;
    int FirstBand, LastBand;
    i16 OffTimeGap;
    const char *SCPSelection;
};
constexpr SetUpRow kSetUp[] = {{1, 1, 6, 15, "US"},   {2, 1, 8, 15, "ALL"}, {3, 1, 6, 15, "ALL"},
                               {4, 3, 5, 15, "US"},   {5, 1, 6, 30, "US"},  {6, 1, 6, 60, "ALL"},
                               {7, 1, 6, 15, "ALL"},  {8, 1, 8, 15, "US"},  {9, 1, 6, 30, "US"},
                               {10, 1, 1, 15, "ALL"}, {11, 1, 8, 15, "US"}, {12, 1, 11, 15, "ALL"},
                               {13, 1, 6, 15, "ALL"}};

TEST_F(Contests, SetUpBandsGapAndCallSelection) {
    for (const SetUpRow &row : kSetUp) {
        SCOPED_TRACE(row.ContestId);
        Contest = CwContest(row.ContestId);
        SetUpContest();
        EXPECT_EQ(Contest.OffTimeGap, row.OffTimeGap);
        EXPECT_EQ(Contest.SCPSelection, row.SCPSelection);
        for (int position = 1; position <= 12; ++position)
            EXPECT_EQ(Contest.ActiveBands[position - 1],
                      position >= row.FirstBand && position <= row.LastBand)
                << position;
    }
}

TEST_F(Contests, AnAmericanStationInArrlDxMatchesDxCalls) {
    Contest = CwContest(kArrlDx);
    Contest.StationUSVE = true;
    SetUpContest();
    EXPECT_EQ(Contest.SCPSelection, "DX");
}

struct LabelRow {
    const char *Load, *New, *SaveAs;
};
// In CW; the differences between the three tables are wanted.
constexpr LabelRow kLabels[] = {{"ARRL DX CW", "ARRL DX CW", "ARRL DX CW"},
                                {"ZRT", "ZRT", "ZRT"},
                                {"CQWW DX CW", "CQWW DX CW", "CQWW DX CW"},
                                {"Sprint  CW", "Sprint  CW", "Sprint  CW"},
                                {"SS  CW", "SS  CW", "SS  CW"},
                                {"WPX CW", "WPX CW", "WPX CW"},
                                {"AA  CW", "AA  CW", "AA  CW"},
                                {"PAQP", "PAQP", "PAQP"},
                                {"NAQP CW", "NAQP  CW", "NA  CW"},
                                {"ARRL 10m", "ARRL 10m", ""},
                                {"NEQP CW", "NEQP", "NEQP"},
                                {"Generic Log", "[Generic]", "[Generic]"},
                                {"CWO CW", "CWO CW", " CW"}};

TEST_F(Contests, HaveThreeTablesOfLabels) {
    const std::string start = "Log: K1ZZ.ZRT - - Contest: ";
    for (i16 id = 1; id <= kContests; ++id) {
        SCOPED_TRACE(id);
        Contest = CwContest(id);
        EXPECT_EQ(LogLabel(LabelTable::Load, "K1ZZ.ZRT"), start + kLabels[id - 1].Load);
        EXPECT_EQ(LogLabel(LabelTable::New, "K1ZZ.ZRT"), start + kLabels[id - 1].New);
        EXPECT_EQ(LogLabel(LabelTable::SaveAs, "K1ZZ.ZRT"), start + kLabels[id - 1].SaveAs);
    }
}

TEST_F(Contests, NamePhoneSsbInTheLabel) {
    Contest.ContestId = kCqWw;
    Contest.ModePhone = true;
    EXPECT_EQ(LogLabel(LabelTable::Load, "[Unnamed]"), "Log: [Unnamed] - - Contest: CQWW DX SSB");
}

TEST_F(Contests, ShortenANameOfMoreThan30CharactersInItsMiddle) {
    Contest = CwContest(kGeneric);
    const std::string thirty = "ABCDEFGHIJKLMNOPQRSTUVWXYZ.ZRT";
    EXPECT_EQ(LogLabel(LabelTable::Load, thirty), "Log: " + thirty + " - - Contest: Generic Log");
    const std::string shortened = ShortenMiddle("ABCDEFGHIJKLMNOPQRSTUVWXYZ1234.ZRT", 30);
    EXPECT_LE(shortened.size(), 30U);
    EXPECT_TRUE(shortened.starts_with("ABCDEFGHIJKLM")) << shortened;
    EXPECT_TRUE(shortened.ends_with("Z1234.ZRT")) << shortened;
    EXPECT_NE(shortened.find("..."), std::string::npos) << shortened;
}

TEST(ShortenMiddle, CountsAndCutsCharactersNotBytes) {
    const std::string name = "Z\xC3\xBCrichsee \xC3\xA4\xC3\xB6\xC3\xBC.ZRT"; // 17 characters
    EXPECT_EQ(ShortenMiddle(name, 17), name);
    EXPECT_EQ(ShortenMiddle(name, 16), "Z\xC3\xBCrich...\xC3\xA4\xC3\xB6\xC3\xBC.ZRT");
    EXPECT_EQ(ShortenMiddle(name, 7), "Z\xC3\xBC...RT");
}

} // namespace
} // namespace zrt
