#include "entry/keyboard.h"

#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/station_hooks.h"
#include "headless/keyboard.h"
#include "platform/keys.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/reference_data.h"
#include "session/settings.h"
#include "support/program.h"

#include <utility>

namespace zrt {
namespace {

class Keys : public ProgramTest {
  protected:
    static TextBox &Call() { return LogForm.InData[0]; }
    static TextBox &Exchange() { return LogForm.InData[1]; }
};

TEST_F(Keys, TypesInCapitals) {
    OpenNewLog(kGeneric);
    TypeText("k1zz/p");
    EXPECT_EQ(Call().Text, "K1ZZ/P");
    EXPECT_EQ(Call().SelStart, 6);
}

TEST_F(Keys, DoNothingWithoutALog) {
    ShowForm(LogForm);
    SetFieldText(Call(), "");
    TypeText("k1zz");
    Press(kKeyEnter);
    Press(kKeyF1);
    EXPECT_EQ(Call().Text, "");
    EXPECT_TRUE(Devices.Boxes.empty());
    EXPECT_TRUE(Requests.Made.empty());
}

TEST_F(Keys, SwallowsBothQuotationMarks) {
    OpenNewLog(kGeneric);
    TypeText("k'1\"z");
    EXPECT_EQ(Call().Text, "K1Z");
    EXPECT_EQ(Log.NextEntry, 1); // the apostrophe logs only where it is set to
}

TEST_F(Keys, BlankGoesToTheExchangeAndIsTextThere) {
    for (const i16 contest : {kZrt, kCqWw, kSprint, kSs, kPaqp, kNaqp, kGeneric, kCwOpen}) {
        OpenNewLog(contest);
        TypeText("k1zz a b");
        EXPECT_EQ(Call().Text, "K1ZZ") << contest;
        EXPECT_EQ(Exchange().Text, "A B") << contest;
        WipeEntry();
    }
}

TEST_F(Keys, BlankFlipsTheFieldsWhereTheExchangeIsOneWord) {
    for (const i16 contest : {kArrlDx, kWpx, kAa, kTenMeter, kNeqp}) {
        OpenNewLog(contest);
        TypeText("k1zz 59 /p");
        EXPECT_EQ(Call().Text, "K1ZZ/P") << contest;
        EXPECT_EQ(Exchange().Text, "59") << contest;
        WipeEntry();
    }
}

TEST_F(Keys, EnterLogsFromEitherField) {
    OpenNewLog(kGeneric);
    TypeText("k1zz");
    Press(kKeyEnter);
    TypeText("k2zz ann");
    Press(kKeyEnter);
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.LogEntries[2].RcvdName.Trimmed(), "ANN");
}

TEST_F(Keys, ApostropheLogsWhereItIsSetTo) {
    OpenNewLog(kGeneric);
    Settings.LogandSendF6Enabled = true;
    TypeText("k1zz'");
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Call().Text, "");
}

TEST_F(Keys, CtrlOrAltWithZOrXWipesTheEntry) {
    OpenNewLog(kGeneric);
    for (const unsigned char key : {'Z', 'X'})
        for (const int shift : {kCtrl + 0, kAlt + 0, kCtrl | kShift}) {
            Fill("K1ZZ", "ANN");
            Press(key, shift);
            EXPECT_EQ(Call().Text + Exchange().Text, "");
        }
    Fill("K1ZZ", "ANN");
    Press('Z', kShift, 'Z');
    EXPECT_EQ(Call().Text, "K1ZZZ");
}

TEST_F(Keys, EscWipesTheEntry) {
    OpenNewLog(kGeneric);
    Fill("K1ZZ", "ANN");
    SetFocus(Exchange());
    Press(kKeyEsc);
    EXPECT_EQ(Call().Text + Exchange().Text, "");
    EXPECT_EQ(LogForm.ActiveControl, &Call());
}

