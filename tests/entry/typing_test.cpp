// What shows while a call or an exchange is typed, by contest.
#include "entry/typing.h"

#include "app/start_up.h"
#include "entry/callsign.h"
#include "entry/keyboard.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "entry/needed.h"
#include "headless/keyboard.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

struct Line {
    i16 Country = -1, Zone = -1;
};
Line shownLine;
std::vector<std::string> searches; // what was asked of the window of partial calls

class Typed : public ProgramTest {
  protected:
    Typed() {
        StartProgram();
        shownLine = {};
        searches.clear();
        Typing.PartialCheck = [](std::string_view call) { searches.emplace_back(call); };
        Typing.ShowCountryLine = [](i16 country, i16 zone) { shownLine = {country, zone}; };
    }
    ~Typed() override { Typing = {}; }
    // An open log, and a text in the call field as if it were typed.
    static void Call(const std::string &call) {
        SetFieldText(LogForm.InData[0], call);
        CallTextChanged();
    }
    static void Exchange(const std::string &text) {
        SetFieldText(LogForm.InData[1], text);
        ExchangeTextChanged();
    }
    static void Open(const ContestState &contest) { OpenNewLog(contest); }
    static ContestState Dx(i16 contestId, bool phone = false) {
        ContestState contest = CwContest(contestId);
        contest.QthUSA = false;
        contest.QthContinent = "EU";
        if (phone) {
            contest.ModeCW = false;
            contest.ModePhone = true;
        }
        return contest;
    }
    static void ExpectNeed(const char *text, Color color) {
        EXPECT_TRUE(LogForm.NeedPfxLabel.Visible);
        EXPECT_EQ(LogForm.NeedPfxLabel.Caption, text);
        EXPECT_EQ(LogForm.NeedPfxLabel.ForeColor, color);
    }
};

TEST_F(Typed, ArrlDxInTheUsaTellsWhatIsNeeded) {
    ContestState contest = CwContest(kArrlDx);
    contest.StationUSVE = true;
    Open(contest);
    Call("G3ZZ");
    ExpectNeed("     G NEEDED", Color::Red); // right-aligned in 12 by half the padding
    EXPECT_EQ(LogForm.LblWpxCountry.Caption, "England");
    EXPECT_EQ(shownLine.Country, CountryLookup("G3ZZ"));
    Multipliers.CountryWorked[CountryLookup("G3ZZ")][3] = 1;
    Call("G4ZZ");
    ExpectNeed("     G Worked", Color::Blue);
    Radios.BandIndex = 4;
    Call("G4ZZ");
    ExpectNeed("     G NEEDED", Color::Red);
    Call("K1ZZ"); // counts nothing here
    EXPECT_FALSE(LogForm.NeedPfxLabel.Visible);
    Call("");
    EXPECT_FALSE(LogForm.LblWpxCountry.Visible);
}

TEST_F(Typed, ArrlDxElsewhereTellsNothingOfTheCall) {
    Open(Dx(kArrlDx));
    Call("K1ZZ");
    EXPECT_FALSE(LogForm.NeedPfxLabel.Visible);
    EXPECT_EQ(shownLine.Country, -1);
}

TEST_F(Typed, ArrlDxElsewhereTellsTheBandsOfAState) {
    Open(Dx(kArrlDx));
    Exchange("N"); // one character is no state yet
    EXPECT_FALSE(LogForm.Modelabel.Visible);
    Exchange("NY");
    EXPECT_TRUE(LogForm.Modelabel.Visible);
    EXPECT_EQ(LogForm.Modelabel.Caption, "NY needed on  10 15 [20] 40 80 160");
    MultRow &row = Multipliers.ArrlMults[FindMult(Multipliers.ArrlMults, "NY") - 1];
    row.Worked[2] = row.Worked[3] = true;
    LogForm.PrevQSO[0].Visible = LogForm.LabelNeededOn.Visible = true;
    Exchange("NY");
    EXPECT_EQ(LogForm.Modelabel.Caption, "NY needed on  10 40 80 160");
    EXPECT_FALSE(LogForm.PrevQSO[0].Visible);
    EXPECT_FALSE(LogForm.LabelNeededOn.Visible);
    Exchange("QQ");
    EXPECT_FALSE(LogForm.Modelabel.Visible);
}

