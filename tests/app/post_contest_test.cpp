// The post-contest dialog: what it offers, in which order it works, and what it leaves behind.
#include "app/after_the_contest.h"

#include "platform/files.h"
#include "platform/program.h"

#include <array>

namespace zrt {
namespace {

// ---- the file dialog

TEST_F(AfterTheContest, LogsAndCabrilloFilesHaveTheirOwnFileDialogs) {
    Settings.OpenFilePath = PathOf("logs");
    Devices.FileAnswers = {std::nullopt, std::nullopt};
    ClickControl(LogForm.mnuFilePostContest);
    ClickControl(LogForm.mnuFilePostCabrillo);
    ASSERT_EQ(Devices.FileDialogs.size(), 2U);
    const FileDialog &logs = Devices.FileDialogs[0], &cabrillos = Devices.FileDialogs[1];
    EXPECT_EQ(logs.Title, "Select ZRT Log File to Process");
    EXPECT_EQ(logs.Filter, "ZRT logs (*.ZRT)|*.ZRT");
    EXPECT_EQ(logs.DefaultExtension, "ZRT");
    EXPECT_EQ(cabrillos.Title, "Select ARRL DX, CQWW or WPX Cabrillo Log File to Process");
    EXPECT_EQ(cabrillos.Filter, "Cabrillo logs (*.LOG)|*.LOG");
    EXPECT_EQ(cabrillos.DefaultExtension, "LOG");
    for (const FileDialog &dialog : Devices.FileDialogs) {
        EXPECT_FALSE(dialog.Save);
        EXPECT_EQ(dialog.Folder, PathOf("logs"));
    }
    EXPECT_FALSE(PostContest.Visible);
    EXPECT_EQ(ActiveForm(), &LogForm);
}

// ---- the boxes

TEST_F(AfterTheContest, WhatNobodyMakesIsNotOffered) {
    Open({[] {
        EXPECT_TRUE(PostContest.chkCabrillo.Checked);
        EXPECT_EQ(StateOf(PostContest.chkCabrillo), "VE");
        EXPECT_EQ(StateOf(PostContest.chkNormal), "V");
        EXPECT_EQ(StateOf(PostContest.lblNormal), "V");
        EXPECT_EQ(StateOf(PostContest.chkExport), "V");
        ClickControl(PostContest.lblNormal);
        PostContest.lblNormal.Click();
        EXPECT_FALSE(PostContest.chkNormal.Checked);
        ClickControl(PostContest.chkNormal);
        EXPECT_FALSE(PostContest.chkNormal.Checked);
        ClickCancel();
    }});
}

TEST_F(AfterTheContest, WhatIsMadeIsOfferedAndNotTicked) {
    Outputs = AllOutputs();
    Open({[] {
        for (const CheckBox *box : {&PostContest.chkNormal, &PostContest.chkExport,
                                    &PostContest.chkExactFrequency, &PostContest.chkShowRst}) {
            EXPECT_EQ(StateOf(*box), "VE");
            EXPECT_FALSE(box->Checked);
        }
        EXPECT_TRUE(PostContest.chkCabrillo.Checked);
        EXPECT_EQ(PostContest.lblNormal.Caption, "Normal Summary, Log and Dupe Files");
        ClickCancel();
    }});
    Outputs = {};
    Outputs.AsciiLog = AllOutputs().AsciiLog;
    Open({[] {
        EXPECT_TRUE(PostContest.chkNormal.Enabled);
        EXPECT_TRUE(PostContest.lblNormal.Enabled);
        EXPECT_FALSE(PostContest.chkExport.Enabled);
        ClickCancel();
    }});
    Outputs = {};
    Outputs.Adif = AllOutputs().Adif;
    Open({[] {
        EXPECT_FALSE(PostContest.chkNormal.Enabled);
        EXPECT_TRUE(PostContest.chkExport.Enabled);
        ClickCancel();
    }});
    EXPECT_TRUE(seen.empty());
}

TEST_F(AfterTheContest, AClickOnTheLabelOfTheNormalFilesTicksTheirBox) {
    Outputs = AllOutputs();
    Open({[] {
        for (const bool ticked : {true, false, true}) {
            ClickControl(PostContest.lblNormal);
            EXPECT_EQ(PostContest.chkNormal.Checked, ticked);
        }
        ClickCancel();
    }});
}

TEST_F(AfterTheContest, TheOptionsOfTheExportShowWhileItIsTickedAndAreClearedWithIt) {
    Outputs = AllOutputs();
    Open({[] {
        const auto expectOptions = [](bool shown, bool ticked) {
            for (const CheckBox *box : {&PostContest.chkOmitJas, &PostContest.chkOmitUs}) {
                EXPECT_EQ(box->Visible, shown);
                EXPECT_EQ(box->Checked, ticked);
            }
        };
        expectOptions(false, false);
        Tick(PostContest.chkExport);
        expectOptions(true, false);
        Tick(PostContest.chkOmitJas);
        Tick(PostContest.chkOmitUs);
        expectOptions(true, true);
        Tick(PostContest.chkExport, false);
        expectOptions(false, false);
        Tick(PostContest.chkExport);
        expectOptions(true, false);
        Tick(PostContest.chkOmitJas);
        ClickCancel();
    }});
    // The next dialog begins anew.
    Open({[] {
        EXPECT_FALSE(PostContest.chkExport.Checked);
        EXPECT_FALSE(PostContest.chkOmitJas.Visible);
        EXPECT_FALSE(PostContest.chkOmitJas.Checked);
        ClickCancel();
    }});
}

// ---- the outputs

TEST_F(AfterTheContest, EachBoxReachesItsOutput) {
    Outputs = AllOutputs();
    PutLog("WPXCW", '2');
    Open({OnlyNormalFiles});
    EXPECT_EQ(MadeFiles(), (Names{"Summary", "RateSheet", "AsciiLog", "DupeFiles"}));
    EXPECT_FALSE(FileExists("LOG.LOG"));
    const std::vector<std::pair<CheckBox *, const char *>> options = {
        {nullptr, "Adif"},
        {&PostContest.chkOmitJas, "Adif -JA"},
        {&PostContest.chkOmitUs, "Adif -US"}};
    for (const auto &[option, name] : options) {
        seen.clear();
        Open({[option = option] {
            Tick(PostContest.chkCabrillo, false);
            Tick(PostContest.chkExport);
            if (option != nullptr)
                Tick(*option);
            ClickOk();
        }});
        EXPECT_EQ(MadeFiles(), Names{name});
    }
    EXPECT_FALSE(FileExists("LOG.LOG"));
    EXPECT_EQ(LogForm.lblLog.Caption, "Files written: none");
    seen.clear();
    Open({ClickOk});
    EXPECT_EQ(MadeFiles(), Names());
    EXPECT_TRUE(FileExists("LOG.LOG"));
    EXPECT_EQ(LogForm.lblLog.Caption, "Files written: LOG.LOG in " + Devices.ProgramFolder);
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(AfterTheContest, TheFilesAreNamedInTheOrderOfWriting) {
    Outputs.Summary = [] { return WriteOutputFile(".SUM", "x"); };
    Outputs.DupeFiles = [] { return WriteOutputFile(".DUP", "x"); };
    PutLog("WPXCW", '2');
    Open({[] {
        Tick(PostContest.chkNormal);
        ClickOk();
    }});
    EXPECT_EQ(LogForm.lblLog.Caption,
              "Files written: LOG.LOG, LOG.SUM, LOG.DUP in " + Devices.ProgramFolder);
    EXPECT_TRUE(LogForm.lblLog.Visible);
}

TEST_F(AfterTheContest, EachContestHasItsOpeningCategory) {
    struct Row {
        const char *Tag, *Band, *Mode, *Power;
    };
    Outputs = AllOutputs();
    const std::array rows = {
        Row{"ARLCW", "ALL", "CW", "HIGH"},    Row{"ZRTOS", "ALL", "MIXED", "HIGH"},
        Row{"WW CW", "ALL", "CW", "HIGH"},    Row{"SP CW", "ALL", "CW", "HIGH"},
        Row{"SS9SB", "ALL", "CW", "HIGH"},    Row{"WPXCW", "ALL", "CW", "HIGH"},
        Row{"AA CW", "ALL", "CW", "HIGH"},    Row{"PAQOS", "ALL", "MIXED", "HIGH"},
        Row{"NA CW", "ALL", "CW", "LOW"},     Row{"TEN  ", "10M", "MIXED", "HIGH"},
        Row{"NEQOS", "ALL", "MIXED", "HIGH"}, Row{"GEN  ", "ALL", "MIXED", "HIGH"},
        Row{"CWOCW", "ALL", "CW", "HIGH"}};
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(kContests));
    for (const Row &row : rows) {
        SCOPED_TRACE(row.Tag);
        seen.clear();
        PutLog(row.Tag, '2');
        if (std::string(row.Tag) == "GEN  ")
            Answer({BoxAnswer::No});
        Open({OnlyNormalFiles});
        ASSERT_FALSE(seen.empty());
        EXPECT_EQ(seen[0].Data.Category,
                  (CategoryData{"SINGLE-OP", "[NONE]", row.Band, row.Mode, row.Power, "FIXED"}));
    }
}

TEST_F(AfterTheContest, TheChosenRowsAreTheCategory) {
    Outputs = AllOutputs();
    PutLog("WPXCW", '2');
    Open({[] {
        PostContest.lstClass.ListIndex = 1;
        PostContest.lstOverlay.ListIndex = 3;
        PostContest.lstBand.ListIndex = 6;
        PostContest.lstMode.ListIndex = 1;
        PostContest.lstPower.ListIndex = 2;
        PostContest.lstStation.ListIndex = 5;
        OnlyNormalFiles();
    }});
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen[0].Data.Category,
              (CategoryData{"SINGLE-OP-ASSISTED", "OVER-50", "10M", "SSB", "QRP", "SCHOOL"}));
}

TEST_F(AfterTheContest, AnOverlayOfOneContestIsNoneOfTheNext) {
    PutLog("WPXCW", '2');
    Open({[] {
        EXPECT_EQ(PostContest.lstOverlay.Rows, (Names{"[NONE]", "ROOKIE", "TB-WIRES", "OVER-50"}));
        PostContest.lstOverlay.ListIndex = 3;
        PostContest.lstClass.ListIndex = 5;
        ClickCancel();
    }});
    PutLog("WW CW", '2');
    Open({[] {
        EXPECT_EQ(PostContest.lstOverlay.Rows, (Names{"[NONE]", "ROOKIE", "CLASSIC"}));
        EXPECT_EQ(PostContest.lstOverlay.ListIndex, 0);
        EXPECT_EQ(PostContest.lstClass.ListIndex, 0);
        ClickCancel();
    }});
    PutLog("GEN  ");
    Open({[] {
        EXPECT_EQ(PostContest.lstOverlay.Rows, Names{"[NONE]"});
        ClickCancel();
    }});
}

TEST_F(AfterTheContest, AGenericLogAsksForItsReportsAndItsKind) {
    Outputs = AllOutputs();
    for (const bool showRst : {false, true}) {
        for (const bool cwt : {false, true}) {
            seen.clear();
            Answer({cwt ? BoxAnswer::Yes : BoxAnswer::No});
            WhileBoxShows([] {
                EXPECT_EQ(LastBox().Title, "Is File a CWT Contest?");
                EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNo);
                EXPECT_EQ(Recount.TotalQsos, 0) << "before the count";
                EXPECT_FALSE(UserInfo.Visible) << "after the user information";
            });
            Recount = {};
            Open({[showRst] {
                Tick(PostContest.chkShowRst, showRst);
                OnlyNormalFiles();
            }});
            ASSERT_EQ(MadeFiles(), (Names{"AsciiLog", "SummaryGeneric"}));
            for (const Seen &output : seen) {
                EXPECT_EQ(output.Data.ShowRst, showRst);
                EXPECT_EQ(output.Data.IsCwtFile, cwt);
                EXPECT_EQ(output.Counted, 2);
            }
            EXPECT_EQ(Recount.CwtMults, cwt ? 2 : 0);
        }
    }
    // Neither is true of the log of another contest that comes next.
    seen.clear();
    PutLog("WPXCW", '2');
    Open({[] {
        EXPECT_FALSE(PostContest.chkShowRst.Visible);
        OnlyNormalFiles();
    }});
    ASSERT_FALSE(seen.empty());
    EXPECT_FALSE(seen[0].Data.ShowRst);
    EXPECT_FALSE(seen[0].Data.IsCwtFile);
}