TEST_F(Keys, CtrlDownStepsThroughTheActiveBands) {
    OpenNewLog(kGeneric);
    std::string bands;
    for (int i = 0; i < 12; ++i) {
        bands += std::to_string(CurrentBand()) + " ";
        Press(kKeyDown, kCtrl);
    }
    EXPECT_EQ(bands, "3 23 4 5 6 8 7 1 21 2 22 3 ");
}

TEST_F(Keys, CtrlUpStepsBack) {
    OpenNewLog(kGeneric);
    CurrentBand() = 11;
    std::string bands;
    for (int i = 0; i < 12; ++i) {
        bands += std::to_string(CurrentBand()) + " ";
        Press(kKeyUp, kCtrl);
    }
    EXPECT_EQ(bands, "11 18 10 17 9 15 16 14 13 12 19 11 ");
}

TEST_F(Keys, BandStepsLeaveOutWhatIsNotActive) {
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

TEST_F(Keys, BandStepsAreShownAndKeptForTheRadio) {
    OpenNewLog(kGeneric);
    Radios.LogRadio = 2;
    Press(kKeyDown, kCtrl);
    EXPECT_EQ(Radios.RadioBandMode[1], 23);
    EXPECT_EQ(Radios.RadioBandMode[0], 3);
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 1    (30m CW)");
}

TEST_F(Keys, CtrlLeftOrRightSwitchesTheMode) {
    OpenNewLog(kGeneric);
    Radios.RadioFrequency[0][3] = 14025;
    Press(kKeyLeft, kCtrl);
    EXPECT_EQ(CurrentBand(), 11);
    EXPECT_FLOAT_EQ(Radios.RadioFrequency[0][11], 14025);
    Press(kKeyRight, kCtrl);
    EXPECT_EQ(CurrentBand(), 3);
}

TEST_F(Keys, TheModeStaysWhereTheLogHasOneOnly) {
    OpenNewLog(kSs);
    Press(kKeyLeft, kCtrl);
    EXPECT_EQ(CurrentBand(), 3);
}

TEST_F(Keys, ABandChangeChecksTheCallAnew) {
    OpenNewLog(kGeneric);
    LogContact("K1ZZ");
    Press(kKeyUp, kCtrl);
    Fill("K1ZZ", "");
    Press(kKeyDown, kCtrl);
    EXPECT_EQ(Call().ForeColor, Color::Red);
    EXPECT_TRUE(LogForm.lblDupe.Visible);
    Press(kKeyDown, kCtrl);
    EXPECT_EQ(Call().ForeColor, Color::Black);
    EXPECT_EQ(LogForm.lblDupe.Caption, "");
}

// ---- the table of keys: what each row does

class KeyTable : public Keys {
  protected:
    // A key in the call field of an open log; what was asked for since.
    static std::vector<std::string> Asked(int keyCode, int shift = 0, int charCode = 0) {
        Requests.Made.clear();
        Press(keyCode, shift, charCode);
        return Requests.Made;
    }
    static void OpenCw() {
        OpenNewLog(kGeneric);
        Settings.CWActivated = true;
    }
    static void OpenPhone() {
        OpenCw();
        CurrentBand() = 11;
    }
    using Texts = std::vector<std::string>;
};

TEST_F(KeyTable, FunctionKeysSendTheirMessages) {
    OpenCw();
    for (const int key : {112, 113, 114, 115, 116, 117, 118, 122, 123})
        EXPECT_EQ(Asked(key), Texts{"macro F" + std::to_string(key - 111)});
    EXPECT_EQ(Asked(kKeyF1, kShift), Texts{"macro F1 repeated"});
    EXPECT_EQ(Asked(kKeyF1, kShift | kCtrl), Texts{"macro F1"}); // exactly Shift
}

TEST_F(KeyTable, FunctionKeysAreSilentOnCwWhileKeyingIsOffOrNotReady) {
    OpenCw();
    Entry.TuCount = 4;
    Settings.CWActivated = false;
    EXPECT_EQ(Asked(kKeyF5), Texts{});
    EXPECT_EQ(Entry.TuCount, 4);
    Settings.CWActivated = true;
    Station.KeyingIsReady = [] { return false; };
    EXPECT_EQ(Asked(kKeyF5), Texts{});
    CurrentBand() = 11; // phone needs no keying
    EXPECT_EQ(Asked(kKeyF5), Texts{"macro F5"});
    EXPECT_EQ(Entry.TuCount, 4);
}

TEST_F(KeyTable, F5AndF6ByHandBeginTheCountAnew) {
    OpenCw();
    for (const int key : {kKeyF5, kKeyF6}) {
        Entry.TuCount = 4;
        Press(key);
        EXPECT_EQ(Entry.TuCount, 1);
    }
    Entry.TuCount = 4;
    Press(kKeyF7);
    EXPECT_EQ(Entry.TuCount, 4);
}

TEST_F(KeyTable, CapsLockAndF8AreForCw) {
    OpenCw();
    Fill(" K1ZZ ", "");
    EXPECT_EQ(Asked(kKeyF8), Texts{"text K1ZZ"});
    EXPECT_EQ(Asked(kKeyCapsLock), Texts{"keyboard CW"});
    CurrentBand() = 11;
    EXPECT_EQ(Asked(kKeyF8), Texts{});
    EXPECT_EQ(Asked(kKeyCapsLock), Texts{});
}

TEST_F(KeyTable, F9SwitchesTheRadioAndChecksTheCall) {
    OpenCw();
    LogContact("K1ZZ");
    Fill("K1ZZ", "");
    EXPECT_EQ(Asked(kKeyF9), Texts{"active radio"});
    EXPECT_EQ(Call().ForeColor, Color::Red);
    EXPECT_TRUE(LogForm.lblDupe.Visible);
    EXPECT_EQ(Asked(kKeyF9, kCtrl), Texts{"transmit radio"});
    EXPECT_EQ(Asked(kKeyF9, kAlt), Texts{"transmit radio"});
}

TEST_F(KeyTable, F10SwapsTheRadioThatLogs) {
    OpenCw();
    Radios.RadioBandMode = {3, 12};
    Press(kKeyF10);
    EXPECT_EQ(Radios.LogRadio, 2);
    EXPECT_EQ(CurrentBand(), 12);
    EXPECT_EQ(LogForm.ActiveLogLabel.Caption, "Log R2");
    EXPECT_EQ(LogForm.ActiveLogLabel.ForeColor, Color::Red);
    EXPECT_EQ(LogForm.QSONrLabel.ForeColor, Color::Red);
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 1    (40m SSB)");
    Press(kKeyDown, kCtrl); // the band of radio 2
    Press(kKeyF10);
    EXPECT_EQ(Radios.LogRadio, 1);
    EXPECT_EQ(CurrentBand(), 3);
    EXPECT_EQ(LogForm.ActiveLogLabel.Caption, "Log R1");
    EXPECT_EQ(LogForm.QSONrLabel.ForeColor, Color::Blue);
    EXPECT_EQ(Radios.RadioBandMode[1], 13);
}

TEST_F(KeyTable, WNeedsAnOpenWinkeyer) {
    OpenCw();
    EXPECT_EQ(Asked('W', kCtrl), Texts{});
    Station.WinkeyIsOpen = [] { return true; };
    EXPECT_EQ(Asked('W', kCtrl), Texts{"Winkeyer speed mode"});
    EXPECT_EQ(Asked('W', kAlt), Texts{"Winkeyer speed mode"});
}

TEST_F(KeyTable, CtrlRTogglesTheRit) {
    OpenCw();
    Press('R', kCtrl);
    EXPECT_TRUE(Keyboard.RITClearOnTU);
    Press('R', kCtrl);
    EXPECT_FALSE(Keyboard.RITClearOnTU);
}

TEST_F(KeyTable, SpeedKeysWaitForTheMessage) {
    OpenCw();
    EXPECT_EQ(Asked(kKeyPageUp), Texts{"speed 1"});
    EXPECT_EQ(Asked(kKeyPageDown), Texts{"speed -1"});
    EXPECT_EQ(Asked(kKeyAdd, 0, '+'), Texts{"speed 1"});
    EXPECT_EQ(Asked(kKeySubtract, 0, '-'), Texts{"speed -1"});
    EXPECT_EQ(Asked('1', kShift, '!'), Texts{"speed -1"}); // "!" lowers the speed
    EXPECT_EQ(Call().Text, "");
    Station.CwIsBeingSent = [] { return true; };
    EXPECT_EQ(Asked(kKeyPageUp), Texts{});
    EXPECT_EQ(Asked(kKeyAdd, 0, '+'), Texts{});
}

TEST_F(KeyTable, OnPhonePlusStepsTheVoiceModeThroughThoseThatAreOn) {
    using enum CallExchMode;
    OpenPhone();
    Settings.DVKFastModeEnabled = Settings.DVKNormalModeEnabled = Settings.DVKMixedModeEnabled =
        true;
    for (const CallExchMode mode : {AlwaysNormal, MixedMode, AlwaysFast}) {
        EXPECT_EQ(Asked(kKeyAdd, 0, '+'), Texts{"voice mode"});
        EXPECT_EQ(Settings.DVKCallExchMode, mode);
    }
    Settings.DVKNormalModeEnabled = false;
    Press(kKeySubtract, 0, '-');
    EXPECT_EQ(Settings.DVKCallExchMode, MixedMode);
    Press('1', kShift, '!');
    EXPECT_EQ(Settings.DVKCallExchMode, AlwaysFast);
    Settings.DVKMixedModeEnabled = false;
    Press(kKeyAdd, 0, '+');
    EXPECT_EQ(Settings.DVKCallExchMode, AlwaysFast);
}

// ---- remembered calls

TEST_F(KeyTable, MRemembersFiveCalls) {
    OpenCw();
    for (int n = 1; n <= 6; ++n) {
        Fill("K" + std::to_string(n) + "ZZ", "59");
        Press('M', n % 2 == 0 ? kCtrl : kAlt);
        EXPECT_EQ(Call().Text, "");
        EXPECT_EQ(Exchange().Text, "");
    }
    EXPECT_EQ(Keyboard.QuickMem[0], "K6ZZ");
    EXPECT_EQ(Keyboard.QuickMem[4], "K2ZZ");
    Press('M', kCtrl); // nothing to remember
    EXPECT_EQ(Keyboard.QuickMem[0], "K6ZZ");
}

TEST_F(KeyTable, ARememberedCallHasTenCharacters) {
    OpenCw();
    TypeText("k1abc/qrpxyz");
    Press('M', kCtrl);
    EXPECT_EQ(Keyboard.QuickMem[0], "K1ABC/QRPX");
    Fill("\xC3\x84"
         "234567890Z",
         ""); // characters are counted, not bytes
    Press('M', kCtrl);
    EXPECT_EQ(Keyboard.QuickMem[0], "\xC3\x84"
                                    "234567890");
}

TEST_F(KeyTable, AltArrowsRecall) {
    ReadCountries();
    OpenCw();
    Keyboard.QuickMem = {"K1ZZ", "K2ZZ", "K3ZZ", "K4ZZ", "K5ZZ"};
    Press(kKeyUp, kAlt); // nothing was recalled yet: from 1 back to 5
    EXPECT_EQ(Call().Text, "K5ZZ");
    EXPECT_EQ(LogForm.LblWpxCountry.Visible, true); // as if typed
    Press(kKeyUp, kAlt);
    EXPECT_EQ(Call().Text, "K4ZZ");
    Press(kKeyDown, kAlt);
    Press(kKeyDown, kAlt);
    EXPECT_EQ(Call().Text, "K1ZZ");
    Press(kKeyDown, kAlt);
    EXPECT_EQ(Call().Text, "K2ZZ");
    Press(kKeyLeft, kAlt);
    EXPECT_EQ(Call().Text, "K1ZZ");
    Press(kKeyDown, kAlt);
    Press(kKeyRight, kAlt);
    EXPECT_EQ(Call().Text, "K1ZZ");
    EXPECT_EQ(Call().SelStart, 4);
}

// ---- Insert

TEST_F(KeyTable, InsertOnCwSendsCallAndExchangeOrTheExchangeAlone) {
    OpenCw();
    EXPECT_EQ(Asked(kKeyInsert), Texts{"row 10"});
    EXPECT_EQ(LogForm.ActiveControl, &Call()); // nothing is typed
    Fill("K1ZZ", "");
    EXPECT_EQ(Asked(kKeyInsert), Texts{"row 10"});
    EXPECT_EQ(LogForm.ActiveControl, &Exchange());
    Fill("K1ZZ", " NOTE");
    EXPECT_EQ(Asked(kKeyInsert), Texts{"row 10"});
    SetFocus(Call());
    EXPECT_EQ(Asked(kKeyInsert, kShift), Texts{"row 11"});
    SetFocus(Call());
    EXPECT_EQ(Asked(kKeyInsert, kAlt), Texts{"row 11"});
    Fill("K1ZZ", "NOTE");
    EXPECT_EQ(Asked(kKeyInsert), Texts{"row 11"});
}

TEST_F(KeyTable, InsertOnADupeSendsTheDupeMessageAndWipesIfItIsSetTo) {
    OpenCw();
    LogContact("K1ZZ");
    Fill("K1ZZ", "");
    EXPECT_EQ(Asked(kKeyInsert), Texts{"row 10"});
    EXPECT_EQ(Call().ForeColor, Color::Red);
    EXPECT_TRUE(LogForm.lblDupe.Visible);
    Settings.DupeSendMsgFlag = true;
    Fill("K1ZZ", "");
    EXPECT_EQ(Asked(kKeyInsert), Texts{"row 12"});
    EXPECT_EQ(Call().Text, "");
}

TEST_F(KeyTable, AFillThatCountsAsEmptyLetsInsertSendTheCall) {
    ReadCountries();
    OpenNewLog(kCqWw);
    Settings.CWActivated = true;
    for (const bool counts : {false, true}) {
        Extensions.PrefillCountsAsEmpty = counts;
        SetFieldText(Call(), "DL1ABC");
        LogForm.InData[0].Change();
        EXPECT_EQ(Exchange().Text, "14");
        EXPECT_EQ(Asked(kKeyInsert), Texts{counts ? "row 10" : "row 11"});
        WipeEntry();
    }
}

TEST_F(KeyTable, InsertOnPhoneSpeaksWhatIsTicked) {
    OpenPhone();
    Fill("K1ZZ", "");
    EXPECT_EQ(Asked(kKeyInsert), Texts{});
    EXPECT_EQ(LogForm.ActiveControl, &Call());
    LogForm.CheckCall.Checked = true;
    EXPECT_EQ(Asked(kKeyInsert), Texts{"say call"});
    EXPECT_EQ(LogForm.ActiveControl, &Exchange());
    SetFocus(Call());
    LogForm.CheckExchange.Checked = true;
    EXPECT_EQ(Asked(kKeyInsert), Texts{"say call exchange"});
}

TEST_F(KeyTable, ADupeOnPhoneMovesOnWithoutAWord) {
    OpenPhone();
    LogContact("K1ZZ");
    Fill("K1ZZ", "");
    EXPECT_EQ(Asked(kKeyInsert), Texts{});
    EXPECT_EQ(LogForm.ActiveControl, &Exchange());
    EXPECT_EQ(Call().ForeColor, Color::Red);
}

TEST_F(KeyTable, InsertKeepsTheCallAsTheLastOne) {
    for (const bool phone : {false, true}) {
        if (phone)
            OpenPhone();
        else
            OpenCw();
        for (const int field : {0, 1}) {
            Entry.SavedCall = "W9OLD";
            SetFocus(LogForm.InData[field]);
            Press(kKeyInsert); // no call
            EXPECT_EQ(Entry.SavedCall, "W9OLD") << phone << field;
            Fill(" k1zz ", "NOTE");
            SetFocus(LogForm.InData[field]);
            Press(kKeyInsert);
            EXPECT_EQ(Entry.SavedCall, "K1ZZ") << phone << field;
            Press(kKeyEsc);
        }
    }
}

TEST_F(KeyTable, AQuotationMarkIsNoApostrophe) {
    OpenCw();
    Settings.LogandSendF6Enabled = true;
    TypeText("k1zz");
    PressKey(LogForm, KeyNamed("\"").value());
    EXPECT_EQ(Log.NextEntry, 1);
    EXPECT_EQ(Call().Text, "K1ZZ");
    PressKey(LogForm, KeyNamed("'").value());
    EXPECT_EQ(Log.NextEntry, 2);
}

// ---- extra keys

TEST_F(KeyTable, ExtraKeysStandForInsertAndF9) {
    OpenCw();
    Settings.Key1IsMapped = Settings.Key2IsMapped = true;
    Settings.Key1Mapping = "backslash";
    Settings.Key2Mapping = "rightbracket";
    EXPECT_EQ(Asked(220, 0, '\\'), Texts{"row 10"});
    EXPECT_EQ(Asked(221, 0, ']'), Texts{"active radio"});
    EXPECT_EQ(Call().Text, "");
    Settings.Key1Mapping = "uparrow";
    EXPECT_EQ(Asked(kKeyUp), Texts{"row 10"});
    EXPECT_EQ(Asked(kKeyUp, kShift), Texts{});
    EXPECT_EQ(Asked(220, 0, '\\'), Texts{});
    Settings.Key2IsMapped = false;
    Settings.Key1Mapping = "All";
    for (const int key : {220, 221})
        EXPECT_EQ(Asked(key, 0, key == 220 ? '\\' : ']'), Texts{"row 10"});
    EXPECT_EQ(Asked(kKeyUp), Texts{"row 10"});
    Settings.Key1IsMapped = false;
    EXPECT_EQ(Asked(kKeyUp), Texts{});
}

// ---- Esc

TEST_F(KeyTable, EscEndsWhatIsSentBeforeItWipes) {
    OpenCw();
    Fill("K1ZZ", "NOTE");
    Call().ForeColor = Color::Red;
    LogForm.LabelSendingMsg.Visible = true;
    LogForm.TimeLocalLabel.Visible = false;
    static bool sending;
    sending = true;
    Station.CancelSending = [] { return std::exchange(sending, false); };
    Press(kKeyEsc);
    EXPECT_EQ(Call().Text, "K1ZZ");
    EXPECT_EQ(Call().ForeColor, Color::Black);
    EXPECT_FALSE(LogForm.LabelSendingMsg.Visible);
    EXPECT_TRUE(LogForm.TimeLocalLabel.Visible);
    Press(kKeyEsc);
    EXPECT_EQ(Call().Text, "");
    EXPECT_EQ(Exchange().Text, "");
}

// ---- pasting

TEST_F(KeyTable, PastedTextIsTakenInCapitals) {
    OpenCw();
    SetFieldText(Call(), "dl1abc");
    LogForm.InData[0].Change();
    EXPECT_EQ(Call().Text, "DL1ABC");
    EXPECT_EQ(Entry.SavedCall, "DL1ABC");
}

// ---- the map of the band

int drawn = 0; // how often the map was drawn

TEST_F(KeyTable, F9AndF10DrawTheMapInContestsThatShowTheirBand) {
    Station.RedrawMap = [] { ++drawn; };
    for (i16 contest = 1; contest <= kContests; ++contest) {
        SCOPED_TRACE(contest);
        OpenNewLog(contest);
        const int once = contest == kNaqp || contest == kArrlDx ? 1 : 0;
        for (const int key : {kKeyF9, kKeyF10}) {
            drawn = 0;
            Press(key);
            EXPECT_EQ(drawn, once);
        }
    }
}

} // namespace
} // namespace zrt
