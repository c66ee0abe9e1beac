// The commands of the scenario language, each where it does its work and where it is refused.
#include "headless/fake_program.h"

#include "headless/window_probe.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace zrt::test {
namespace {

bool Contains(const std::string &text, const std::string &part) {
    return text.find(part) != std::string::npos;
}

// ---- the file as a whole

TEST(Scenario, AnEmptyFileHolds) {
    EXPECT_EQ(Play("\n# nothing\n").Status, kHolds);
}

TEST(Scenario, AWrongExpectationFailsWithItsLineAndBothValues) {
    const Result result = Play("start\n\n# a comment\nexpect lblResult.Caption \"x\"\nkey Q\n");
    EXPECT_EQ(result.Status, kFails);
    EXPECT_TRUE(result.Output.ends_with("test.scn:4: expected lblResult.Caption \"x\" got \"\"\n"))
        << result.Output;
}

TEST(Scenario, NothingRunsBehindAFailure) {
    const Result result = Play("start\nexpect lblResult.Caption \"x\"\nshow lblResult\n");
    EXPECT_FALSE(Contains(result.Output, "lblResult Caption")) << result.Output;
}

TEST(Scenario, UnknownWordsAreRefused) {
    Refused("clikc cmdGo", "not known: clikc");
    Refused("echo Com3", "not known: echo");
    Refused("rightclick cmdGo", "not known: rightclick");
    Refused("\"key\" A", "not known: key");
    Refused("at 10 clikc cmdGo", "not known: clikc");
}

TEST(Scenario, TooFewAndTooManyWordsAreRefused) {
    Refused("key", "too few words");
    Refused("key A B", "too many words");
}

TEST(Scenario, BrokenLinesAreRefusedWhenTheyAreReached) {
    Refused("type \"abc", "a text without its closing quote");
    Holds("type \"A\"\nexpect InData(0).Text \"A\"");
}

TEST(Scenario, EachFileRunsAndTheWorstStatusCounts) {
    const Result result = Play("start\nshow state Ticks\n", "none.scn");
    EXPECT_EQ(result.Status, kNotUnderstood);
    EXPECT_EQ(result.Output, "none.scn: can't be read\nTicks \"0\"\n");
}

TEST(Scenario, UnknownOptionsAndNoFilesAreRefused) {
    const Result result = Play("", "--what");
    EXPECT_EQ(result.Status, kNotUnderstood);
    EXPECT_EQ(result.Output, "no such option: --what\n");
    std::FILE *output = std::tmpfile();
    EXPECT_EQ(RunCommandLine(FakeProgram(), {}, output), kNotUnderstood);
    EXPECT_GT(std::ftell(output), 0);
    std::fclose(output);
}

TEST(Scenario, ListNamesEveryControlWithKindAndPurpose) {
    const Result result = Play("", "--list");
    EXPECT_EQ(result.Status, kHolds);
    EXPECT_TRUE(Contains(result.Output, "Main: the main window\n"));
    EXPECT_TRUE(Contains(result.Output, "  InData(0) (TextBox): the first field\n"));
    EXPECT_TRUE(Contains(result.Output, "  mnuSave (MenuItem): saves\n"));
}

TEST(Scenario, TracePrintsLinesBoxesAndBytes) {
    const Result result = Play("start\nanswer No\nmenu mnuAsk\nkey F1\nskip-boxes\n", "--trace");
    EXPECT_EQ(result.Status, kHolds);
    EXPECT_TRUE(Contains(result.Output, "test.scn:3: menu mnuAsk\n"));
    EXPECT_TRUE(
        Contains(result.Output, "box \"Question\" \"Really\ndo it?\" [Yes, No] answered No"));
    EXPECT_TRUE(Contains(result.Output, "Com3 < 54 58 3B"));
}

TEST(Scenario, NarratePrintsTheCommentsAndNothingElse) {
    const Result result = Play("# First\nstart\n#\n#   Then\nkey A\n# End\n", "--narrate");
    EXPECT_EQ(result.Output, "First\n\nThen\nEnd\n");
}

TEST(Scenario, KeepLeavesTheProgramFolder) {
    const Result result = Play("start\nput kept.txt <<E\nhere\nE\n", "--keep");
    const auto at = result.Output.find("the program folder is ");
    ASSERT_NE(at, std::string::npos) << result.Output;
    const std::string folder =
        result.Output.substr(at + 22, result.Output.find('\n', at) - at - 22);
    EXPECT_TRUE(std::filesystem::exists(folder + "/kept.txt"));
    EXPECT_TRUE(std::filesystem::exists(folder + "/help/page.txt"));
    std::filesystem::remove_all(folder);
}

TEST(Scenario, TheProgramFolderGoesWithoutKeep) {
    std::string folder = (std::filesystem::temp_directory_path() / "own-XXXXXX").string();
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    ASSERT_EQ(::setenv("TMPDIR", folder.c_str(), 1), 0);
    EXPECT_EQ(Play("start\n").Status, kHolds);
    EXPECT_TRUE(std::filesystem::is_empty(folder));
    ::unsetenv("TMPDIR");
    std::filesystem::remove_all(folder);
}

// ---- before the start

TEST(Scenario, TheProgramFolderIsFilledFromTheShippedDataOrAnother) {
    EXPECT_EQ(Play("expect-file data.txt <<E\nshipped\nE\n").Status, kHolds);
    EXPECT_EQ(Play("data minimal\nexpect-file data.txt <<E\nminimal\nE\n").Status, kHolds);
    EXPECT_EQ(Play("folder own\nexpect-file data.txt <<E\nown\nE\n").Status, kHolds);
    EXPECT_EQ(Play("folder nowhere\n").Status, kNotUnderstood);
    EXPECT_EQ(Play("data huge\n").Status, kNotUnderstood);
    EXPECT_EQ(Play("put a <<E\nE\nfolder own\n").Status, kNotUnderstood);
    Refused("folder own", "the program has been started");
}

TEST(Scenario, FilesArePutAndRemoved) {
    EXPECT_EQ(Play("put a.txt <<E\n x \nE\nexpect-hex a.txt 0 20 78 20 0D 0A\n"
                   "put a.txt <<E lf\nx\nE\nexpect-size a.txt 2\n"
                   "put-hex b.bin 00 FF0102 \"AB\"\nexpect-hex b.bin 0 00 FF 01 02 41 42\n"
                   "cut b.bin 3\nexpect-size b.bin 3\n"
                   "put c.txt <<END\none\ntwo\ntwo\nEND\ndrop-line c.txt two\n"
                   "expect-file c.txt <<END\none\ntwo\nEND\nexpect-text c.txt wo\n"
                   "remove a.txt\nexpect-no-file a.txt\n")
                  .Status,
              kHolds);
    Refused("put a.txt", "put wants a block");
    Refused("cut none.txt 1", "cut wants a file and a length within it");
    Refused("put-hex a.txt 00\ncut a.txt 2", "cut wants a file and a length within it");
    Refused("put-hex a.txt 41\ndrop-line a.txt B", "no such line: B");
    Refused("put-hex a.txt 0", "not hex bytes");
    Refused("remove none.txt", "no such file: none.txt");
    Refused("put-hex ../a.txt 00", "not a name in the program folder: ../a.txt");
    Refused("put-hex /a.txt 00", "not a name in the program folder: /a.txt");
}

TEST(Scenario, SettingsAreReplacedAndAdded) {
    EXPECT_EQ(Play("setting \"[Two]\" Colour=green\n"
                   "setting \"[One]\" Weight=\"two and a half\"\n"
                   "setting \"[Three]\" A = b c\n"
                   "expect-file zrtlog125.ini <<E\n[One]\nColour = red\nSize = 3\n"
                   "Weight = two and a half\n\n[Two]\nColour = green\n\n[Three]\nA = b c\n\nE\n")
                  .Output,
              "");
    EXPECT_EQ(Play("data minimal\nsetting \"[A]\" K=v\nexpect-file zrtlog125.ini <<E\n[A]\nK = v\n"
                   "\nE\n")
                  .Status,
              kHolds);
    EXPECT_EQ(Play("setting A K=v\n").Status, kNotUnderstood);
    EXPECT_EQ(Play("setting \"[A]\" Kv\n").Status, kNotUnderstood);
}

TEST(Scenario, TheClockIsSetWithItsZone) {
    EXPECT_EQ(Play("clock 2015-02-21 23:59:59 zone -05:30\nstart\nwait 1000\n"
                   "expect-state Utc \"2015-2-22 0:0:0\"\n"
                   "expect-state Local \"2015-2-21 18:30:0\"\n")
                  .Output,
              "");
    for (const char *line :
         {"clock 2015-02-30 00:00:00", "clock 2015-02-21 24:00:00", "clock 2015-02 00:00:00",
          "clock 2015-02-21-1 00:00:00", "clock 2015-02-21 00:00:00 zone",
          "clock 2015-02-21 00:00:00 zone 5", "clock 2015-02-21 00:00:00 Zone +05:00"})
        EXPECT_EQ(Play(std::string(line) + "\n").Status, kNotUnderstood) << line;
}

TEST(Scenario, PortsCanBeAbsentOrFailing) {
    EXPECT_EQ(Play("port Com3 absent\nstart\nexpect lblResult.Caption \"no radio\"\n").Status,
              kHolds);
    EXPECT_EQ(Play("port Com3 failing\nstart\nexpect lblResult.Caption \"no radio\"\n").Status,
              kHolds);
    EXPECT_EQ(Play("port Com3 absent\nport Com3 present\nstart\n"
                   "expect lblResult.Caption \"\"\n")
                  .Status,
              kHolds);
    Refused("port Com3 gone", "a port is present, absent or failing");
}

TEST(Scenario, TheDiskCanBeFullOrBroken) {
    Holds("disk full\nmenu mnuSave\nexpect lblResult.Caption \"error 28\"\n"
          "disk broken\nmenu mnuSave\nexpect lblResult.Caption \"error 5\"\n"
          "expect-no-file saved.txt\n"
          "disk ok\nmenu mnuSave\nexpect lblResult.Caption \"saved\"\nexpect-size saved.txt 2");
    Refused("disk slow", "a disk is ok, full or broken");
}

TEST(Scenario, AnotherCopyCanHoldTheLock) {
    const Result result = Play("other-copy running\nanswer Ok\nstart\n"
                               "expect-box \"Fake\" \"It runs already.\"\n"
                               "expect-form Main hidden\nkey A\n");
    EXPECT_EQ(result.Status, kNotUnderstood);
    EXPECT_TRUE(Contains(result.Output, "test.scn:6: the program has ended")) << result.Output;
    EXPECT_EQ(Play("other-copy running\nother-copy gone\nstart\nexpect-form Main open\n").Status,
              kHolds);
    EXPECT_EQ(Play("other-copy busy\n").Status, kNotUnderstood);
}

TEST(Scenario, NothingActsBeforeTheStartNorTwiceStarts) {
    EXPECT_TRUE(Contains(Play("key A\n").Output, ":1: the program has not been started"));
    EXPECT_TRUE(Contains(Play("restart\n").Output, ":1: the program has not been started"));
    Refused("start", "the program has been started");
}

// ---- acting

TEST(Scenario, KeysGoToTheFormThenToTheField) {
    Holds("type \"k1!a\"\nexpect InData(0).Text \"K1A\"\nkey Left\nkey Backspace\n"
          "expect InData(0).Text \"KA\"\nexpect InData(0).SelStart \"1\"\n"
          "expect-state Changes \"4\"\n"
          "key Ctrl+Up\nexpect lblResult.Caption \"up\"\n"
          "key Tab\nexpect-focus InData(1)\nkey Shift+Tab\nexpect-focus Main.InData(0)\n"
          "expect-state Focuses \"3\"");
    Refused("key Entr", "no such key: Entr");
}

TEST(Scenario, FocusGoesOnlyWhereItCan) {
    Holds("focus InData(1)\nexpect-focus InData(1)\ntype \"X\"\nexpect InData(1).Text \"X\"");
    Refused("focus nothing", "no such control: nothing");
    Refused("focus cmdOff", "Main.cmdOff is disabled");
    Refused("focus lblHidden", "Main.lblHidden is hidden");
    Refused("focus lblResult", "lblResult takes no focus");
    Refused("focus Dialog.txtName", "Dialog does not show");
}

TEST(Scenario, ClicksReachEveryKindOfControl) {
    Holds("click lblResult\nexpect lblResult.Caption \"label\"\n"
          "click chkOne\nexpect chkOne.Checked \"True\"\nexpect-focus chkOne\n"
          "click optSide(1)\nclick optSide(0)\nexpect optSide(0).Value \"True\"\n"
          "expect optSide(1).Value \"False\"\nexpect optOther.Value \"True\"\n"
          "click InData(1)\nexpect-focus InData(1)");
    Refused("click cmdOff", "Main.cmdOff is disabled");
    Refused("click lblHidden", "Main.lblHidden is hidden");
    Refused("click mnuAsk", "Main.mnuAsk can't be clicked");
    Refused("click Main", "no such control: Main");
}

TEST(Scenario, MenusAreChosenUnlessHiddenOrDisabled) {
    Holds("answer Yes\nmenu mnuAsk\nexpect lblResult.Caption \"yes\"\nskip-boxes");
    Refused("menu mnuHidden", "the menu entry mnuHidden is hidden");
    Refused("menu mnuDisabled", "the menu entry mnuDisabled is disabled");
    Refused("menu mnuOffChild", "the menu entry mnuOff is disabled");
    Refused("menu mnuStill", "Main.mnuStill does nothing");
    Refused("menu cmdGo", "cmdGo is no menu entry");
    Refused("menu mnuNone", "no such control: mnuNone");
}

TEST(Scenario, RowsAreChosenByTextOrIndex) {
    Holds("choose lstRows \"three\"\nexpect lstRows.ListIndex \"2\"\n"
          "expect lblResult.Caption \"row 2\"\nchoose lstRows 0\n"
          "expect lblResult.Caption \"row 0\"\nexpect-focus lstRows\n"
          "doubleclick lstRows\nexpect lblResult.Caption \"double\"\n"
          "expect lstRows.Rows \"one|two|three\"");
    Refused("choose lstRows \"four\"", "no such row: four");
    Refused("choose lstRows 3", "no such row: 3");
    Refused("choose lstRows \"0\"", "no such row: 0");
    Refused("choose cmdGo 0", "Main.cmdGo is no list");
    Refused("doubleclick cmdGo", "Main.cmdGo is no list");
}

TEST(Scenario, SetPutsTextsAndPositions) {
    Holds("set InData(1) \"abc\"\nexpect InData(1).Text \"abc\"\nexpect-state Changes \"1\"\n"
          "expect-focus InData(1)\nset hsbScale 30\nexpect lblResult.Caption \"scale 30\"");
    Refused("set hsbScale 51", "not a position of the scroll bar: 51");
    Refused("set hsbScale x", "not a position of the scroll bar: x");
    Refused("set cmdGo 1", "Main.cmdGo is neither a field nor a scroll bar");
}

TEST(Scenario, CheckSetsABoxOnlyWhenItMust) {
    Holds("check chkOne on\nexpect lblResult.Caption \"checked\"\nclick lblResult\n"
          "check chkOne on\nexpect lblResult.Caption \"label\"\n"
          "check chkOne off\nexpect chkOne.Checked \"False\"");
    Refused("check chkOne maybe", "a check box is on or off");
    Refused("check cmdGo on", "Main.cmdGo is no check box");
}

TEST(Scenario, FormsCloseByTheirCloseBox) {
    Holds("menu mnuOther\nexpect-form Other open\nclose Other\nexpect-form Other hidden");
    Refused("close Other", "Other does not show");
    Refused("close Nowhere", "no such form: Nowhere");
    Refused("click cmdGo\nclick cmdMore\nclose Nested", "Nested has no close box");
}

TEST(Scenario, AnActionBringsAnotherWindowToTheFront) {
    Holds("menu mnuOther\nclick cmdOther\nexpect Main.lblResult.Caption \"other\"\n"
          "click Main.lblResult\nexpect lblResult.Caption \"label\"");
}

TEST(Scenario, TheLinesBehindAModalDialogActOnIt) {
    Holds("click cmdGo\nexpect-form Dialog open\ntype \"Bob\"\nexpect txtName.Text \"Bob\"\n"
          "expect Main.lblResult.Caption \"\"\nkey Enter\nexpect-form Dialog hidden\n"
          "expect lblResult.Caption \"name Bob\"");
    Holds("key F2\nkey Esc\nexpect lblResult.Caption \"name (none)\"");
    Holds("click cmdGo\nset txtName \"x\"\nclose Dialog\nexpect lblResult.Caption \"name x\"");
    Refused("click cmdGo\nclick Main.cmdGo", "Main waits for Dialog");
    Refused("click cmdGo\nmenu Main.mnuAsk", "Main waits for Dialog");
}

TEST(Scenario, ModalDialogsNest) {
    Holds("click cmdGo\nclick cmdMore\nexpect-form Nested open\nexpect-form Dialog open\n"
          "click cmdDone\nexpect-form Nested hidden\nset txtName \"in\"\nkey Enter\n"
          "expect lblResult.Caption \"name in\"");
    Refused("click cmdGo\nclick cmdMore\nclick Dialog.cmdOK", "Dialog waits for Nested");
    Fails("click cmdGo\nclick cmdMore\nexpect-form Nested hidden",
          "expected Nested hidden got open");
}

TEST(Scenario, AFileMayEndInsideADialog) {
    Holds("click cmdGo\nclick cmdMore");
}

TEST(Scenario, BoxesTakeTheirAnswers) {
    Holds("answer \"No\"\nanswer \"Yes\"\nmenu mnuAsk\nexpect lblResult.Caption \"no\"\n"
          "menu mnuAsk\nexpect lblResult.Caption \"yes\"\nskip-boxes");
    Refused("answer Perhaps", "no box has a button Perhaps");
    Fails("menu mnuAsk", "no answer for the box \"Question\" \"Really\ndo it?\" [Yes, No]");
    const Result result = Play("start\nanswer Retry\nmenu mnuAsk\n");
    EXPECT_EQ(result.Status, kFails);
    EXPECT_TRUE(Contains(result.Output, ":3: no button \"Retry\" in the box")) << result.Output;
}

TEST(Scenario, FileDialogsTakeTheirAnswers) {
    Holds("answer-file data\nmenu mnuOpen\nexpect lblResult.Caption \"opened data.txt\"\n"
          "answer-file cancel\nmenu mnuOpen\nexpect lblResult.Caption \"cancelled\"");
    Fails("menu mnuOpen", "no answer for the file dialog \"Open\"");
    Fails("answer-file none.txt\nmenu mnuOpen", "the file dialog \"Open\" has no file none.txt");
    Refused("answer-file ../x", "not a name in the program folder: ../x");
}

TEST(Scenario, WaitingLetsTimersTickInVirtualTime) {
    Holds("wait 999\nexpect-state Ticks \"0\"\nwait 1\nexpect-state Ticks \"1\"\n"
          "wait 3600000\nexpect-state Ticks \"3601\"");
    Refused("wait long", "not a time in milliseconds: long");
    Refused("wait -1", "not a time in milliseconds: -1");
}

TEST(Scenario, AnIdleProgramIsInsideNoWaitOfItsOwn) {
    Holds("wait 1000\nexpect-state DepthOfTick \"0\"");
}

TEST(Scenario, TheClockStandsStillBetweenTheLines) {
    Holds("key A\nkey B\nclick cmdGo\nkey C\nkey Enter\nexpect-state Utc \"2015-1-1 0:0:0\"");
}

TEST(Scenario, CommandsCanComeInTheMiddleOfAMessage) {
    Holds("key F1\nexpect lblResult.Caption \"sent\"\nexpect-state Utc \"2015-1-1 0:0:0\"\n"
          "at 300 key Esc\nkey F1\nexpect lblResult.Caption \"stopped\"");
    Fails("at 300 expect lblResult.Caption \"x\"\nwait 299\nexpect lblResult.Caption \"y\"",
          R"(expected lblResult.Caption "y" got "")");
    const Result result =
        Play("start\nat 300 expect lblResult.Caption \"x\"\nwait 299\nkey F1\nkey A\n");
    EXPECT_EQ(result.Status, kFails);
    EXPECT_TRUE(Contains(result.Output, ":2: expected lblResult.Caption \"x\" got \"\""));
    Refused("at soon key A", "not a time in milliseconds: soon");
}

TEST(Scenario, AWaitForTheProgramItselfTakesLinesToo) {
    Holds("menu mnuLoop\nexpect-state Ticks \"0\"\nwait 2000\nexpect-state Ticks \"2\"\n"
          "wait 1000\nexpect-state Ticks \"3\"");
}

TEST(Scenario, BytesArriveWholeOrOneByOne) {
    Holds("arrive Com3 \"IF;\"\nexpect lblReceived.Caption \"IF;|\"\n"
          "arrive Com3 split 41 42\nexpect lblReceived.Caption \"IF;|A|B|\"");
    Refused("arrive Com4 \"IF;\"", "Com4 is not open");
    Refused("arrive Com3 XY", "neither a text in quotes nor hex bytes");
}

TEST(Scenario, RepliesFollowWhatIsWritten) {
    Holds("reply Com3 \"TX;\" \"OK;\"\nkey F1\nexpect lblReceived.Caption \"OK;|\"");
    Holds("reply Com3 5458 -> 41 42\nkey F1\nexpect lblReceived.Caption \"AB|\"");
    Holds("reply Com3 \"FA;\" \"OK;\"\nkey F1\nexpect lblReceived.Caption \"\"");
    Refused("reply Com3 54 58 59", "reply wants what is written and what arrives, with -> between "
                                   "many bytes");
    Refused(R"(reply Com3 "" "x")", "neither a text in quotes nor hex bytes");
}

TEST(Scenario, ExitEndsTheProgramAndTheFilesCanBeLookedAt) {
    Holds("answer Cancel\nexit\nkey A\nanswer Ok\nexit\nexpect-hex bye.txt 0 \"bye\"\nskip-boxes");
    Refused("answer Ok\nexit\nkey A", "the program has ended");
    Fails("exit", R"(no answer for the box "Fake" "Leave?" [Ok, Cancel])");
}

// ---- expecting

TEST(Scenario, ExpectComparesPropertiesAsText) {
    Holds("expect Main.lblResult.ForeColor \"LightRed\"\nexpect Main.Caption \"Main window\"\n"
          "expect Main.Visible \"True\"\nexpect Dialog.Visible \"False\"\n"
          "expect lblHidden.Visible \"False\"\nexpect cmdOff.Enabled \"False\"\n"
          "expect hsbScale.Min \"5\"\nexpect hsbScale.Max \"50\"\nexpect hsbScale.Value \"20\"\n"
          "expect tmrTick.Interval \"1000\"\nexpect tmrTick.Enabled \"True\"\n"
          "expect picOut.Painted \"a|b\"\nexpect mnuAsk.Checked \"False\"\n"
          "expect Main.Width \"0\"");
    Fails("expect Main.Caption \"Maine\"", R"(expected Main.Caption "Maine" got "Main window")");
    Refused("expect lblResult.Text \"\"", "no such property: Main.lblResult.Text");
    Refused("expect Main.Text \"\"", "no such property: Main.Text");
    Refused("expect lblNone.Caption \"\"", "no such property: lblNone.Caption");
    Refused("expect Nowhere.lblNone.Caption \"\"", "no such property: Nowhere.lblNone.Caption");
    Refused("expect lblResult \"\"", "no such property: lblResult");
}

TEST(Scenario, ExpectMatchTakesARegularExpression) {
    Holds("expect-match Main.Caption \"^M.*w$\"\nexpect-match Main.Caption \"win\"");
    Fails("expect-match Main.Caption \"^w\"",
          R"(expected Main.Caption to match "^w" got "Main window")");
    Refused("expect-match Main.Caption \"(\"", "not a regular expression: (");
}

TEST(Scenario, ExpectFocusNamesWhoHasIt) {
    Holds("focus cmdGo\nexpect-focus cmdGo");
    Fails("focus cmdGo\nexpect-focus InData(0)",
          "expected the focus on Main.InData(0) got Main.cmdGo");
    Fails("expect-focus InData(0)", "expected the focus on Main.InData(0) got no control of Main");
    Fails("focus cmdGo\nclick cmdGo\nkey Tab\nexpect-focus Main.cmdGo",
          "expected the focus on Main.cmdGo got Dialog.cmdOK");
    Refused("expect-focus Main", "no such control: Main");
}

TEST(Scenario, ExpectBoxTakesTheOldestBox) {
    const std::string two = "answer Yes\nanswer Yes\nmenu mnuAsk\nmenu mnuAsk\n";
    Holds(two + "expect-box \"Question\" \"Really\\ndo it?\"\nexpect-box \"*\" \"*\"\n"
                "expect-no-box");
    Fails(two + R"(expect-box "Question" "Really?")",
          R"(expected the box "Question" "Really?" got "Question" "Really\ndo it?")");
    Fails(two + R"(expect-box "Fake" "*")",
          R"(expected the box "Fake" "*" got "Question" "Really\ndo it?")");
    // The beginning of a title or of a text is not the whole.
    Fails(two + R"(expect-box "Question" "Really")",
          R"(expected the box "Question" "Really" got "Question" "Really\ndo it?")");
    Fails(two + R"(expect-box "Quest" "*")",
          R"(expected the box "Quest" "*" got "Question" "Really\ndo it?")");
    Fails(two + R"(expect-box "" "")", R"(expected the box "" "" got "Question" "Really\ndo it?")");
    Fails(R"(expect-box "*" "*")", R"(expected the box "*" "*" got no box)");
    Fails(two + "expect-box \"*\" \"*\"\nexpect-no-box",
          R"(expected no box got "Question" "Really\ndo it?")");
}

TEST(Scenario, ABoxLeftUnexpectedFailsAtTheEndOfTheFile) {
    const std::string got = R"(expected no box left at the end got "Question" "Really\ndo it?")";
    Fails("answer Yes\nmenu mnuAsk\nkey A", got);
    Fails("answer No\nanswer Yes\nmenu mnuAsk\nmenu mnuAsk\nexpect-box \"*\" \"*\"", got);
    Fails("answer Yes\nmenu mnuAsk\nrestart\nkey A", got);
    // The file may end inside a dialog, or after the program.
    Fails("answer Yes\nmenu mnuAsk\nclick cmdGo\nkey A", got);
    Fails("answer Ok\nexit", R"(expected no box left at the end got "Fake" "Leave?")");
    const Result here = PlayHere("start\nanswer Yes\nmenu mnuAsk\n# the end\n");
    EXPECT_EQ(here.Status, kFails);
    EXPECT_TRUE(Contains(here.Output, got)) << here.Output;
}

TEST(Scenario, SkipBoxesLooksAtTheBoxesSoFar) {
    Holds("answer Yes\nanswer Yes\nmenu mnuAsk\nmenu mnuAsk\nskip-boxes\nexpect-no-box");
    Fails("answer Yes\nanswer Yes\nmenu mnuAsk\nskip-boxes\nmenu mnuAsk",
          R"(expected no box left at the end got "Question" "Really\ndo it?")");
    Holds("skip-boxes");
}

TEST(Scenario, ExpectFormSeesWindows) {
    Holds("expect-form Main open\nexpect-form Dialog hidden");
    Fails("expect-form Dialog open", "expected Dialog open got hidden");
    Refused("expect-form Nowhere open", "no such form: Nowhere");
    Refused("expect-form Main shut", "a form is open or hidden");
}

TEST(Scenario, ExpectStateAsksTheProgram) {
    Holds("expect-state Ticks \"0\"");
    Fails("expect-state Ticks \"1\"", R"(expected Ticks "1" got "0")");
    Refused("expect-state Nothing \"1\"", "no such value of the session: Nothing");
}

TEST(Scenario, ExpectBytesSeesWhatWasWrittenSinceTheLastLook) {
    Holds("expect-bytes Com3\nkey F1\nexpect-bytes Com3 \"TX;\"\nkey F1\n"
          "expect-bytes Com3 54 58 3B\nexpect-bytes Com3");
    Fails("key F1\nexpect-bytes Com3 \"RX;\"",
          R"(expected Com3 "RX;" (52 58 3B) got "TX;" (54 58 3B))");
    Refused("expect-bytes Com3 5", "neither a text in quotes nor hex bytes");
}

TEST(Scenario, ExpectPlayedSeesTheWavesStarted) {
    const std::string play = "put-wave A.wav 250\nmenu mnuPlay\n";
    Holds(play + "expect lblResult.Caption \"playing\"\nexpect-played \"A.wav\"\nexpect-played\n"
                 "wait 249\nexpect lblResult.Caption \"playing\"\nwait 1\n"
                 "expect lblResult.Caption \"played 250\"");
    Fails(play + "expect-played \"B.wav\"", R"(expected the waves "B.wav" got "A.wav")");
    Fails("expect-played \"B.wav\"", "expected the waves \"B.wav\" got none");
    // Each wave is named, in its order, and no other one.
    const std::string twice = play + "wait 250\nmenu mnuPlay\n";
    Holds(twice + "expect-played \"A.wav\" \"A.wav\"");
    Fails(twice + "expect-played \"A.wav\"", R"(expected the waves "A.wav" got "A.wav" "A.wav")");
    Fails(twice + "expect-played", R"(expected the waves got "A.wav" "A.wav")");
    Fails(play + "expect-played \"A.wav\" \"A.wav\"",
          R"(expected the waves "A.wav" "A.wav" got "A.wav")");
    Holds("menu mnuPlay\nexpect lblResult.Caption \"sound error 30304\"");
    Refused("put-wave A.wav long", "not a length in milliseconds: long");
}

TEST(Scenario, ExpectTextLooksForAPart) {
    Holds("expect-text data.txt \"hip\"");
    Fails("expect-text data.txt \"hop\"",
          R"(expected data.txt to hold "hop" got a file without it)");
}

TEST(Scenario, ExpectFileComparesLines) {
    EXPECT_EQ(Play("expect-file data.txt <<E\nshipped\nE\n").Status, kHolds);
    const Result wrong = Play("put a <<E\none\ntwo\nE\nexpect-file a <<E\none\nthree\nE\n");
    EXPECT_EQ(wrong.Status, kFails);
    EXPECT_TRUE(Contains(wrong.Output, ":5: expected a line 2 \"three\\x0D\\n\" got "
                                       "\"two\\x0D\\n\""))
        << wrong.Output;
    const Result ends = Play("put a <<E\none\nE\nexpect-file a <<E lf\none\nE\n");
    EXPECT_EQ(ends.Status, kFails);
    EXPECT_EQ(Play("put a <<E\none\nE\nexpect-file a <<E\none\ntwo\nE\n").Status, kFails);
    EXPECT_EQ(Play("put a <<E\none\ntwo\nE\nexpect-file a <<E\none\nE\n").Status, kFails);
    EXPECT_EQ(Play("expect-file none <<E\nE\n").Status, kFails);
    Refused("expect-file data.txt", "expect-file wants a block");
}

TEST(Scenario, ExpectFileMatchesComparesBytes) {
    Holds("expect-file-matches data.txt golden.txt");
    const Result result = Play("expect-file-matches data.txt other.txt\n");
    EXPECT_EQ(result.Status, kFails);
    EXPECT_TRUE(Contains(result.Output, "a difference at offset 2: expected 6F")) << result.Output;
    EXPECT_EQ(Play("expect-file-matches data.txt none.txt\n").Status, kNotUnderstood);
    const std::string equal = " to equal golden.txt (9 bytes) got a difference at offset ";
    const Result longer = Play("put-hex a \"shipped\" 0D0A 00\nexpect-file-matches a golden.txt\n");
    EXPECT_EQ(longer.Status, kFails);
    EXPECT_TRUE(Contains(longer.Output, "expected a (10 bytes)" + equal + "9: expected  got 00"))
        << longer.Output;
    const Result shorter = Play("put-hex a \"shipped\"\nexpect-file-matches a golden.txt\n");
    EXPECT_EQ(shorter.Status, kFails);
    EXPECT_TRUE(Contains(shorter.Output, "expected a (7 bytes)" + equal + "7: expected 0D 0A"))
        << shorter.Output;
    const Result empty = Play("put-hex a \"\"\nexpect-file-matches a golden.txt\n");
    EXPECT_EQ(empty.Status, kFails);
}

TEST(Scenario, ExpectHexSizeAndNoFileLookAtTheFolder) {
    Holds("expect-hex data.txt 2 69 70\nexpect-size data.txt 9\nexpect-no-file none.txt");
    Fails("expect-hex data.txt 2 69 71", "expected data.txt at 2 69 71 got 69 70");
    Fails("expect-hex data.txt 9 00", "expected data.txt at 9 00 got the end of the file");
    Fails("expect-hex none.txt 0 00", "expected the file none.txt got no such file");
    Fails("expect-size data.txt 10", "expected data.txt of 10 bytes got 9");
    Fails("expect-no-file data.txt", "expected no file data.txt got one");
    Refused("expect-hex data.txt -1 00", "not an offset: -1");
    Refused("expect-hex data.txt 0 0", "neither a text in quotes nor hex bytes");
    Refused("expect-size data.txt big", "not a size: big");
}

// ---- show

TEST(Scenario, ShowPrintsWithoutExpecting) {
    const Result result = Play("start\nanswer Yes\nmenu mnuAsk\nkey F1\nshow lblResult\n"
                               "show lblResult.ForeColor\nshow state Ticks\nshow file data.txt\n"
                               "show boxes\nshow bytes Com3\nshow Other\nshow lines\nskip-boxes\n");
    EXPECT_EQ(result.Status, kHolds);
    EXPECT_EQ(result.Output, "lblResult Caption=\"sent\" ForeColor=\"LightRed\"\n"
                             "lblResult.ForeColor \"LightRed\"\n"
                             "Ticks \"0\"\n"
                             "shipped\r\n"
                             "\"Question\" \"Really\\ndo it?\" answered Yes\n"
                             "Com3 \"TX;\" (54 58 3B)\n"
                             "Other Caption=\"\" Visible=\"False\"\n"
                             "  cmdOther Caption=\"\"\n"
                             "Com3 DTR 1 0.0\n");
    Refused("show nothing", "no such property: nothing");
    Refused("show state Nothing", "no such value of the session: Nothing");
    Refused("show thing Main", "show wants state, file or bytes before a name");
}

TEST(Scenario, ShowFormLeavesHiddenControlsAndMenusOut) {
    const Result result = Play("start\nshow Main\n");
    EXPECT_TRUE(Contains(result.Output, "  InData(0) Text=\"\" SelStart=\"0\" SelLength=\"0\"\n"));
    EXPECT_TRUE(Contains(result.Output, "  cmdOff Caption=\"\" Enabled=\"False\"\n"));
    EXPECT_FALSE(Contains(result.Output, "lblHidden"));
    EXPECT_FALSE(Contains(result.Output, "mnuAsk"));
    EXPECT_FALSE(Contains(result.Output, "tmrTick"));
}

} // namespace
} // namespace zrt::test