TEST_F(Typed, APhoneLogHasItsOwnFlags) {
    Open(Dx(kArrlDx, true));
    Radios.BandIndex = 12; // 40 m
    MultRow &row = Multipliers.ArrlMults[FindMult(Multipliers.ArrlMults, "NY") - 1];
    row.Worked[9] = row.Worked[4] = true; // the CW flag counts for nothing
    Exchange("NY");
    EXPECT_EQ(LogForm.Modelabel.Caption, "NY needed on  15 20 [40] 80 160");
}

TEST_F(Typed, CqWwFillsTheZone) {
    Open(CwContest(kCqWw));
    Call("DL1ABC");
    ExpectNeed("     DL NEEDED", Color::Red);
    EXPECT_EQ(LogForm.InData[1].Text, "14");
    EXPECT_EQ(shownLine.Zone, 14);
    Call("K6ZZ"); // the call area's zone
    EXPECT_EQ(LogForm.InData[1].Text, "03");
    Call("VE8ZZ");
    EXPECT_EQ(LogForm.InData[1].Text, "01");
    Call("QQ1ZZ"); // no country
    EXPECT_EQ(LogForm.InData[1].Text, "");
    EXPECT_FALSE(LogForm.NeedPfxLabel.Visible);
    EXPECT_FALSE(LogForm.LblWpxCountry.Visible);
}

TEST_F(Typed, CqWwRepaintsTheLineForATypedZone) {
    Open(CwContest(kCqWw));
    Call("DL1ABC");
    Exchange("15");
    EXPECT_EQ(shownLine.Zone, 15);
    Exchange("41");
    EXPECT_EQ(shownLine.Zone, 15);
    Exchange("0");
    EXPECT_EQ(shownLine.Zone, 15);
}

TEST_F(Typed, WpxTellsThePrefixAndTheCountry) {
    Open(CwContest(kWpx));
    Call("DL1ABC");
    ExpectNeed("    DL1 NEEDED", Color::Red);
    EXPECT_NE(LogForm.LblWpxCountry.Caption.find("Germany"), std::string::npos);
    InsertPrefix("DL1", false);
    Call("DL1XYZ");
    ExpectNeed("    DL1 Worked", Color::Blue);
}

TEST_F(Typed, AaTellsThePrefixOnTheBand) {
    Open(CwContest(kAa));
    Call("JA1ABC");
    ExpectNeed("    JA1 NEEDED", Color::Red);
    Multipliers.AaPrefixes[3].emplace_back("JA1");
    Call("JA1ABC");
    ExpectNeed("    JA1 Worked", Color::Blue);
    Radios.BandIndex = 4;
    Call("JA1ABC");
    ExpectNeed("    JA1 NEEDED", Color::Red);
}

TEST_F(Typed, TenMeterTellsBothModes) {
    Open(CwContest(kTenMeter));
    Call("DL1ABC");
    ExpectNeed("     DL  CW NEEDED  SSB NEEDED", Color::Red);
    Multipliers.CountryWorked[CountryLookup("DL1ABC")][1] = 1;
    Call("DL1ABC");
    ExpectNeed("     DL  CW Worked  SSB NEEDED", Color::Red);
    Multipliers.CountryWorked[CountryLookup("DL1ABC")][9] = 1;
    Call("DL1ABC");
    ExpectNeed("     DL  CW Worked  SSB Worked", Color::Blue);
    for (const char *call : {"K1ZZ", "VE3ZZ", "KH6ZZ", "KL7ZZ", "QQ1ZZ"}) {
        Call(call);
        EXPECT_FALSE(LogForm.NeedPfxLabel.Visible) << call;
    }
}

