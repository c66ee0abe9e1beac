#include "entry/multipliers.h"

#include "session/contests.h"
#include "session/reference_data.h"

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;

class MultiplierTables : public testing::Test {
  protected:
    MultiplierTables() {
        Reference = {};
        Contest = {};
        for (std::size_t i = 0; i < Reference.CommonList.size(); ++i)
            Reference.CommonList[i] = "R" + std::to_string(i + 1);
    }
    ~MultiplierTables() override {
        Reference = {};
        Contest = {};
        Multipliers = {};
    }
    static void Fill(i16 contestId) {
        Contest.ContestId = contestId;
        FillMultiplierTables();
    }
    static std::string First(const MultTable &table, std::size_t row) {
        return table[row - 1].Spellings[0];
    }
};

TEST_F(MultiplierTables, SplitARowIntoItsSpellings) {
    Reference.PaqpMults[0] = "ADA/ADAM/ADAMS";
    Reference.PaqpMults[1] = "ALL/ALLE/";
    Reference.PaqpMults[2] = "ARM";
    Reference.PaqpMults[3] = "A/B/C/D";
    Fill(kPaqp);
    ASSERT_EQ(Multipliers.PaqpMults.size(), 67U);
    EXPECT_THAT(Multipliers.PaqpMults[0].Spellings, ElementsAre("ADA", "ADAM", "ADAMS"));
    EXPECT_THAT(Multipliers.PaqpMults[1].Spellings, ElementsAre("ALL", "ALLE", ""));
    EXPECT_THAT(Multipliers.PaqpMults[2].Spellings, ElementsAre("ARM", "", ""));
    EXPECT_THAT(Multipliers.PaqpMults[3].Spellings, ElementsAre("A", "B", "C"));
}

TEST_F(MultiplierTables, AreStatesAndCountiesAtHomeAndCountiesElsewhere) {
    Contest.StationInState = true;
    Fill(kZrt);
    ASSERT_EQ(Multipliers.ZrtMults.size(), 58U);
    ASSERT_EQ(Multipliers.ZrtCounties.size(), 58U);
    EXPECT_EQ(First(Multipliers.ZrtMults, 1), "R1");
    EXPECT_EQ(First(Multipliers.ZrtMults, 58), "R58");
    EXPECT_EQ(First(Multipliers.ZrtCounties, 1), "R59");
    EXPECT_EQ(First(Multipliers.ZrtCounties, 58), "R116");
    Contest.StationInState = false;
    Fill(kZrt);
    EXPECT_EQ(First(Multipliers.ZrtMults, 1), "R59");
    EXPECT_EQ(First(Multipliers.ZrtMults, 58), "R116");
    EXPECT_TRUE(Multipliers.ZrtCounties.empty());
}

TEST_F(MultiplierTables, OfNeqpKeepTheWholeRowForTheDisplay) {
    Reference.NeqpMults[0] = "FAICT/CTFAI";
    Reference.NeqpMults[1] = "HARCT";
    Fill(kNeqp);
    EXPECT_THAT(Multipliers.NeqpMults[0].Spellings, ElementsAre("FAICT", "CTFAI", "FAICT/CTFAI"));
    EXPECT_THAT(Multipliers.NeqpMults[1].Spellings, ElementsAre("HARCT", "HARCT", "HARCT"));
}

TEST_F(MultiplierTables, OfSsEndWithTheSectionsOfToday) {
    Fill(kSs);
    ASSERT_EQ(Multipliers.SsMults.size(), 83U);
    EXPECT_EQ(First(Multipliers.SsMults, 1), "R117");
    EXPECT_EQ(First(Multipliers.SsMults, 83), "R199");
    Reference.SsExtraMults[0] = "PE/PEI";
    Reference.SsExtraMults[1] = "XX";
    Reference.SsExtraMultCount = 2;
    Reference.SsExtraShortFormCount = 1; // the second has no short form
    Fill(kSs);
    ASSERT_EQ(Multipliers.SsMults.size(), 84U);
    EXPECT_THAT(Multipliers.SsMults[83].Spellings, ElementsAre("PE", "PEI", ""));
}

TEST_F(MultiplierTables, OfTheOthersHaveOneSpelling) {
    struct Row {
        i16 ContestId;
        MultTable *Table;
        std::size_t Rows;
    };
    Reference.SprintMults[0] = Reference.ArrlMults[0] = Reference.NaqpMults[0] =
        Reference.TenMults[0] = "AL/BAMA";
    for (const Row &row :
         {Row{kSprint, &Multipliers.SprintMults, 72}, Row{kArrlDx, &Multipliers.ArrlMults, 63},
          Row{kNaqp, &Multipliers.NaqpMults, 72}, Row{kTenMeter, &Multipliers.TenMults, 65}}) {
        Fill(row.ContestId);
        ASSERT_EQ(row.Table->size(), row.Rows);
        EXPECT_EQ(First(*row.Table, 1), "AL/BAMA");
    }
}

TEST_F(MultiplierTables, BelongToOneContestAndStartUnworked) {
    Fill(kSs);
    Multipliers.SsMults[0].Worked[0] = true;
    Fill(kSs);
    EXPECT_FALSE(Multipliers.SsMults[0].Worked[0]);
    Fill(kGeneric);
    EXPECT_TRUE(Multipliers.SsMults.empty());
}

} // namespace
} // namespace zrt
