// The steps of LogQso from the two fields to the call as it is logged. The steps behind them stand
// in log_qso_storing_test, and what happens when the disk refuses in log_qso_writing_test.
#include "entry/log_qso.h"

#include "entry/dupes.h"
#include "entry/qso_recorder.h"
#include "entry/statistics.h"
#include "platform/keys.h"
#include "session/settings.h"

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;

TEST_F(LogQsoSteps, RunInTheirOrder) {
    OpenNewLog(kCqWw);
    Recorder.MultiplierRule = [](LogEntry &) {
        Entry.NewMultFlag = true;
        return NewMults{1, 1};
    };
    LogContact("g3zz", "5");
    EXPECT_THAT(Recorder.Calls,
                ElementsAre("command", "dupecheck G3ZZ", "parse G3ZZ", "multiplier", "countries",
                            "statistics 2", "new multiplier", "display g3zz", "partial Score: 3"));
}

TEST_F(LogQsoSteps, OfGenericHaveNoParser) {
    OpenNewLog(kGeneric);
    LogContact("K1ZZ");
    EXPECT_THAT(Recorder.Calls, testing::Not(testing::Contains("parse K1ZZ")));
    EXPECT_EQ(Log.NextEntry, 2);
}

// ---- step 1: commands

TEST_F(LogQsoSteps, StopAtACommand) {
    OpenNewLog(kGeneric);
    LogContact("TU3");
    EXPECT_THAT(Recorder.Calls, ElementsAre("command"));
    EXPECT_EQ(Call().Text, "TU3"); // the command itself clears it, or not
    ExpectNothingLogged();
}

TEST_F(LogQsoSteps, TakeALetterRForACallWhenItIsNoCommand) {
    OpenNewLog(kArrlDx);
    LogContact("R", "100");
    EXPECT_EQ(Logged().Callsign.Trimmed(), "R");
}

TEST_F(LogQsoSteps, ForgetTheNewMultiplierOfTheEntryBefore) {
    OpenNewLog(kSs);
    Entry.NewMultFlag = true;
    LogContact("K1ZZ", "1");
    EXPECT_FALSE(Entry.NewMultFlag);
    EXPECT_EQ(Statistics.TotalMults, 0);
    EXPECT_THAT(Recorder.Calls, testing::Not(testing::Contains("new multiplier")));
}

// ---- the full log and the old log

TEST_F(LogQsoSteps, RefuseAFullLogAfterTheCommands) {
    OpenNewLog(kGeneric);
    Log.NextEntry = 9001;
    LogContact("TU3");
    EXPECT_TRUE(Devices.Boxes.empty()); // commands still work
    Answer({BoxAnswer::Ok});
    LogContact("K1ZZ", "ANN");
    EXPECT_EQ(LastBox().Text, "The log is full: 9000 entries.  Save it and start a new log.");
    EXPECT_EQ(LastBox().Title, "Log Full");
    EXPECT_EQ(Call().Text, "K1ZZ");
    EXPECT_EQ(Exchange().Text, "ANN");
    EXPECT_EQ(Log.NextEntry, 9001);
}

TEST_F(LogQsoSteps, TakeTheLastEntryOf9000) {
    OpenNewLog(kGeneric);
    Log.NextEntry = 9000;
    LogContact("K1ZZ");
    EXPECT_EQ(Log.NextEntry, 9001);
    EXPECT_EQ(Logged(9000).Callsign.Trimmed(), "K1ZZ");
    EXPECT_EQ(BytesOf(kTempLog).size(), 9001U * 60);
}

std::string OldSsLog() {
    std::string header = HeaderBytes("SS9CW");
    header[4] = 0;
    return header + EntryBytes(MakeEntry("K1AA", 21155, 1437, 3, '2')).substr(0, 26);
}

TEST_F(LogQsoSteps, RefuseAnOldLogThatIsProtected) {
    Extensions.ProtectOldLogs = true;
    LoadTemporary(OldSsLog());
    Answer({BoxAnswer::Ok});
    LogContact("K1ZZ", "5");
    EXPECT_EQ(LastBox().Text, "This log is in an old format; contacts can't be added.");
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Call().Text, "K1ZZ");
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(OldSsLog()));
}

