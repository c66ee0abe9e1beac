// The input of the post-contest dialog: Cabrillo files, the path that is shown, and the log that
// was open before.
#include "app/after_the_contest.h"

#include "platform/files.h"
#include "session/session_flags.h"
#include "support/file_in_memory.h"

#include <map>

namespace zrt {
namespace {

// ---- a Cabrillo file

class CabrilloFile : public AfterTheContest {
  protected:
    static void Put(const std::string &name, const std::string &contest) {
        MakeFile(name, "START-OF-LOG: 3.0\r\nCONTEST: " + contest + "\r\nEND-OF-LOG:\r\n");
    }
    static void Refuse(const std::string &name, const std::string &text,
                       const std::string &title = "") {
        Answer({BoxAnswer::Ok});
        Work(name, true, {});
        EXPECT_EQ(LastBox().Text, text) << name;
        EXPECT_EQ(LastBox().Title, title) << name;
    }
};

TEST_F(CabrilloFile, OfItOnlyTheRateSheetIsMade) {
    Outputs = AllOutputs();
    struct Row {
        const char *Contest, *Name;
        i16 ContestId;
        bool Cw;
    };
    for (const Row &row :
         {Row{"CQ-WW-CW", "CQWW", kCqWw, true}, Row{"CQ-WW-SSB", "CQWW", kCqWw, false},
          Row{"CQ-WPX-CW", "WPX", kWpx, true}, Row{"CQ-WPX-SSB", "WPX", kWpx, false},
          Row{"ARRL-DX-CW", "ARRL DX", kArrlDx, true},
          Row{"ARRL-DX-PH", "ARRL DX", kArrlDx, false}}) {
        SCOPED_TRACE(row.Contest);
        seen.clear();
        Put("DX.LOG", row.Contest);
        const std::string before = BytesOf("DX.LOG");
        Work("DX.LOG", true, {[&row] {
                 EXPECT_EQ(PostContest.Caption, " Rate Sheet Only");
                 EXPECT_EQ(PostContest.lblContest.Caption, std::string(" Contest: ") + row.Name);
                 EXPECT_EQ(Contest.ContestId, row.ContestId);
                 for (const CheckBox *box :
                      {&PostContest.chkCabrillo, &PostContest.chkNormal, &PostContest.chkExport,
                       &PostContest.chkExactFrequency})
                     EXPECT_FALSE(box->Enabled);
                 EXPECT_FALSE(PostContest.chkCabrillo.Checked);
                 EXPECT_FALSE(PostContest.chkExport.Checked);
                 EXPECT_FALSE(PostContest.chkShowRst.Visible);
                 EXPECT_FALSE(PostContest.cmdEdit.Enabled);
                 EXPECT_FALSE(PostContest.cmdUserInfo.Enabled);
                 EXPECT_TRUE(PostContest.CmdOK.Enabled);
                 const bool ticked = PostContest.chkNormal.Checked;
                 ClickControl(PostContest.lblNormal);
                 EXPECT_EQ(PostContest.chkNormal.Checked, ticked);
                 ClickOk();
             }});
        ASSERT_EQ(MadeFiles(), Names{"RateSheetOfCabrillo"});
        const PostContestState &data = seen[0].Data;
        EXPECT_TRUE(data.IsCabrilloInput);
        EXPECT_EQ(data.ContestIsCw, row.Cw);
        EXPECT_EQ(data.ContestIsSsb, !row.Cw);
        EXPECT_EQ(data.InputPath, PathOf("DX.LOG"));
        EXPECT_EQ(data.BaseName, PathOf("DX"));
        EXPECT_EQ(BytesOf("DX.LOG"), before);
    }
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(CabrilloFile, WithoutAMakerOfItsRateSheetThereIsOnlyCancel) {
    Put("DX.LOG", "CQ-WW-CW");
    Work("DX.LOG", true, {[] {
             EXPECT_FALSE(PostContest.CmdOK.Enabled);
             ClickOk();
             EXPECT_TRUE(PostContest.Visible);
             ClickCancel();
         }});
    // The dialog of a log is not limited by it.
    Open({[] {
        EXPECT_TRUE(PostContest.CmdOK.Enabled);
        EXPECT_TRUE(PostContest.cmdEdit.Enabled);
        EXPECT_TRUE(PostContest.cmdUserInfo.Enabled);
        ClickCancel();
    }});
}

TEST_F(CabrilloFile, AFailureOfItsRateSheetKeepsTheDialog) {
    Outputs = AllOutputs();
    failing = "RateSheetOfCabrillo";
    Put("DX.LOG", "CQ-WW-CW");
    Answer({BoxAnswer::Cancel});
    Work("DX.LOG", true,
         {[] {
              ClickOk();
              EXPECT_TRUE(PostContest.Visible);
          },
          ClickOk});
    EXPECT_EQ(MadeFiles(), (Names{"RateSheetOfCabrillo", "RateSheetOfCabrillo"}));
}

TEST_F(CabrilloFile, TheContentTellsWhatAFileIs) {
    // Chosen as a log, it is a Cabrillo file all the same, and the other way round.
    Put("DX.ZRT", "CQ-WW-CW");
    Work("DX.ZRT", false, {[] {
             EXPECT_TRUE(PostData.IsCabrilloInput);
             ClickCancel();
         }});
    Work("LOG.ZRT", true, {[] {
             EXPECT_FALSE(PostData.IsCabrilloInput);
             EXPECT_EQ(Contest.ContestId, kGeneric);
             ClickCancel();
         }});
}

TEST_F(CabrilloFile, WhatIsNoneIsRefused) {
    constexpr const char *kNone = "Selected Log file isn't a Cabrillo File";
    constexpr const char *kOther = "Selected Log file isn't a ARRL DX, CQWW, or WPX Cabrillo File";
    for (const char *name : {"DX.LOG", "dx.log", "Dx.Log"}) {
        MakeFile(name, "");
        Refuse(name, kNone);
        MakeFile(name, std::string(60, '\0'));
        Refuse(name, kNone);
        MakeFile(name, "CONTEST: CQ-WW-CW\r\n");
        Refuse(name, kNone);
        MakeFile(name, HeaderBytes("GEN  "));
        Refuse(name, kNone);
        Put(name, "CQ-160-CW");
        Refuse(name, kOther);
    }
    Put("DX.ZRT", "CQ-160-CW");
    Refuse("DX.ZRT", kOther);
}

TEST_F(CabrilloFile, WhatIsNeitherIsNoLog) {
    for (const std::string &bytes :
         {std::string(), std::string(25, ' '), std::string(60, '\0'), std::string("\r\n")}) {
        MakeFile("BAD.ZRT", bytes);
        Refuse("BAD.ZRT", "The file BAD.ZRT is not a ZRT log.", "File or Disk Error");
    }
    // The contest of the log before is not taken for it.
    Open({ClickCancel});
    MakeFile("BAD.ZRT", std::string(60, ' '));
    Refuse("BAD.ZRT", "The file BAD.ZRT is not a ZRT log.", "File or Disk Error");
}

// ---- the path on its label

// The files are in memory, so that no folder of this machine stands in a path.
class PathOnLabel : public AfterTheContest {
  protected:
    static std::string Shown(const std::string &path) {
        PutFileInMemory(path, "START-OF-LOG:\nCONTEST: CQ-WW-CW\n");
        Files.Exists = [](const std::string &name) { return name == memoryFile.Name; };
        Session.AppPath.clear();
        std::string shown;
        Work(path, true, {[&shown] {
                 shown = PostContest.lblLogFile.Caption;
                 ClickCancel();
             }});
        constexpr std::string_view kHead = " Log File: ";
        EXPECT_EQ(shown.substr(0, kHead.size()), kHead);
        return shown.substr(kHead.size());
    }
};

TEST_F(PathOnLabel, APathThatFitsIsWhole) {
    for (const std::string &path :
         {std::string("/DX.LOG"), std::string("/home/operator/logs/DX.LOG"),
          "/home/" + std::string(47, 'x') + "/DX.LOG",
          std::string("/home/Jörg/Überblick über die Frühjahrswettbewerbe/ÄÖÜ.LOG")}) {
        ASSERT_LE(CharactersOf(path), 60U);
        EXPECT_EQ(Shown(path), path);
    }
}

TEST_F(PathOnLabel, ADeepPathLosesTheFoldersBeforeItsName) {
    EXPECT_EQ(Shown("/home/operator/contests/of the year 2015/november/both radios/DX.LOG"),
              "/home/operator/contests/of the year 2015/november/.../DX.LOG");
    EXPECT_EQ(Shown("/home/operator/contests/of the year 2015/november 7/both radios/DX.LOG"),
              "/home/operator/contests/of the year 2015/.../DX.LOG");
    std::string deep = "/home/";
    for (int i = 0; i < 100; ++i)
        deep += "x/";
    const std::string shown = Shown(deep + "DX.LOG");
    EXPECT_LE(shown.size(), 60U);
    EXPECT_GE(shown.size(), 59U);
    EXPECT_EQ(shown.substr(0, 10), "/home/x/x/");
    EXPECT_EQ(shown.substr(shown.size() - 12), "x/.../DX.LOG");
}

TEST_F(PathOnLabel, AFlatPathAndALongNameFitAndKeepTheirEnds) {
    const std::string f(80, 'f'), n(80, 'n');
    struct Row {
        std::string Path, Beginning, End;
    };
    const std::string name = n + ".LOG";
    const std::vector<Row> rows = {{"/" + f + "/DX.LOG", "/fffffffff", "/DX.LOG"},
                                   {"/home/" + name, "/home/.../nnn", "nnn.LOG"},
                                   {"/" + name, "/.../nnn", "nnn.LOG"},
                                   {"/home/" + f + "/" + name, "/home/.../nnn", "nnn.LOG"},
                                   {"/" + f + "/" + f + "/" + name, "/fffffffff", "nnn.LOG"}};
    for (const Row &row : rows) {
        const std::string shown = Shown(row.Path);
        EXPECT_EQ(shown.size(), 60U) << shown;
        EXPECT_TRUE(shown.starts_with(row.Beginning)) << shown;
        EXPECT_TRUE(shown.ends_with(row.End)) << shown;
        EXPECT_NE(shown.find("..."), std::string::npos) << shown;
    }
}

// ---- the open log

class OpenLogBefore : public AfterTheContest {
  protected:
    static std::map<std::string, std::string> StatesOfAllControls() {
        std::map<std::string, std::string> states;
        for (const NamedForm &form : RegisteredForms()) {
            states[form.Name] = form.Record->Visible ? "open" : "hidden";
            if (form.Record == &PostContest || form.Record == &UserInfo || form.Record == &ChCoForm)
                continue;
            for (const NamedControl &named : form.Controls)
                states[form.Name + "." + named.Name] = StateOf(*named.Record);
        }
        return states;
    }
    static std::string ChangedSince(const std::map<std::string, std::string> &before) {
        std::string changed;
        for (const auto &[name, state] : StatesOfAllControls())
            if (before.at(name) != state)
                changed.append(name)
                    .append(" was ")
                    .append(before.at(name))
                    .append(" is ")
                    .append(state)
                    .append("; ");
        return changed;
    }
    static void NewGenericLog() {
        ChooseInDialog(12, [] {});
        ClickControl(LogForm.mnuFileNew);
        Devices.Operator = nullptr;
        ASSERT_EQ(Log.LogState, kTemporaryName);
    }
};

TEST_F(OpenLogBefore, AnUnnamedLogIsGoneWithNoEvenIfNoOtherIsChosen) {
    const auto before = StatesOfAllControls();
    NewGenericLog();
    LogContact("K1ZZ", "ANN");
    EXPECT_NE(ChangedSince(before), "");
    Answer({BoxAnswer::No});
    Devices.FileAnswers = {std::nullopt};
    ClickControl(LogForm.mnuFilePostContest);
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_EQ(Log.NextEntry, 1);
    EXPECT_FALSE(FileExists(kTempLog));
    EXPECT_FALSE(Session.ReplacingLog);
    EXPECT_EQ(ActiveForm(), &LogForm);
    EXPECT_EQ(ChangedSince(before), "");
    // Nothing is asked about it any more, and a new log begins with its first contact.
    NewGenericLog();
    LogContact("W1AW", "HIRAM");
    EXPECT_EQ(Devices.Boxes.size(), 1U);
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Log.LogEntries[1].Callsign.Trimmed(), "W1AW");
    EXPECT_EQ(Hex(BytesOf(kTempLog)).size(), 120U * 3 - 1);
}

TEST_F(OpenLogBefore, AfterTheDialogTheWindowsAreThoseOfNoLog) {
    const auto before = StatesOfAllControls();
    NewGenericLog();
    LogContact("K1ZZ", "ANN");
    Answer({BoxAnswer::No});
    Open({[] {
        EXPECT_FALSE(LogForm.Visible);
        ClickCancel();
    }});
    EXPECT_EQ(Log.NextEntry, 1);
    EXPECT_EQ(ChangedSince(before), "");
    EXPECT_EQ(LogForm.lblLog.Caption, "");
    NewGenericLog();
    LogContact("W1AW", "HIRAM");
    EXPECT_EQ(Log.NextEntry, 2);
}

TEST_F(OpenLogBefore, ANamedLogIsWorkedOnWithAllItsContacts) {
    Outputs = AllOutputs();
    Devices.FileAnswers = {"LOG.ZRT"};
    ClickControl(LogForm.mnuFileOpen);
    ASSERT_EQ(Log.NextEntry, 3);
    LogContact("N1TOM", "TOM");
    Answer({BoxAnswer::No});
    Open({OnlyNormalFiles});
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen[0].Counted, 3);
    EXPECT_EQ(Devices.Boxes.size(), 1U) << "but for the kind of the log nothing is asked";
}

TEST_F(OpenLogBefore, TheQuestionAboutAnUnnamedLogHasThreeAnswers) {
    NewGenericLog();
    LogContact("K1ZZ", "ANN");
    const std::string bytes = BytesOf(kTempLog);
    Answer({BoxAnswer::Cancel});
    ClickControl(LogForm.mnuFilePostCabrillo);
    EXPECT_EQ(LastBox().Text, "Save current log file?");
    EXPECT_EQ(LastBox().Title, "Save Current Log?");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNoCancel);
    EXPECT_TRUE(Devices.FileDialogs.empty());
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(bytes));
    // Saved: it is the same log in its own file, and the choice of another may be cancelled.
    Answer({BoxAnswer::Yes});
    Devices.FileAnswers = {"MINE.ZRT", std::nullopt};
    ClickControl(LogForm.mnuFilePostCabrillo);
    EXPECT_EQ(Hex(BytesOf("MINE.ZRT")), Hex(bytes));
    EXPECT_EQ(Log.LogState, kUsersName);
    EXPECT_EQ(Log.NextEntry, 2);
}

std::string savedCall; // as the maker of the rate sheet found it

TEST_F(CabrilloFile, ItsRateSheetStartsFromAnEmptySession) {
    savedCall = "none made";
    Outputs.RateSheetOfCabrillo = [] {
        savedCall = Entry.SavedCall;
        return 0;
    };
    Put("DX.LOG", "CQ-WW-CW");
    Work("DX.LOG", true, {[] {
             Entry.SavedCall = "K1ZZ";
             ClickOk();
         }});
    EXPECT_EQ(savedCall, "");
}

} // namespace
} // namespace zrt