TEST_F(AfterTheContest, TheFrequencyIsAsItsBoxSays) {
    Outputs = AllOutputs();
    PutLog("WPXCW", '2');
    for (const bool exact : {true, false}) {
        seen.clear();
        Open({[exact] {
            EXPECT_FALSE(PostContest.chkExactFrequency.Checked);
            Tick(PostContest.chkExactFrequency, exact);
            OnlyNormalFiles();
        }});
        ASSERT_FALSE(seen.empty());
        EXPECT_EQ(seen[0].Data.ExactFrequency, exact);
    }
}

// ---- the user information

TEST_F(AfterTheContest, ACallThatIsPutRightReachesEveryFile) {
    Outputs = AllOutputs();
    CurrentProfile().Callsign = "W1OLD";
    PutLog("WPXCW", '2');
    Open({[] {
             Tick(PostContest.chkNormal);
             ClickOk();
         }},
         {[] {
             EXPECT_EQ(Recount.TotalQsos, 0) << "before the count";
             EXPECT_TRUE(seen.empty());
             EXPECT_FALSE(FileExists("LOG.LOG"));
             UserInfo.Textinfo[0].Text = "W1NEW";
             ClickControl(UserInfo.cmdOK);
         }});
    ASSERT_EQ(seen.size(), 4U);
    for (const Seen &output : seen) {
        EXPECT_EQ(output.Call, "W1NEW");
        EXPECT_EQ(output.Counted, 2);
    }
    EXPECT_NE(BytesOf("LOG.LOG").find("CALLSIGN: W1NEW\r\n"), std::string::npos);
}