TEST_F(Typed, GenericTellsBothModesButOfHawaii) {
    Open(CwContest(kGeneric));
    Call("K1ZZ");
    ExpectNeed("     K  CW NEEDED  SSB NEEDED", Color::Red);
    Multipliers.GenericSsbCountry[CountryLookup("K1ZZ")] = 4;
    Call("K1ZZ");
    ExpectNeed("     K  CW NEEDED  SSB Worked", Color::Red);
    Call("KH6ZZ");
    EXPECT_FALSE(LogForm.NeedPfxLabel.Visible);
    EXPECT_EQ(LogForm.LblWpxCountry.Caption, "Hawaii");
}

TEST_F(Typed, NaqpTellsTheBandsOfAState) {
    Open(CwContest(kNaqp));
    Exchange("BOB");
    EXPECT_FALSE(LogForm.LabelNeededOn.Visible);
    Exchange("BOB NY");
    EXPECT_TRUE(LogForm.LabelNeededOn.Visible);
    EXPECT_EQ(LogForm.LabelNeededOn.Caption, "NY needed on  10 15 [20] 40 80 160");
    Exchange("BOB QQ");
    EXPECT_FALSE(LogForm.LabelNeededOn.Visible);
}

TEST_F(Typed, TheHeadingShowsOnceTheStationHasAPlace) {
    Open(CwContest(kWpx));
    Call("DL1ABC");
    EXPECT_FALSE(LogForm.lblHeading.Visible);
    Settings.StationLatitude = 41.7;
    Settings.StationLongitude = 72.7; // west is positive
    Call("DL1ABC");
    EXPECT_TRUE(LogForm.lblHeading.Visible);
    EXPECT_EQ(LogForm.lblHeading.Caption,
              std::to_string(HeadingTo(CountryLookup("DL1ABC"))) + "\xC2\xB0");
    Call("");
    EXPECT_FALSE(LogForm.lblHeading.Visible);
}

TEST_F(Typed, TheHeadingShowsOnTheEquatorAndOnTheFirstMeridian) {
    Open(CwContest(kWpx));
    Settings.StationLongitude = 72.7;
    Call("DL1ABC");
    EXPECT_TRUE(LogForm.lblHeading.Visible);
    Settings.StationLatitude = 51.5;
    Settings.StationLongitude = 0;
    Call("DL2ABC");
    EXPECT_TRUE(LogForm.lblHeading.Visible);
}

TEST_F(Typed, ContestsOfExchangesTellNothingOfTheCall) {
    for (const i16 contest : {kZrt, kSprint, kSs, kPaqp, kNaqp, kNeqp, kCwOpen}) {
        Open(CwContest(contest));
        Call("DL1ABC");
        EXPECT_FALSE(LogForm.NeedPfxLabel.Visible) << contest;
        EXPECT_FALSE(LogForm.LblWpxCountry.Visible) << contest;
    }
}

// ---- "." and "?" are the operator's notes

using Texts = std::vector<std::string>;

void Type(std::string_view text) {
    for (const KeyStroke &stroke : StrokesOf(text))
        PressKey(LogForm, stroke);
}

void Hit(std::string_view key) {
    PressKey(LogForm, KeyNamed(key).value());
}

// Puts a text into the call field with one edit, as pasting does.
void Paste(const std::string &text) {
    SetFieldText(CallField(), text);
    CallField().Change();
}

TEST_F(Typed, AMarkLeavesTheZoneThatTheOperatorHasCorrected) {
    Open(CwContest(kCqWw));
    Type("dl1abc");
    Exchange("15");
    searches.clear();
    shownLine = {};
    Type("?.");
    EXPECT_EQ(CallField().Text, "DL1ABC?.");
    EXPECT_EQ(ExchangeField().Text, "15");
    Hit("Backspace");
    Hit("Backspace");
    EXPECT_EQ(CallField().Text, "DL1ABC");
    EXPECT_EQ(ExchangeField().Text, "15");
    EXPECT_EQ(searches, Texts{});
    EXPECT_EQ(shownLine.Country, -1);
    EXPECT_EQ(LogForm.LblWpxCountry.Caption, "Fed. Rep. of Germany");
    Type("d"); // another call
    EXPECT_EQ(searches, Texts{"DL1ABCD"});
    EXPECT_EQ(ExchangeField().Text, "15"); // what is typed stays
}

