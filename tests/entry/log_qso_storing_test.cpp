// The steps of LogQso from the record's fields to the next message.
#include "entry/log_qso.h"

#include "entry/qso_recorder.h"
#include "entry/station_hooks.h"
#include "entry/statistics.h"
#include "platform/keys.h"
#include "session/radio_state.h"
#include "session/settings.h"

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// ---- steps 13 to 16: what is stored

TEST_F(LogQsoSteps, StoreTheNumberWhereTheContestHasOne) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        if (contest == kAa)
            continue; // checked in line
        SCOPED_TRACE(contest);
        BeginProcess(Devices.ProgramFolder);
        InstallRecorder();
        OpenNewLog(contest);
        Recorder.ParserGives.Number = 123;
        LogContact("K1ZZ", "123");
        EXPECT_EQ(Logged().RcvdNumber, contest == kNaqp || contest == kGeneric ? 0 : 123);
    }
}

TEST_F(LogQsoSteps, StoreTheNameWhereTheContestHasOne) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        if (contest == kGeneric)
            continue;
        SCOPED_TRACE(contest);
        BeginProcess(Devices.ProgramFolder);
        InstallRecorder();
        OpenNewLog(contest);
        Recorder.ParserGives.Name = "JOE";
        LogContact("K1ZZ", "5");
        const bool named = contest == kSprint || contest == kNaqp || contest == kCwOpen;
        EXPECT_EQ(Logged().RcvdName.Trimmed(), named ? "JOE" : "");
    }
}

TEST_F(LogQsoSteps, SplitTheNotesOfGenericAfterTenCharacters) {
    OpenNewLog(kGeneric);
    LogContact("K1ZZ", " ann 599 tnx qsl ok ");
    EXPECT_EQ(Logged().RcvdName.Whole(), "ANN 599 TN");
    EXPECT_EQ(Logged().RcvdExchange.Whole(), "X QSL");
    LogContact("K2ZZ", "ann");
    EXPECT_EQ(Logged(2).RcvdName.Whole(), "ANN       ");
    EXPECT_EQ(Logged(2).RcvdExchange.Whole(), "     ");
}

TEST_F(LogQsoSteps, StoreNotesAsOneByteACharacter) {
    OpenNewLog(kGeneric);
    LogContact("K1ZZ", "J\xC3\xBCrg \xE2\x82\xAC");
    EXPECT_EQ(Logged().RcvdName.Whole(), "J\xFCRG ?    ");
}

TEST_F(LogQsoSteps, EmptyTheExchangeBeforeTheMultiplierFillsIt) {
    OpenNewLog(kSs);
    Recorder.MultiplierRule = [](LogEntry &entry) {
        Recorder.Calls.push_back("got '" + entry.RcvdExchange.Trimmed() + "' Nr " +
                                 std::to_string(entry.SentNumber));
        entry.RcvdExchange = "A67EP";
        return NewMults{};
    };
    LogContact("K1ZZ", "5");
    LogContact("K2ZZ", "5");
    EXPECT_THAT(Recorder.Calls, testing::Contains("got '' Nr 1"));
    EXPECT_THAT(Recorder.Calls, testing::Contains("got '' Nr 2"));
    EXPECT_EQ(Logged(2).RcvdExchange.Whole(), "A67EP");
}

TEST_F(LogQsoSteps, CountThePointsThatTheMultiplierRuleLeaves) {
    OpenNewLog(kArrlDx);
    Recorder.MultiplierRule = [](LogEntry &entry) {
        EXPECT_EQ(entry.Points.Whole(), "3");
        entry.Points = "0"; // own country
        return NewMults{};
    };
    LogContact("K1ZZ", "5");
    EXPECT_EQ(Logged().Points.Whole(), "0");
    EXPECT_EQ(Statistics.TotalPoints, 0);
}

TEST_F(LogQsoSteps, CountWhatTheMultiplierRuleFinds) {
    OpenNewLog(kCqWw);
    Recorder.MultiplierRule = [](LogEntry &) { return NewMults{2, 1}; };
    LogContact("K1ZZ", "5");
    EXPECT_EQ(Statistics.TotalMults, 2);
    EXPECT_EQ(Statistics.MultsPerBand[CurrentBand()], 1);
    EXPECT_THAT(Recorder.Calls, testing::Not(testing::Contains("new multiplier")));
    Recorder.MultiplierRule = [](LogEntry &) {
        Entry.NewMultFlag = true; // a row of a table, which the map shows
        return NewMults{};
    };
    LogContact("K2ZZ", "5");
    EXPECT_THAT(Recorder.Calls, testing::Contains("new multiplier"));
    EXPECT_EQ(Statistics.TotalMults, 2);
}

