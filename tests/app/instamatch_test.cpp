#include "app/instamatch.h"

#include "app/partial_window.h"
#include "app/session_reset.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/old_calls.h"
#include "entry/typing.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/reference_data.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

#include <algorithm>

namespace zrt {
namespace {

class InstaMatch : public ProgramTest {
  protected:
    static void Choose(std::string_view name) { Devices.FileAnswers.emplace_back(PathOf(name)); }
    static void Select(std::string_view name) {
        Choose(name);
        SelectOldCallsFile();
    }
    static void Save(std::string_view name) {
        Choose(name);
        SaveOldCallsFile();
    }
    // "CALL=EXCHANGE CALL=EXCHANGE"
    static std::string List() {
        std::string text;
        for (const OldCallRow &row : OldCalls.Rows)
            text += (text.empty() ? "" : " ") + row.Call + "=" + row.Exchange;
        return text;
    }
    // What a log of the contest with one contact gives.
    static std::string FromLog(std::string_view tag, i16 number, const char *exchange,
                               const char *name, char qthOption = ' ') {
        LogEntry entry = MakeEntry("W1AW", DateCode(2015, 1, 15), 1437, 3, '1');
        entry.RcvdNumber = number;
        entry.RcvdExchange = exchange;
        entry.RcvdName = name;
        MakeFile("ANY.ZRT", WholeRecord(HeaderBytes(tag, qthOption)) + EntryBytes(entry));
        OldCalls = {};
        Select("ANY.ZRT");
        return OldCalls.Rows.size() == 1 && OldCalls.Rows[0].Call == "W1AW"
                   ? OldCalls.Rows[0].Exchange
                   : "(" + List() + ")";
    }
    static std::string WholeRecord(std::string header, std::size_t length = kEntryLength) {
        header.resize(length);
        return header;
    }
    static std::string LogOf(std::string_view tag, std::initializer_list<const char *> calls) {
        std::string bytes = WholeRecord(HeaderBytes(tag));
        for (const char *call : calls) {
            LogEntry entry = MakeEntry(call, DateCode(2015, 1, 15), 1437, 3, '1');
            entry.RcvdNumber = static_cast<i16>(bytes.size() / kEntryLength);
            bytes += EntryBytes(entry);
        }
        return bytes;
    }
};

// ---- logs

TEST_F(InstaMatch, TakesWhatEachContestsEntriesTell) {
    EXPECT_EQ(FromLog("AA CW", 45, "JA1", ""), "AA45");
    EXPECT_EQ(FromLog("ARLCW", 100, "DL", "", '1'), "AR100"); // a station at home receives powers
    EXPECT_EQ(FromLog("ARLCW", 0, "NY", "", '2'), "ARNY");
    EXPECT_EQ(FromLog("WW CW", 14, "DL", "", '2'), "WW14");
    EXPECT_EQ(FromLog("SS9CW", 12, "A72CT", ""), "SSA72CT");
    EXPECT_EQ(FromLog("ZRTIN", 12, "17", ""), "ZR17");
    EXPECT_EQ(FromLog("PAQOS", 12, "3", ""), "PA3");
    EXPECT_EQ(FromLog("NEQIN", 0, "61", ""), "NE61");
    EXPECT_EQ(FromLog("TEN", 0, "CT", ""), "TECT");
    EXPECT_EQ(FromLog("WPXCW", 12, "W1", "", '2'), "WP");
    EXPECT_EQ(FromLog("CWOCW", 12, "", "BOB", '1'), "CWBOB");
    EXPECT_EQ(FromLog("SP CW", 12, "7", "BOB"), "SPBOB07");
    EXPECT_EQ(FromLog("NA CW", 0, "11", "BOB"), "NABOB11");
    EXPECT_EQ(FromLog("NA CW", 0, "", "BOB"), "NABOB00");
    EXPECT_EQ(FromLog("GEN", 0, "NOTES", "BOB NY"), "GEBOB NY");
}

TEST_F(InstaMatch, LeavesTheOpenLogAlone) {
    OpenNewLog(kAa);
    LogContact("JA1ABC", "45");
    const ContestState before = Contest;
    const std::string name = Log.LogFileName;
    EXPECT_EQ(FromLog("WW CW", 14, "DL", "", '4'), "WW14");
    EXPECT_EQ(Contest.ContestId, before.ContestId);
    EXPECT_EQ(Contest.QthContinent, before.QthContinent);
    EXPECT_EQ(Contest.ActiveBands, before.ActiveBands);
    EXPECT_EQ(Log.LogFileName, name);
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Log.KeptHeader.ContestTag.Whole(), "AA CW");
}

TEST_F(InstaMatch, ReadsTheOldForms) {
    const auto old = [](std::string_view tag, auto entry, std::size_t length) {
        entry.Callsign = "W1AW";
        entry.RcvdNumber = 45;
        std::string header = HeaderBytes(tag);
        header[4] = '\0';
        const auto bytes = Encode(entry);
        MakeFile("old.zrt", WholeRecord(header, length) +
                                std::string(reinterpret_cast<const char *>(bytes.data()), length));
        OldCalls = {};
        Select("old.zrt");
        return List();
    };
    EXPECT_EQ(old("AA CW", OldEntry26(), kOld26Length), "W1AW=AA45");
    OldEntry36 entry;
    entry.RcvdName = "BOB";
    entry.RcvdExchange = "3";
    EXPECT_EQ(old("SP CW", entry, kOld36Length), "W1AW=SPBOB03");
}

TEST_F(InstaMatch, KeepsTheFirstEntryOfACallAndAddsFileToFile) {
    MakeFile("ONE.ZRT", LogOf("AA CW", {"W1AW", "K1ZZ", "W1AW"}));
    MakeFile("TWO.ZRT", LogOf("WW CW", {"W1AW", "DL1A"}));
    Select("ONE.ZRT");
    EXPECT_EQ(List(), "K1ZZ=AA2 W1AW=AA1");
    Select("TWO.ZRT");
    EXPECT_EQ(List(), "DL1A=WW2 K1ZZ=AA2 W1AW=AA1");
}

TEST_F(InstaMatch, LeavesOutWhatIsNoStation) {
    MakeFile("ANY.ZRT", LogOf("AA CW", {"VOID", "", "K", "K1 A", "K1\n", "W1AW"}));
    Select("ANY.ZRT");
    EXPECT_EQ(List(), "W1AW=AA6");
}

TEST_F(InstaMatch, RefusesWhatIsNoLog) {
    InsertOldCall("W1AW", "AA1");
    for (const std::string &bytes :
         {std::string("short"), HeaderBytes("XX CW"), std::string(200, '\0'), std::string()}) {
        MakeFile("ANY.ZRT", bytes);
        Answer({BoxAnswer::Ok});
        Select("ANY.ZRT");
        EXPECT_EQ(LastBox().Text, "The file ANY.ZRT is not a ZRT log.");
        EXPECT_EQ(List(), "W1AW=AA1");
    }
    MakeFile("ANY.ZRT", HeaderBytes("AA CW").substr(0, 25)); // the tag is whole
    Answer({BoxAnswer::Ok});
    EXPECT_FALSE(TakeOldCallsFile(PathOf("ANY.ZRT")));
    std::string incompatible = LogOf("AA CW", {"K1ZZ"});
    incompatible[16] = 1;
    MakeFile("ANY.ZRT", incompatible);
    Answer({BoxAnswer::Ok});
    Select("ANY.ZRT");
    EXPECT_EQ(List(), "W1AW=AA1");
}

TEST_F(InstaMatch, SaysWhetherItHasTakenALog) {
    MakeFile("ANY.ZRT", LogOf("AA CW", {"K1ZZ"}));
    EXPECT_TRUE(TakeOldCallsFile(PathOf("ANY.ZRT")));
    MakeFile("ANY.ZRT", HeaderBytes("AA CW"));
    EXPECT_TRUE(TakeOldCallsFile(PathOf("ANY.ZRT"))); // without contacts
    EXPECT_EQ(List(), "K1ZZ=AA1");
}

// ---- files of calls

TEST_F(InstaMatch, ReadsLinesInAnyFormOfTheirEnds) {
    MakeFile("calls.zr2", "K1ZZ AA45\r\nw1aw SSA72CT\nDL1A  GEBOB NY  \rF5X WP");
    Select("calls.zr2");
    EXPECT_EQ(List(), "DL1A=GEBOB NY F5X=WP K1ZZ=AA45 W1AW=SSA72CT");
}

TEST_F(InstaMatch, SkipsLinesWithoutCallOrExchange) {
    MakeFile("calls.zr2", "K1ZZ\r\nK1ZZ \r\nK AA45\r\n K2A AA45\r\n\r\nW1 AA1\r\n");
    Select("calls.zr2");
    EXPECT_EQ(List(), "W1=AA1");
}

TEST_F(InstaMatch, MindsNoCaseInExtensions) {
    MakeFile("CALLS.ZR2", "K1ZZ AA45\r\n");
    MakeFile("log.zrt", LogOf("AA CW", {"W1AW"}));
    Select("CALLS.ZR2");
    Select("log.zrt");
    EXPECT_EQ(List(), "K1ZZ=AA45 W1AW=AA1");
    Save("out.Zr2");
    EXPECT_EQ(BytesOf("out.Zr2"), "K1ZZ AA45\r\nW1AW AA1\r\n");
    MakeFile("calls.txt", "K1ZZ AA45\r\n");
    Answer({BoxAnswer::Ok});
    Select("calls.txt");
    EXPECT_EQ(LastBox().Text, "The file must have the extension .zrt or .zr2");
}

TEST_F(InstaMatch, WritesWhatItReadsAgain) {
    MakeFile("ONE.ZRT", LogOf("WW CW", {"W1AW", "K1ZZ", "VP2E/K1ABC", "DL1A"}));
    MakeFile("TWO.ZRT", LogOf("WPXCW", {"\xC4"
                                        "1A",
                                        "F5X"}));
    Select("ONE.ZRT");
    Select("TWO.ZRT");
    const std::string before = List();
    EXPECT_EQ(OldCalls.Rows.size(), 6U);
    Save("calls.zr2");
    OldCalls = {};
    Select("calls.zr2");
    EXPECT_EQ(List(), before);
}

TEST_F(InstaMatch, LeavesOutScrapsWhenWriting) {
    InsertOldCall("K1", "");
    InsertOldCall("K1Z", "");
    InsertOldCall("K1ZZ", "");
    InsertOldCall("K2", "A");
    Save("calls.zr2");
    EXPECT_EQ(BytesOf("calls.zr2"), "K1ZZ\r\nK2 A\r\n");
}

TEST_F(InstaMatch, AsksAsItShould) {
    Devices.FileAnswers = {std::nullopt, std::nullopt};
    Settings.OpenFilePath = "/somewhere";
    FileDialog asked;
    static FileDialog *last = nullptr;
    last = &asked;
    static auto *const file = Dialogs.File;
    Dialogs.File = [](const FileDialog &dialog) {
        *last = dialog;
        return file(dialog);
    };
    SelectOldCallsFile();
    EXPECT_EQ(asked.Title, "Open Existing Calls File or ZRT Log File");
    EXPECT_EQ(asked.Filter, ".zrt and .zr2 Files|*.zrt;*.zr2|Callsign Files (*.zr2)|*.zr2|ZRT Log "
                            "files (.zrt)|*.zrt");
    EXPECT_EQ(asked.Folder, "/somewhere");
    EXPECT_FALSE(asked.Save);
    SaveOldCallsFile();
    EXPECT_EQ(asked.Title, "Save InstaMatch File As");
    EXPECT_EQ(asked.Filter, "InstaMatch files (*.zr2)|*.zr2");
    EXPECT_EQ(asked.DefaultExtension, "zr2");
    EXPECT_TRUE(asked.Save);
    EXPECT_TRUE(Devices.Boxes.empty()); // Cancel is no error
}

TEST_F(InstaMatch, AsksBeforeItWritesOverAFile) {
    InsertOldCall("K1ZZ", "AA45");
    Answer({BoxAnswer::Ok});
    Save("calls.txt");
    EXPECT_EQ(LastBox().Text, "Output file must have the extension .zr2");
    EXPECT_FALSE(FileExists("calls.txt"));
    MakeFile("calls.zr2", "old");
    Answer({BoxAnswer::Cancel});
    Save("calls.zr2");
    EXPECT_EQ(LastBox().Text, "The selected output file " + PathOf("calls.zr2") +
                                  " already exists. OK to overwrite it?");
    EXPECT_EQ(BytesOf("calls.zr2"), "old");
    Answer({BoxAnswer::Ok});
    Save("calls.zr2");
    EXPECT_EQ(BytesOf("calls.zr2"), "K1ZZ AA45\r\n");
}

TEST_F(InstaMatch, LosesNothingOnABadDisk) {
    InsertOldCall("K1ZZ", "AA45");
    MakeFile("calls.zr2", "W1AW AA1\r\n");
    Answer({BoxAnswer::Ok, BoxAnswer::Cancel});
    Devices.Disk = DiskMode::Full;
    Save("calls.zr2");
    EXPECT_EQ(BytesOf("calls.zr2"), "W1AW AA1\r\n");
    // the disk has room again
    Answer({BoxAnswer::Ok, BoxAnswer::Retry});
    WhileBoxShows([] {});
    WhileBoxShows([] { Devices.Disk = DiskMode::Ok; });
    Save("calls.zr2");
    EXPECT_EQ(BytesOf("calls.zr2"), "K1ZZ AA45\r\n");
    Answer({BoxAnswer::Cancel});
    EXPECT_FALSE(TakeOldCallsFile(PathOf("missing.zr2")));
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(List(), "K1ZZ=AA45");
}

// ---- the limit

std::string ManyLines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "K" + std::to_string(10000 + i) + " AA1\r\n";
    return text;
}