TEST_F(AfterTheContest, CancelOfTheUserInformationGoesOnWithWhatIsStored) {
    Outputs = AllOutputs();
    CurrentProfile().Callsign = "W1OLD";
    PutLog("WPXCW", '2');
    Open({OnlyNormalFiles}, {[] {
             UserInfo.Textinfo[0].Text = "W1NEW";
             ClickControl(UserInfo.cmdCancel);
         }});
    ASSERT_EQ(seen.size(), 4U);
    EXPECT_EQ(seen[0].Call, "W1OLD");
}

TEST_F(AfterTheContest, AProgramThatEndsMakesNoFiles) {
    Outputs = AllOutputs();
    PutLog("WPXCW", '2');
    Devices.FileAnswers = {"LOG.ZRT"};
    Devices.Operator = [] {
        if (ActiveForm() == &UserInfo)
            return false; // ends the program
        Tick(PostContest.chkNormal);
        ClickOk();
        return true;
    };
    ClickControl(LogForm.mnuFilePostContest);
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(MadeFiles(), Names());
    EXPECT_FALSE(FileExists("LOG.LOG"));
}

// ---- failures

TEST_F(AfterTheContest, AFailureThatIsGivenUpKeepsTheDialogWithItsChoices) {
    Outputs = AllOutputs();
    Outputs.AsciiLog = [] {
        const int error = Note("AsciiLog");
        return error != 0 ? error : WriteOutputFile(".ASC", "x");
    };
    PutLog("WPXCW", '2');
    failing = "AsciiLog";
    Answer({BoxAnswer::Cancel});
    Open({[] {
              Tick(PostContest.chkNormal);
              Tick(PostContest.chkExport);
              Tick(PostContest.chkOmitUs);
              Tick(PostContest.chkExactFrequency);
              PostContest.lstClass.ListIndex = 2;
              PostContest.lstPower.ListIndex = 1;
              ClickOk();
              EXPECT_TRUE(PostContest.Visible);
              EXPECT_FALSE(UserInfo.Visible);
              EXPECT_EQ(MadeFiles(), (Names{"Summary", "RateSheet", "AsciiLog"}));
              EXPECT_EQ(PostData.FilesWritten, Names{"LOG.LOG"});
              EXPECT_TRUE(FileExists("LOG.LOG"));
          },
          [] {
              for (const CheckBox *box :
                   {&PostContest.chkCabrillo, &PostContest.chkNormal, &PostContest.chkExport,
                    &PostContest.chkOmitUs, &PostContest.chkExactFrequency})
                  EXPECT_TRUE(box->Checked);
              EXPECT_FALSE(PostContest.chkOmitJas.Checked);
              EXPECT_EQ(PostContest.lstClass.ListIndex, 2);
              EXPECT_EQ(PostContest.lstPower.ListIndex, 1);
              seen.clear();
              ClickOk();
              EXPECT_FALSE(PostContest.Visible);
          }});
    EXPECT_EQ(MadeFiles(), (Names{"Summary", "RateSheet", "AsciiLog", "DupeFiles", "Adif -US"}));
    EXPECT_EQ(LogForm.lblLog.Caption,
              "Files written: LOG.LOG, LOG.ASC in " + Devices.ProgramFolder);
    EXPECT_EQ(Devices.Boxes.size(), 1U);
}

