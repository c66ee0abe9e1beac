#include "app/contest_chooser.h"

#include "app/start_up.h"
#include "platform/keys.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

class Chooser : public ProgramTest {
  protected:
    // Chooses with the dialog; the header that the log got.
    static std::string Choose(
        int row, std::function<void()> more = [] {}) {
        Contest = {};
        ChooseInDialog(row, std::move(more));
        EXPECT_TRUE(ChooseNewLog());
        return std::string(Log.KeptHeader.ContestTag.Whole()) +
               std::string(Log.KeptHeader.QthOption.Whole());
    }
    // What the dialog shows for a row.
    static void Look(int row, std::function<void()> look) {
        bool looked = false;
        ChooseInDialog(row, [&] {
            look();
            looked = true;
            ClickControl(ChCoForm.cmdCancel);
        });
        EXPECT_FALSE(ChooseNewLog());
        EXPECT_TRUE(looked);
    }
    static void ClickQth(int i) { ClickControl(ChCoForm.optFrame2[i]); }
    static void ClickFirst(int i) { ClickControl(ChCoForm.optFrame1[i]); }
};

TEST_F(Chooser, ListsTheContestsInTheirOrder) {
    constexpr i16 kIds[] = {7, 10, 1, 2, 3, 13, 9, 11, 8, 4, 5, 6, 12};
    ASSERT_EQ(ChCoForm.lstContest.Rows.size(), 13U);
    for (int row = 0; row < 13; ++row) {
        EXPECT_EQ(ChCoForm.lstContest.Rows[row], ContestTable(kIds[row]).ChooserRow);
        Choose(row);
        EXPECT_EQ(Contest.ContestId, kIds[row]);
    }
    EXPECT_EQ(ChCoForm.lstContinent.Rows,
              (std::vector<std::string>{"AF", "AS", "EU", "NA", "OC", "SA"}));
}

TEST_F(Chooser, OpensOnZrtWithTheFirstLocationAndNorthAmerica) {
    Devices.Operator = [] {
        EXPECT_EQ(ChCoForm.lstContest.ListIndex, 3);
        EXPECT_EQ(ChCoForm.lstContinent.ListIndex, 3);
        EXPECT_EQ(ChCoForm.Frame1.Caption, "   Location   ");
        EXPECT_TRUE(ChCoForm.optFrame1[0].Value);
        ClickControl(ChCoForm.cmdOK);
        return true;
    };
    EXPECT_TRUE(ChooseNewLog());
    EXPECT_EQ(Contest.ContestId, 2);
    EXPECT_TRUE(Contest.StationInState);
    EXPECT_EQ(Log.KeptHeader.ContestTag.Whole(), "ZRTIN");
}

struct FrameRow {
    int Row;
    const char *Frame1; // nullptr: hidden
    const char *First, *Second;
    const char *Frame2;
};
constexpr FrameRow kFrames[] = {{0, "   Mode  ", "  Phone", "  CW", nullptr},
                                {1, nullptr, nullptr, nullptr, nullptr},
                                {2, "   Mode  ", "  Phone", "  CW", " QTH "},
                                {3, "   Location   ", " In Zarthia", " Out of State", nullptr},
                                {4, "   Mode  ", "  Phone", "  CW", " QTH "},
                                {5, "   Mode  ", "  Phone", "  CW", " Contest Hours "},
                                {6, "   Mode  ", "  Phone", "  CW", nullptr},
                                {7, "   Location   ", " In N.E.", " Out of N.E.", nullptr},
                                {8, "   Location   ", " In PA", " Out of State", nullptr},
                                {9, "   Mode  ", "  Phone", "  CW", nullptr},
                                {10, "   Mode  ", "  Phone", "  CW", nullptr},
                                {11, "   Mode  ", "  Phone", "  CW", " QTH "},
                                {12, nullptr, nullptr, nullptr, nullptr}};

TEST_F(Chooser, ShowsTheFramesOfEachRow) {
    for (const FrameRow &row : kFrames) {
        SCOPED_TRACE(row.Row);
        Look(row.Row, [&row] {
            ASSERT_EQ(ChCoForm.Frame1.Visible, row.Frame1 != nullptr);
            EXPECT_EQ(ChCoForm.optFrame1[0].Visible, row.Frame1 != nullptr);
            if (row.Frame1 != nullptr) {
                EXPECT_EQ(ChCoForm.Frame1.Caption, row.Frame1);
                EXPECT_EQ(ChCoForm.optFrame1[0].Caption, row.First);
                EXPECT_EQ(ChCoForm.optFrame1[1].Caption, row.Second);
            }
            ASSERT_EQ(ChCoForm.Frame2.Visible, row.Frame2 != nullptr);
            EXPECT_EQ(ChCoForm.optFrame2[0].Visible, row.Frame2 != nullptr);
            if (row.Frame2 != nullptr) {
                EXPECT_EQ(ChCoForm.Frame2.Caption, row.Frame2);
            }
            EXPECT_EQ(ChCoForm.lstContinent.Visible, row.Row == 4 || row.Row == 11);
        });
    }
}