TEST_F(InstaMatch, StopsAt9998Calls) {
    MakeFile("many.zr2", ManyLines(9997));
    Select("many.zr2");
    EXPECT_EQ(OldCalls.Rows.size(), 9997U);
    MakeFile("more.zr2", "K10000 AA1\r\nW1A AA1\r\nW1B AA1\r\nW1C AA1\r\n");
    Answer({BoxAnswer::Ok});
    Select("more.zr2");
    EXPECT_EQ(LastBox().Title, "Maximum Allowable Size of Callsign File Reached");
    EXPECT_EQ(LastBox().Text,
              "The maximum allowable number of unique callsigns (10000) has been reached at log "
              "entry number 2of the latest log file. The InstaMatch file is now full.");
    EXPECT_EQ(OldCalls.Rows.size(), 9998U);
    EXPECT_EQ(OldCalls.Rows.back().Call, "W1A");
    // The list keeps what it has, however often a file is taken.
    Answer({BoxAnswer::Ok});
    Select("more.zr2");
    EXPECT_EQ(OldCalls.Rows.size(), 9998U);
    Save("full.zr2");
    OldCalls = {};
    Answer({BoxAnswer::Ok});
    Select("full.zr2");
    EXPECT_EQ(OldCalls.Rows.size(), 9998U);
}

