#include "app/band_mode.h"

#include "session/radio_state.h"
#include "support/program.h"

namespace zrt {
namespace {

class BandChoice : public ProgramTest {
  protected:
    // Opens the dialog; the operator does the deed once, and cancels if it is still open.
    static void Open(std::function<void()> deed) {
        bool done = false;
        Devices.Operator = [&] {
            if (!done) {
                done = true;
                deed();
            }
            if (BandMode.Visible)
                ClickControl(BandMode.cmdCancel);
            return true;
        };
        ShowBandMode();
        EXPECT_TRUE(done);
        EXPECT_FALSE(BandMode.Visible);
    }
    static void Click(int position) { ClickControl(BandMode.chkBand[position - 1]); }
    static std::string Active() {
        std::string active;
        for (int position = 1; position <= 11; ++position)
            active += Contest.ActiveBands[position - 1] ? "x" : "-";
        return active;
    }
};

TEST_F(BandChoice, ShowsTheBoxesOfTheContest) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        SCOPED_TRACE(contest);
        OpenNewLog(contest);
        const int highest = contest == kGeneric ? 11 : contest == kZrt || contest == kNeqp ? 8 : 6;
        Open([&] {
            for (int position = 1; position <= 11; ++position) {
                const CheckBox &box = BandMode.chkBand[position - 1];
                EXPECT_EQ(box.Visible, position <= highest) << position;
                EXPECT_EQ(box.Checked, Contest.ActiveBands[position - 1]) << position;
            }
        });
    }
}

TEST_F(BandChoice, HasItsNote) {
    EXPECT_EQ(BandMode.lblNote.Caption,
              "NOTE:\nThese boxes\nselect which\nbands are active\nin contest.\n\nTo change bands\n"
              "while operating,\nuse <CTRL-arrow>\nkeys.");
}

TEST_F(BandChoice, OkStoresTheBoxes) {
    OpenNewLog(kGeneric);
    Open([] {
        Click(1);
        Click(11);
        ClickControl(BandMode.cmdOK);
    });
    EXPECT_EQ(Active(), "-xxxxxxxxx-");
}

TEST_F(BandChoice, CancelLeavesTheBandsAsTheyWere) {
    OpenNewLog(kGeneric);
    Open([] { Click(1); });
    EXPECT_EQ(Active(), "xxxxxxxxxxx");
    Open([] { EXPECT_TRUE(BandMode.chkBand[0].Checked); });
}

TEST_F(BandChoice, NeedsOneBandAtLeast) {
    OpenNewLog(kSprint); // 20, 40, 80 m
    Answer({BoxAnswer::Ok});
    Open([] {
        for (CheckBox &box : BandMode.chkBand)
            box.Checked = false;
        ClickControl(BandMode.cmdOK);
        EXPECT_EQ(LastBox().Text, "At least one band must be selected for the program to work.");
        EXPECT_EQ(LastBox().Title, "Band Selection Error");
        EXPECT_TRUE(BandMode.Visible); // the dialog stays open
        std::string boxes;
        for (const CheckBox &box : BandMode.chkBand)
            boxes += box.Checked ? "x" : "-";
        EXPECT_EQ(boxes, "--xxx------");
    });
    EXPECT_EQ(Active(), "--xxx------");
}

TEST_F(BandChoice, AHiddenBandIsNoBandThatIsLeftAndKeepsItsState) {
    OpenNewLog(kPaqp); // 6 m and 2 m are active and hidden
    Answer({BoxAnswer::Ok});
    Open([] {
        for (int i = 0; i < 6; ++i)
            BandMode.chkBand[i].Checked = false;
        ClickControl(BandMode.cmdOK);
        EXPECT_TRUE(BandMode.Visible);
    });
    Open([] {
        Click(1);
        ClickControl(BandMode.cmdOK);
    });
    EXPECT_EQ(Active(), "-xxxxxxx---");
}

TEST_F(BandChoice, RefusesToClearTheCurrentBand) {
    OpenNewLog(kGeneric);
    for (const i16 band : {i16{3}, i16{11}}) { // 20 m in either mode
        CurrentBand() = band;
        Answer({BoxAnswer::Ok});
        Open([] {
            Click(3);
            EXPECT_EQ(LastBox().Text, "No fair -- Can't delete current band.");
            EXPECT_EQ(LastBox().Title, "Band Selection Error");
            EXPECT_TRUE(BandMode.chkBand[2].Checked);
            EXPECT_TRUE(BandMode.Visible);
        });
    }
    CurrentBand() = 23; // 30 m
    Answer({BoxAnswer::Ok});
    Open([] {
        Click(3);
        EXPECT_FALSE(BandMode.chkBand[2].Checked);
        Click(11);
        EXPECT_TRUE(BandMode.chkBand[10].Checked);
    });
}

TEST_F(BandChoice, LeavesTenMetersAlone) {
    OpenNewLog(kTenMeter);
    Open([] {
        for (int i = 0; i < 6; ++i)
            EXPECT_FALSE(BandMode.chkBand[i].Enabled);
        Click(1);
        Click(2);
        EXPECT_TRUE(BandMode.chkBand[0].Checked);
        EXPECT_FALSE(BandMode.chkBand[1].Checked);
        ClickControl(BandMode.cmdOK);
    });
    EXPECT_EQ(Active(), "x----------");
}

} // namespace
} // namespace zrt
