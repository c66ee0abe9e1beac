// The order of the outputs after a contest, and what becomes of it when one of them fails.
#include "postcontest/driver.h"

#include "entry/multipliers.h"
#include "platform/files.h"
#include "postcontest/post_contest.h"
#include "postcontest/recount.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/settings.h"
#include "support/program.h"

#include <algorithm>
#include <cerrno>

namespace zrt {
namespace {

using Names = std::vector<std::string>;

constexpr i32 kNotCounted = -1;
const Names kNormalOfContest = {"Summary", "RateSheet", "AsciiLog", "DupeFiles"};
const Names kNormalOfGeneric = {"AsciiLog", "SummaryGeneric"};

Names made;              // the outputs in the order of their calls
std::vector<i32> counts; // what the recount had counted at each call
std::string failing;     // the output that fails
int failures = 0;        // so often
int failure = EACCES;    // with this error

int Note(const std::string &name) {
    made.push_back(name);
    counts.push_back(Recount.TotalQsos);
    if (name != failing || failures == 0)
        return 0;
    --failures;
    return failure;
}

int NoteAdif(bool omitJas, bool omitUs) {
    return Note(std::string("Adif") + (omitJas ? " -JA" : "") + (omitUs ? " -US" : ""));
}

OutputHooks AllOutputs() {
    return {[] { return Note("Summary"); },
            [] { return Note("SummaryGeneric"); },
            [] { return Note("RateSheet"); },
            [] { return Note("AsciiLog"); },
            [] { return Note("DupeFiles"); },
            NoteAdif,
            [] { return Note("RateSheetOfCabrillo"); }};
}

// A log LOG.ZRT with two contacts and one that is void, taken as the dialog takes it.
class Driver : public ProgramTest {
  protected:
    Driver() {
        made.clear();
        counts.clear();
        failing.clear();
        failures = 0;
        failure = EACCES;
        EXPECT_EQ(ReadSettings(), 0);
        Settings.ExchangeCQWWMult = "05";
        Take("WPXCW", 3);
        Outputs = AllOutputs();
    }

    static void Take(const std::string &tag, int entries, char qthOption = '2') {
        std::string bytes = HeaderBytes(tag, qthOption) + std::string(34, '\0');
        for (int i = 0; i < entries; ++i)
            bytes += EntryBytes(MakeEntry(i == 1 ? "VOID" : "W1AW", -21155, 5, 3, '1'));
        MakeFile("LOG.ZRT", bytes);
        Log.LogFileName = PathOf("LOG.ZRT");
        ASSERT_EQ(ReadHeader(Log.LogFileName, Log.KeptHeader), 0);
        Log.Header = Log.KeptHeader;
        Log.CurrentFormat = true;
        TakeContest(Log.KeptHeader);
        SetUpContest();
        TakePostContestLog();
        Recount.TotalQsos = kNotCounted;
    }
    static void ExpectErrorBoxes(std::size_t number, const std::string &text) {
        ASSERT_EQ(Devices.Boxes.size(), number);
        for (const ShownBox &shown : Devices.Boxes) {
            EXPECT_EQ(shown.Box.Title, "File or Disk Error");
            EXPECT_EQ(shown.Box.Text, text);
            EXPECT_EQ(shown.Box.Buttons, BoxButtons::RetryCancel);
        }
    }
    static constexpr FileChoices kAll = {true, true, true, false, false};
};

// ---- what is offered

TEST_F(Driver, NormalFilesAreOfferedOnceAnyOfThemIsMade) {
    const OutputHooks all = AllOutputs();
    Outputs = {};
    EXPECT_FALSE(NormalFilesAreMade());
    for (auto output : {&OutputHooks::Summary, &OutputHooks::SummaryGeneric,
                        &OutputHooks::RateSheet, &OutputHooks::AsciiLog, &OutputHooks::DupeFiles}) {
        Outputs = {};
        Outputs.*output = all.*output;
        EXPECT_TRUE(NormalFilesAreMade());
    }
    Outputs = {};
    Outputs.Adif = all.Adif;
    Outputs.RateSheetOfCabrillo = all.RateSheetOfCabrillo;
    EXPECT_FALSE(NormalFilesAreMade());
}

// ---- the order

TEST_F(Driver, TheLogIsCountedEvenIfNoFileIsMade) {
    EXPECT_TRUE(MakeFiles({}));
    EXPECT_EQ(Recount.TotalQsos, 3);
    EXPECT_EQ(made, Names());
    EXPECT_EQ(PostData.FilesWritten, Names());
    EXPECT_FALSE(FileExists("LOG.LOG"));
}

TEST_F(Driver, NormalFilesAreMadeInTheirOrderAfterTheCount) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        SCOPED_TRACE(contest);
        made.clear();
        counts.clear();
        Contest.ContestId = contest;
        Recount.TotalQsos = kNotCounted;
        EXPECT_TRUE(MakeFiles({.Normal = true}));
        EXPECT_EQ(made, contest == kGeneric ? kNormalOfGeneric : kNormalOfContest);
        EXPECT_EQ(counts, std::vector<i32>(made.size(), 3));
    }
    EXPECT_FALSE(FileExists("LOG.LOG"));
}

