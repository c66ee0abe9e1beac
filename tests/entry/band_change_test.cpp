// A change of band, mode or radio, and what follows it in the entry window.
#include "entry/band_change.h"

#include "app/start_up.h"
#include "entry/callsign.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "entry/old_calls.h"
#include "entry/station_hooks.h"
#include "entry/typing.h"
#include "platform/keys.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"
#include "support/program.h"

#include <gmock/gmock.h>

namespace zrt {
namespace {

std::vector<std::string> searches; // what was asked of the window of partial calls
std::vector<i16> zones;            // of the country lines
int maps = 0, chosen = 0;

constexpr i16 k20Cw = 3, k40Cw = 4, k20Phone = 11;

class BandChange : public ProgramTest {
  protected:
    BandChange() {
        StartProgram();
        searches.clear();
        zones.clear();
        maps = chosen = 0;
        Typing.PartialCheck = [](std::string_view call) { searches.emplace_back(call); };
        Typing.ShowCountryLine = [](i16, i16 zone) { zones.push_back(zone); };
        Station.RedrawMap = [] { ++maps; };
        BandHooks.BandChosen = [] { ++chosen; };
    }
    static void Type(const char *call) {
        SetFocus(CallField());
        SetFieldText(CallField(), call);
        CallTextChanged();
        searches.clear();
        zones.clear();
    }
    static void TypeExchange(const char *text) {
        SetFieldText(ExchangeField(), text);
        ExchangeTextChanged();
    }
    static const std::string &Need() { return LogForm.NeedPfxLabel.Caption; }
};

TEST_F(BandChange, ShowsTheCountryAsTheNewBandHasIt) {
    ContestState american = CwContest(kArrlDx);
    american.StationUSVE = true;
    for (const ContestState &contest : {american, CwContest(kCqWw)}) {
        OpenNewLog(contest);
        Multipliers.CountryWorked[CountryLookup("G3ZZ")][k20Cw] = 1;
        Type("G3ZZ");
        EXPECT_EQ(Need(), "     G Worked");
        ChangeBand(k40Cw);
        EXPECT_EQ(Need(), "     G NEEDED");
        EXPECT_EQ(LogForm.NeedPfxLabel.ForeColor, Color::Red);
        EXPECT_FALSE(zones.empty());
        EXPECT_EQ(searches, std::vector<std::string>{"G3ZZ"});
        ChangeBand(k20Cw);
        EXPECT_EQ(Need(), "     G Worked");
        Press(kKeyEsc);
    }
}

TEST_F(BandChange, ShowsThePrefixAsTheNewBandHasIt) {
    OpenNewLog(kAa);
    Multipliers.AaPrefixes[k20Cw] = {"JA1"};
    Type("JA1ZZ");
    EXPECT_EQ(Need(), "    JA1 Worked");
    ChangeBand(k40Cw);
    EXPECT_EQ(Need(), "    JA1 NEEDED");
}

TEST_F(BandChange, LeavesAZoneThatWasTyped) {
    OpenNewLog(kCqWw);
    Type("K6ZZ");
    EXPECT_EQ(ExchangeField().Text, "03");
    TypeExchange("4");
    zones.clear();
    ChangeBand(k40Cw);
    EXPECT_EQ(ExchangeField().Text, "4");
    EXPECT_EQ(zones.back(), 4); // the line is that of the zone that was typed
}

TEST_F(BandChange, ShowsTheBandsThatAStateIsNeededOnBehindThePriorContacts) {
    ContestState contest = CwContest(kArrlDx);
    contest.QthUSA = false;
    OpenNewLog(contest);
    LogContact("K1ZZ", "NY");
    ChangeBand(k40Cw);
    Type("K1ZZ");
    Press(kKeySpace);
    EXPECT_EQ(LogForm.Modelabel.Caption, "NY needed on  10 15 [40] 80 160");
    ChangeBand(2);
    EXPECT_TRUE(LogForm.Modelabel.Visible);
    EXPECT_EQ(LogForm.Modelabel.Caption, "NY needed on  10 [15] 40 80 160");
    EXPECT_FALSE(LogForm.PrevQSO[0].Visible);
}

TEST_F(BandChange, ShowsTheMatchesOfTheNewBandWhereTheyShow) {
    OpenNewLog(kCqWw);
    LogContact("DL1ABC", "14");
    Type("DL1");
    EXPECT_EQ(LogForm.CallMatchLabel1.Caption, "This band: DL1ABC ");
    ChangeBand(k40Cw);
    EXPECT_EQ(LogForm.CallMatchLabel1.Caption, "This band: ");
    EXPECT_EQ(LogForm.CallMatchLabel2.Caption, "Other bands: DL1ABC ");
    EXPECT_TRUE(LogForm.CallMatchLabel1.Visible);
    SetFocus(ExchangeField()); // hides them
    ChangeBand(k20Cw);
    EXPECT_FALSE(LogForm.CallMatchLabel1.Visible || LogForm.CallMatchLabel2.Visible);
}

TEST_F(BandChange, ShowsTheMatchesOfOldLogsAlone) {
    OpenNewLog(kCqWw);
    OldCalls.ShowCurrentCalls = false;
    OldCalls.ShowOldCalls = true;
    Type("DL1");
    EXPECT_TRUE(CallMatchesShow());
    ChangeBand(k40Cw);
    EXPECT_TRUE(LogForm.OldCallMatchLabel.Visible);
    HideCallMatches();
    EXPECT_FALSE(CallMatchesShow());
    OldCalls = {};
}

TEST_F(BandChange, ByTheMenuShowsTheDupeThatInsertWouldNotShowTwice) {
    OpenNewLog(kGeneric);
    ChangeBand(k20Phone);
    LogContact("K1ZZ", "A");
    ChangeBand(k20Cw);
    Type("K1ZZ");
    Press(kKeyInsert);
    EXPECT_FALSE(LogForm.lblDupe.Visible);
    ClickControl(LogForm.mnuModePhone);
    EXPECT_EQ(CurrentBand(), k20Phone);
    EXPECT_TRUE(LogForm.lblDupe.Visible);
    EXPECT_EQ(CallField().ForeColor, Color::Red);
}

TEST_F(BandChange, ChecksNothingWhereTheBandStays) {
    OpenNewLog(kNaqp);
    Type("K1ZZ");
    ChangeBand(CurrentBand());
    EXPECT_TRUE(searches.empty());
    EXPECT_EQ(maps, 0);
}

TEST_F(BandChange, SearchesNothingForAnEmptyField) {
    OpenNewLog(kGeneric);
    Type("?"); // a mark is no call
    ChangeBand(k40Cw);
    EXPECT_TRUE(searches.empty());
    EXPECT_EQ(LogForm.QSONrLabel.Caption, "QSO Nr 1    (40m CW)");
}

TEST_F(BandChange, RedrawsTheMapThatShowsTheBand) {
    for (const i16 contest : {kNaqp, kArrlDx, kGeneric}) {
        OpenNewLog(contest);
        maps = 0;
        ChangeBand(k40Cw);
        EXPECT_EQ(maps, contest == kGeneric ? 0 : 1) << contest;
        Press(kKeyF10);
        EXPECT_EQ(maps, contest == kGeneric ? 0 : 2) << contest;
        Press(kKeyF10);
    }
}

TEST_F(BandChange, IsToldToTheRadioWhenTheOperatorChoosesTheBand) {
    OpenNewLog(kGeneric);
    Press(kKeyDown, kCtrl);
    Press(kKeyRight, kCtrl);
    EXPECT_EQ(chosen, 2);
    Press(kKeyF10); // each radio keeps its band
    EXPECT_EQ(chosen, 2);
}

TEST_F(BandChange, MarksTheBandsOfBothRadiosAnewAtF10) {
    OpenNewLog(kCqWw);
    LogContact("DL1ABC", "14");
    Radios.RadioBandMode = {k20Cw, k20Cw};
    Type("DL1ABC");
    SetFocus(ExchangeField());
    EXPECT_EQ(LogForm.PrevQSO[2].ForeColor, Color::LightBlue);
    Press(kKeyF10); // the band is the same, the radio is another one
    EXPECT_EQ(LogForm.PrevQSO[2].ForeColor, Color::LightRed);
}

// ---- typed frequencies

class TypedFrequency : public BandChange {
  protected:
    static void Enter(const char *text) {
        Extensions.TypedFrequencyNoRadio = true;
        SetFocus(CallField());
        TypeText(text);
        Press(kKeyEnter);
    }
};

TEST_F(TypedFrequency, IsKeptForTheRadioThatLogs) {
    OpenNewLog(kGeneric);
    Radios.LogRadio = 2;
    Enter("7025.5");
    EXPECT_EQ(CurrentBand(), k40Cw);
    EXPECT_FLOAT_EQ(Radios.RadioFrequency[1][k40Cw], 7025.5F);
    EXPECT_EQ(Radios.RadioBandMode[1], k40Cw);
    EXPECT_EQ(Radios.RadioBandMode[0], k20Cw);
    EXPECT_EQ(searches.back(), ""); // never a call
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(TypedFrequency, IsTheRadiosWhereOneRuns) {
    OpenNewLog(kGeneric);
    Radios.RadioRunning[0] = true;
    Enter("7025");
    EXPECT_EQ(CurrentBand(), k20Cw);
    EXPECT_EQ(CallField().Text, "");
    EXPECT_EQ(Requests.Made.back(), "frequency 7025000 Hz");
}

TEST_F(TypedFrequency, OfABandThatIsNotActiveIsIgnored) {
    OpenNewLog(kSprint); // 20, 40 and 80 m
    Enter("21025");
    EXPECT_EQ(CurrentBand(), k20Cw);
    EXPECT_EQ(CallField().Text, "");
    EXPECT_FLOAT_EQ(Radios.RadioFrequency[0][2], 0);
}

} // namespace
} // namespace zrt