TEST_F(Chooser, ShowsTheButtonsOfTheSecondFrame) {
    Look(2, [] {
        EXPECT_EQ(ChCoForm.optFrame2[0].Caption, " US/VE");
        EXPECT_EQ(ChCoForm.optFrame2[1].Caption, " DX");
        EXPECT_FALSE(ChCoForm.optFrame2[2].Visible);
        EXPECT_TRUE(ChCoForm.optFrame2[0].Value);
    });
    for (const int row : {4, 11})
        Look(row, [] {
            EXPECT_EQ(ChCoForm.optFrame2[0].Caption, " USA");
            EXPECT_EQ(ChCoForm.optFrame2[1].Caption, " VE");
            EXPECT_EQ(ChCoForm.optFrame2[2].Caption, "");
            EXPECT_TRUE(ChCoForm.optFrame2[2].Visible);
            EXPECT_TRUE(ChCoForm.optFrame2[0].Value);
        });
    Look(5, [] {
        EXPECT_EQ(ChCoForm.optFrame2[0].Caption, " 1200-1559Z");
        EXPECT_EQ(ChCoForm.optFrame2[1].Caption, " 2000-2359Z");
        EXPECT_EQ(ChCoForm.optFrame2[2].Caption, " 0000-0359Z");
        EXPECT_TRUE(ChCoForm.optFrame2[2].Value);
        EXPECT_FALSE(ChCoForm.optFrame1[0].Enabled);
        EXPECT_TRUE(ChCoForm.optFrame1[1].Value);
    });
}

TEST_F(Chooser, TakesNeqpAndPaqpAlwaysAsOutOfTheArea) {
    for (const int row : {7, 8})
        Look(row, [] {
            EXPECT_FALSE(ChCoForm.optFrame1[0].Enabled);
            EXPECT_TRUE(ChCoForm.optFrame1[1].Value);
            ClickFirst(0); // a disabled button
            EXPECT_TRUE(ChCoForm.optFrame1[1].Value && !ChCoForm.optFrame1[0].Value);
        });
    EXPECT_EQ(Choose(7), "NEQOS ");
    EXPECT_FALSE(Contest.StationInState);
    EXPECT_EQ(Choose(8), "PAQOS ");
}

TEST_F(Chooser, OffersTheAreaOfNeqpAndPaqpWithTheExtension) {
    Extensions.InAreaContests = true;
    for (const int row : {7, 8})
        Look(row, [] {
            EXPECT_TRUE(ChCoForm.optFrame1[0].Enabled);
            EXPECT_TRUE(ChCoForm.optFrame1[1].Value); // outside, unless it is chosen
        });
    EXPECT_EQ(Choose(7), "NEQOS ");
    EXPECT_EQ(Choose(7, [] { ClickFirst(0); }), "NEQIN ");
    EXPECT_TRUE(Contest.StationInState);
    EXPECT_EQ(Choose(8, [] { ClickFirst(0); }), "PAQIN ");
    Look(5, [] { EXPECT_FALSE(ChCoForm.optFrame1[0].Enabled); }); // the CW Open stays on CW
}

TEST_F(Chooser, EnablesTheFirstButtonAgainForOtherRows) {
    ChooseInDialog(7, [] {
        ChCoForm.lstContest.ListIndex = 3;
        ChCoForm.lstContest.Click();
        EXPECT_TRUE(ChCoForm.optFrame1[0].Enabled && ChCoForm.optFrame1[0].Value);
    });
    EXPECT_TRUE(ChooseNewLog());
    EXPECT_EQ(Log.KeptHeader.ContestTag.Whole(), "ZRTIN");
}

TEST_F(Chooser, EnablesTheContinentsOfCqWwForTheThirdButtonOnly) {
    Look(4, [] {
        ClickQth(0);
        EXPECT_FALSE(ChCoForm.lstContinent.Enabled);
        ClickQth(2);
        EXPECT_TRUE(ChCoForm.lstContinent.Enabled);
        ClickQth(1);
        EXPECT_FALSE(ChCoForm.lstContinent.Enabled);
    });
}

TEST_F(Chooser, KeepsTheContinentsOfWpxEnabledWhateverIsPressed) {
    Look(11, [] {
        for (const int i : {0, 1, 2, 0}) {
            ClickQth(i);
            EXPECT_TRUE(ChCoForm.lstContinent.Enabled) << i;
        }
    });
}