// ---- the window

class PartialForm : public ProgramTest {
  protected:
    PartialForm() {
        OpenNewLog(kGeneric);
        Settings.SCPEnabled = true;
    }
    static void Type(std::string_view call) {
        SetFieldText(LogForm.InData[0], std::string(call));
        LogForm.InData[0].Change();
    }
    static void AddKnownCall(std::string_view row) {
        Reference.SCPStart.push_back(static_cast<std::uint32_t>(Reference.SCPTable.size()));
        Reference.SCPTable += std::string(row) + "\n";
        ++Reference.SCPCount;
        Reference.SCPLoaded = true;
    }
    static std::string Shown() {
        std::string text;
        for (const Label &label : Partial.Match)
            text += label.Caption + "|";
        return text.substr(0, text.find_last_not_of('|') + 1);
    }
};

TEST_F(PartialForm, OpensWithTheFirstKeyAndLeavesTheKeyboard) {
    Type("");
    EXPECT_FALSE(Partial.Visible);
    Type("K");
    EXPECT_TRUE(Partial.Visible);
    EXPECT_TRUE(LogForm.mnuviewCheckPartial.Checked);
    EXPECT_EQ(ActiveForm(), &LogForm);
    EXPECT_EQ(Partial.Width, 5900);
    EXPECT_EQ(Partial.Height, 3000);
    EXPECT_EQ(Partial.Match[7].Caption, "[None]");
    EXPECT_EQ(Partial.Match[7].ForeColor, Color::Magenta);
}