TEST_F(LogQsoSteps, StoreTheRadioAndItsFrequency) {
    OpenNewLog(kGeneric);
    Radios.RadioRunning = {true, true};
    Radios.RadioFrequency[0][3] = 14025.3F;
    Radios.RadioFrequency[1][3] = 14100;
    LogContact("K1ZZ");
    EXPECT_EQ(Logged(1).Frequency.Whole(), "14025.3   ");
    EXPECT_EQ(Logged(1).RadioNumber.Whole(), "1 ");
    Radios.LogRadio = 2;
    LogContact("K2ZZ");
    EXPECT_EQ(Logged(2).Frequency.Trimmed(), "14100");
    EXPECT_EQ(Logged(2).RadioNumber.Whole(), "2 ");
    Radios.LogRadio = 3;
    LogContact("K3ZZ");
    EXPECT_EQ(Logged(3).Frequency.Trimmed(), "0");
    EXPECT_EQ(Logged(3).RadioNumber.Whole(), "0 ");
}

TEST_F(LogQsoSteps, StoreAFrequencyFrom1800To29700OnlyWithARadioUnderControl) {
    OpenNewLog(kGeneric);
    Radios.RadioRunning[0] = true;
    struct Row {
        float Frequency;
        const char *Text;
    };
    int n = 0;
    for (const Row &row :
         {Row{50100, "0"}, Row{1800, "1800"}, Row{1799.9F, "0"}, Row{29700, "29700"},
          Row{29700.1F, "0"}, Row{0, "0"}, Row{7000.05F, "7000.05"}}) {
        Radios.RadioFrequency[0][3] = row.Frequency;
        LogContact("K1ZZ");
        EXPECT_EQ(Logged(++n).Frequency.Trimmed(), row.Text);
    }
    Radios.RadioRunning[0] = false;
    Radios.RadioFrequency[0][3] = 14025.3F;
    LogContact("K1ZZ");
    EXPECT_EQ(Logged(++n).Frequency.Trimmed(), "0");
}

TEST_F(LogQsoSteps, LetACountyContactInheritRadioAndFrequencyOfTheOneBefore) {
    OpenNewLog(kZrt);
    Radios.RadioRunning[0] = true;
    Radios.RadioFrequency[0][3] = 14025.3F;
    LogContact("K1ZZ", "5");
    Radios.LogRadio = 2;
    Recorder.MultiplierRule = [](LogEntry &) {
        Entry.CountyContact = true;
        return NewMults{};
    };
    LogContact("K2ZZ", "5");
    EXPECT_EQ(Logged(2).Frequency.Trimmed(), "14025.3");
    EXPECT_EQ(Logged(2).RadioNumber.Trimmed(), "1");
    Recorder.MultiplierRule = [](LogEntry &) { return NewMults{}; };
    LogContact("K3ZZ", "5");
    EXPECT_EQ(Logged(3).Frequency.Trimmed(), "0");
    EXPECT_EQ(Logged(3).RadioNumber.Trimmed(), "2");
}

TEST_F(LogQsoSteps, LetTheFirstCountyContactInheritBlanks) {
    OpenNewLog(kZrt);
    Recorder.MultiplierRule = [](LogEntry &) {
        Entry.CountyContact = true;
        return NewMults{};
    };
    LogContact("K1ZZ", "5");
    EXPECT_EQ(Logged().Frequency.Whole(), "          ");
    EXPECT_EQ(Logged().RadioNumber.Whole(), "  ");
}

TEST_F(LogQsoSteps, LeaveTheNameOfTheWorkingRecordInContestsWithoutOne) {
    OpenNewLog(kSs);
    Log.WorkingEntry.RcvdName = "OLD";
    LogContact("K1ZZ", "5");
    EXPECT_EQ(Logged().RcvdName.Trimmed(), "OLD");
}

TEST_F(LogQsoSteps, WriteAContactThatIsRightInEveryByte) {
    OpenNewLog(kGeneric);
    Settings.IsGMTFlag = "True";
    Radios.RadioRunning[0] = true;
    Radios.RadioFrequency[0][3] = 14025.3F;
    LogContact("K1ZZ", "ann tnx qsl");
    EXPECT_EQ(Hex(BytesOf(kTempLog).substr(60)),
              "5D AD 9D 05 03 00 4B 31 5A 5A 20 20 20 20 20 20 01 00 00 00 4C 20 20 20 20 32 "
              "41 4E 4E 20 54 4E 58 20 51 53 31 34 30 32 35 2E 33 20 20 20 31 20 "
              "20 20 20 20 20 20 20 20 20 20 20 20");
}