TEST_F(Typed, ACallIsLookedUpWithoutItsMarks) {
    Open(CwContest(kCqWw));
    const i16 guantanamo = CountryLookup("KG4AA");
    ASSERT_NE(guantanamo, CountryLookup("KG4AAA"));
    for (const char *typed : {"kg4aa?", "kg4a.a", "?k.g4aa"}) {
        Type(typed);
        EXPECT_EQ(shownLine.Country, guantanamo) << typed;
        EXPECT_EQ(ExchangeField().Text, "08") << typed;
        ASSERT_FALSE(searches.empty());
        EXPECT_EQ(searches.back(), "KG4AA") << typed;
        shownLine = {};
        Exchange("09");
        EXPECT_EQ(shownLine.Country, guantanamo) << typed;
        EXPECT_EQ(shownLine.Zone, 9) << typed;
        Hit("Esc");
    }
}

TEST_F(Typed, MatchingCallsStayBesideAMark) {
    OpenNewLog(kGeneric);
    LogContact("K1ABC");
    Type("k1abc");
    const std::string matches = LogForm.CallMatchLabel1.Caption;
    EXPECT_NE(matches.find("K1ABC"), std::string::npos);
    Type("?");
    EXPECT_EQ(LogForm.CallMatchLabel1.Caption, matches);
    EXPECT_TRUE(LogForm.CallMatchLabel1.Visible);
}

TEST_F(Typed, TheLastCallIsKeptWithItsMarks) {
    OpenNewLog(kGeneric);
    Type("k1abc?");
    EXPECT_EQ(Entry.SavedCall, "K1ABC?"); // as it would be sent
    Paste("k1abc.");
    EXPECT_EQ(CallField().Text, "K1ABC.");
    EXPECT_EQ(Entry.SavedCall, "K1ABC.");
}

TEST_F(Typed, AfterAWipeOrAContactTheSameCallIsLookedUpAgain) {
    Open(CwContest(kCqWw));
    const auto wipes = {+[] { Hit("Esc"); }, +[] { Hit("Ctrl+Z"); }, +[] { Hit("Ctrl+M"); },
                        +[] { Hit("Enter"); }};
    for (const auto wipe : wipes) {
        Type("dl1abc");
        wipe();
        ASSERT_EQ(CallField().Text, "");
        searches.clear();
        Paste("DL1ABC?");
        EXPECT_EQ(searches, Texts{"DL1ABC"});
        EXPECT_EQ(ExchangeField().Text, "14");
        EXPECT_TRUE(LogForm.LblWpxCountry.Visible);
        Hit("Esc");
    }
    EXPECT_EQ(Log.NextEntry, 2);
}

TEST_F(Typed, OnAnotherBandTheSameCallTypedAgainTellsItsNeedThere) {
    Open(CwContest(kCqWw));
    Multipliers.CountryWorked[CountryLookup("DL1ABC")][3] = 1;
    Type("dl1abc");
    ExpectNeed("     DL Worked", Color::Blue);
    Hit("Ctrl+Down");
    Paste("dl1abc");
    ExpectNeed("     DL NEEDED", Color::Red);
}

TEST_F(Typed, ARememberedCallIsLookedUpOverTheSameCallWithAMark) {
    Open(CwContest(kCqWw));
    Type("dl1abc?");
    Exchange("15");
    Keyboard.QuickMem[0] = "DL1ABC";
    searches.clear();
    Hit("Alt+Left");
    EXPECT_EQ(CallField().Text, "DL1ABC");
    EXPECT_EQ(searches, Texts{"DL1ABC"});
    EXPECT_EQ(ExchangeField().Text, "15");
}

} // namespace
} // namespace zrt
