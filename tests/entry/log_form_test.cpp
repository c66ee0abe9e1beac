#include "entry/log_form.h"

#include "entry/band_change.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

class EntryWindow : public ProgramTest {};

TEST_F(EntryWindow, HidesEveryFieldBeforeALogIsOpen) {
    for (const NamedControl &named : RegistrationOf(LogForm).Controls) {
        if (named.Record->Kind != ControlKind::MenuItem) {
            EXPECT_FALSE(named.Record->Visible) << named.Name;
        }
    }
    for (const MenuItem *menu :
         {&LogForm.mnuView, &LogForm.mnuEdit, &LogForm.mnuRadioWK, &LogForm.mnuFileSave})
        EXPECT_FALSE(menu->Enabled) << menu->Caption;
    EXPECT_TRUE(LogForm.mnuFileNew.Enabled && LogForm.mnuFileExit.Enabled);
}

TEST_F(EntryWindow, ShowsItsFieldsWhenALogIsOpen) {
    OpenNewLog(kGeneric);
    EXPECT_TRUE(LogForm.InData[0].Visible && LogForm.InData[1].Visible);
    EXPECT_TRUE(LogForm.AddButton.Visible && LogForm.CancelButton.Visible);
    EXPECT_TRUE(LogForm.mnuView.Enabled && LogForm.mnuEdit.Enabled && LogForm.mnuFileSave.Enabled);
    EXPECT_FALSE(LogForm.mnuRadioWK.Enabled) << "a menu without entries";
    EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[0]);
    EXPECT_EQ(LogForm.CheckCall.Caption, "Call");
    EXPECT_EQ(LogForm.CheckExchange.Caption, "Exchange");
    EXPECT_FALSE(LogForm.lblDupe.Visible);
}

TEST_F(EntryWindow, TheVoiceTicksAreThoseOfTheSettings) {
    for (const bool call : {false, true})
        for (const bool exchange : {false, true}) {
            Settings.DVKSendCallEnabled = call;
            Settings.DVKSendExchEnabled = exchange;
            OpenNewLog(kGeneric);
            EXPECT_EQ(LogForm.CheckCall.Checked, call);
            EXPECT_EQ(LogForm.CheckExchange.Checked, exchange);
        }
}

TEST_F(EntryWindow, AClickOnAVoiceTickIsASetting) {
    OpenNewLog(kGeneric);
    ClickControl(LogForm.CheckCall);
    EXPECT_TRUE(Settings.DVKSendCallEnabled);
    EXPECT_FALSE(Settings.DVKSendExchEnabled);
    ClickControl(LogForm.CheckExchange);
    EXPECT_TRUE(Settings.DVKSendExchEnabled);
    ClickControl(LogForm.CheckCall);
    EXPECT_FALSE(Settings.DVKSendCallEnabled);
    OpenNewLog(kGeneric); // the next log shows them as they were left
    EXPECT_FALSE(LogForm.CheckCall.Checked);
    EXPECT_TRUE(LogForm.CheckExchange.Checked);
}

TEST_F(EntryWindow, TabGoesRoundTheTwoFieldsOnly) {
    OpenNewLog(kGeneric);
    ASSERT_TRUE(LogForm.CheckCall.Visible && LogForm.AddButton.Visible);
    for (const bool backwards : {false, true}) {
        LogForm.ActiveControl = &CallField();
        EXPECT_EQ(NextTabStop(LogForm, backwards), &ExchangeField());
        LogForm.ActiveControl = &ExchangeField();
        EXPECT_EQ(NextTabStop(LogForm, backwards), &CallField());
    }
}

TEST_F(EntryWindow, EachMenuHasALetterThatTheKeysOfTheEntryLeaveFree) {
    OpenNewLog(kGeneric);
    std::string letters;
    for (const NamedControl &named : RegistrationOf(LogForm).Controls) {
        if (named.Record->Kind != ControlKind::MenuItem)
            continue;
        const auto &item = static_cast<const MenuItem &>(*named.Record);
        if (!item.Parent.empty())
            continue;
        SCOPED_TRACE(named.Name);
        ASSERT_NE(item.Caption.find(item.AltLetter), std::string::npos);
        letters += UpperCase(std::string(1, item.AltLetter));
    }
    EXPECT_EQ(letters, "FEVORH");
    CallField().Text = "K1ABC";
    Radios.BandIndex = 3;
    for (const bool open : {true, false}) {
        if (!open)
            Log.LogState = kNoLog;
        for (const char letter : letters) {
            const KeyOutcome outcome = OfferKey(LogForm, {letter, kAlt, 0});
            EXPECT_FALSE(outcome.Used) << letter;
            EXPECT_EQ(outcome.CharCode, 0);
        }
    }
    EXPECT_EQ(CallField().Text, "K1ABC");
}

TEST_F(EntryWindow, TheModeMenuShowsTheKeyThatGoesToTheOtherMode) {
    OpenNewLog(kGeneric);
    const auto keys = [] { return LogForm.mnuModeCW.Keys + "|" + LogForm.mnuModePhone.Keys; };
    SwitchMode(false);
    EXPECT_EQ(keys(), "|Ctrl+Right");
    SwitchMode(true);
    EXPECT_EQ(keys(), "Ctrl+Left|");
}

