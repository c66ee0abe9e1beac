// Restart, crashes of the program, and scenarios in the caller's own process.
#include "headless/fake_program.h"

#include "platform/controls.h"

#include <gtest/gtest.h>

namespace zrt::test {
namespace {

bool Contains(const std::string &text, const std::string &part) {
    return text.find(part) != std::string::npos;
}

TEST(ScenarioProcess, RestartKeepsFilesAndDropsState) {
    Holds("type \"K1ABC\"\nmenu mnuSave\ntype \"D\"\nwait 2000\nexpect-state Ticks \"2\"\n"
          "restart\nexpect-state Ticks \"0\"\nexpect InData(0).Text \"\"\n"
          "expect lblResult.Caption \"recovered K1ABC\"\nexpect-no-file bye.txt");
}

TEST(ScenarioProcess, TheWorldOutsideTheProgramSurvivesARestart) {
    Holds("clock 2015-02-21 10:00:00 zone +01:00\nwait 60000\nreply Com3 \"TX;\" \"OK;\"\n"
          "disk full\nkey F1\nanswer Yes\nmenu mnuAsk\nanswer No\nanswer-file cancel\n"
          "put-wave A.wav 100\nmenu mnuPlay\n"
          "restart\nexpect-state Local \"2015-2-21 11:1:0\"\nmenu mnuSave\n"
          "expect lblResult.Caption \"error 28\"\n"
          "expect-bytes Com3 \"TX;\"\nexpect-played \"A.wav\"\n"
          "expect-box \"Question\" \"*\"\nexpect-no-box\n"
          "menu mnuAsk\nexpect lblResult.Caption \"no\"\nmenu mnuOpen\n"
          "expect lblResult.Caption \"cancelled\"\n"
          "key F1\nexpect lblReceived.Caption \"OK;|\"\nexpect-box \"Question\" \"*\"");
}

TEST(ScenarioProcess, AnAbsentPortStaysAbsent) {
    Holds("port Com3 absent\nrestart\nexpect lblResult.Caption \"no radio\"");
}

TEST(ScenarioProcess, TheLockOfTheDeadProcessIsGone) {
    Holds("restart\nexpect-form Main open\nrestart\nexpect-form Main open");
}

TEST(ScenarioProcess, ARestartCanComeInsideADialogOrAMessage) {
    Holds("click cmdGo\nclick cmdMore\nrestart\nexpect-form Dialog hidden\nkey A\n"
          "expect InData(0).Text \"A\"");
    Holds("at 300 restart\nkey F1\nexpect lblResult.Caption \"\"\nexpect-form Main open");
}

TEST(ScenarioProcess, LinesBehindARestartActOnADialogOfTheStart) {
    const Result result = Play("start\nother-copy running\nrestart\n");
    EXPECT_EQ(result.Status, kFails);
    EXPECT_TRUE(Contains(result.Output, ":3: no answer for the box \"Fake\" \"It runs already.\""))
        << result.Output;
}

TEST(ScenarioProcess, AfterExitARestartStartsAgain) {
    Holds("answer Ok\nexit\nrestart\nkey A\nexpect InData(0).Text \"A\"\nexpect-size bye.txt 3\n"
          "skip-boxes");
}

TEST(ScenarioProcess, FailuresBehindARestartKeepTheirLines) {
    Fails("restart\nrestart\nexpect-state Ticks \"7\"", R"(expected Ticks "7" got "0")");
}

TEST(ScenarioProcess, TheLinesOfADeadProcessFall) {
    const Result result = Play("start\nwait 50\nrestart\nshow lines\n");
    EXPECT_EQ(result.Status, kHolds);
    EXPECT_EQ(result.Output, "Com3 DTR 1 0.0\nCom3 DTR 0 50.0\nCom3 DTR 1 0.0\n");
}

TEST(ScenarioProcess, ADyingProgramIsReportedWithItsLine) {
    Fails("menu mnuCrash", "the program ended with signal 9");
    Fails("restart\nclick cmdGo\nkey Esc\nmenu mnuCrash", "the program ended with signal 9");
}

TEST(ScenarioProcess, AProgramThatJustLeavesIsNoSuccess) {
    Fails("menu mnuLeave", "the program left with status 0");
}

TEST(ScenarioProcess, EachFileStartsFresh) {
    EXPECT_EQ(Play("start\ntype \"A\"\nmenu mnuSave\n").Status, kHolds);
    Holds("expect lblResult.Caption \"\"\nexpect-no-file saved.txt\nexpect InData(0).Text \"\"");
}

TEST(ScenarioProcess, AScenarioRunsInTheCallersProcess) {
    int lines = 0;
    bool open = false;
    const Result result = PlayHere("start\ntype \"A\"\n# no line\nclick cmdGo\nkey Esc\n"
                                   "expect lblResult.Caption \"name (none)\"\n",
                                   [&] {
                                       ++lines;
                                       open = FindForm("Main")->Record->Visible;
                                   });
    EXPECT_EQ(result.Status, kHolds) << result.Output;
    EXPECT_EQ(lines, 5);
    EXPECT_TRUE(open); // the windows are this process's own
}

TEST(ScenarioProcess, InTheCallersProcessFailuresAreTheSame) {
    EXPECT_EQ(PlayHere("start\nexpect lblResult.Caption \"x\"\n").Status, kFails);
    EXPECT_EQ(PlayHere("start\nmenu mnuAsk\n").Status, kFails);
    EXPECT_EQ(PlayHere("start\nclick cmdGo\nclick Main.cmdGo\n").Status, kNotUnderstood);
    const Result restart = PlayHere("start\nrestart\n");
    EXPECT_EQ(restart.Status, kNotUnderstood);
    EXPECT_TRUE(Contains(restart.Output, ":2: restart can't be done")) << restart.Output;
}

} // namespace
} // namespace zrt::test
