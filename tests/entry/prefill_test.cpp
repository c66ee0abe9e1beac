#include "entry/prefill.h"

#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "entry/old_calls.h"
#include "session/contests.h"
#include "session/radio_state.h"
#include "session/reference_data.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

constexpr i16 k20Cw = 3, k40Cw = 4;

MultTable TableOf(std::initializer_list<const char *> texts) {
    MultTable table;
    for (const char *text : texts)
        table.push_back({{text, "SECOND", "THIRD"}, {}});
    return table;
}

class FillTest : public ProgramTest {
  protected:
    FillTest() { OldCalls = {}, Prefill = {}; }
    ~FillTest() override { OldCalls = {}, Prefill = {}; }

    static void Open(const ContestState &contest) {
        OpenNewLog(contest);
        Multipliers.ZrtMults = TableOf({"AAA", "BBB", "CCC"});
        Multipliers.PaqpMults = TableOf({"PAA", "PBB", "PCC"});
        Multipliers.NeqpMults = TableOf({"NAA", "NBB", "NCC"});
        Multipliers.SprintMults = Multipliers.NaqpMults =
            TableOf({"S1", "S2", "S3", "S4", "S5", "S6", "S7", "S8", "S9", "S10", "HI", "S12"});
        Multipliers.TenMults = TableOf({"CT", "PA"});
        Multipliers.ArrlMults = TableOf({"NY", "CT"});
    }
    static void Open(i16 contest) { Open(CwContest(contest)); }

    static LogEntry &Put(std::string_view call, i16 band = k20Cw) {
        const i16 n = Log.NextEntry;
        Log.LogEntries[n] = MakeEntry(call, DateCode(2015, 1, 15), 1437, band, '1');
        Log.LogEntries[n].SentNumber = n;
        RecordCall(n, call, band, PortableTie::Left);
        ++Log.NextEntry;
        return Log.LogEntries[n];
    }
    static void PutExchange(i16 number, const char *exchange, const char *name) {
        LogEntry &entry = Put("W1AW");
        entry.RcvdNumber = number;
        entry.RcvdExchange = exchange;
        entry.RcvdName = name;
    }
    // What the field holds behind a step from the call to the exchange, on another band.
    static std::string GoTo(std::string_view call, std::string_view exchange = "") {
        return GoOn(k40Cw, call, exchange);
    }
    static std::string GoOn(i16 band, std::string_view call, std::string_view exchange = "") {
        Field().GotFocus = ExchangeFieldGotFocus;
        Radios.BandIndex = band;
        Fill(call, exchange);
        SetFocus(Field());
        return Field().Text;
    }
    static std::string GoToKnown(i16 number, const char *exchange, const char *name) {
        PutExchange(number, exchange, name);
        return GoTo("W1AW");
    }
    static std::string GoToOld(const char *stored) {
        OldCalls.Rows.clear();
        OldCalls.ShowOldCalls = true;
        InsertOldCall("W1AW", stored);
        return GoTo("W1AW");
    }
    static TextBox &Field() { return LogForm.InData[1]; }
};

using FillFromTheLog = FillTest;
using FillFromAnOldLog = FillTest;
using FocusOfTheExchange = FillTest;

// ---- from the log

TEST_F(FillFromTheLog, GivesThePowerAtAHomeStationInArrlDx) {
    ContestState contest = CwContest(kArrlDx);
    contest.StationUSVE = true;
    Open(contest);
    EXPECT_EQ(GoToKnown(100, "DL", ""), "100 ");
    EXPECT_FALSE(LogForm.Modelabel.Caption.starts_with("NY"));
}

TEST_F(FillFromTheLog, GivesTheStateAndWhereItIsNeededAtAnyOtherInArrlDx) {
    Open(kArrlDx);
    EXPECT_EQ(GoToKnown(0, "NY", ""), "NY ");
    EXPECT_EQ(LogForm.Modelabel.Caption, "NY needed on  10 15 20 [40] 80 160");
    EXPECT_TRUE(LogForm.Modelabel.Visible);
}

TEST_F(FillFromTheLog, GivesZoneAndAge) {
    Open(kCqWw);
    EXPECT_EQ(GoToKnown(5, "K", ""), "5 ");
    Open(kAa);
    EXPECT_EQ(GoToKnown(45, "JA1", ""), "45 ");
}

