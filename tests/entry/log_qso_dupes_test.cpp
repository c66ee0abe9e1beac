// The verdict of the duplicate check on its way from the fields to the points: what the window
// shows of it, what a wiped entry and a county line make of it. All modules are the real ones.
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/multipliers.h"
#include "platform/keys.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

constexpr i16 k20Cw = 3, k40Cw = 4;

class VerdictOfTheCheck : public ProgramTest {
  protected:
    static void GoOn(std::string_view call) {
        SetFieldText(CallField(), std::string(call));
        SetFocus(CallField());
        Press(kKeySpace);
    }
    static void Worked(std::string_view call, std::string_view exchange) {
        LogContact(call, exchange);
        ASSERT_EQ(Logged().Callsign.Trimmed(), call);
    }
    static const LogEntry &Logged() { return Log.LogEntries[Log.NextEntry - 1]; }
    static std::string PointsOfLast() { return std::string(Logged().Points.Whole()); }
    static void ExpectDupe(bool dupe) {
        EXPECT_EQ(Entry.DupeFlag, dupe);
        EXPECT_EQ(CallField().ForeColor, dupe ? Color::Red : Color::Black);
        EXPECT_EQ(LogForm.lblDupe.Visible, dupe);
        EXPECT_EQ(LogForm.lblExchange.Visible, !dupe);
    }
};

// ---- a wiped entry

