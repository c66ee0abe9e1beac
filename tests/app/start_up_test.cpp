#include "app/start_up.h"

#include "app/about_box.h"
#include "entry/log_form.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/reference_data.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "session/version.h"
#include "support/program.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace zrt {
namespace {

using Start = ProgramTest;

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

TEST_F(Start, ReadsTheReferenceDataInOrder) {
    static std::vector<std::string> read;
    read.clear();
    Files.Open = [](const std::string &path, OpenMode mode, int &handle) {
        if (const std::string name = UpperCase(NameOf(path)); read.empty() || read.back() != name)
            read.push_back(name);
        return DiskFiles().Open(path, mode, handle);
    };
    StartProgram();
    ASSERT_GE(read.size(), 5U);
    EXPECT_THAT(std::vector(read.begin(), read.begin() + 5),
                testing::ElementsAre("ZRTLOG125.INI", "CTY.DAT", "MASTER.SCP", "CALLMTCH.DAT",
                                     "ZRTLOG126.DAT"));
    EXPECT_GT(Reference.CountryCount, 10);
    EXPECT_TRUE(Reference.SCPLoaded);
}

TEST_F(Start, GivesEachRadioTheUsersValuesOfItsModel) {
    MakeFile(kSettingsFile, "[Radio Information]\r\nRadio(1).Name=Yaesu FT-817\r\n"
                            "Radio(1).BaudRate=1200\r\nRadio(2).Name=Brass Key\r\n"
                            "Radio(2).BaudRate=1200\r\n[Radio User Settings]\r\n"
                            "RadioUserSettings.Name=Elecraft K3\r\n"
                            "RadioUserSettings.RTSHigh=True\r\n"
                            "RadioUserSettings.Name=Yaesu FT-817\r\n"
                            "RadioUserSettings.BaudRate=9600\r\n"
                            "RadioUserSettings.Parity=N\r\n"
                            "RadioUserSettings.RTSHigh=False\r\n");
    StartProgram();
    EXPECT_EQ(Settings.Radio[0].BaudRate, 9600);
    EXPECT_EQ(Settings.Radio[0].Parity, 'N');
    EXPECT_FALSE(Settings.Radio[0].RTSHigh);
    EXPECT_EQ(Settings.Radio[1].BaudRate, 1200); // no such model: its own
}

TEST_F(Start, ShowsTheRecentLogsInTheMenu) {
    MakeFile(kSettingsFile, "[File Information]\r\nRecentFile1=/logs/a.ZRT\r\n"
                            "RecentFile2=\r\nRecentFile3=/logs/c.ZRT\r\n");
    StartProgram();
    EXPECT_TRUE(LogForm.mnuFileRecent[0].Visible);
    EXPECT_EQ(LogForm.mnuFileRecent[0].Caption, "1  /logs/a.ZRT");
    EXPECT_FALSE(LogForm.mnuFileRecent[1].Visible);
    EXPECT_EQ(LogForm.mnuFileRecent[2].Caption, "3  /logs/c.ZRT");
    EXPECT_TRUE(LogForm.mnuFileRecentBar.Visible);
}

TEST_F(Start, WithoutStartupDataTellsAndEndsWithStatus1) {
    std::remove(PathOf("ZRTLOG126.DAT").c_str());
    Answer({BoxAnswer::Ok});
    StartProgram();
    EXPECT_EQ(LastBox().Text,
              "Can't find or read startup file zrtlog126.dat, and can't proceed without it. Make "
              "sure it is in the same drive/directory used to start program.");
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(Program.ExitStatus, 1);
    EXPECT_FALSE(LogForm.Visible);
}

TEST_F(Start, ShowsTheSplashForAShortWhile) {
    std::string seen;
    Schedule(Clock.Steady() + 10 * kMillisecond, [&seen] {
        seen = Aboutzrt.Caption + (Aboutzrt.HasCloseBox ? " with" : " without") +
               (Aboutzrt.Timer1.Enabled ? ", timer on" : "");
    });
    const Microseconds began = Clock.Steady();
    StartProgram();
    EXPECT_EQ(seen, "WELCOME without, timer on");
    EXPECT_LT(Clock.Steady() - began, 300 * kMillisecond);
    EXPECT_FALSE(Aboutzrt.Timer1.Enabled);
}

TEST_F(Start, HasOneVersionInAboutAndInTheFilesForTheSponsors) {
    EXPECT_EQ(Aboutzrt.lblVersion.Caption, "Version " ZRT_PROJECT_VERSION);
    EXPECT_EQ(std::string(ZRT_PROJECT_VERSION).find(kShortVersion + "."), 0U);
    EXPECT_EQ(kShortVersion, "12.7"); // the line of the sponsors' files names it
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
    EXPECT_TRUE(FileExists(kTempLog));
}

TEST_F(Start, MakesAnUnknownTimingMethodWinmm) {
    MakeFile(kSettingsFile, "[Preferences]\nTimingMethod=Sundial\n");
    StartProgram();
    EXPECT_EQ(Settings.TimingMethod, "Winmm");
}

} // namespace
} // namespace zrt