TEST_F(FillFromTheLog, GivesTheMultiplierOfTheRow) {
    Open(kZrt);
    EXPECT_EQ(GoToKnown(12, "2", ""), " BBB ");
    Open(kPaqp);
    EXPECT_EQ(GoToKnown(12, "3", ""), " PCC ");
    Open(kNeqp);
    EXPECT_EQ(GoToKnown(0, "1", ""), " NAA "); // a form that can be typed, not that of the display
}

TEST_F(FillFromTheLog, GivesTextThatIsNoRowAsItStands) {
    Open(kZrt);
    EXPECT_EQ(GoToKnown(12, "KENT", ""), " KENT ");
    EXPECT_EQ(GoToKnown(12, "4", ""), " 4 "); // behind the table
    EXPECT_EQ(GoToKnown(12, "0", ""), " 0 ");
    EXPECT_EQ(GoToKnown(12, "99999", ""), " 99999 ");
}

TEST_F(FillFromTheLog, GivesTheStateOrThePrefixInThe10mContest) {
    Open(kTenMeter);
    EXPECT_EQ(GoToKnown(0, "CT", ""), " CT ");
    EXPECT_EQ(GoToKnown(7, "DL", ""), " DL ");
}

TEST_F(FillFromTheLog, GivesNameAndMultiplier) {
    Open(kSprint);
    EXPECT_EQ(GoToKnown(12, "2", "BOB"), " BOB S2 ");
    EXPECT_EQ(GoToKnown(12, "11", "BOB"), " BOB 11 ");
    EXPECT_EQ(GoToKnown(12, "DL", "BOB"), " BOB DL ");
    Open(kNaqp);
    EXPECT_EQ(GoToKnown(0, "11", "BOB"), "BOB HI ");
    EXPECT_EQ(GoToKnown(0, "2", "BOB"), "BOB S2 ");
    EXPECT_TRUE(LogForm.LabelNeededOn.Caption.starts_with("S2 needed on  "));
    EXPECT_TRUE(LogForm.LabelNeededOn.Visible);
}

TEST_F(FillFromTheLog, GivesNameOrNotes) {
    Open(kCwOpen);
    EXPECT_EQ(GoToKnown(12, "", "BOB"), "BOB ");
    Open(kGeneric);
    EXPECT_EQ(GoToKnown(0, "NOTES", "LONG"), "NOTES ");
}

TEST_F(FillFromTheLog, GivesNothingWhereTheNumberDiffersEachTime) {
    Open(kWpx);
    EXPECT_EQ(GoToKnown(12, "W1", ""), "");
    Open(kSs);
    EXPECT_EQ(GoToKnown(12, "A72CT", ""), "");
}

TEST_F(FillFromTheLog, TakesTheLastContactAndPutsTheCaretAtTheEnd) {
    Open(kPaqp);
    PutExchange(1, "1", "");
    PutExchange(2, "2", "");
    EXPECT_EQ(GoTo("W1AW"), " PBB ");
    EXPECT_EQ(Field().SelStart, 5);
    EXPECT_EQ(Field().SelLength, 0);
}

TEST_F(FillFromTheLog, ReadsAnOldLogsEntries) {
    Open(kSprint);
    Log.CurrentFormat = false;
    OldEntry36 &entry = Log.OldEntries36[1];
    entry.Callsign = "W1AW";
    entry.BandIndex = k20Cw;
    entry.RcvdName = "OLD";
    entry.RcvdExchange = "1";
    Log.NextEntry = 2;
    RecordCall(1, "W1AW", k20Cw, PortableTie::Right);
    EXPECT_EQ(GoTo("W1AW"), " OLD S1 ");
}

TEST_F(FillFromTheLog, PutsTheCaretWhereTheNumberGoesOnRequest) {
    Extensions.FillCursorAtStart = true;
    for (const i16 contest : {kZrt, kPaqp, kSprint, kCwOpen}) {
        SCOPED_TRACE(contest);
        Open(contest);
        EXPECT_NE(GoToKnown(12, "2", "BOB"), "");
        EXPECT_EQ(Field().SelStart, 0);
    }
    for (const i16 contest : {kCqWw, kNeqp, kNaqp, kGeneric, kAa}) {
        SCOPED_TRACE(contest);
        Open(contest);
        const std::string text = GoToKnown(12, "2", "BOB");
        EXPECT_NE(text, "");
        EXPECT_EQ(Field().SelStart, static_cast<int>(text.size()));
    }
}

TEST_F(FillFromTheLog, LeavesANumberThatIsTyped) {
    for (const bool cursorAtStart : {false, true}) {
        Extensions.FillCursorAtStart = cursorAtStart;
        Open(kZrt);
        PutExchange(12, "2", "");
        EXPECT_EQ(GoTo("W1AW", "345"), "345");
        EXPECT_EQ(Field().SelStart, 3);
        EXPECT_EQ(GoTo("W1AW", "345 CCC"), "345 CCC");
    }
}