TEST_F(AfterTheContest, WhatWasWrittenBeforeAFailureIsNamedAfterCancelToo) {
    Outputs = AllOutputs();
    PutLog("WPXCW", '2');
    failing = "Summary";
    Answer({BoxAnswer::Cancel});
    Open({[] {
              Tick(PostContest.chkNormal);
              ClickOk();
          },
          ClickCancel});
    EXPECT_EQ(LogForm.lblLog.Caption, "Files written: LOG.LOG in " + Devices.ProgramFolder);
    Open({ClickCancel}); // nothing was written this time
    EXPECT_EQ(LogForm.lblLog.Caption, "");
}

TEST_F(AfterTheContest, ARetryIsNoMatterOfTheDialog) {
    Outputs = AllOutputs();
    PutLog("WPXCW", '2');
    failing = "DupeFiles";
    Answer({BoxAnswer::Retry});
    Open({OnlyNormalFiles});
    EXPECT_EQ(MadeFiles(), (Names{"Summary", "RateSheet", "AsciiLog", "DupeFiles", "DupeFiles"}));
}

TEST_F(AfterTheContest, ALogThatVanishedIsToldAndTheDialogStays) {
    Outputs = AllOutputs();
    Answer({BoxAnswer::No, BoxAnswer::Cancel});
    Open({[] {
              ASSERT_EQ(Files.Remove(PathOf("LOG.ZRT")), 0);
              ClickOk();
              EXPECT_TRUE(PostContest.Visible);
          },
          ClickCancel});
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(MadeFiles(), Names());
    EXPECT_FALSE(FileExists("LOG.ZRT"));
}

