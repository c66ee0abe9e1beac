#include "session/settings.h"

#include "platform/files.h"
#include "platform/program.h"
#include "session/session_flags.h"
#include "session/settings_file.h"
#include "session/user_profiles.h"
#include "support/program.h"

#include <cerrno>

namespace zrt {
namespace {

class SettingsOnDisk : public ProgramTest {
  protected:
    SettingsOnDisk() {
        Session.AppPath = PathOf("");
        Session.SettingsRead = true;
    }
    static void Read(std::string_view text) {
        MakeFile(kSettingsFile, text);
        ASSERT_EQ(ReadSettings(), 0);
    }
    static void OpenContest(i16 contest) { Contest = CwContest(contest); }
    static WindowInfo &Row(i16 contest, WindowRow window) {
        return Settings.Windows[static_cast<std::size_t>(contest - 1)][window];
    }
};

TEST_F(SettingsOnDisk, WithoutAKeyAreTheDefaults) {
    Read("");
    EXPECT_EQ(Settings.RepeatIntervalCW, 1000);
    EXPECT_EQ(Settings.RepeatIntervalSSB, 1000);
    EXPECT_EQ(Settings.TimingMethod, "Winmm");
    EXPECT_EQ(Settings.Weight, 3.0);
    EXPECT_EQ(Settings.UnworkedColor, 0);
    EXPECT_EQ(Settings.WorkedColor, 255);
    EXPECT_EQ(Settings.YourCall, "");
    EXPECT_EQ(Settings.Radio1Delay, 0);
    EXPECT_FALSE(Settings.CWActivated);
    EXPECT_EQ(Extensions, ExtensionsRecord());
}

TEST_F(SettingsOnDisk, AFileOfHeadersGetsNamedProfilesAndIsWrittenAtOnce) {
    Read("[Preferences]\r\n[CW Macros - 01]\r\n[User Profile 1]\r\n[User Profile 2]\r\n");
    EXPECT_EQ(Settings.Macros[0][0], "");
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(Profiles.Table[i].ProfileName, "Custom Profile " + std::to_string(i + 1));
    EXPECT_EQ(Profiles.Current, 1);
    EXPECT_EQ(BytesOf(kSettingsFile), SettingsText());
    EXPECT_NE(BytesOf(kSettingsFile).find("UserProfile.ProfileName=Custom Profile 4\r\n"),
              std::string::npos);
}

TEST_F(SettingsOnDisk, AFileWithNamedProfilesIsNotWritten) {
    const std::string text = "[User Profile 1]\nUserProfile.ProfileName=A\n[User Profile 2]\n"
                             "UserProfile.ProfileName=Custom Profile 1\n[User Profile 3]\n"
                             "UserProfile.ProfileName=C\n[User Profile 4]\n"
                             "UserProfile.ProfileName=D";
    Read(text);
    EXPECT_EQ(BytesOf(kSettingsFile), text);
}

TEST_F(SettingsOnDisk, TheCurrentProfileIsFoundByItsName) {
    const std::string names = "UserProfile.ProfileName=One\n[User Profile 2]\n"
                              "UserProfile.ProfileName=Two\n[User Profile 3]\n"
                              "UserProfile.ProfileName=Three\n";
    Read("[User Profile 1]\nCurrentUserProfileName=Three\n" + names);
    EXPECT_EQ(Profiles.Current, 3);
    Read("[User Profile 1]\nCurrentUserProfileName=Nobody\n" + names);
    EXPECT_EQ(Profiles.Current, 1);
    EXPECT_EQ(Profiles.CurrentUserProfileName, "Nobody");
}

TEST_F(SettingsOnDisk, AnEmptyOpenFilePathIsTheLogFolderWhereThereIsOne) {
    const std::string extensions = "[Extensions]\nLogFolder=";
    Read("[File Information]\nOpenFilePath=\n" + extensions + "{documents}/ZRTLOG\n");
    EXPECT_EQ(Settings.OpenFilePath, Session.AppPath + "Documents/ZRTLOG");
    Read("[File Information]\nOpenFilePath=\n" + extensions + "/logs\n");
    EXPECT_EQ(Settings.OpenFilePath, "/logs");
    Read("[File Information]\nOpenFilePath=/mine\n" + extensions + "/logs\n");
    EXPECT_EQ(Settings.OpenFilePath, "/mine");
    // An installation without the key wrote its own folder before one was chosen.
    Read("[File Information]\nOpenFilePath=" + Session.AppPath + "\n" + extensions + "/logs\n");
    EXPECT_EQ(Settings.OpenFilePath, "/logs");
    ProgramFolders.DocumentsFolder = [] { return std::string(); };
    Read("[File Information]\nOpenFilePath=\n" + extensions + "{documents}/ZRTLOG\n");
    EXPECT_EQ(Settings.OpenFilePath, Session.AppPath);
}

TEST_F(SettingsOnDisk, AnEmptyOpenFilePathIsTheProgramsFolder) {
    Read("[File Information]\nOpenFilePath=\n");
    EXPECT_EQ(Settings.OpenFilePath, Session.AppPath);
    Read("[File Information]\nOpenFilePath=/logs\n");
    EXPECT_EQ(Settings.OpenFilePath, "/logs");
}

TEST_F(SettingsOnDisk, AreNotTakenFromAMissingFileWhichIsNotMade) {
    Settings.RepeatIntervalCW = 7;
    Session.AppPath = PathOf("nowhere/");
    EXPECT_EQ(ReadSettings(), ENOENT);
    EXPECT_EQ(Settings.RepeatIntervalCW, 7);
    EXPECT_FALSE(FileExists("nowhere/zrtlog125.ini"));
}

TEST_F(SettingsOnDisk, AFileOverTheLimitIsRefused) {
    std::string text = "[Preferences]\nYourCall=K1ZZ\n";
    text.resize(kLongestSettingsFile, '\n');
    MakeFile(kSettingsFile, text);
    EXPECT_EQ(ReadSettings(), 0);
    EXPECT_EQ(Settings.YourCall, "K1ZZ");
    Settings = {};
    MakeFile(kSettingsFile, text + "\n");
    EXPECT_EQ(ReadSettings(), EFBIG);
    EXPECT_EQ(Settings, SettingsRecord());
}

TEST_F(SettingsOnDisk, TheTimingMethodIsOneOfFour) {
    for (const char *known : {"QueryPerf", "Math", "Winmm", "VBTimer"}) {
        Read(std::string("[Preferences]\nTimingMethod=") + known);
        EXPECT_EQ(Settings.TimingMethod, known);
    }
    for (const char *unknown : {"", "winmm", "Sundial"}) {
        Read(std::string("[Preferences]\nTimingMethod=") + unknown);
        EXPECT_EQ(Settings.TimingMethod, "Winmm") << unknown;
    }
}

TEST_F(SettingsOnDisk, AFailingDiskLeavesTheOldFileWholeAndShowsNothing) {
    Read("");
    const std::string before = BytesOf(kSettingsFile);
    for (const DiskMode mode : {DiskMode::Full, DiskMode::Broken}) {
        Devices.Disk = mode;
        Settings.YourCall = "K2ZZ";
        WriteSettings(false);
        EXPECT_EQ(BytesOf(kSettingsFile), before);
        EXPECT_FALSE(HasSideFile());
    }
    EXPECT_TRUE(Devices.Boxes.empty());
    Devices.Disk = DiskMode::Ok;
    WriteSettings(false);
    EXPECT_EQ(BytesOf(kSettingsFile), SettingsText());
    EXPECT_NE(BytesOf(kSettingsFile), before);
}

// The program may be ended before it has come to its settings: those of the file stay.
TEST_F(SettingsOnDisk, AreNotWrittenBeforeTheyWereRead) {
    Session.SettingsRead = false;
    const std::string before = "[Preferences]\r\nYourCall=ZR1TEST\r\n";
    MakeFile(kSettingsFile, before);
    WriteSettings(true);
    EXPECT_EQ(BytesOf(kSettingsFile), before);
    ASSERT_EQ(ReadSettings(), 0);
    WriteSettings(false);
    EXPECT_NE(BytesOf(kSettingsFile), before);
    EXPECT_NE(BytesOf(kSettingsFile).find("YourCall=ZR1TEST"), std::string::npos);
}

TEST_F(SettingsOnDisk, ARenameThatFailsLeavesTheOldFileWhole) {
    Read("");
    const std::string before = BytesOf(kSettingsFile);
    Files.Rename = [](const std::string &, const std::string &) { return EACCES; };
    Settings.YourCall = "K2ZZ";
    WriteSettings(false);
    EXPECT_EQ(BytesOf(kSettingsFile), before);
    EXPECT_FALSE(HasSideFile());
}

TEST_F(SettingsOnDisk, ADriveThatIsAwayIsAskedForUntilItIsThereOrGivenUp) {
    Read("");
    static int tries;
    tries = 0;
    Files.CreateSide = [](const std::string &path, std::string &side, int &handle) {
        return ++tries < 3 ? ENODEV : DiskFiles().CreateSide(path, side, handle);
    };
    Settings.YourCall = "K2ZZ";
    Answer({BoxAnswer::Retry, BoxAnswer::Retry});
    WriteSettings(false);
    EXPECT_EQ(tries, 3);
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(BytesOf(kSettingsFile), SettingsText());

    const std::string before = BytesOf(kSettingsFile);
    tries = 0;
    Settings.YourCall = "K3ZZ";
    Answer({BoxAnswer::Cancel});
    WriteSettings(false);
    EXPECT_EQ(tries, 1);
    EXPECT_EQ(BytesOf(kSettingsFile), before);
}

// ---- windows

class SettingsWindows : public SettingsOnDisk {
  protected:
    SettingsWindows() {
        Shown = {};
        Hidden = {};
        RegisterForm(Shown, "ViewMult", "", {});
        RegisterForm(Hidden, "QSOStats", "", {});
        Shown.Visible = true;
        Shown.Left = 150;
        Shown.Top = -30;
        Shown.Width = 9000;
        Shown.Height = 40000; // more than the file can hold
        OpenContest(3);
        for (auto &rows : Settings.Windows)
            rows[kPartial].Name = "Partial";
    }
    // A form stays registered, and must outlive the test.
    static inline Form Shown, Hidden;
};

TEST_F(SettingsWindows, TheirPlacesGoIntoTheRowsOfTheOpenContest) {
    const auto before = Settings.Windows;
    WriteSettings(true);
    EXPECT_EQ(Row(3, kViewMult), (WindowInfo{"VIEWMULT", "OPEN", 150, -30, 32767, 9000}));
    EXPECT_NE(BytesOf(kSettingsFile).find("VIEWMULT OPEN -30 150 32767 9000\r\n"),
              std::string::npos);
    EXPECT_EQ(Row(3, kZTCTY), WindowInfo()) << "there is no such form";
    for (const std::size_t other : {0, 1, 3, 12})
        EXPECT_EQ(Settings.Windows[other], before[other]);
}

TEST_F(SettingsWindows, AWindowThatNobodyHasPlacedKeepsItsNumbers) {
    Row(3, kQSOStats) = {"QSOSTATS", "OPEN", 1, 2, 3, 4};
    WriteSettings(true);
    EXPECT_EQ(Row(3, kQSOStats), (WindowInfo{"QSOSTATS", "CLOSED", 1, 2, 3, 4}));
    Hidden.Width = 600; // its size at first
    WriteSettings(true);
    EXPECT_EQ(Row(3, kQSOStats), (WindowInfo{"QSOSTATS", "CLOSED", 1, 2, 3, 4}));
    Hidden.Placed = true; // in the corner of the screen
    WriteSettings(true);
    EXPECT_EQ(Row(3, kQSOStats), (WindowInfo{"QSOSTATS", "CLOSED", 0, 0, 0, 600}));
}

TEST_F(SettingsWindows, AreNotTakenAfterAChangeOfOptionsNorWithoutAContest) {
    const auto before = Settings.Windows;
    WriteSettings(false);
    EXPECT_EQ(Settings.Windows, before);
    Contest = {};
    WriteSettings(true);
    EXPECT_EQ(Settings.Windows, before);
}

TEST_F(SettingsWindows, AFileWithoutTheEighthRowGetsItInEveryContest) {
    Form &partial = *FindForm("Partial")->Record;
    partial.Visible = true;
    partial.Left = 10;
    partial.Top = 20;
    partial.Width = 30;
    partial.Height = 40;
    Row(3, kPartial) = {};
    WriteSettings(false);
    for (i16 contest = 1; contest <= kContests; ++contest)
        EXPECT_EQ(Row(contest, kPartial), (WindowInfo{"PARTIAL", "CLOSED", 10, 20, 40, 30}));

    partial.Left = 11;
    Row(5, kPartial).Name = ""; // not the current contest
    WriteSettings(true);
    EXPECT_EQ(Row(3, kPartial), (WindowInfo{"PARTIAL", "OPEN", 11, 20, 40, 30}));
    EXPECT_EQ(Row(5, kPartial).Name, "");
}

TEST_F(SettingsWindows, TheEighthRowIsKnownInAnyCase) {
    Row(3, kPartial) = {"partial", "OPEN", 1, 2, 3, 4};
    WriteSettings(false);
    EXPECT_EQ(Row(3, kPartial), (WindowInfo{"partial", "OPEN", 1, 2, 3, 4}));
}

} // namespace
} // namespace zrt