// ---- from an earlier log

TEST_F(FillFromAnOldLog, GivesWhatStandsBehindTheTag) {
    ContestState contest = CwContest(kArrlDx);
    contest.StationUSVE = true;
    Open(contest);
    EXPECT_EQ(GoToOld("AR1000"), "1000 ");
    Open(kCqWw);
    EXPECT_EQ(GoToOld("WW14"), "14 ");
    Open(kAa);
    EXPECT_EQ(GoToOld("AA45"), "45 ");
    Open(kGeneric);
    EXPECT_EQ(GoToOld("GEFIELD DAY"), "field day ");
}

TEST_F(FillFromAnOldLog, TellsWhereTheStateIsNeededInArrlDx) {
    Open(kArrlDx);
    EXPECT_EQ(GoToOld("ARNY"), "ny ");
    EXPECT_EQ(LogForm.Modelabel.Caption, "NY needed on  10 15 20 [40] 80 160");
}

TEST_F(FillFromAnOldLog, GivesTheMultiplierOfTheRow) {
    Open(kZrt);
    EXPECT_EQ(GoToOld("ZR2"), "bbb ");
    EXPECT_EQ(GoToOld("ZRKENT"), "kent ");
    Open(kPaqp);
    EXPECT_EQ(GoToOld("PA3"), "pcc ");
    Open(kNeqp);
    EXPECT_EQ(GoToOld("NE1"), "naa ");
}

TEST_F(FillFromAnOldLog, GivesOnlyAStateInThe10mContest) {
    Open(kTenMeter);
    EXPECT_EQ(GoToOld("TECT"), "ct ");
    EXPECT_EQ(GoToOld("TEDL"), "");
}

TEST_F(FillFromAnOldLog, GivesNameAndMultiplier) {
    Open(kSprint);
    EXPECT_EQ(GoToOld("SPBOB02"), "bob s2  ");
    EXPECT_EQ(GoToOld("SPBOB11"), "bob 11  ");
    EXPECT_EQ(GoToOld("SPBOBDL"), "bob dl  ");
    EXPECT_EQ(GoToOld("SP"), "   "); // an empty row: nothing to tell, and nothing breaks
    Open(kNaqp);
    EXPECT_EQ(GoToOld("NABOB12"), "bob s12  ");
    EXPECT_TRUE(LogForm.LabelNeededOn.Caption.starts_with("S12 needed on  "));
    Open(kCwOpen);
    EXPECT_EQ(GoToOld("CWBOB"), "bob  ");
}

TEST_F(FillFromAnOldLog, TakesTheNameOfAnyContestInCwOpen) {
    Open(kCwOpen);
    EXPECT_EQ(GoToOld("GEBOB"), "bob  ");
}

TEST_F(FillFromAnOldLog, GivesCheckPrecedenceAndSectionInSs) {
    Open(kSs);
    Multipliers.SsMults = TableOf({"CT", "EMA"});
    Multipliers.SsRows = {{"CT", 1}, {"EM", 2}};
    EXPECT_EQ(GoToOld("SSA72EM"), "72 a ema ");
    EXPECT_EQ(GoToOld("SSA72XX"), "");
    EXPECT_EQ(GoToOld("SSA7"), "");
}

TEST_F(FillFromAnOldLog, GivesNothingInWpx) {
    Open(kWpx);
    EXPECT_EQ(GoToOld("WP123"), "");
}

TEST_F(FillFromAnOldLog, NeedsTheTagOfTheContestAndTheExactCall) {
    Open(kCqWw);
    EXPECT_EQ(GoToOld("AA45"), "");
    EXPECT_EQ(GoToOld("W"), "");
    EXPECT_EQ(GoToOld(""), "");
    EXPECT_EQ(GoToOld("WW14"), "14 ");
    EXPECT_EQ(GoTo("W1A"), "");
    EXPECT_EQ(GoTo("W1AWX"), "");
    EXPECT_EQ(GoTo(""), "");
}

TEST_F(FillFromAnOldLog, IsLeftForWhatTheLogItselfTells) {
    Open(kCqWw);
    PutExchange(5, "K", "");
    EXPECT_EQ(GoToOld("WW14"), "5 ");
}

TEST_F(FillFromAnOldLog, IsForThoseWhoWantIt) {
    Open(kCqWw);
    InsertOldCall("W1AW", "WW14");
    EXPECT_EQ(GoTo("W1AW"), "");
}