TEST_F(LogQsoSteps, WriteA60ByteRecordIntoAnOldLogThatIsNotProtected) {
    LoadTemporary(OldSsLog());
    LogContact("K1ZZ", "5");
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(BytesOf(kTempLog).size(), 3U * 60); // record 3 at length 60
    EXPECT_EQ(Hex(BytesOf(kTempLog).substr(120)), Hex(EntryBytes(Logged(2))));
}

// ---- step 2: the empty call field

TEST_F(LogQsoSteps, SendF1ForAnEmptyCallField) {
    OpenNewLog(kGeneric);
    Settings.SendF1Enabled = true;
    Fill("", "ANN");
    SetFocus(Exchange());
    Press(kKeyEnter);
    EXPECT_THAT(Recorder.Calls, ElementsAre("command", "send F1"));
    EXPECT_EQ(LogForm.ActiveControl, &Call());
    EXPECT_EQ(Exchange().Text, "ANN");
    ExpectNothingLogged();
}

TEST_F(LogQsoSteps, SendNothingForAnEmptyCallFieldWithShift) {
    OpenNewLog(kGeneric);
    Settings.SendF1Enabled = true;
    Fill("", "");
    Press(kKeyEnter, kShift);
    EXPECT_THAT(Recorder.Calls, ElementsAre("command"));
    Press(kKeyEnter, kCtrl);
    EXPECT_THAT(Recorder.Calls, ElementsAre("command", "command", "send F1"));
    ExpectNothingLogged();
}

TEST_F(LogQsoSteps, SendNothingForAnEmptyCallFieldWithoutSendF1) {
    OpenNewLog(kGeneric);
    Fill("", "");
    Press(kKeyEnter);
    EXPECT_THAT(Recorder.Calls, ElementsAre("command"));
    ExpectNothingLogged();
}

// ---- step 3: the long call

TEST_F(LogQsoSteps, CutALongCallAfterYes) {
    OpenNewLog(kGeneric);
    Answer({BoxAnswer::Yes});
    LogContact("K1ABC/P2345");
    EXPECT_EQ(LastBox().Text,
              "Only 10 characters allowed for Callsign.  Truncate entry to K1ABC/P234?");
    EXPECT_EQ(LastBox().Title, "Entry Too Long");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNo);
    EXPECT_EQ(LastBox().Icon, BoxIcon::Question);
    EXPECT_EQ(Logged().Callsign.Whole(), "K1ABC/P234");
    EXPECT_THAT(Recorder.Calls, testing::Contains("dupecheck K1ABC/P234"));
}

TEST_F(LogQsoSteps, StopAtALongCallAfterNo) {
    OpenNewLog(kGeneric);
    Answer({BoxAnswer::No});
    Fill("K1ABC/P2345", "ANN");
    SetFocus(Exchange());
    Press(kKeyEnter);
    EXPECT_EQ(Call().Text, "K1ABC/P2345");
    EXPECT_EQ(Exchange().Text, "ANN");
    EXPECT_EQ(LogForm.ActiveControl, &Call());
    ExpectNothingLogged();
}

TEST_F(LogQsoSteps, CountTheCharactersOfACallAndNotItsBytes) {
    OpenNewLog(kGeneric);
    LogContact("K1\u00C4\u00D6\u00DC/P234"); // ten of them
    EXPECT_TRUE(Devices.Boxes.empty());
    EXPECT_EQ(Logged().Callsign.Whole(), "K1\xC4\xD6\xDC/P234");
    Answer({BoxAnswer::Yes});
    LogContact("K1ABC/P23\u00C45");
    EXPECT_EQ(LastBox().Text,
              "Only 10 characters allowed for Callsign.  Truncate entry to K1ABC/P23\u00C4?");
    EXPECT_EQ(Logged(2).Callsign.Whole(), "K1ABC/P23\xC4");
}

