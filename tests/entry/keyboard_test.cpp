#include "entry/keyboard.h"

#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "platform/keys.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

class Keyboard : public ProgramTest {
  protected:
    static TextBox &Call() { return LogForm.InData[0]; }
    static TextBox &Exchange() { return LogForm.InData[1]; }
};

TEST_F(Keyboard, TypesInCapitals) {
    OpenNewLog(kGeneric);
    TypeText("k1zz/p");
    EXPECT_EQ(Call().Text, "K1ZZ/P");
    EXPECT_EQ(Call().SelStart, 6);
}

TEST_F(Keyboard, SwallowsBothQuotationMarks) {
    OpenNewLog(kGeneric);
    TypeText("k'1\"z");
    EXPECT_EQ(Call().Text, "K1Z");
    EXPECT_EQ(Log.NextEntry, 1); // the apostrophe logs only where it is set to
}

TEST_F(Keyboard, BlankGoesToTheExchangeAndIsTextThere) {
    for (const i16 contest : {kZrt, kCqWw, kSprint, kSs, kPaqp, kNaqp, kGeneric, kCwOpen}) {
        OpenNewLog(contest);
        TypeText("k1zz a b");
        EXPECT_EQ(Call().Text, "K1ZZ") << contest;
        EXPECT_EQ(Exchange().Text, "A B") << contest;
        WipeEntry();
    }
}

TEST_F(Keyboard, BlankFlipsTheFieldsWhereTheExchangeIsOneWord) {
    for (const i16 contest : {kArrlDx, kWpx, kAa, kTenMeter, kNeqp}) {
        OpenNewLog(contest);
        TypeText("k1zz 59 /p");
        EXPECT_EQ(Call().Text, "K1ZZ/P") << contest;
        EXPECT_EQ(Exchange().Text, "59") << contest;
        WipeEntry();
    }
}

TEST_F(Keyboard, EnterLogsFromEitherField) {
    OpenNewLog(kGeneric);
    TypeText("k1zz");
    Press(kKeyEnter);
    TypeText("k2zz ann");
    Press(kKeyEnter);
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.LogEntries[2].RcvdName.Trimmed(), "ANN");
}

TEST_F(Keyboard, ApostropheLogsWhereItIsSetTo) {
    OpenNewLog(kGeneric);
    Settings.LogandSendF6Enabled = true;
    TypeText("k1zz'");
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Call().Text, "");
}

TEST_F(Keyboard, CtrlOrAltWithZOrXWipesTheEntry) {
    OpenNewLog(kGeneric);
    for (const int key : {'Z', 'X'})
        for (const int shift : {kCtrl + 0, kAlt + 0, kCtrl | kShift}) {
            Fill("K1ZZ", "ANN");
            Press(key, shift);
            EXPECT_EQ(Call().Text + Exchange().Text, "");
        }
    Fill("K1ZZ", "ANN");
    Press('Z', kShift, 'Z');
    EXPECT_EQ(Call().Text, "K1ZZZ");
}

TEST_F(Keyboard, EscWipesTheEntry) {
    OpenNewLog(kGeneric);
    Fill("K1ZZ", "ANN");
    SetFocus(Exchange());
    Press(kKeyEsc);
    EXPECT_EQ(Call().Text + Exchange().Text, "");
    EXPECT_EQ(LogForm.ActiveControl, &Call());
}

TEST_F(Keyboard, CtrlDownStepsThroughTheActiveBands) {
    OpenNewLog(kGeneric);
    std::string bands;
    for (int i = 0; i < 12; ++i) {
        bands += std::to_string(CurrentBand()) + " ";
        Press(kKeyDown, kCtrl);
    }
    EXPECT_EQ(bands, "3 23 4 5 6 8 7 1 21 2 22 3 ");
}

TEST_F(Keyboard, CtrlUpStepsBack) {
    OpenNewLog(kGeneric);
    CurrentBand() = 11;
    std::string bands;
    for (int i = 0; i < 12; ++i) {
        bands += std::to_string(CurrentBand()) + " ";
        Press(kKeyUp, kCtrl);
    }
    EXPECT_EQ(bands, "11 18 10 17 9 15 16 14 13 12 19 11 ");
}

TEST_F(Keyboard, BandStepsLeaveOutWhatIsNotActive) {
    OpenNewLog(kSprint); // 20, 40 and 80 m
    std::string bands;
    for (int i = 0; i < 4; ++i) {
        bands += std::to_string(CurrentBand()) + " ";
        Press(kKeyDown, kCtrl);
    }
    EXPECT_EQ(bands, "3 4 5 3 ");
    Contest.ActiveBands = {};
    Press(kKeyDown, kCtrl); // must end all the same
    EXPECT_EQ(CurrentBand(), 4);
}

TEST_F(Keyboard, BandStepsAreShownAndKeptForTheRadio) {
    OpenNewLog(kGeneric);
    Radios.LogRadio = 2;
    Press(kKeyDown, kCtrl);
    EXPECT_EQ(Radios.RadioBandMode[1], 23);
    EXPECT_EQ(Radios.RadioBandMode[0], 3);
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 1    (30m CW)");
}

TEST_F(Keyboard, CtrlLeftOrRightSwitchesTheMode) {
    OpenNewLog(kGeneric);
    Radios.RadioFrequency[0][3] = 14025;
    Press(kKeyLeft, kCtrl);
    EXPECT_EQ(CurrentBand(), 11);
    EXPECT_FLOAT_EQ(Radios.RadioFrequency[0][11], 14025);
    Press(kKeyRight, kCtrl);
    EXPECT_EQ(CurrentBand(), 3);
}

TEST_F(Keyboard, TheModeStaysWhereTheLogHasOneOnly) {
    OpenNewLog(kSs);
    Press(kKeyLeft, kCtrl);
    EXPECT_EQ(CurrentBand(), 3);
}

TEST_F(Keyboard, ABandChangeChecksTheCallAnew) {
    OpenNewLog(kGeneric);
    QsoHooks.Dupecheck = [](std::string_view call) {
        Entry.DupeFlag = call == "K1ZZ" && CurrentBand() == 23;
    };
    Fill("K1ZZ", "");
    Press(kKeyDown, kCtrl);
    EXPECT_EQ(Call().ForeColor, Color::Red);
    LogForm.lblDupe.Caption = "DUPE";
    Press(kKeyDown, kCtrl);
    EXPECT_EQ(Call().ForeColor, Color::Black);
    EXPECT_EQ(LogForm.lblDupe.Caption, "");
}

} // namespace
} // namespace zrt