TEST(OldCallList, IsSortedAndKeepsTheFirstExchange) {
    OldCalls = {};
    EXPECT_EQ(InsertOldCall("K1ZZ", "WW5"), 0U);
    EXPECT_EQ(InsertOldCall("W1AW", "WW4"), 1U);
    EXPECT_EQ(InsertOldCall("K1AA", "WW3"), 0U);
    EXPECT_EQ(InsertOldCall("K1ZZ", "WW14"), 1U);
    ASSERT_EQ(OldCalls.Rows.size(), 3U);
    EXPECT_EQ(OldCalls.Rows[1].Exchange, "WW5");
    EXPECT_EQ(FindOldCall("K1"), 0U);
    EXPECT_EQ(FindOldCall("K1Z"), 1U);
    EXPECT_EQ(FindOldCall("X"), 3U);
    OldCalls = {};
}

// ---- the focus

TEST_F(FocusOfTheExchange, MarksADupe) {
    Open(kCqWw);
    Put("W1AW");
    GoOn(k20Cw, "W1AW");
    EXPECT_TRUE(Entry.DupeFlag);
    EXPECT_EQ(LogForm.InData[0].ForeColor, Color::Red);
    EXPECT_EQ(LogForm.lblDupe.Caption, "DUPE - 1/15/15  1437Z  My #1");
    EXPECT_TRUE(LogForm.lblDupe.Visible);
}

TEST_F(FocusOfTheExchange, LeavesTheDupeLineToInsert) {
    Open(kCqWw);
    Put("W1AW");
    Entry.InsertActive = true;
    LogForm.lblDupe.Visible = false;
    GoOn(k20Cw, "W1AW");
    EXPECT_EQ(LogForm.InData[0].ForeColor, Color::Red);
    EXPECT_FALSE(LogForm.lblDupe.Visible);
}

TEST_F(FocusOfTheExchange, TakesBackTheMarkOfACallThatWasCorrected) {
    Open(kCqWw);
    Put("W1AW");
    GoOn(k20Cw, "W1AW");
    ASSERT_TRUE(LogForm.lblDupe.Visible);
    GoOn(k20Cw, "W1AX");
    EXPECT_EQ(LogForm.InData[0].ForeColor, Color::Black);
    EXPECT_FALSE(LogForm.lblDupe.Visible);
    EXPECT_TRUE(LogForm.lblExchange.Visible);
    EXPECT_TRUE(LogForm.lblCallsign.Visible);
}

TEST_F(FocusOfTheExchange, DoesNothingWhileARefusedExchangeIsSelected) {
    Open(kCqWw);
    PutExchange(5, "", "");
    Entry.ParseError = true;
    EXPECT_EQ(GoTo("W1AW", "77"), "77");
    EXPECT_FALSE(Dupes.SeenBefore);
}

TEST_F(FocusOfTheExchange, DoesNothingForTheSecondCountyOfALine) {
    Open(kZrt);
    PutExchange(5, "1", "");
    Entry.CountyLineFlag = true;
    Entry.CountyLineStart = 1;
    EXPECT_EQ(GoTo("W1AW", "5 "), "5 ");
    EXPECT_FALSE(Dupes.SeenBefore);
    Open(kPaqp); // a "/" means nothing here
    PutExchange(5, "1", "");
    Entry.CountyLineFlag = true;
    Entry.CountyLineStart = 1;
    EXPECT_EQ(GoTo("W1AW"), " PAA ");
}

TEST_F(FocusOfTheExchange, FillsWhereNothingIsTyped) {
    Open(kNaqp);
    PutExchange(0, "1", "BOB");
    EXPECT_EQ(GoTo("W1AW", ""), "BOB S1 ");
    EXPECT_EQ(GoTo("W1AW", "1"), "1");
    EXPECT_EQ(GoTo("W1AW", "9X"), "9X");
    EXPECT_EQ(GoTo("W1AW", "JOE"), "JOE");
    EXPECT_EQ(GoTo("W1AW", " 1"), " 1");
    Open(kCqWw);
    PutExchange(5, "", "");
    EXPECT_EQ(GoTo("W1AW", "33"), "33");
    Fill("W1AW", "");
    FillExchange("33"); // by the program
    SetFocus(Field());
    EXPECT_EQ(Field().Text, "5 ");
}

TEST_F(FocusOfTheExchange, TellsNoNeedOfAFillThatHasNoPlace) {
    Open(kNaqp);
    PutExchange(0, "2", "BOB");
    GoTo("W1AW", "JOE");
    EXPECT_FALSE(LogForm.LabelNeededOn.Visible);
}