TEST_F(PartialForm, StaysClosedWithoutItsSetting) {
    CloseForm(Partial);
    Settings.SCPEnabled = false;
    LogContact("K1ZZ");
    Type("K");
    EXPECT_FALSE(Partial.Visible);
    EXPECT_EQ(Shown(), "");
}

TEST_F(PartialForm, ClosingClearsSettingAndTickAndTheMenuSetsThem) {
    Type("K");
    CloseForm(Partial);
    EXPECT_FALSE(Partial.Visible);
    EXPECT_FALSE(Settings.SCPEnabled);
    EXPECT_FALSE(LogForm.mnuviewCheckPartial.Checked);
    LogContact("K1ZZ");
    SetFieldText(LogForm.InData[0], "k1");
    ClickControl(LogForm.mnuviewCheckPartial);
    EXPECT_TRUE(Partial.Visible);
    EXPECT_TRUE(Settings.SCPEnabled);
    EXPECT_TRUE(LogForm.mnuviewCheckPartial.Checked);
    EXPECT_EQ(Shown(), "K1ZZ"); // of the call that stands in the field
    ClickControl(LogForm.mnuviewCheckPartial);
    EXPECT_FALSE(Partial.Visible);
    EXPECT_FALSE(Settings.SCPEnabled);
}