TEST_F(AfterTheContest, AnExchangeThatWasMissingIsCheckedAgainstTheListsOfTheContest) {
    PutLog("ZRTIN");
    Settings.ExchangeZRTMult = "";
    Answer({BoxAnswer::Ok, BoxAnswer::No, BoxAnswer::Yes});
    Open({ClickOk,
          [] {
              EXPECT_EQ(ActiveForm()->ActiveControl, &PostContest.TextExch[0]);
              EXPECT_FALSE(PostContest.CmdOK.Enabled);
              PostContest.TextExch[0].Text = "qqq";
              ClickControl(PostContest.cmdExchOK);
              EXPECT_TRUE(PostContest.TextExch[0].Visible);
              EXPECT_EQ(PostContest.TextExch[0].SelLength, 3);
              EXPECT_EQ(Settings.ExchangeZRTMult, "");
              ClickControl(PostContest.cmdExchOK);
              EXPECT_EQ(Settings.ExchangeZRTMult, "QQQ");
              EXPECT_TRUE(PostContest.CmdOK.Enabled);
          },
          [] {
              ClickControl(PostContest.cmdEdit);
              PostContest.TextExch[0].Text = " ald ";
              ClickControl(PostContest.cmdExchOK);
              EXPECT_EQ(Settings.ExchangeZRTMult, "ALD");
              ClickOk();
          }});
    EXPECT_EQ(LogForm.lblLog.Caption, "Files written: LOG.LOG in " + Devices.ProgramFolder);
    EXPECT_EQ(Devices.Boxes.size(), 3U);
}

TEST_F(AfterTheContest, AFaultSelectsItsPieceAndStoresNothing) {
    PutLog("SS9CW");
    struct Wrong {
        Names Texts;
        std::size_t Field;
    };
    for (const Wrong &row :
         {Wrong{{"x", "k1zz", "72", "ct"}, 0}, Wrong{{"b", "k1zz", "72", "zz"}, 3},
          Wrong{{"b", "k1zz", "7", "ct"}, 2}}) {
        Answer({BoxAnswer::Ok});
        Open({[&row] {
            ClickControl(PostContest.cmdEdit);
            for (std::size_t i = 0; i < 4; ++i)
                PostContest.TextExch[i].Text = row.Texts[i];
            ClickControl(PostContest.cmdExchOK);
            const TextBox &field = PostContest.TextExch[row.Field];
            EXPECT_EQ(PostContest.ActiveControl, &field);
            EXPECT_EQ(field.SelStart, 0);
            EXPECT_EQ(field.SelLength, static_cast<int>(field.Text.size()));
            EXPECT_EQ(LastBox().Buttons, BoxButtons::Ok);
            EXPECT_EQ(Settings.ExchangeSSPrec, "A");
            EXPECT_EQ(Settings.ExchangeSSCheck, "72");
            EXPECT_EQ(Settings.ExchangeSSSection, "CT");
            ClickControl(PostContest.cmdExchCancel);
            ClickCancel();
        }});
    }
}

} // namespace
} // namespace zrt