TEST_F(Driver, TheCabrilloFileStandsBeforeAllOthersAndTheExportBehindThem) {
    static bool cabrilloWasThere;
    cabrilloWasThere = false;
    Outputs.Summary = [] {
        cabrilloWasThere = FileExists("LOG.LOG");
        return Note("Summary");
    };
    EXPECT_TRUE(MakeFiles(kAll));
    EXPECT_TRUE(cabrilloWasThere);
    Names expected = kNormalOfContest;
    expected.emplace_back("Adif");
    EXPECT_EQ(made, expected);
    EXPECT_EQ(PostData.FilesWritten, Names{"LOG.LOG"});
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(Driver, WithAllTickedAGenericLogHasItsOwnOrder) {
    Take("GEN  ", 3);
    EXPECT_TRUE(MakeFiles(kAll));
    EXPECT_EQ(made, (Names{"AsciiLog", "SummaryGeneric", "Adif"}));
    EXPECT_EQ(PostData.FilesWritten, Names{"LOG.LOG"});
}

TEST_F(Driver, OneBoxMakesItsOwnFilesAlone) {
    EXPECT_TRUE(MakeFiles({.Cabrillo = true}));
    EXPECT_EQ(made, Names());
    EXPECT_EQ(PostData.FilesWritten, Names{"LOG.LOG"});
    PostData.FilesWritten.clear();
    EXPECT_TRUE(MakeFiles({.Export = true}));
    EXPECT_EQ(made, Names{"Adif"});
    EXPECT_EQ(PostData.FilesWritten, Names());
}

TEST_F(Driver, TheExportIsToldWhatToOmit) {
    for (const bool jas : {false, true})
        for (const bool us : {false, true})
            EXPECT_TRUE(MakeFiles({.Export = true, .OmitJas = jas, .OmitUs = us}));
    EXPECT_EQ(made, (Names{"Adif", "Adif -US", "Adif -JA", "Adif -JA -US"}));
    made.clear();
    EXPECT_TRUE(MakeFiles({.OmitJas = true, .OmitUs = true}));
    EXPECT_EQ(made, Names());
}

TEST_F(Driver, WhatNobodyMakesIsLeftOut) {
    using Hook = int (*OutputHooks::*)();
    const std::vector<std::pair<Hook, const char *>> hooks = {
        {&OutputHooks::Summary, "Summary"},
        {&OutputHooks::RateSheet, "RateSheet"},
        {&OutputHooks::AsciiLog, "AsciiLog"},
        {&OutputHooks::DupeFiles, "DupeFiles"}};
    for (const auto &[hook, name] : hooks) {
        made.clear();
        Outputs = AllOutputs();
        Outputs.*hook = nullptr;
        Names expected = kNormalOfContest;
        expected.emplace_back("Adif");
        expected.erase(std::find(expected.begin(), expected.end(), name));
        EXPECT_TRUE(MakeFiles({.Normal = true, .Export = true}));
        EXPECT_EQ(made, expected);
    }
    Outputs = {};
    made.clear();
    EXPECT_TRUE(MakeFiles(kAll));
    EXPECT_TRUE(MakeCabrilloRateSheet());
    EXPECT_EQ(made, Names());
}

TEST_F(Driver, OfACabrilloFileTheRateSheetIsMadeAlone) {
    EXPECT_TRUE(MakeCabrilloRateSheet());
    EXPECT_EQ(made, Names{"RateSheetOfCabrillo"});
    EXPECT_EQ(Recount.TotalQsos, kNotCounted);
}

// ---- failures

TEST_F(Driver, ARetryMakesTheFileThatFailedAndGoesOn) {
    Names expected = kNormalOfContest;
    expected.emplace_back("Adif");
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(expected[i]);
        made.clear();
        Devices.Boxes.clear();
        failing = expected[i];
        failures = 2;
        Names withRetries = expected;
        withRetries.insert(withRetries.begin() + static_cast<std::ptrdiff_t>(i), 2, expected[i]);
        Answer({BoxAnswer::Retry, BoxAnswer::Retry});
        EXPECT_TRUE(MakeFiles(kAll));
        EXPECT_EQ(made, withRetries);
        ExpectErrorBoxes(2, "Permission denied");
    }
}

