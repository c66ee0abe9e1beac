#include "entry/exchange_parsers.h"

#include "entry/dupes.h"
#include "support/exchange_promises.h"
#include "support/program.h"

namespace zrt {
namespace {

class Exchanges : public ProgramTest {
  protected:
    Exchanges() {
        FillExchangeLists();
        Parsers = {};
    }

    static void Open(i16 contestId, bool atHome = false) {
        OpenNewLog(contestId);
        OpenExchanges(contestId, atHome);
    }

    // The fields are filled and the parser of the contest runs. `call` is in both as it is.
    static ParsedExchange Parse(const std::string &exchange, const std::string &call = "K1ZZ") {
        Call().Text = call;
        Field().Text = exchange;
        ParsedExchange parsed;
        parsed.Call = UpperCase(Trim(call));
        ParseExchange(parsed);
        return parsed;
    }

    static ParsedExchange Accept(const std::string &exchange, const std::string &call = "K1ZZ") {
        const std::size_t boxes = Devices.Boxes.size();
        ParsedExchange parsed = Parse(exchange, call);
        EXPECT_FALSE(Entry.ParseError) << exchange;
        EXPECT_EQ(Devices.Boxes.size(), boxes) << exchange;
        return parsed;
    }

    // With one box, the selection of the exchange field, and nothing changed.
    static void Refuse(const std::string &exchange, const char *text, int start, int length,
                       const std::string &call = "K1ZZ", const char *title = "Exchange Error") {
        SCOPED_TRACE(exchange);
        const std::size_t boxes = Devices.Boxes.size();
        Answer({BoxAnswer::Ok});
        const ParsedExchange parsed = Parse(exchange, call);
        EXPECT_TRUE(Entry.ParseError);
        ASSERT_EQ(Devices.Boxes.size(), boxes + 1);
        EXPECT_EQ(LastBox().Text, text);
        EXPECT_EQ(LastBox().Title, title);
        EXPECT_EQ(LastBox().Icon, BoxIcon::Critical);
        EXPECT_EQ(LastBox().Buttons, BoxButtons::Ok);
        EXPECT_EQ(Entry.SelStart, start);
        EXPECT_EQ(Entry.SelLength, length);
        EXPECT_EQ(Call().Text, call);
        EXPECT_EQ(Field().Text, exchange);
        EXPECT_EQ(parsed.Call, UpperCase(Trim(call)));
        EXPECT_EQ(parsed.Number, 0);
        EXPECT_EQ(parsed.Name + parsed.Mult + parsed.Prec + parsed.Check, "");
    }