TEST_F(EntryWindow, NamesTheExchangeAsTheContestDoes) {
    constexpr const char *kCaptions[] = {"St/Prov",  "County", "  Zone",  "Exchange", "Exchange",
                                         "Exchange", "   Age", "County",  "Exchange", " Exch",
                                         "Exchange", " Notes", "Exchange"};
    for (i16 contest = 1; contest <= kContests; ++contest) {
        OpenNewLog(contest);
        EXPECT_EQ(LogForm.lblExchange.Caption, kCaptions[contest - 1]) << contest;
    }
    ContestState american = CwContest(kArrlDx);
    american.StationUSVE = true;
    OpenNewLog(american);
    EXPECT_EQ(LogForm.lblExchange.Caption, "Power");
}

TEST_F(EntryWindow, LaysTheExchangeOutForOneWordForAnExchangeOrForNotes) {
    constexpr int kColumns[] = {8, 12, 8, 18, 24, 8, 8, 12, 18, 8, 12, 24, 18};
    for (i16 contest = 1; contest <= kContests; ++contest) {
        OpenNewLog(contest);
        EXPECT_EQ(LogForm.InData[1].Columns, kColumns[contest - 1]) << contest;
    }
}

TEST_F(EntryWindow, ShowsNumberBandAndModeOfTheNextContact) {
    OpenNewLog(kGeneric);
    struct Row {
        i16 Band;
        const char *Text;
    };
    for (const Row &row : {Row{3, "(20m CW)"}, Row{11, "(20m SSB)"}, Row{6, "(160 CW)"},
                           Row{23, "(30m CW)"}, Row{17, "(12m SSB)"}, Row{8, "(2m  CW)"}}) {
        CurrentBand() = row.Band;
        WriteQSONrLabel();
        EXPECT_EQ(LogForm.QSONrLabel.Caption, std::string("QSO Nr 1    ") + row.Text);
    }
}

TEST_F(EntryWindow, WipeForgetsTheCallAndItsState) {
    OpenNewLog(kZrt);
    Fill("K1ZZ", "59 ABC/");
    SetFocus(LogForm.InData[1]);
    LogForm.InData[0].ForeColor = Color::Red;
    LogForm.lblDupe.Visible = true;
    LogForm.lblCallsign.Visible = false;
    Entry.DupeFlag = Entry.CountyLineFlag = true;
    Entry.SavedCall = "K1ZZ";
    WipeEntry();
    EXPECT_EQ(LogForm.InData[0].Text + LogForm.InData[1].Text, "");
    EXPECT_EQ(LogForm.InData[0].ForeColor, Color::Black);
    EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[0]);
    EXPECT_FALSE(LogForm.lblDupe.Visible);
    EXPECT_TRUE(LogForm.lblCallsign.Visible);
    EXPECT_FALSE(Entry.DupeFlag || Entry.CountyLineFlag);
    EXPECT_EQ(Entry.SavedCall, "K1ZZ"); // clearing keeps it
}

TEST_F(EntryWindow, EveryControlHasANameAndAPurposeOfItsOwn) {
    std::vector<std::string> names;
    for (const NamedControl &named : RegistrationOf(LogForm).Controls) {
        EXPECT_FALSE(named.Purpose.empty()) << named.Name;
        names.push_back(named.Name);
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

// Recent files have their names from the settings.
TEST_F(EntryWindow, EveryMenuEntryHasATextAndStandsInAMenu) {
    const NamedForm &registration = RegistrationOf(LogForm);
    const auto isMenu = [&](const std::string &name) {
        return std::any_of(registration.Controls.begin(), registration.Controls.end(),
                           [&](const NamedControl &named) {
                               return named.Name == name &&
                                      named.Record->Kind == ControlKind::MenuItem &&
                                      static_cast<const MenuItem *>(named.Record)->Parent.empty();
                           });
    };
    int inMenus = 0;
    for (const NamedControl &named : registration.Controls) {
        if (named.Record->Kind != ControlKind::MenuItem)
            continue;
        const auto &item = *static_cast<const MenuItem *>(named.Record);
        EXPECT_TRUE(named.Name.starts_with("mnuFileRecent(") || !item.Caption.empty())
            << named.Name;
        if (item.Parent.empty())
            continue;
        ++inMenus;
        EXPECT_TRUE(isMenu(item.Parent)) << named.Name << " in " << item.Parent;
    }
    EXPECT_GT(inMenus, 20);
    for (const MenuItem *top : {&LogForm.mnuFile, &LogForm.mnuEdit, &LogForm.mnuView,
                                &LogForm.mnuMode, &LogForm.mnuRadioWK, &LogForm.mnuHelp})
        EXPECT_EQ(top->Parent, "") << top->Caption;
    for (const MenuItem *file :
         {&LogForm.mnuFileNew, &LogForm.mnuFileOpen, &LogForm.mnuFileSave, &LogForm.mnuFileBackup,
          &LogForm.mnuFilePostContest, &LogForm.mnuFilePostCabrillo, &LogForm.mnuFileExit})
        EXPECT_EQ(file->Parent, "mnuFile") << file->Caption;
}

} // namespace
} // namespace zrt