TEST_F(Driver, CancelEndsTheRunAndWhatCameBeforeStays) {
    Names expected = kNormalOfContest;
    expected.emplace_back("Adif");
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(expected[i]);
        made.clear();
        Devices.Boxes.clear();
        PostData.FilesWritten.clear();
        failing = expected[i];
        failures = 2;
        failure = ENOSPC;
        Answer({BoxAnswer::Retry, BoxAnswer::Cancel});
        EXPECT_FALSE(MakeFiles(kAll));
        Names until(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(i) + 1);
        until.push_back(expected[i]);
        EXPECT_EQ(made, until);
        ExpectErrorBoxes(2, "No space left on device");
        EXPECT_EQ(PostData.FilesWritten, Names{"LOG.LOG"});
        EXPECT_TRUE(FileExists("LOG.LOG"));
    }
}

TEST_F(Driver, CancelInAGenericLogEndsTheRunToo) {
    Take("GEN  ", 3);
    failing = "AsciiLog";
    failures = 1;
    Answer({BoxAnswer::Cancel});
    EXPECT_FALSE(MakeFiles(kAll));
    EXPECT_EQ(made, Names{"AsciiLog"});
}

TEST_F(Driver, ACabrilloFileThatFailsEndsTheRunBeforeAllOthers) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    EXPECT_FALSE(MakeFiles(kAll));
    EXPECT_EQ(made, Names());
    EXPECT_EQ(PostData.FilesWritten, Names());
    EXPECT_FALSE(FileExists("LOG.LOG"));
    Answer({BoxAnswer::Retry});
    WhileBoxShows([] { Devices.Disk = DiskMode::Ok; });
    EXPECT_TRUE(MakeFiles(kAll));
    EXPECT_EQ(made.size(), 5U);
    EXPECT_EQ(PostData.FilesWritten, Names{"LOG.LOG"});
    ExpectErrorBoxes(2, "No space left on device");
}

TEST_F(Driver, ALogThatCanNotBeReadEndsTheRun) {
    const std::string bytes = BytesOf("LOG.ZRT");
    ASSERT_EQ(Files.Remove(PathOf("LOG.ZRT")), 0);
    Answer({BoxAnswer::Cancel});
    EXPECT_FALSE(MakeFiles(kAll));
    EXPECT_EQ(made, Names());
    EXPECT_FALSE(FileExists("LOG.LOG"));
    Answer({BoxAnswer::Retry});
    WhileBoxShows([&bytes] { MakeFile("LOG.ZRT", bytes); });
    EXPECT_TRUE(MakeFiles(kAll));
    EXPECT_EQ(counts, std::vector<i32>(5, 3));
    ExpectErrorBoxes(2, "No such file or directory");
}

TEST_F(Driver, TheRateSheetOfACabrilloFileMayFailToo) {
    failing = "RateSheetOfCabrillo";
    failures = 2;
    Answer({BoxAnswer::Retry, BoxAnswer::Cancel});
    EXPECT_FALSE(MakeCabrilloRateSheet());
    EXPECT_EQ(made, (Names{"RateSheetOfCabrillo", "RateSheetOfCabrillo"}));
    failures = 1;
    Answer({BoxAnswer::Retry});
    EXPECT_TRUE(MakeCabrilloRateSheet());
    ExpectErrorBoxes(3, "Permission denied");
}

// ---- a log that is too long

TEST_F(Driver, OfALogTooLongTheOperatorIsToldOnce) {
    Take("WPXCW", kMostEntries + 2);
    static std::size_t boxesBefore;
    Outputs.Summary = [] {
        boxesBefore = Devices.Boxes.size();
        return Note("Summary");
    };
    Answer({BoxAnswer::Ok});
    EXPECT_TRUE(MakeFiles({.Normal = true}));
    EXPECT_EQ(boxesBefore, 1U) << "before the first file";
    ASSERT_EQ(Devices.Boxes.size(), 1U);
    EXPECT_EQ(LastBox().Title, "Log Full");
    EXPECT_EQ(LastBox().Text, "The log holds 9002 entries; the files tell of the first 9000.");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::Ok);
    EXPECT_EQ(made, kNormalOfContest);
    EXPECT_EQ(Recount.TotalQsos, kMostEntries);
}