TEST_F(FocusOfTheExchange, AsksOnceForAPortableStation) {
    Open(kCqWw);
    PutExchange(5, "", "");
    Answer({BoxAnswer::Ok});
    EXPECT_EQ(GoTo("W1AW/4"), "5 ");
    EXPECT_TRUE(Dupes.PortableMatch);
    EXPECT_EQ(Devices.Boxes.size(), 1U);
    ExchangeFieldGotFocus(); // as by the box that Enter in the call field brought
    EXPECT_EQ(Devices.Boxes.size(), 1U);
    EXPECT_FALSE(Dupes.PortableMatch);
    EXPECT_TRUE(Dupes.SeenBefore);
}

TEST_F(FocusOfTheExchange, ComesBackFromTheBoxWithoutAnotherOne) {
    Open(kCqWw);
    PutExchange(5, "", "");
    LogForm.InData[1].GotFocus = ExchangeFieldGotFocus;
    Radios.BandIndex = k40Cw;
    Fill("W1AW/4", "");
    Answer({BoxAnswer::Ok});
    Dupecheck("W1AW/4"); // as Enter in the call field does
    EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[1]);
    EXPECT_EQ(Devices.Boxes.size(), 1U);
    EXPECT_EQ(Field().Text, "5 ");
}

TEST_F(FocusOfTheExchange, ChecksTheNextCallAfterAPortableStation) {
    Open(kCqWw);
    PutExchange(5, "", "");
    Answer({BoxAnswer::Ok});
    GoTo("W1AW/4");
    ASSERT_TRUE(Dupes.PortableMatch);
    EXPECT_EQ(GoTo("K1ZZ"), "");
    EXPECT_FALSE(Dupes.SeenBefore);
}

TEST_F(FocusOfTheExchange, ChecksThePortableStationAgainOnceItIsLogged) {
    Open(kCqWw);
    PutExchange(5, "", "");
    Answer({BoxAnswer::Ok});
    GoTo("W1AW/4");
    Put("W1AW/4", k40Cw);
    GoTo("W1AW/4");
    EXPECT_TRUE(Entry.DupeFlag);
}

// ---- what the fill counts as

TEST_F(FillTest, CountsAsEmptyOnRequestUntilAKeyIsTyped) {
    Open(kCqWw);
    EXPECT_FALSE(IsPrefillOnly());
    PutExchange(5, "", "");
    ASSERT_EQ(GoTo("W1AW"), "5 ");
    EXPECT_FALSE(IsPrefillOnly()); // not without the key
    Extensions.PrefillCountsAsEmpty = true;
    EXPECT_TRUE(IsPrefillOnly());
    Field().Text = "5 7";
    EXPECT_FALSE(IsPrefillOnly());
    Field().Text = "5 ";
    EXPECT_TRUE(IsPrefillOnly());
    EndPrefill();
    EXPECT_FALSE(IsPrefillOnly());
    EXPECT_FALSE(FillExchange("14"));
    EXPECT_EQ(Field().Text, "5 ");
    Field().Text.clear();
    EXPECT_FALSE(IsPrefillOnly()); // empty it is, but of no fill
    EXPECT_TRUE(FillExchange("14"));
    EXPECT_TRUE(IsPrefillOnly());
    ++Log.NextEntry; // the same text in the next contact is the operator's
    EXPECT_FALSE(IsPrefillOnly());
}

// ---- leaving the call field

TEST_F(FillTest, HidesTheMatchLinesWhenTheCallIsLeftForTheExchange) {
    Open(kCqWw);
    LogForm.InData[0].LostFocus = CallFieldLostFocus;
    const auto showThem = [] {
        SetFocus(LogForm.InData[0]);
        for (Label *label :
             {&LogForm.CallMatchLabel1, &LogForm.CallMatchLabel2, &LogForm.OldCallMatchLabel})
            label->Visible = true;
    };
    const auto shown = [] {
        return int{LogForm.CallMatchLabel1.Visible} + LogForm.CallMatchLabel2.Visible +
               LogForm.OldCallMatchLabel.Visible;
    };
    showThem();
    SetFocus(LogForm.InData[1]);
    EXPECT_EQ(shown(), 0);
    showThem();
    SetFocus(LogForm.AddButton);
    EXPECT_EQ(shown(), 3);
    showThem();
    SetFocus(LogForm.InData[1]);
    EXPECT_EQ(shown(), 0);
}

} // namespace
} // namespace zrt