TEST_F(LogQsoSteps, KeepTheCutCallForTheMessagesWhenTheExchangeIsRefused) {
    OpenNewLog(kSs);
    Recorder.Refuse = true;
    Entry.SavedCall = "K1ABC/P2345"; // as it was typed
    Answer({BoxAnswer::Yes});
    LogContact("k1abc/p2345", "5");
    ExpectNothingLogged();
    EXPECT_EQ(Entry.SavedCall, "K1ABC/P234");
    Fill("", "5");
    Press(kKeyEnter);
    EXPECT_EQ(Entry.SavedCall, "K1ABC/P234"); // an empty field tells none
    LogContact("K1\u00C4", "5");
    EXPECT_EQ(Entry.SavedCall, "K1\xC4"); // one byte a character, as the record has it
}

TEST_F(LogQsoSteps, CountTheReminderMarksOfALongCall) {
    OpenNewLog(kGeneric);
    LogContact("K1ABC/P23?");
    EXPECT_TRUE(Devices.Boxes.empty());
    Answer({BoxAnswer::No});
    LogContact("K1ABC/P234?");
    EXPECT_EQ(Log.NextEntry, 2);
}

// ---- step 4: dupes

TEST_F(LogQsoSteps, CheckForADupeFromTheCallFieldOnly) {
    OpenNewLog(kGeneric);
    Fill("K1ZZ", "");
    SetFocus(Exchange());
    Press(kKeyEnter);
    EXPECT_THAT(Recorder.Calls, testing::Not(testing::Contains("dupecheck K1ZZ")));
    LogContact("K1ZZ", "");
    EXPECT_THAT(Recorder.Calls, testing::Contains("dupecheck K1ZZ"));
}

TEST_F(LogQsoSteps, CheckForADupeFromTheAddButton) {
    OpenNewLog(kGeneric);
    Fill("K1ZZ", "");
    SetFocus(Exchange());
    ClickControl(LogForm.AddButton);
    EXPECT_THAT(Recorder.Calls, testing::Contains("dupecheck K1ZZ"));
    EXPECT_EQ(Log.NextEntry, 2);
}

TEST_F(LogQsoSteps, ShowADupeOnceInAKeyCycle) {
    OpenNewLog(kGeneric);
    LogContact("K1ZZ");
    Recorder.Dupe = true;
    Dupes.DupeEntry = 1;
    LogContact("K1ZZ");
    EXPECT_EQ(LogForm.lblDupe.Caption, "DUPE - 1/15/15  1437Z  My #1");
    LogForm.lblDupe.Caption.clear();
    Entry.InsertActive = true; // the Insert key has shown it
    Fill("K1ZZ", "");
    ClickControl(LogForm.AddButton);
    EXPECT_EQ(Log.NextEntry, 4);
    EXPECT_EQ(LogForm.lblDupe.Caption, "");
}

TEST_F(LogQsoSteps, LogADupeWithoutPoints) {
    for (const i16 contest : {kZrt, kSs, kCqWw, kGeneric, kPaqp}) {
        SCOPED_TRACE(contest);
        BeginProcess(Devices.ProgramFolder);
        InstallRecorder();
        OpenNewLog(contest);
        Recorder.Dupe = true;
        LogContact("K1ZZ", "5");
        EXPECT_EQ(Logged().Points.Whole(), "0");
        EXPECT_EQ(Statistics.TotalPoints, 0);
        EXPECT_EQ(Statistics.QsosPerBand[3], 1);
        EXPECT_THAT(Recorder.Calls,
                    testing::Contains("multiplier")); // multipliers run for dupes too
        EXPECT_FALSE(Entry.DupeFlag);                 // cleared with the entry
    }
}

TEST_F(LogQsoSteps, KeepTheDupeOfTheFocusChangeForEnterInTheExchange) {
    OpenNewLog(kGeneric);
    Fill("K1ZZ", "");
    SetFocus(Exchange());
    Entry.DupeFlag = true;
    Press(kKeyEnter);
    EXPECT_EQ(Logged().Points.Whole(), "0");
}

// ---- step 5: the exchange

TEST_F(LogQsoSteps, SelectWhatTheParserRefuses) {
    OpenNewLog(kSs);
    Recorder.Refuse = true;
    Entry.SelStart = 2;
    Entry.SelLength = 3;
    LogContact("K1ZZ", "5 A?? 67");
    EXPECT_EQ(LogForm.ActiveControl, &Exchange());
    EXPECT_EQ(Exchange().SelStart, 2);
    EXPECT_EQ(Exchange().SelLength, 3);
    EXPECT_EQ(Exchange().Text, "5 A?? 67");
    EXPECT_EQ(Call().Text, "K1ZZ");
    EXPECT_FALSE(Entry.ParseError);
    EXPECT_TRUE(Devices.Boxes.empty()); // the parser has shown its own
    ExpectNothingLogged();
}