TEST_F(Chooser, MakesTheHeaderOfWhatIsChosen) {
    const auto cw = [] { ClickFirst(1); };
    const auto phone = [] { ClickFirst(0); };
    EXPECT_EQ(Choose(0, cw), "AA CW ");
    EXPECT_EQ(Choose(0, phone), "AA SB ");
    EXPECT_EQ(Choose(1), "TEN   ");
    EXPECT_EQ(Choose(2,
                     [] {
                         ClickFirst(1);
                         ClickQth(1);
                     }),
              "ARLCW2");
    EXPECT_EQ(Choose(2, phone), "ARLSB1");
    EXPECT_EQ(Choose(3, [] { ClickFirst(1); }), "ZRTOS ");
    EXPECT_EQ(Choose(4,
                     [] {
                         ClickFirst(1);
                         ClickQth(1);
                     }),
              "WW CW3");
    EXPECT_EQ(Choose(4,
                     [] {
                         ClickFirst(0);
                         ClickQth(2);
                         ChCoForm.lstContinent.ListIndex = 2;
                     }),
              "WW SB6");
    EXPECT_EQ(Choose(5), "CWOCW3");
    EXPECT_EQ(Choose(5, [] { ClickQth(0); }), "CWOCW1");
    EXPECT_EQ(Choose(5, [] { ClickQth(1); }), "CWOCW2");
    EXPECT_EQ(Choose(6, cw), "NA CW ");
    EXPECT_EQ(Choose(9, phone), "SP SB ");
    EXPECT_EQ(Choose(10, cw), "SS9CW ");
    EXPECT_EQ(Choose(11,
                     [] {
                         ClickFirst(1);
                         ClickQth(0);
                     }),
              "WPXCW2");
    EXPECT_EQ(Choose(11,
                     [] {
                         ClickFirst(1);
                         ClickQth(2);
                     }),
              "WPXCW7"); // NA at first
    EXPECT_EQ(Choose(12), "GEN   ");
}

TEST_F(Chooser, SetsBothModesWhereTheContestHasThem) {
    constexpr i16 kRowIds[] = {7, 10, 1, 2, 3, 13, 9, 11, 8, 4, 5, 6, 12};
    for (int row = 0; row < 13; ++row) {
        SCOPED_TRACE(row);
        Choose(row, [] { ClickFirst(1); });
        const i16 id = kRowIds[row];
        const bool both = id == 2 || id == 8 || id == 10 || id == 11 || id == 12;
        EXPECT_TRUE(Contest.ModeCW);
        EXPECT_EQ(Contest.ModePhone, both);
    }
}

TEST_F(Chooser, AModeRowTakesTheButtonsAsTheyStand) {
    EXPECT_EQ(Choose(0), "AA SB "); // ZRT, chosen at first, has set the first button
}

TEST_F(Chooser, SetsTheSectionYearOfSs) {
    Choose(10);
    EXPECT_EQ(Contest.SsSectionYear, 97);
}

TEST_F(Chooser, TakesTheContinentOnlyWithoutUsaAndVe) {
    Choose(4, [] { ClickQth(0); });
    EXPECT_TRUE(Contest.QthUSA && !Contest.QthVE && Contest.QthContinent.empty());
    Choose(4, [] { ClickQth(2); });
    EXPECT_TRUE(!Contest.QthUSA && !Contest.QthVE);
    EXPECT_EQ(Contest.QthContinent, "NA");
}

TEST_F(Chooser, CancelChangesNothing) {
    for (const bool byKey : {false, true}) {
        Session.ChooserCancelled = false;
        Contest = CwContest(kSs);
        Log.LogState = kNoLog;
        Devices.Operator = [byKey] {
            EXPECT_FALSE(Session.ChooserCancelled); // cleared as the dialog opens
            if (byKey)
                Press(kKeyEsc);
            else
                CloseForm(ChCoForm);
            return true;
        };
        EXPECT_FALSE(ChooseNewLog());
        EXPECT_TRUE(Session.ChooserCancelled);
        EXPECT_FALSE(Session.NewLogRequested);
        EXPECT_EQ(Contest.ContestId, kSs);
        EXPECT_EQ(Log.LogState, kNoLog);
    }
}

TEST_F(Chooser, FillsTheKeptHeaderToo) {
    Choose(12);
    EXPECT_EQ(Log.Header, Log.KeptHeader);
    EXPECT_TRUE(Log.CurrentFormat);
    EXPECT_EQ(Log.LogState, kTemporaryName);
}

} // namespace
} // namespace zrt