TEST_F(PartialForm, ShowsDupesRedOthersBlueAndOldCallsBlack) {
    LogContact("W1AW");
    Radios.BandIndex = 4;
    LogContact("K1AW");
    OldCalls.ShowOldCalls = true;
    InsertOldCall("DL1AW", "GE");
    Type("1AW");
    EXPECT_EQ(Shown(), "K1AW|W1AW|DL1AW");
    EXPECT_EQ(Partial.Match[0].ForeColor, Color::Red);
    EXPECT_EQ(Partial.Match[1].ForeColor, Color::Blue);
    EXPECT_EQ(Partial.Match[2].ForeColor, Color::Black);
    Contest.ContestId = kSs;
    Type("1AW");
    EXPECT_EQ(Partial.Match[1].ForeColor, Color::Red);
}

TEST_F(PartialForm, ShowsKnownCallsWithoutMarksAndThoseOfTheLogBlue) {
    LogContact("K1ZZ");
    AddKnownCall("DL1ZZ");
    AddKnownCall("*K1ZZ");
    AddKnownCall("+KP4ZZ");
    Contest.SCPSelection = "ALL";
    Type("ZZ");
    EXPECT_EQ(Partial.lblSCP[0].Caption, "DL1ZZ");
    EXPECT_EQ(Partial.lblSCP[0].ForeColor, Color::Black);
    EXPECT_EQ(Partial.lblSCP[1].Caption, "K1ZZ");
    EXPECT_EQ(Partial.lblSCP[1].ForeColor, Color::Blue);
    EXPECT_EQ(Partial.lblSCP[2].Caption, "KP4ZZ");
    EXPECT_EQ(Partial.lblSCP[3].Caption, "");
    Type("QQQ");
    EXPECT_EQ(Partial.lblSCP[0].Caption, "");
    EXPECT_EQ(Shown(), "|||||||[None]");
    Type("");
    EXPECT_EQ(Shown(), "");
}

TEST_F(PartialForm, AClickPutsTheCallIntoTheField) {
    LogContact("K1ZZ");
    AddKnownCall("DL1ZZ");
    Contest.SCPSelection = "ALL";
    Type("ZZ");
    SetFocus(LogForm.InData[1]);
    ClickControl(Partial.lblSCP[0]);
    EXPECT_EQ(LogForm.InData[0].Text, "DL1ZZ");
    EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[0]);
    EXPECT_EQ(ActiveForm(), &LogForm);
    EXPECT_EQ(Shown(), "|||||||[None]"); // as for a call that was typed
    ClickControl(Partial.Match[7]);
    EXPECT_EQ(LogForm.InData[0].Text, "DL1ZZ");
    ClickControl(Partial.lblSCP[19]);
    EXPECT_EQ(LogForm.InData[0].Text, "DL1ZZ");
    Type("K1Z");
    ClickControl(Partial.Match[0]);
    EXPECT_EQ(LogForm.InData[0].Text, "K1ZZ");
}

TEST_F(PartialForm, IsEmptyAfterAContactAndInANewLog) {
    Type("K1Z");
    LogContact("K1ZZ");
    EXPECT_EQ(Shown(), "");
    EXPECT_TRUE(Partial.Visible);
    Type("K1Z");
    EXPECT_EQ(Shown(), "K1ZZ");
    Session.RescanInPlace = true;
    ResetSession();
    EXPECT_EQ(Shown(), "K1ZZ");
    Session.RescanInPlace = false;
    ResetSession();
    EXPECT_EQ(Shown(), "");
    EXPECT_TRUE(Partials.MatchEntries.empty());
    EXPECT_TRUE(Partial.Visible);
}

} // namespace
} // namespace zrt