TEST_F(LogQsoSteps, RefuseABadAge) {
    OpenNewLog(kAa);
    for (const char *age : {"", "   ", "-1", "100", "99.5"}) {
        Answer({BoxAnswer::Ok});
        LogContact("JA1ZZ", age);
        EXPECT_EQ(LastBox().Text, "Enter two-digit age between 00 and 99.");
        EXPECT_EQ(LastBox().Title, "Must Enter Received Age");
        EXPECT_EQ(LogForm.ActiveControl, &Exchange());
        EXPECT_EQ(Exchange().SelStart, 0);
        EXPECT_EQ(Exchange().SelLength, static_cast<int>(std::string(age).size()));
        EXPECT_EQ(Exchange().Text, age);
    }
    EXPECT_EQ(Devices.Boxes.size(), 5U);
    ExpectNothingLogged();
}

TEST_F(LogQsoSteps, TakeAGoodAge) {
    OpenNewLog(kAa);
    for (const char *age : {"00", "99", "42"})
        LogContact("JA1ZZ", age);
    EXPECT_EQ(Logged(1).RcvdNumber, 0);
    EXPECT_EQ(Logged(2).RcvdNumber, 99);
    EXPECT_EQ(Logged(3).RcvdNumber, 42);
    EXPECT_THAT(Recorder.Calls, testing::Not(testing::Contains("parse JA1ZZ"))); // checked in line
}

TEST_F(LogQsoSteps, SelectTheNumberOfWpxInTheExchangeField) {
    OpenNewLog(kWpx);
    QsoHooks.ParseExchange = ParseExchange;
    Answer({BoxAnswer::Ok});
    LogContact("K1ZZ", "99999");
    EXPECT_EQ(LastBox().Text, "Number must be between 1 and 9999.");
    EXPECT_EQ(LastBox().Title, "Invalid Entry");
    EXPECT_EQ(LogForm.ActiveControl, &Exchange());
    EXPECT_EQ(Exchange().SelStart, 0);
    EXPECT_EQ(Exchange().SelLength, 5);
    ExpectNothingLogged();
}

TEST_F(LogQsoSteps, SelectTheNumberOfWpxOnTheEndOfTheCall) {
    OpenNewLog(kWpx);
    Recorder.Refuse = true;
    Recorder.ParserGives.DigitsOnCall = 4;
    Answer({BoxAnswer::Ok});
    LogContact("K1ZZ0000", "");
    EXPECT_EQ(LastBox().Text, "Number must be between 1 and 9999.");
    EXPECT_EQ(LogForm.ActiveControl, &Call());
    EXPECT_EQ(Call().SelStart, 4);
    EXPECT_EQ(Call().SelLength, 4);
    ExpectNothingLogged();
}

// ---- steps 6 to 12: the call, time and band

TEST_F(LogQsoSteps, LogW1AWForW1AWWithAQuestionMark) {
    OpenNewLog(kGeneric);
    LogContact("W1AW?");
    EXPECT_EQ(Logged().Callsign.Trimmed(), "W1AW");
    EXPECT_EQ(Dupes.CallText[1].Trimmed(), "W1AW");
    EXPECT_EQ(Dupes.CallHash[1], TextHash("W1AW"));
    EXPECT_EQ(Entry.SavedCall, "W1AW");
    ASSERT_EQ(Dupes.CurrentCalls.size(), 1U);
    EXPECT_EQ(Dupes.CurrentCalls[0].Call.Trimmed(), "W1AW");
    EXPECT_EQ(Dupes.CurrentCalls[0].BandIndex, 3);
}

TEST_F(LogQsoSteps, TakeAllMarksOutOfTheCall) {
    OpenNewLog(kGeneric);
    LogContact(" ?w.1.aw.. ");
    EXPECT_EQ(Logged().Callsign.Trimmed(), "W1AW");
}