TEST_F(Driver, OfAFullLogNothingIsTold) {
    Take("WPXCW", kMostEntries);
    EXPECT_TRUE(MakeFiles({.Normal = true}));
    EXPECT_TRUE(Devices.Boxes.empty());
    EXPECT_EQ(Recount.TotalQsos, kMostEntries);
}

// ---- the paths and the files

TEST_F(Driver, TheNamesOfTheFilesLackTheExtensionOfTheInput) {
    struct Row {
        const char *Input, *Base;
    };
    for (const Row &row :
         {Row{"/logs/LOG.ZRT", "/logs/LOG"}, Row{"/logs/LOG.2015.LOG", "/logs/LOG.2015"},
          Row{"a.zrt", "a"}, Row{".ZRT", ""}, Row{"ZRT", ""}, Row{"", ""}}) {
        PostData.Category.Class = "MULTI-ONE";
        PostData.ContestIsCw = PostData.IsCwtFile = PostData.ShowRst = true;
        PostData.IsCabrilloInput = PostData.ExactFrequency = true;
        PostData.FilesWritten = {"old"};
        TakeInputPath(row.Input);
        EXPECT_EQ(PostData.InputPath, row.Input);
        EXPECT_EQ(PostData.BaseName, row.Base);
        EXPECT_EQ(PostData.Category, CategoryData());
        EXPECT_FALSE(PostData.ContestIsCw || PostData.IsCwtFile || PostData.ShowRst);
        EXPECT_FALSE(PostData.IsCabrilloInput || PostData.ExactFrequency);
        EXPECT_TRUE(PostData.FilesWritten.empty());
    }
}

TEST_F(Driver, TheFlagsFollowFromTheTag) {
    struct Row {
        const char *Tag;
        char QthOption;
        bool Cw, Ssb, Power;
    };
    for (const Row &row :
         {Row{"ARLCW", '1', true, false, true}, Row{"ARLSB", '2', false, true, false},
          Row{"ARL  ", ' ', false, true, true}, Row{"WW CW", '2', true, false, false},
          Row{"SS9SB", ' ', false, true, true}, Row{"ZRTIN", ' ', true, true, true},
          Row{"PAQOS", ' ', true, true, true}, Row{"TEN  ", ' ', true, true, true},
          Row{"TENCW", ' ', true, true, true}, Row{"GENSB", ' ', true, true, true},
          Row{"NEQIN", ' ', true, true, true}, Row{"GEN  ", ' ', true, true, true},
          Row{"CWOCW", '1', true, false, true}}) {
        SCOPED_TRACE(row.Tag);
        Take(row.Tag, 0, row.QthOption);
        EXPECT_EQ(PostData.ContestIsCw, row.Cw);
        EXPECT_EQ(PostData.ContestIsSsb, row.Ssb);
        EXPECT_EQ(PostData.RcvdIsPower, row.Power);
        EXPECT_EQ(PostData.BaseName, PathOf("LOG"));
    }
}

TEST_F(Driver, FilesAreNotedInTheOrderOfWritingUnderTheirNames) {
    EXPECT_EQ(WriteOutputFile(".SUM", "one\r\n"), 0);
    EXPECT_EQ(WriteOutputFile(".BRK", ""), 0);
    EXPECT_EQ(PostData.FilesWritten, (Names{"LOG.SUM", "LOG.BRK"}));
    EXPECT_EQ(BytesOf("LOG.SUM"), "one\r\n");
    EXPECT_EQ(BytesOf("LOG.BRK"), "");
}

TEST_F(Driver, AFileThatCanNotBeWrittenIsAsItWas) {
    MakeFile("LOG.SUM", "of last year");
    for (const auto &[disk, error] : {std::pair{DiskMode::Full, ENOSPC}, {DiskMode::Broken, EIO}}) {
        Devices.Disk = disk;
        EXPECT_EQ(WriteOutputFile(".SUM", std::string(100000, 'x')), error);
        EXPECT_EQ(BytesOf("LOG.SUM"), "of last year");
        EXPECT_EQ(WriteOutputFile(".BRK", "x"), error);
        EXPECT_FALSE(FileExists("LOG.BRK"));
        EXPECT_EQ(PostData.FilesWritten, Names());
    }
    Devices.Disk = DiskMode::Ok;
    EXPECT_FALSE(HasSideFile());
}

} // namespace
} // namespace zrt