    static TextBox &Call() { return LogForm.InData[0]; }
    static TextBox &Field() { return LogForm.InData[1]; }
};

// ---- the table of parsers

TEST_F(Exchanges, OfAAGenericAndNoContestHaveNoParser) {
    for (const i16 contest : {kAa, kGeneric}) {
        Open(contest);
        Entry.ParseError = true;
        EXPECT_EQ(Accept("12 JOE CT").Number, 0);
    }
    Contest.ContestId = kNoContest;
    Accept("");
    Contest.ContestId = 99;
    Accept("");
    Contest.ContestId = -1;
    Accept("");
}

TEST_F(Exchanges, BeginWithNothingRefusedAndNothingSelected) {
    const auto parsers = {ARRLParse, CountyParse, CQWWParse, SprintParse, SSParse,
                          WPXParse,  NaqpParse,   TenParse,  CWOParse};
    const auto goodFields = {"CT", "CTFAI",  "14", "1 JOE CT", "1A72CT",
                             "5",  "JOE CT", "NH", "1 JOE"};
    const auto contests = {kArrlDx, kNeqp, kCqWw, kSprint, kSs, kWpx, kNaqp, kTenMeter, kCwOpen};
    for (std::size_t i = 0; i < parsers.size(); ++i) {
        Open(contests.begin()[i]);
        Call().Text = "K1ZZ";
        Field().Text = goodFields.begin()[i];
        Entry.ParseError = true;
        Entry.SelStart = 3;
        Entry.SelLength = 4;
        ParsedExchange parsed;
        parsed.Call = "K1ZZ";
        parsers.begin()[i](parsed);
        EXPECT_FALSE(Entry.ParseError) << i;
        EXPECT_EQ(Entry.SelStart, 0) << i;
        EXPECT_EQ(Entry.SelLength, 0) << i;
    }
}

// ---- ARRL DX

TEST_F(Exchanges, OfArrlDxAreAStateElsewhere) {
    Open(kArrlDx);
    EXPECT_EQ(Accept(" ct ").Mult, "CT");
    EXPECT_EQ(Accept("c.t").Mult, "CT");
    EXPECT_EQ(Field().Text, "c.t");
    EXPECT_EQ(Accept("ON").Number, 0);
}

TEST_F(Exchanges, OfArrlDxWithoutAStateAreRefused) {
    Open(kArrlDx);
    Refuse("", "No Exchange", 0, 0);
    Refuse("   ", "No Exchange", 3, 0);
    Refuse("100", "Enter a valid State or Province abbreviation.", 0, 3);
    Refuse("CT1", "Enter a valid State or Province abbreviation.", 0, 3);
    const char *invalid =
        "W/VE Multiplier is Invalid.  Use only the abbreviations in the Multiplier table.";
    Refuse("XX", invalid, 0, 2);
    Refuse("-", invalid, 0, 1); // nothing is left: it matches no row, not even the empty ones
    Refuse("@", invalid, 0, 1);
}

TEST_F(Exchanges, OfArrlDxAreAPowerAtAUsStation) {
    Open(kArrlDx, true);
    EXPECT_EQ(Accept("1").Number, 1);
    EXPECT_EQ(Accept(" 100 ").Number, 100);
    EXPECT_EQ(Field().Text, " 100 ");
    EXPECT_EQ(Accept("1500").Number, 1500);
    EXPECT_EQ(Accept("1,500").Number, 1500);
}

TEST_F(Exchanges, OfArrlDxTakeAKilowattInThreeSpellings) {
    Open(kArrlDx, true);
    for (const char *text : {"K", "k", " kw", "KW", "0", "K."}) {
        EXPECT_EQ(Accept(text).Number, 1000) << text;
        EXPECT_EQ(Field().Text, "1000") << text;
    }
}

TEST_F(Exchanges, OfArrlDxWithoutAPowerAreRefusedAsAWhole) {
    Open(kArrlDx, true);
    Refuse("", "No Exchange", 0, 0);
    Refuse("KW5", "Enter a power between 1 and 1500.", 0, 3);
    Refuse(" 1K ", "Enter a power between 1 and 1500.", 0, 4);
    Refuse("CT", "Enter a power between 1 and 1500.", 0, 2);
    Refuse("1501", "Power must be between 1 and 1500.", 0, 4);
    Refuse("00", "Power must be between 1 and 1500.", 0, 2);
    Refuse("99999999999999999999", "Power must be between 1 and 1500.", 0, 20);
}

// ---- ZRT, PAQP, NEQP

TEST_F(Exchanges, OfZrtAreANumberAndACountyWithOrWithoutABlank) {
    Open(kZrt);
    for (const char *text : {"12ald", " 12 ALD ", "12  ALD", "1-2 AL.D"}) {
        const ParsedExchange parsed = Accept(text);
        EXPECT_EQ(parsed.Number, 12) << text;
        EXPECT_EQ(parsed.Mult, "ALD") << text;
        EXPECT_FALSE(Entry.CountyLineFlag);
    }
    EXPECT_EQ(Accept("1 ALDR").Mult, "ALDR");
    EXPECT_EQ(Accept("9999 ALDRU").Number, 9999);
}

TEST_F(Exchanges, OfZrtCutTheCountyToFiveCharacters) {
    Open(kZrt);
    EXPECT_EQ(Accept("1 ALDRUXYZ").Mult, "ALDRU");
    EXPECT_EQ(Accept("1 ALD  X").Mult, "ALD");
}

TEST_F(Exchanges, OfZrtEndInASlashOnACountyLine) {
    Open(kZrt);
    EXPECT_EQ(Accept("12 ALD/").Mult, "ALD");
    EXPECT_TRUE(Entry.CountyLineFlag);
    Accept("12 ALD / ");
    EXPECT_TRUE(Entry.CountyLineFlag);
    Accept("12 A/LD");
    EXPECT_FALSE(Entry.CountyLineFlag);
}

TEST_F(Exchanges, OfZrtMustHaveACountyOutsideTheState) {
    Open(kZrt);
    Refuse("12 XYZ", "Multiplier is Invalid.", 3, 3);
    Refuse("12XYZ ", "Multiplier is Invalid.", 2, 3);
    Refuse("12 CT/", "Multiplier is Invalid.", 3, 2); // a state is none
    Refuse("12 ABCDEFGH", "Multiplier is Invalid.", 3, 8);
    Refuse("12345 ALD", "Multiplier is Invalid.", 4, 5); // four digits are the number
    Refuse("12", "Multiplier is Invalid.", 2, 0);
    Refuse("", "Multiplier is Invalid.", 0, 0);
    Refuse("\xC3\xA4"
           "12 X\xC3\xA4Y",
           "Multiplier is Invalid.", 5, 4); // positions are bytes
}

TEST_F(Exchanges, OfZrtMayBeAnythingBehindTheNumberInTheState) {
    Open(kZrt, true);
    EXPECT_EQ(Accept("12 XYZ").Mult, "XYZ");
    EXPECT_EQ(Accept("12").Mult, "");
    EXPECT_EQ(Accept("").Number, 0);
    Refuse("XYZ", "Exchange must begin with a number", 0, 1);
}

TEST_F(Exchanges, OfZrtAndPaqpBeginWithANumber) {
    for (const i16 contest : {kZrt, kPaqp}) {
        Open(contest);
        Refuse("ALD 12", "Exchange must begin with a number", 0, 1);
        Refuse(" .ADA", "Exchange must begin with a number", 2, 1);
    }
}

TEST_F(Exchanges, OfPaqpAreInItsOwnTable) {
    Open(kPaqp);
    for (const char *county : {"ADA", "ADAM", "adams", "YOR", "YORK"})
        EXPECT_EQ(Accept("7 " + std::string(county)).Mult, UpperCase(county));
    Refuse("7 ALD", "Multiplier is Invalid.", 2, 3);
}

TEST_F(Exchanges, OfNeqpHaveNoNumber) {
    Open(kNeqp);
    EXPECT_EQ(Accept("faict").Mult, "FAICT");
    EXPECT_EQ(Accept(" CTFAI").Mult, "CTFAI");
    EXPECT_EQ(Accept("CTFAI").Number, 0);
    EXPECT_EQ(Accept("HAR").Mult, "HAR");
    Refuse("5 FAICT", "Multiplier is Invalid.", 0, 7);
    Refuse("", "Multiplier is Invalid.", 0, 0);
}

TEST_F(Exchanges, OfNeqpDoNotMatchTheDisplayForm) {
    Open(kNeqp);
    Multipliers.NeqpMults[0].Spellings = {"FAICT", "CTFAI", "SHOWN"};
    Refuse("SHOWN", "Multiplier is Invalid.", 0, 5);
}

// ---- CQ WW

TEST_F(Exchanges, OfCqWwAreTheZoneInTheField) {
    Open(kCqWw);
    for (const char *text : {"14", " 14 ", "14 DX", "14.", "14abc"}) {
        const ParsedExchange parsed = Accept(text, "VK9NS");
        EXPECT_EQ(parsed.Number, 14) << text;
        EXPECT_EQ(parsed.Call, "VK9NS") << text;
    }
    EXPECT_EQ(Accept("1").Number, 1);
    EXPECT_EQ(Accept("40").Number, 40);
}

TEST_F(Exchanges, OfCqWwTakeAZoneOnTheCallFirst) {
    Open(kCqWw);
    const auto expect = [](const char *typed, const char *call, int zone) {
        const ParsedExchange parsed = Accept("33", typed);
        EXPECT_EQ(parsed.Call, call) << typed;
        EXPECT_EQ(parsed.Number, zone) << typed;
        EXPECT_EQ(Call().Text, typed); // LogQso stores what was parsed; the field stays
    };
    expect("DL1ABC14", "DL1ABC", 14);
    expect("DL1ABC5", "DL1ABC", 5);
    expect("K1ZZ5", "K1ZZ", 5);
    expect("K1A5", "K1A", 5);
    expect("DL1A5", "DL1A", 5);
    expect("W1AW", "W1AW", 33);
    expect("VK9NS", "VK9NS", 33);
    expect("DL1ABC/5", "DL1ABC/5", 33);
    expect("5/DL1AB4", "5/DL1AB4", 33);
    expect("K1A", "K1A", 33);
    expect("KH6", "KH6", 33);   // three characters are a call
    expect("TM50", "TM50", 33); // four of which the last two are digits, too
    expect("K5", "K", 5);
}

TEST_F(Exchanges, OfCqWwNeverTakeTheWholeCallForAZone) {
    Open(kCqWw);
    EXPECT_EQ(Accept("33", "5").Call, "5");
    EXPECT_EQ(Accept("33", "15").Call, "15");
    EXPECT_EQ(Accept("33", "15").Number, 33);
}

TEST_F(Exchanges, OfCqWwWithoutAZoneAreRefused) {
    Open(kCqWw);
    const auto refuse = [](const std::string &exchange, const char *call) {
        const int length = static_cast<int>(exchange.size());
        Refuse(exchange, "Enter zone between 1 and 40.", 0, length, call, "Invalid Zone");
    };
    refuse("", "K1ZZ");
    refuse("0", "K1ZZ");
    refuse("41", "K1ZZ");
    refuse("-5", "K1ZZ");
    refuse("DX 14", "K1ZZ");  // the part in front of the blank is 0
    refuse("599 14", "K1ZZ"); // and here no zone
    refuse("41 5", "K1ZZ");
    refuse("-1 5", "K1ZZ");
    refuse("14", "DL1ABC41"); // a good one in the field does not help
    refuse("14", "TM100");
    refuse("40.4", "K1ZZ");
    Refuse("  ", "Enter zone between 1 and 40.", 2, 0, "K1ZZ", "Invalid Zone");
}

TEST_F(Exchanges, OfCqWwTellHowLongARefusedZoneOnTheCallIs) {
    Open(kCqWw);
    Answer({BoxAnswer::Ok, BoxAnswer::Ok, BoxAnswer::Ok});
    EXPECT_EQ(Parse("14", "DL1ABC41").DigitsOnCall, 2);
    EXPECT_EQ(Parse("14", "DL1ABC0").DigitsOnCall, 1);
    EXPECT_EQ(Parse("41", "DL1ABC").DigitsOnCall, 0);
}

// ---- Sprint

void ExpectSprint(const ParsedExchange &parsed, int number, const char *name, const char *mult) {
    EXPECT_EQ(parsed.Number, number);
    EXPECT_EQ(parsed.Name, name);
    EXPECT_EQ(parsed.Mult, mult);
}

TEST_F(Exchanges, OfSprintAreNumberNameAndState) {
    Open(kSprint);
    ExpectSprint(Accept("12 JOECA"), 12, "JOE", "CA");
    ExpectSprint(Accept("12joe ca"), 12, "JOE", "CA");
    ExpectSprint(Accept(" 12 JOE  CA "), 12, "JOE", "CA");
    ExpectSprint(Accept("1234JOE CA"), 1234, "JOE", "CA");
    ExpectSprint(Accept("1 JOE NWT"), 1, "JOE", "NWT");
    ExpectSprint(Accept("1, JOE, CA"), 1, "JOE", "CA");
}

TEST_F(Exchanges, OfSprintTakeFourDigitsAndBlanksForTheNumber) {
    Open(kSprint);
    ExpectSprint(Accept("12345JOE CA"), 1234, "5JOE", "CA");
    ExpectSprint(Accept("1   2 JOE CA"), 1, "2", "JOE C");
    ExpectSprint(Accept("1 23JOECA"), 1, "JOE", "CA"); // an inner blank ends a number
    ExpectSprint(Accept("-  JOE CA"), 0, "JOE", "CA");
}

TEST_F(Exchanges, OfSprintCutNameAndState) {
    Open(kSprint);
    ExpectSprint(Accept("1 ABCDEFGHIJKL CALIFORNIA"), 1, "ABCDEFGHIJ", "CALIF");
    ExpectSprint(Accept("1 JOE CA NV"), 1, "JOE", "CA NV");
    ExpectSprint(Accept("1 JOE CA -"), 1, "JOE", "CA");
}

TEST_F(Exchanges, OfSprintOfThreeCharactersMayHaveNoName) {
    Open(kSprint);
    ExpectSprint(Accept("1 XCA"), 1, "X", "CA");
    ExpectSprint(Accept("1234 CA"), 1234, "", "CA");
    ExpectSprint(Accept("1234   A"), 1234, "", "A");
}

TEST_F(Exchanges, OfSprintThatAreIncompletePutTheCursorAtTheEnd) {
    Open(kSprint);
    Refuse("", "Incomplete Exchange", 0, 0);
    Refuse("12", "Incomplete Exchange", 2, 0);
    Refuse("12 CA", "Incomplete Exchange", 5, 0);
    Refuse("12 CA ", "Incomplete Exchange", 6, 0);
}

TEST_F(Exchanges, OfSprintAndCwOpenSelectTheLetterWhereTheNumberShouldBe) {
    for (const i16 contest : {kSprint, kCwOpen}) {
        Open(contest);
        Refuse("JOE CA 12", "Exchange must begin with a number", 0, 1);
        Refuse("  joe", "Exchange must begin with a number", 2, 1);
    }
}

// ---- SS

void ExpectSs(const ParsedExchange &parsed, int serial, const char *parts, const char *section) {
    EXPECT_EQ(parsed.Number, serial);
    EXPECT_EQ(parsed.Prec + parsed.Check, parts);
    EXPECT_EQ(parsed.Mult, section);
}

TEST_F(Exchanges, OfSsStandInAnySpacing) {
    Open(kSs);
    for (const char *text : {"123A72CT", " 123 a 72 ct ", "1 2 3 A 7 2 C T", "123-A-72-CT"}) {
        SCOPED_TRACE(text);
        const ParsedExchange parsed = Accept(text);
        ExpectSs(parsed, 123, "A72", "CT");
        EXPECT_EQ(parsed.Call, "K1ZZ");
        EXPECT_EQ(Call().Text, "K1ZZ");
    }
}

TEST_F(Exchanges, OfSsHaveSixPrecedences) {
    Open(kSs);
    for (const char precedence : std::string("ABMQSU"))
        EXPECT_EQ(Accept("1" + std::string(1, precedence) + "72CT").Prec,
                  std::string(1, precedence));
    Refuse("123Z72CT", "Precedence Error -- Must be A, B, M, Q, S, or U", 3, 1);
    Refuse("123 Z 72CT", "Precedence Error -- Must be A, B, M, Q, S, or U", 4, 1);
    Refuse("123/A72CT", "Precedence Error -- Must be A, B, M, Q, S, or U", 3, 1);
}

TEST_F(Exchanges, OfSsTakeASectionInEachOfItsSpellings) {
    Open(kSs);
    for (const char *section : {"CT", "EMA", "MDC", "MD", "DC", "PR", "KP4", "NT", "NWT"})
        ExpectSs(Accept("1A07" + std::string(section)), 1, "A07", section);
}

TEST_F(Exchanges, OfSsClampASerialThatIsTooLong) {
    Open(kSs);
    EXPECT_EQ(Accept("99999A72CT").Number, 32767);
    EXPECT_EQ(Accept("0A72CT").Number, 0);
}

TEST_F(Exchanges, OfSsBeginWithANumber) {
    Open(kSs);
    Refuse("A72CT", "Exchange must begin with a number", 0, 1);
    Refuse(" -A72CT", "Exchange must begin with a number", 2, 1);
}

TEST_F(Exchanges, OfSsThatAreIncompletePutTheCursorAtTheEnd) {
    Open(kSs);
    Refuse("123", "Incomplete Exchange", 3, 0);
    Refuse("", "Incomplete Exchange", 0, 0);
    Refuse("123A", "Multiplier or Check Error", 4, 0);
    Refuse("123A72C ", "Multiplier or Check Error", 8, 0);
}

TEST_F(Exchanges, OfSsSelectADigitInsideTheSection) {
    Open(kSs);
    Refuse("123A727T", "Multiplier error", 6, 1);
    Refuse("123A7272", "Multiplier error", 6, 1);
    Refuse("123A 72 7 T", "Multiplier error", 8, 1);
}

TEST_F(Exchanges, OfSsSelectASectionThatIsInNoRow) {
    Open(kSs);
    Refuse("123A72XX", "Multiplier is Invalid.", 6, 2);
    Refuse("123A72 X Y Z ", "Multiplier is Invalid.", 7, 5);
    Refuse("123A72KP5", "Multiplier is Invalid.", 6, 3);
    Refuse("123AABCD", "Multiplier is Invalid.", 4, 4);    // no limit but the precedence
    Refuse("123A72/X", "Multiplier or Check Error", 8, 0); // the "/" is no character of it
}

TEST_F(Exchanges, OfSsHaveTwoTextsForABadCheck) {
    Open(kSs);
    Refuse("123A7EMA", "Check error", 5, 3);
    Refuse("123A 7 EMA", "Check error", 7, 3);
    Refuse("123AX7CT", "Check Error", 4, 1);
    Refuse("123A W1AW X7CT", "Check Error", 10, 1);
}

TEST_F(Exchanges, OfSsSelectASlashInTheCheck) {
    Open(kSs);
    Multipliers.SsMults[0].Spellings[0] = "LONG";
    Refuse("123A7/LONG", "Check Error", 5, 1);
    ExpectSs(Accept("123A72LONG"), 123, "A72", "LONG");
}

TEST_F(Exchanges, OfSsCorrectTheCall) {
    Open(kSs);
    const ParsedExchange parsed = Accept("123 A W1AW 72 CT");
    ExpectSs(parsed, 123, "A72", "CT");
    EXPECT_EQ(parsed.Call, "W1AW");
    EXPECT_EQ(Call().Text, "W1AW");
    EXPECT_FALSE(Entry.DupeFlag);
}

TEST_F(Exchanges, OfSsKeepTheSlashOfACorrectedCallAlone) {
    Open(kSs);
    EXPECT_EQ(Accept("123AW1AW/472CT").Call, "W1AW/4");
    EXPECT_EQ(Accept("1/23AVE3/W1AW72C/T").Call, "VE3/W1AW");
    EXPECT_EQ(Accept("1A/W1AW72CT").Call, "/W1AW");
    EXPECT_EQ(Accept("123AW1AW7/2CT").Check, "72"); // the fourth from the end
}

TEST_F(Exchanges, OfSsCorrectNothingWithThreeCharactersOrTheSameCall) {
    Open(kSs);
    EXPECT_EQ(Accept("123A W1A 72CT").Call, "K1ZZ");
    EXPECT_EQ(Call().Text, "K1ZZ");
    EXPECT_EQ(Accept("123A K1ZZ 72CT", " k1zz ").Call, "K1ZZ");
    EXPECT_EQ(Call().Text, " k1zz ");
}

TEST_F(Exchanges, OfSsCutACorrectedCallToTenCharacters) {
    Open(kSs);
    EXPECT_EQ(Accept("123AVE3/W1AW/QRP72CT").Call, "VE3/W1AW/Q");
    EXPECT_EQ(Call().Text, "VE3/W1AW/Q");
}

class CorrectedDupes : public Exchanges {
  protected:
    CorrectedDupes() {
        Open(kSs);
        Log.LogEntries[1] = MakeEntry("W1AW", 15015, 1400, 3, '2');
        Log.LogEntries[1].RcvdExchange = "A72CT";
        Log.NextEntry = 2;
        RecordCall(1, "W1AW", 3, PortableTie::Left);
        Call().ForeColor = Color::Black;
        LogForm.lblDupe.Visible = false;
    }
};

TEST_F(CorrectedDupes, TurnRedAndAreAcceptedAllTheSame) {
    EXPECT_EQ(Accept("123 A W1AW 72 CT").Call, "W1AW");
    EXPECT_TRUE(Entry.DupeFlag);
    EXPECT_EQ(Call().ForeColor, Color::Red);
    EXPECT_TRUE(LogForm.lblDupe.Visible);
}

TEST_F(CorrectedDupes, AreNotAskedForWhenTheCallStaysOrTheExchangeIsRefused) {
    Accept("123 A 72 CT", "W1AW");
    EXPECT_FALSE(Entry.DupeFlag);
    Refuse("123 A W1AW 72 XX", "Multiplier is Invalid.", 14, 2);
    EXPECT_FALSE(Entry.DupeFlag);
    EXPECT_FALSE(LogForm.lblDupe.Visible);
}

TEST_F(CorrectedDupes, EndWithTheCallThatTheyWere) {
    Entry.DupeFlag = true; // the call that was typed is one
    EXPECT_EQ(Accept("123 A N1MX 72 CT", "W1AW").Call, "N1MX");
    EXPECT_FALSE(Entry.DupeFlag);
    EXPECT_FALSE(LogForm.lblDupe.Visible);
}

// ---- WPX

void ExpectWpx(const ParsedExchange &parsed, const char *call, int serial) {
    EXPECT_FALSE(Entry.ParseError);
    EXPECT_EQ(parsed.Call, call);
    EXPECT_EQ(parsed.Number, serial);
    EXPECT_EQ(parsed.DigitsOnCall, 0);
}

// LogQso shows the box of WPX and makes the selection.
void ExpectNoWpx(const ParsedExchange &parsed, const char *call, int digitsOnCall) {
    EXPECT_TRUE(Entry.ParseError) << call;
    EXPECT_TRUE(Devices.Boxes.empty());
    EXPECT_EQ(parsed.Call, call);
    EXPECT_EQ(parsed.Number, 0);
    EXPECT_EQ(parsed.DigitsOnCall, digitsOnCall) << call;
}

TEST_F(Exchanges, OfWpxAreTheSerialInTheField) {
    Open(kWpx);
    ExpectWpx(Parse("1"), "K1ZZ", 1);
    ExpectWpx(Parse(" 9999 "), "K1ZZ", 9999);
    ExpectWpx(Parse("12 ", "K1ZZ123"), "K1ZZ123", 12); // as they stand
    ExpectWpx(Parse("7", "W1AW/4"), "W1AW/4", 7);
    for (const char *bad : {"0", "10000", "ABC", "-1", "99999999999"})
        ExpectNoWpx(Parse(bad, "K1ZZ123"), "K1ZZ123", 0);
}

TEST_F(Exchanges, OfWpxMayStandOnTheCall) {
    Open(kWpx);
    ExpectWpx(Parse("", "K1ZZ123"), "K1ZZ", 123);
    ExpectWpx(Parse("  ", "K1ZZ9999"), "K1ZZ", 9999);
    ExpectWpx(Parse("", "K1ZZ1"), "K1ZZ", 1);
    ExpectWpx(Parse("", "K1ZZ0012"), "K1ZZ", 12);
    ExpectWpx(Parse("", "K1A5"), "K1A", 5);
    ExpectWpx(Parse("", "TM57"), "TM5", 7); // four characters are always three and one
}

TEST_F(Exchanges, OfWpxWithoutASerialOnTheCallAreRefused) {
    Open(kWpx);
    ExpectNoWpx(Parse("", "K1ZZ"), "K1ZZ", 0);
    ExpectNoWpx(Parse("", ""), "", 0);
    ExpectNoWpx(Parse("", "K15"), "K15", 0); // three characters
    ExpectNoWpx(Parse("", "W1AW/4"), "W1AW/4", 0);
    ExpectNoWpx(Parse("", "F/K1ZZ12"), "F/K1ZZ12", 0);
    ExpectNoWpx(Parse("", "K1Z12"), "K1Z12", 0); // the digits reach the third character
    ExpectNoWpx(Parse("", "K1234"), "K1234", 0);
}

TEST_F(Exchanges, OfWpxThatAreRefusedAreSelectedAsAWhole) {
    Open(kWpx);
    Parse(" 10000 ");
    EXPECT_TRUE(Entry.ParseError);
    EXPECT_EQ(Entry.SelStart, 0);
    EXPECT_EQ(Entry.SelLength, 7);
}

TEST_F(Exchanges, OfWpxTellHowLongARefusedSerialOnTheCallIs) {
    Open(kWpx);
    ExpectNoWpx(Parse("", "K1ZZ0"), "K1ZZ0", 1);
    ExpectNoWpx(Parse("", "K1ZZ000"), "K1ZZ000", 3);
    ExpectNoWpx(Parse("", "K1ZZ12345"), "K1ZZ12345", 5);
    ExpectNoWpx(Parse("", "K1A0"), "K1A0", 1);
}

// ---- NAQP

TEST_F(Exchanges, OfNaqpAreANameAndAMultiplier) {
    Open(kNaqp);
    const ParsedExchange parsed = Accept(" joe   nh ");
    EXPECT_EQ(parsed.Name, "JOE");
    EXPECT_EQ(parsed.Mult, "NH");
    EXPECT_EQ(parsed.Number, 0);
    EXPECT_EQ(Accept("ABCDEFGHIJKL NH").Name, "ABCDEFGHIJ");
    EXPECT_EQ(Accept("JOE NOWHERE").Mult, "NOWHERE"); // it earns nothing
    EXPECT_EQ(Accept("J.O.E N/H").Mult, "NH");
}

TEST_F(Exchanges, OfNaqpThatAreNotTwoWordsAreRefused) {
    Open(kNaqp);
    Refuse("", "No Exchange", 0, 0);
    Refuse("  ", "No Exchange", 2, 0);
    Refuse("JOE", "Incomplete Exchange", 3, 0);
    Refuse("JOE-NH", "Incomplete Exchange", 6, 0);
    Refuse("JOE NH X", "Exchange Error", 4, 4);
    Refuse("JOE  NH.X Y ", "Exchange Error", 5, 6);
    Refuse("JOE .", "Incomplete Exchange", 5, 0); // a mark is no word
    Refuse(". NH", "Incomplete Exchange", 4, 0);
}

// ---- ARRL 10 m

TEST_F(Exchanges, OfTenMeterAreAStateOrASerial) {
    Open(kTenMeter);
    EXPECT_EQ(Accept("nh").Mult, "NH");
    EXPECT_EQ(Accept("n.h ").Number, 0);
    EXPECT_EQ(Accept("1").Number, 1);
    EXPECT_EQ(Accept("9999").Number, 9999);
    EXPECT_EQ(Accept("12").Mult, "");
}

TEST_F(Exchanges, OfTenMeterThatAreNeitherAreRefused) {
    Open(kTenMeter);
    Refuse("", "No Exchange", 0, 0);
    Refuse("XX", "W/VE Multiplier is Invalid.", 0, 2);
    Refuse("-", "W/VE Multiplier is Invalid.", 0, 1);
    Refuse("NH1", "", 0, 3);
    Refuse("1NH", "", 0, 3);
}

void ExpectSerialBox(std::size_t boxes, const std::string &field) {
    ASSERT_EQ(Devices.Boxes.size(), boxes);
    EXPECT_EQ(LastBox().Text, "Number must be between 1 and 9999.");
    EXPECT_EQ(LastBox().Title, "Invalid Serial Number");
    EXPECT_EQ(LastBox().Icon, BoxIcon::Critical);
    EXPECT_FALSE(Entry.ParseError);
    EXPECT_EQ(LogForm.InData[1].Text, field);
    EXPECT_EQ(LogForm.InData[1].SelStart, 0);
    EXPECT_EQ(LogForm.InData[1].SelLength, static_cast<int>(field.size()));
    EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[1]);
}

TEST_F(Exchanges, OfTenMeterOutOfRangeAreLoggedAsTheContactBefore) {
    Open(kTenMeter);
    SetFocus(Call());
    Answer({BoxAnswer::Ok, BoxAnswer::Ok, BoxAnswer::Ok});
    EXPECT_EQ(Parse("0").Number, 0); // the first of the log
    ExpectSerialBox(1, "0");

    Accept("57");
    SetFocus(Call());
    EXPECT_EQ(Parse(" 10000 ").Number, 57);
    ExpectSerialBox(2, " 10000 ");

    Accept("PR");
    SetFocus(Call());
    const ParsedExchange parsed = Parse("0");
    EXPECT_EQ(parsed.Number, 0);
    EXPECT_EQ(parsed.Mult, "PR");
    ExpectSerialBox(3, "0");
}

TEST_F(Exchanges, OfTenMeterRememberNothingOfARefusal) {
    Open(kTenMeter);
    Accept("57");
    Refuse("XX", "W/VE Multiplier is Invalid.", 0, 2);
    Refuse("NH1", "", 0, 3);
    Answer({BoxAnswer::Ok});
    EXPECT_EQ(Parse("0").Number, 57);
}

// ---- CW Open

TEST_F(Exchanges, OfCwOpenAreANumberAndAName) {
    Open(kCwOpen);
    for (const char *text : {"12 joe", "12JOE", " 12  JOE ", "12 W1AW JOE", "12 JOE -"}) {
        const ParsedExchange parsed = Accept(text);
        EXPECT_EQ(parsed.Number, 12) << text;
        EXPECT_EQ(parsed.Name, "JOE") << text;
        EXPECT_EQ(parsed.Mult, "") << text;
    }
    EXPECT_EQ(Accept("1 A  JOE MIKE").Name, "JOE MIKE");
    EXPECT_EQ(Accept("1 ABCDEFGHIJKL").Name, "ABCDEFGHIJ");
    EXPECT_EQ(Accept("12345JOE").Name, "5JOE");
    EXPECT_EQ(Accept("1 J").Name, "J");
}

TEST_F(Exchanges, OfCwOpenWithoutANameAreIncomplete) {
    Open(kCwOpen);
    Refuse("", "Incomplete Exchange", 0, 0);
    Refuse("12", "Incomplete Exchange", 2, 0);
    Refuse("1234 -", "Incomplete Exchange", 6, 0);
}

// ---- through LogQso

TEST_F(Exchanges, OfTenMeterOutOfRangeAreLogged) {
    Open(kTenMeter);
    LogContact("DL1ABC", "57");
    Answer({BoxAnswer::Ok});
    LogContact("DL2ABC", "0");
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.LogEntries[2].RcvdNumber, 57);
    EXPECT_EQ(Log.LogEntries[2].Callsign.Trimmed(), "DL2ABC");
}