TEST_F(LogQsoSteps, LogTheCallThatTheParserReturns) {
    OpenNewLog(kCqWw);
    Recorder.ParserGives.Call = "K1ZZ";
    Recorder.ParserGives.Number = 5;
    LogContact("K1ZZ5", "");
    EXPECT_EQ(Logged().Callsign.Trimmed(), "K1ZZ");
    EXPECT_EQ(Dupes.CallText[1].Trimmed(), "K1ZZ");
    EXPECT_EQ(Logged().RcvdNumber, 5);
}

TEST_F(LogQsoSteps, CutACallThatTheParserCorrectedWithoutAsking) {
    OpenNewLog(kSs);
    Recorder.ParserGives.Call = "VP2ABCDE/QRP";
    LogContact("VP2ABC", "5");
    EXPECT_TRUE(Devices.Boxes.empty());
    EXPECT_EQ(Logged().Callsign.Whole(), "VP2ABCDE/Q");
    EXPECT_EQ(Entry.SavedCall, "VP2ABCDE/Q"); // the call as logged
}

TEST_F(LogQsoSteps, PaintTheCallBlackAgain) {
    OpenNewLog(kGeneric);
    Call().ForeColor = Color::Red;
    LogContact("K1ZZ");
    EXPECT_EQ(Call().ForeColor, Color::Black);
}

TEST_F(LogQsoSteps, StampTheTimeOfAClockOnUtc) {
    OpenNewLog(kGeneric);
    Settings.IsGMTFlag = "True";
    Settings.TimeCorrection = "5"; // for the local clock only
    LogContact("K1ZZ");
    EXPECT_EQ(Logged().Time, 1437);
    EXPECT_EQ(Logged().Date, -21155);
    EXPECT_EQ(Logged().BandIndex, 3);
}

TEST_F(LogQsoSteps, MoveTheTimeOfALocalClockOverMidnight) {
    OpenNewLog(kGeneric);
    Settings.TimeCorrection = "5";
    SetTime(2015, 1, 31, 22, 5);
    LogContact("K1ZZ");
    EXPECT_EQ(Logged(1).Time, 305);
    EXPECT_EQ(Logged(1).Date, -22015); // 1 February
    Settings.TimeCorrection = "-23";
    LogContact("K2ZZ");
    EXPECT_EQ(Logged(2).Time, 2305);
    EXPECT_EQ(Logged(2).Date, -21305);
}

TEST_F(LogQsoSteps, KeepTheDecadeOfAYearFrom2020OnlyWithItsKey) {
    Settings.IsGMTFlag = "True";
    OpenNewLog(kGeneric);
    SetTime(2026, 3, 4, 5, 6);
    LogContact("K1ZZ");
    EXPECT_EQ(Logged(1).Date, 23046); // as in 2006
    EXPECT_EQ(Logged(1).Reserved.Whole(), std::string(12, ' '));
    Extensions.StoreDecade = true;
    LogContact("K2ZZ");
    EXPECT_EQ(Logged(2).Date, 23046);
    EXPECT_EQ(Logged(2).Reserved.Whole(), "2" + std::string(11, ' '));
    SetTime(2031, 3, 4, 5, 6);
    LogContact("K3ZZ");
    EXPECT_EQ(Logged(3).Reserved.Whole().front(), '3');
    SetTime(2019, 3, 4, 5, 6);
    LogContact("K4ZZ");
    EXPECT_EQ(Logged(4).Date, -23049);
    EXPECT_EQ(Logged(4).Reserved.Whole().front(), ' ');
}

TEST_F(LogQsoSteps, PutAPortableCallIntoItsTableOnce) {
    OpenNewLog(kGeneric);
    for (const char *call : {"W1AW/4", "W1AW/4", "K1ZZ", "AB/CD"})
        LogContact(call);
    ASSERT_EQ(Dupes.PortableTable.size(), 2U);
    EXPECT_EQ(Dupes.PortableTable[0].FullCall.Trimmed(), "W1AW/4");
    EXPECT_EQ(Dupes.PortableTable[0].BaseCall.Trimmed(), "W1AW");
    EXPECT_EQ(Dupes.PortableTable[1].BaseCall.Trimmed(), "AB"); // the left one on a tie
}

} // namespace
} // namespace zrt