// ---- steps 17 to 25: counting, showing, clearing

TEST_F(LogQsoSteps, ShowTheLastContact) {
    OpenNewLog(kGeneric);
    LogContact("K1ZZ", "ANN");
    EXPECT_EQ(LogForm.lblLast.Caption, "Last: 20 CW  K1ZZ  Nr 1  ANN  Pts 2");
    BeginProcess(Devices.ProgramFolder);
    InstallRecorder();
    OpenNewLog(kPaqp);
    LogContact("K1ZZ", "5");
    EXPECT_TRUE(LogForm.lblLast.Caption.ends_with("Pts 1.5")) << LogForm.lblLast.Caption;
}

TEST_F(LogQsoSteps, ClearTheEntryForTheNextCall) {
    OpenNewLog(kGeneric);
    for (Label *label :
         {&LogForm.Modelabel, &LogForm.PrevQSO[0], &LogForm.PrevQSO[7], &LogForm.LabelNeededOn,
          &LogForm.NeedPfxLabel, &LogForm.LblWpxCountry, &LogForm.CallMatchLabel1,
          &LogForm.CallMatchLabel2, &LogForm.OldCallMatchLabel, &LogForm.lblDupe})
        label->Visible = true;
    LogForm.lblCallsign.Visible = LogForm.lblExchange.Visible = false;
    Fill("K1ZZ", "ANN");
    SetFocus(Exchange());
    Press(kKeyEnter);
    for (const Label *label :
         {&LogForm.Modelabel, &LogForm.PrevQSO[0], &LogForm.PrevQSO[7], &LogForm.LabelNeededOn,
          &LogForm.NeedPfxLabel, &LogForm.LblWpxCountry, &LogForm.CallMatchLabel1,
          &LogForm.CallMatchLabel2, &LogForm.OldCallMatchLabel, &LogForm.lblDupe})
        EXPECT_FALSE(label->Visible);
    EXPECT_TRUE(LogForm.lblCallsign.Visible && LogForm.lblExchange.Visible);
    EXPECT_EQ(Call().Text + Exchange().Text, "");
    EXPECT_EQ(LogForm.ActiveControl, &Call());
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 2    (20m CW)");
}

TEST_F(LogQsoSteps, ShowTheScore) {
    OpenNewLog(kSs);
    Recorder.MultiplierRule = [](LogEntry &) { return NewMults{1, 1}; };
    LogContact("K1ZZ", "5");
    LogContact("K2ZZ", "5");
    EXPECT_EQ(LogForm.ScoreLabel.Caption, "Score: 8");
    EXPECT_EQ(LogForm.MultsLabel.Caption, "Mults:  2");
}

TEST_F(LogQsoSteps, ShowCountriesInsteadOfAScoreInGeneric) {
    OpenNewLog(kGeneric);
    Multipliers.GenericCwCountry = {0, 2, 0, 1, 5};
    Multipliers.GenericSsbCountry = {0, 1, 1, 1, 1};
    LogContact("K1ZZ");
    EXPECT_EQ(LogForm.ScoreLabel.Caption, " CW Cties: 3");
    EXPECT_EQ(LogForm.MultsLabel.Caption, "SSB Cties: 4");
}

TEST_F(LogQsoSteps, OfferTheSecondCountyOfALineAndSendNothing) {
    OpenNewLog(kZrt);
    Settings.LogandSendF5Enabled = true;
    Entry.LastSendHadCall = true;
    Entry.CountyLineFlag = true;
    Recorder.ParserGives.Number = 59;
    LogContact("K1ZZ?", "59 ABC/");
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Logged().Points.Whole(), "0");
    EXPECT_EQ(Call().Text, "K1ZZ");
    EXPECT_EQ(Exchange().Text, "59 ");
    EXPECT_EQ(Exchange().SelStart, 3);
    EXPECT_EQ(Exchange().SelLength, 0);
    EXPECT_EQ(LogForm.ActiveControl, &Exchange());
    EXPECT_THAT(Recorder.Calls, testing::Not(testing::Contains("send F5")));
    EXPECT_EQ(LogForm.ScoreLabel.Caption, "Score: 0");
}