TEST_F(VerdictOfTheCheck, IsFoundAgainForAPortableDupeThatWasWiped) {
    for (const int wipe : {static_cast<int>(kKeyEsc), static_cast<int>('Z')}) {
        SCOPED_TRACE(wipe);
        OpenNewLog(kCqWw);
        Worked("DL1ABC", "14");
        GoOn("DL1ABC/P");
        ExpectDupe(true);
        Press(wipe, wipe == 'Z' ? kAlt : 0);
        ExpectDupe(false);
        GoOn("DL1ABC/P");
        ExpectDupe(true);
        EXPECT_TRUE(LogForm.lblDupe.Caption.starts_with("DUPE - "));
        Press(kKeyEnter);
        EXPECT_EQ(Log.NextEntry, 3);
        EXPECT_EQ(PointsOfLast(), "0");
    }
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(VerdictOfTheCheck, IsFoundAgainForAPortableDupeThatWasRemembered) {
    for (const i16 contest : {kGeneric, kSs}) {
        SCOPED_TRACE(contest);
        OpenNewLog(contest);
        LogEntry entry = MakeEntry("W1AW", -21155, 1437, k20Cw, '2');
        Log.LogEntries[1] = entry;
        RecordCall(1, "W1AW", k20Cw, PortableTie::Left);
        Log.NextEntry = 2;
        GoOn("W1AW/4");
        ExpectDupe(true);
        SetFocus(CallField());
        Press('M', kAlt);
        ExpectDupe(false);
        Press(kKeyLeft, kAlt);
        ASSERT_EQ(CallField().Text, "W1AW/4");
        Press(kKeySpace);
        ExpectDupe(true);
    }
}

TEST_F(VerdictOfTheCheck, TellsOfThePortableStationAgainInAnEntryThatIsNew) {
    OpenNewLog(kCqWw);
    Worked("DL1ABC", "14");
    CurrentBand() = k40Cw;
    Answer({BoxAnswer::Ok});
    GoOn("DL1ABC/P");
    EXPECT_TRUE(LogForm.Modelabel.Visible);
    Press(kKeyEsc);
    EXPECT_FALSE(LogForm.Modelabel.Visible);
    Answer({BoxAnswer::Ok});
    GoOn("DL1ABC/P");
    EXPECT_EQ(Devices.Boxes.size(), 2U);
    EXPECT_TRUE(LogForm.Modelabel.Visible);
    SetFocus(CallField());
    Press(kKeySpace); // the same entry: it has been told
    EXPECT_EQ(Devices.Boxes.size(), 2U);
}

TEST_F(VerdictOfTheCheck, TellsOfThePortableStationAgainWhenItsContactWasKilled) {
    OpenNewLog(kCqWw);
    Worked("DL1ABC", "14");
    CurrentBand() = k40Cw;
    Answer({BoxAnswer::Ok});
    GoOn("DL1ABC/P");
    Press(kKeyEnter);
    ASSERT_EQ(Log.NextEntry, 3);
    Answer({BoxAnswer::Yes, BoxAnswer::Ok});
    ClickControl(LogForm.mnuEditKillLast);
    GoOn("DL1ABC/P");
    EXPECT_EQ(LastBox().Title, "Portable Station?");
}

// ---- Enter in the call field

TEST_F(VerdictOfTheCheck, IsShownForACallThatEnterHasFound) {
    OpenNewLog(kCqWw);
    Worked("K1ZZ", "5");
    Worked("K1AA", "5");
    Fill("K1ZZ", "99"); // never left the call field, and the zone is refused
    Answer({BoxAnswer::Ok});
    Press(kKeyEnter);
    EXPECT_EQ(LastBox().Title, "Invalid Zone");
    ExpectDupe(true);
    EXPECT_EQ(LogForm.lblDupe.Caption, "DUPE - 1/15/15  1437Z  My #1");
    Fill("K1AA", "99");
    Answer({BoxAnswer::Ok});
    Press(kKeyEnter);
    ExpectDupe(true);
    EXPECT_EQ(LogForm.lblDupe.Caption, "DUPE - 1/15/15  1437Z  My #2");
}

TEST_F(VerdictOfTheCheck, IsTakenBackForACallThatEnterHasNotFound) {
    OpenNewLog(kCqWw);
    Worked("K1ZZ", "5");
    GoOn("K1ZZ");
    ExpectDupe(true);
    Fill("K1ZY", "99");
    Answer({BoxAnswer::Ok});
    Press(kKeyEnter);
    EXPECT_EQ(CallField().Text, "K1ZY");
    ExpectDupe(false);
}

TEST_F(VerdictOfTheCheck, OfACutCallReplacesThatOfTheWhole) {
    OpenNewLog(kCqWw);
    Worked("K1ZZ", "5");
    Devices.Boxes.clear();
    std::string shown;
    Color color{};
    // The contact can't be written: its box shows the window as it is in the middle.
    GoOn("K1ZZ14");
    ExpectDupe(false);
    Devices.Disk = DiskMode::Full;
    WhileBoxShows([&] {
        shown = LogForm.lblDupe.Visible ? LogForm.lblDupe.Caption : "";
        color = CallField().ForeColor;
    });
    Answer({BoxAnswer::Cancel});
    Press(kKeyEnter);
    EXPECT_EQ(shown, "DUPE - 1/15/15  1437Z  My #1");
    EXPECT_EQ(color, Color::Black); // it is logged already
    EXPECT_EQ(PointsOfLast(), "0");
}

TEST_F(VerdictOfTheCheck, IsFoundForACallThatIsCutBehindTheCheck) {
    OpenNewLog(kGeneric);
    Worked("VP2E/K1ABC", "ONE");
    GoOn("VP2E/K1ABCD");
    ExpectDupe(false);
    SetFieldText(ExchangeField(), "TWO");
    Answer({BoxAnswer::Yes});
    Press(kKeyEnter);
    EXPECT_EQ(Logged().Callsign.Trimmed(), "VP2E/K1ABC");
    EXPECT_EQ(PointsOfLast(), "0");
    EXPECT_EQ(Devices.Boxes.size(), 1U);
}

TEST_F(VerdictOfTheCheck, IsFoundForABandThatHasChangedBehindTheCheck) {
    OpenNewLog(kCqWw);
    Worked("DL1ABC", "14");
    Worked("DL2ABC", "14");
    CurrentBand() = k40Cw;
    GoOn("DL1ABC");
    ExpectDupe(false);
    CurrentBand() = k20Cw; // a radio was turned
    Press(kKeyEnter);
    EXPECT_EQ(PointsOfLast(), "0");
    GoOn("DL2ABC");
    ExpectDupe(true);
    CurrentBand() = k40Cw;
    Press(kKeyEnter);
    EXPECT_EQ(PointsOfLast(), "3");
}

// ---- county lines

class CountyLine : public VerdictOfTheCheck {
  protected:
    CountyLine() {
        ContestState contest = CwContest(kZrt);
        contest.StationInState = true; // where any county is taken
        OpenNewLog(contest);
    }
    enum class By { Enter, Add, EnterInTheCall };
    static void Store(By way) {
        if (way == By::Add) {
            ClickControl(LogForm.AddButton);
            return;
        }
        if (way == By::EnterInTheCall)
            SetFocus(CallField());
        Press(kKeyEnter);
    }
    static void SecondCounty(const char *exchange, By way) {
        ASSERT_EQ(LogForm.ActiveControl, &ExchangeField());
        SetFieldText(ExchangeField(), exchange);
        Store(way);
    }
    static std::string AllPoints() {
        std::string points;
        for (i16 n = 1; n < Log.NextEntry; ++n)
            points += Log.LogEntries[n].Points.Whole();
        return points;
    }
    static constexpr By kWays[] = {By::Enter, By::Add, By::EnterInTheCall};
};

TEST_F(CountyLine, OfAFreshStationHasThePointsOfItsLastCounty) {
    i16 number = 1;
    for (const By way : kWays) {
        SCOPED_TRACE(static_cast<int>(way));
        const std::string call = "K" + std::to_string(number) + "ZZ";
        Worked(call, "5 AAAA/");
        EXPECT_EQ(PointsOfLast(), "0");
        EXPECT_EQ(CallField().Text, call);
        ExpectDupe(false);
        SecondCounty("5 BBBB/", way);
        EXPECT_EQ(PointsOfLast(), "0");
        SecondCounty("5 CCCC", way);
        EXPECT_EQ(PointsOfLast(), "3");
        EXPECT_EQ(CallField().Text, "");
        number = static_cast<i16>(number + 1);
    }
    EXPECT_EQ(AllPoints(), "003003003");
}

TEST_F(CountyLine, OfADupeHasNoPointsAtAll) {
    Worked("W1AW", "5 AAAA");
    for (const By way : kWays) {
        SCOPED_TRACE(static_cast<int>(way));
        GoOn("W1AW");
        ExpectDupe(true);
        SetFieldText(ExchangeField(), "5 BBBB/");
        Press(kKeyEnter);
        EXPECT_TRUE(Entry.DupeFlag);
        EXPECT_EQ(CallField().ForeColor, Color::Red);
        SecondCounty("5 CCCC", way);
        EXPECT_FALSE(Entry.DupeFlag);
        EXPECT_EQ(CallField().ForeColor, Color::Black);
    }
    EXPECT_EQ(AllPoints(), "3000000");
}

TEST_F(CountyLine, EndsWithAWipe) {
    Worked("W1AW", "5 AAAA/");
    Press(kKeyEsc);
    GoOn("W1AW"); // an entry of its own now, and the county that was stored is there
    ExpectDupe(true);
    SetFieldText(ExchangeField(), "5 BBBB");
    Press(kKeyEnter);
    EXPECT_EQ(PointsOfLast(), "0");
}

TEST_F(CountyLine, EndsWithItsLastCounty) {
    Worked("W1AW", "5 AAAA/");
    SecondCounty("5 BBBB", By::Enter);
    GoOn("W1AW");
    ExpectDupe(true);
    Press(kKeyEsc);
    LogContact("W1AW", "5 CCCC/");
    EXPECT_TRUE(Entry.DupeFlag);
    SecondCounty("5 DDDD", By::Add);
    EXPECT_EQ(AllPoints(), "0300");
}

TEST_F(CountyLine, OutlivesARefusedCounty) {
    Answer({BoxAnswer::Ok});
    Worked("W1AW", "5 AAAA/");
    SecondCounty("CCCC", By::Enter); // the number is missing
    EXPECT_EQ(LastBox().Title, "Exchange Error");
    EXPECT_EQ(Log.NextEntry, 2);
    SetFocus(CallField());
    SetFocus(ExchangeField());
    ExpectDupe(false);
    SecondCounty("5 CCCC", By::Add);
    EXPECT_EQ(AllPoints(), "03");
}

TEST_F(CountyLine, DoesNotBeginWithARefusedCounty) {
    Worked("K1ZZ", "5 AAAA");
    GoOn("W1AW");
    SetFieldText(ExchangeField(), "AAAA/");
    Answer({BoxAnswer::Ok});
    Press(kKeyEnter);
    ASSERT_EQ(Log.NextEntry, 2);
    GoOn("K1ZZ"); // the station was another one
    ExpectDupe(true);
}

TEST_F(CountyLine, EndsForAnotherCall) {
    Worked("K1ZZ", "5 AAAA");
    Worked("W1AW", "5 AAAA/");
    GoOn("K1ZZ"); // typed over the call that was offered
    ExpectDupe(true);
    SetFieldText(ExchangeField(), "5 BBBB");
    Press(kKeyEnter);
    EXPECT_EQ(AllPoints(), "300");
}

TEST_F(CountyLine, EndsWhenItsCountyIsKilled) {
    Worked("W1AW", "5 AAAA");
    GoOn("W1AW");
    SetFieldText(ExchangeField(), "5 BBBB/");
    Press(kKeyEnter);
    Answer({BoxAnswer::Yes});
    ClickControl(LogForm.mnuEditKillLast);
    SetFieldText(CallField(), "W1AW"); // the fields stand as they were
    SetFieldText(ExchangeField(), "5 BBBB");
    ClickControl(LogForm.AddButton);
    EXPECT_EQ(AllPoints(), "30");
}

TEST_F(CountyLine, OfAKilledCountyIsCheckedAgain) {
    Worked("W1AW", "5 AAAA");
    GoOn("W1AW");
    SetFieldText(ExchangeField(), "5 BBBB/");
    Press(kKeyEnter);
    Answer({BoxAnswer::Yes});
    ClickControl(LogForm.mnuEditKillLast);
    GoOn("W1AW"); // not the next county of a line any more
    ExpectDupe(true);
}

TEST_F(CountyLine, GoesOnForACallWithAMark) {
    Worked("W1AW", "5 AAAA/");
    GoOn("W1AW?");
    ExpectDupe(false);
    SecondCounty("5 BBBB/", By::Enter);
    SecondCounty("5 CCCC", By::Add);
    EXPECT_EQ(AllPoints(), "003");
}

TEST_F(VerdictOfTheCheck, KnowsNoCountyLineButInZrt) {
    OpenNewLog(kPaqp);
    Multipliers.PaqpMults = {MultRow{{"ADA"}}};
    LogContact("K3AAA", "5 ADA/");
    ASSERT_EQ(Log.NextEntry, 2);
    GoOn("K3AAA");
    ExpectDupe(true);
}

TEST_F(CountyLine, IsJudgedAnewOnAnotherBand) {
    Worked("W1AW", "5 AAAA/");
    Press(kKeyDown, kCtrl);
    ASSERT_NE(CurrentBand(), k20Cw);
    ExpectDupe(false);
    Press(kKeyUp, kCtrl);
    ASSERT_EQ(CurrentBand(), k20Cw);
    ExpectDupe(false); // of itself
    SecondCounty("5 BBBB", By::Enter);
    EXPECT_EQ(AllPoints(), "03");
}

} // namespace
} // namespace zrt