TEST_F(Exchanges, OfCqWwOnTheCallAreCutOffItInTheLog) {
    Open(kCqWw);
    LogContact("DL1ABC14", "");
    EXPECT_EQ(Log.LogEntries[1].Callsign.Trimmed(), "DL1ABC");
    EXPECT_EQ(Log.LogEntries[1].RcvdNumber, 14);
}

TEST_F(Exchanges, ThatAreRefusedAreSelectedAndNotLogged) {
    Open(kSs);
    Answer({BoxAnswer::Ok});
    LogContact("K1ZZ", "123Z72CT");
    EXPECT_EQ(Log.NextEntry, 1);
    EXPECT_EQ(Field().SelStart, 3);
    EXPECT_EQ(Field().SelLength, 1);
    EXPECT_EQ(LogForm.ActiveControl, &Field());
    EXPECT_FALSE(Entry.ParseError);
}

TEST_F(CorrectedDupes, AreLoggedWithoutPoints) {
    LogContact("K1ZZ", "123 A W1AW 72 CT");
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.LogEntries[2].Callsign.Trimmed(), "W1AW");
    EXPECT_EQ(Log.LogEntries[2].RcvdNumber, 123);
    EXPECT_EQ(Log.LogEntries[2].RcvdExchange.Trimmed(), "A72");
    EXPECT_EQ(Log.LogEntries[2].Points.Trimmed(), "0");
}

} // namespace
} // namespace zrt