TEST_F(LogQsoSteps, OfferNoSecondCountyInAnotherContest) {
    OpenNewLog(kPaqp);
    Entry.CountyLineFlag = true;
    LogContact("K1ZZ", "59");
    EXPECT_EQ(Call().Text, "");
}

// ---- step 26: the next message

class NextMessage : public LogQsoSteps {
  protected:
    NextMessage() {
        OpenNewLog(kGeneric);
        Settings.LogandSendF5Enabled = Settings.LogandSendF6Enabled = true;
        Entry.LastSendHadCall = true;
    }
    static std::vector<std::string> Sent() {
        std::vector<std::string> sent;
        for (const std::string &call : Recorder.Calls)
            if (call.starts_with("send"))
                sent.push_back(call);
        return sent;
    }
    static void LogWith(int keyCode, int shift = 0) {
        Fill("K1ZZ", "");
        Press(keyCode, shift);
    }
};

TEST_F(NextMessage, IsF5AfterEveryContactAtFirst) {
    LogWith(kKeyEnter);
    LogWith(kKeyEnter);
    EXPECT_THAT(Sent(), ElementsAre("send F5", "send F5"));
}

TEST_F(NextMessage, IsTheFullOneForEveryThirdContactWithTuEvery3) {
    Entry.TuEvery = 3;
    for (int i = 0; i < 7; ++i)
        LogWith(kKeyEnter);
    EXPECT_THAT(Sent(), ElementsAre("send F6", "send F6", "send F5", "send F6", "send F6",
                                    "send F5", "send F6"));
}

TEST_F(NextMessage, TakesACountOutsideOf1To9For1) {
    for (const i16 wrong : {i16{0}, i16{10}, i16{-5}}) {
        Entry.TuEvery = Entry.TuCount = wrong;
        LogWith(kKeyEnter);
        EXPECT_EQ(Entry.TuEvery, 1);
        EXPECT_EQ(Entry.TuCount, 1);
    }
    EXPECT_THAT(Sent(), ElementsAre("send F5", "send F5", "send F5"));
}

TEST_F(NextMessage, GoesOutWhenTheFieldsAreClear) {
    Station.SendMacro = [](int, bool) {
        Recorder.Calls.push_back("send with '" + Call().Text + "'");
    };
    LogWith(kKeyEnter);
    EXPECT_THAT(Sent(), ElementsAre("send with ''"));
    EXPECT_EQ(Log.NextEntry, 2);
}

TEST_F(NextMessage, IsF6AfterTheApostropheAndLeavesTheCount) {
    Entry.TuEvery = 3;
    Entry.TuCount = 2;
    LogWith(kKeyApostrophe);
    EXPECT_THAT(Sent(), ElementsAre("send F6"));
    EXPECT_EQ(Entry.TuCount, 2);
    EXPECT_FALSE(Entry.SendAfterLog);
}

TEST_F(NextMessage, IsNoneWithShiftOrCtrlButGoesOutWithAlt) {
    LogWith(kKeyEnter, kShift);
    LogWith(kKeyEnter, kCtrl);
    EXPECT_THAT(Sent(), IsEmpty());
    LogWith(kKeyEnter, kAlt);
    EXPECT_THAT(Sent(), ElementsAre("send F5"));
    LogWith(kKeyApostrophe, kShift);
    EXPECT_THAT(Sent(), ElementsAre("send F5"));
    EXPECT_EQ(Log.NextEntry, 5); // every one of them was logged
}

TEST_F(NextMessage, IsNoneWhenTheLastMessageHeldNoCall) {
    Entry.LastSendHadCall = false;
    LogWith(kKeyEnter);
    LogWith(kKeyApostrophe);
    EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(NextMessage, IsNoneWhenItIsSwitchedOff) {
    Settings.LogandSendF5Enabled = false;
    LogWith(kKeyEnter);
    EXPECT_THAT(Sent(), IsEmpty());
    Settings.LogandSendF6Enabled = false;
    LogWith(kKeyApostrophe); // the key is not even taken
    EXPECT_THAT(Sent(), IsEmpty());
    EXPECT_EQ(Log.NextEntry, 2);
}

TEST_F(NextMessage, OfARefusedApostropheIsForgotten) {
    Answer({BoxAnswer::No});
    Fill("K1ABC/P2345", "");
    Press(kKeyApostrophe);
    EXPECT_EQ(Log.NextEntry, 1);
    SetFieldText(LogForm.InData[0], "K1ZZ");
    ClickControl(LogForm.AddButton);
    EXPECT_THAT(Sent(), ElementsAre("send F5"));
}

} // namespace
} // namespace zrt
