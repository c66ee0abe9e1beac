#include "app/start_up.h"

#include "app/about_box.h"
#include "app/start_hooks.h"
#include "entry/log_form.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace zrt {
namespace {

std::vector<std::string> steps;

class Start : public ProgramTest {
  protected:
    Start() {
        steps.clear();
        Starting.ReadCountries = [] { steps.emplace_back("countries"); };
        Starting.ReadMasterScp = [] { steps.emplace_back("master.scp"); };
        Starting.ReadCallMatch = [] { steps.emplace_back("call match"); };
        Starting.CopyRadioSettings = [] { steps.emplace_back("radios"); };
        Starting.ReadStartupData = [] { steps.push_back("data, settings " + Settings.IsGMTFlag); };
    }
};

TEST_F(Start, LeadsToTheIdleMainWindow) {
    StartProgram();
    EXPECT_FALSE(Program.Ending);
    EXPECT_EQ(ActiveForm(), &LogForm);
    EXPECT_FALSE(Aboutzrt.Visible);
    EXPECT_FALSE(Screen.BusyPointer);
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_EQ(Log.LogFileName, PathOf("!temp%!!.zrb"));
    EXPECT_EQ(Session.AppPath.back(), '/');
    EXPECT_EQ(Session.HelpFile, PathOf("zrtlog127Help.chm"));
}

TEST_F(Start, ReadsTheSettingsFirstAndTheReferenceDataInOrder) {
    StartProgram();
    EXPECT_THAT(steps, testing::ElementsAre("countries", "master.scp", "call match", "radios",
                                            "data, settings True"));
}

TEST_F(Start, ShowsTheSplashForAShortWhile) {
    Schedule(Clock.Steady() + 10 * kMillisecond, [] {
        steps.push_back(Aboutzrt.Caption + (Aboutzrt.HasCloseBox ? " with" : " without") +
                        (Aboutzrt.Timer1.Enabled ? ", timer on" : ""));
    });
    const Microseconds began = Clock.Steady();
    StartProgram();
    EXPECT_EQ(steps.front(), "WELCOME without, timer on");
    EXPECT_LT(Clock.Steady() - began, 300 * kMillisecond);
    EXPECT_FALSE(Aboutzrt.Timer1.Enabled);
}

TEST_F(Start, WithoutSettingsTellsAndEndsWithStatus1) {
    std::remove(PathOf(kSettingsFile).c_str());
    Answer({BoxAnswer::Ok});
    StartProgram();
    EXPECT_EQ(LastBox().Text,
              "Can't find or read startup files zrtlog125.ini or zrtlog121.dat.  Make sure they "
              "are in the same drive/directory used to start program.");
    EXPECT_EQ(LastBox().Title, "Error Reading Initiation Files");
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(Program.ExitStatus, 1);
    EXPECT_TRUE(steps.empty());
    EXPECT_FALSE(FileExists(kSettingsFile)); // no default file is written
}

TEST_F(Start, TakesSettingsThatCantBeReadForMissing) {
    Files.Open = [](const std::string &path, OpenMode mode, int &handle) {
        return path.ends_with(kSettingsFile) ? EACCES : DiskFiles().Open(path, mode, handle);
    };
    Answer({BoxAnswer::Ok});
    StartProgram();
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(Program.ExitStatus, 1);
}

TEST_F(Start, OfASecondCopyIsRefusedBeforeItTouchesAnything) {
    MakeFile(kTempLog, HeaderBytes("GEN  ")); // the live log of the first copy
    Devices.OtherCopyRunning = true;
    Answer({BoxAnswer::Ok});
    StartProgram();
    EXPECT_EQ(Devices.Boxes.size(), 1U);
    EXPECT_NE(LastBox().Text.find("already running"), std::string::npos);
    EXPECT_TRUE(Program.Ending);
    EXPECT_TRUE(steps.empty());
    EXPECT_TRUE(FileExists(kTempLog));
}

TEST_F(Start, MakesAnUnknownTimingMethodWinmm) {
    MakeFile(kSettingsFile, "[Preferences]\nTimingMethod=Sundial\n");
    StartProgram();
    EXPECT_EQ(Settings.TimingMethod, "Winmm");
}

TEST_F(Start, FillsTheUsersFolderOnTheFirstRun) {
    MakeFile("cty.dat", "countries");
    const static std::string kUser = PathOf("user");
    const static std::string kDefaults = PathOf("");
    ProgramFolders.ExecutableFolder = [] { return PathOf("bin"); };
    ProgramFolders.UserFolder = [] { return kUser; };
    ProgramFolders.DefaultsFolder = [] { return kDefaults; };
    StartProgram();
    EXPECT_FALSE(Program.Ending);
    EXPECT_EQ(Session.AppPath, kUser + "/");
    EXPECT_EQ(BytesOf("user/cty.dat"), "countries");
    EXPECT_EQ(BytesOf("user/zrtlog125.ini"), BytesOf("zrtlog125.ini"));
}

TEST_F(Start, LeavesWhatTheUsersFolderHolds) {
    ASSERT_EQ(Files.MakeFolder(PathOf("user")), 0);
    MakeFile("user/zrtlog125.ini", "[Preferences]\nTimeCorrection=7\n");
    MakeFile("cty.dat", "countries");
    ProgramFolders.ExecutableFolder = [] { return PathOf("bin"); };
    ProgramFolders.UserFolder = [] { return PathOf("user"); };
    StartProgram();
    EXPECT_EQ(Settings.TimeCorrection, "7");
    EXPECT_FALSE(FileExists("user/cty.dat")); // an installation that is there is not filled up
}

} // namespace
} // namespace zrt
