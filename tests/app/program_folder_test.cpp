#include "app/program_folder.h"

#include "app/start_up.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <sys/stat.h>

namespace zrt {
namespace {

// The folder of the test is the installation; the user's folder is there or not.
class FirstStart : public ProgramTest {
  protected:
    FirstStart() {
        std::filesystem::create_directory(PathOf("installed"));
        for (const auto &file : std::filesystem::directory_iterator(PathOf("")))
            if (file.is_regular_file())
                std::filesystem::rename(file,
                                        PathOf("installed/") + file.path().filename().string());
        ProgramFolders.ExecutableFolder = [] { return PathOf("bin"); };
        ProgramFolders.UserFolder = [] { return PathOf("user"); };
        ProgramFolders.DefaultsFolder = [] { return PathOf("installed"); };
    }
    static void MakeUserFolder() { std::filesystem::create_directory(PathOf("user")); }
    static std::string Installed(const std::string &name) { return BytesOf("installed/" + name); }
    static void ExpectWholeFolder() {
        for (const auto &file : std::filesystem::directory_iterator(PathOf("installed"))) {
            const std::string name = file.path().filename().string();
            EXPECT_TRUE(FileExists("user/" + name) && BytesOf("user/" + name) == Installed(name))
                << name;
        }
        EXPECT_FALSE(HasSideFile("user"));
    }
};

TEST_F(FirstStart, FillsTheUsersFolder) {
    StartProgram();
    EXPECT_FALSE(Program.Ending);
    EXPECT_EQ(Session.AppPath, PathOf("user") + "/");
    ExpectWholeFolder();
}

// A crash on the first run must leave the rest to the next one, and the settings file says that
// there is no rest.
TEST_F(FirstStart, BringsTheSettingsLast) {
    static std::vector<std::string> names;
    names.clear();
    Files.Rename = [](const std::string &from, const std::string &to) {
        names.push_back(NameOf(to));
        return DiskFiles().Rename(from, to);
    };
    ASSERT_TRUE(TakeProgramFolder());
    ASSERT_GT(names.size(), 3U);
    EXPECT_EQ(std::find(names.begin(), names.end(), kSettingsFile), names.end() - 1);
}

TEST_F(FirstStart, OnAFullDiskIsDoneAgainWhenThereIsRoom) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Retry, BoxAnswer::Retry});
    WhileBoxShows([] { EXPECT_EQ(LastBox().Text, "No space left on device"); });
    WhileBoxShows([] { Devices.Disk = DiskMode::Ok; });
    ASSERT_TRUE(TakeProgramFolder());
    ExpectWholeFolder();
}

TEST_F(FirstStart, OnAFullDiskThatStaysFullCountsAsNone) {
    static std::size_t tooLarge;
    tooLarge = Installed("cty.dat").size(); // the settings alone would fit
    Files.WriteAt = [](int handle, std::uint64_t offset, std::span<const std::byte> bytes) {
        return bytes.size() == tooLarge ? ENOSPC : DiskFiles().WriteAt(handle, offset, bytes);
    };
    Answer({BoxAnswer::Cancel, BoxAnswer::Ok});
    StartProgram();
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(LastBox().Title, "Error Reading Initiation Files");
    EXPECT_FALSE(FileExists("user/zrtlog125.ini"));
    EXPECT_FALSE(HasSideFile("user"));
}

TEST_F(FirstStart, OfAnInstallationThatCantBeListedIsToldAndCountsAsNone) {
    static int tries;
    tries = 0;
    Files.List = [](const std::string &folder, std::vector<std::string> &names) {
        const int error = DiskFiles().List(folder, names);
        if (folder != PathOf("installed/") || ++tries > 1)
            return error;
        names = {kSettingsFile}; // the rest comes behind the error
        return EIO;
    };
    Answer({BoxAnswer::Retry});
    WhileBoxShows([] { EXPECT_FALSE(FileExists("user/zrtlog125.ini")); });
    ASSERT_TRUE(TakeProgramFolder());
    ExpectWholeFolder();
}

TEST_F(FirstStart, LeavesAFileOfTheOperatorWhateverTheCaseOfItsName) {
    MakeUserFolder();
    MakeFile("user/CTY.DAT", "mine\r\n");
    ASSERT_TRUE(TakeProgramFolder());
    EXPECT_EQ(BytesOf("user/CTY.DAT"), "mine\r\n");
    EXPECT_FALSE(FileExists("user/cty.dat"));
    EXPECT_EQ(BytesOf("user/master.scp"), Installed("master.scp"));
}

// ---- a folder that is filled

class FilledFolder : public FirstStart {
  protected:
    FilledFolder() {
        EXPECT_TRUE(TakeProgramFolder());
        Program = {};
    }
};

// Settings alone, those of another computer perhaps, are no installation.
TEST_F(FilledFolder, GetsWhatIsMissingAndKeepsItsSettings) {
    MakeFile("user/zrtlog125.ini", "[Preferences]\nTimeCorrection=7\n");
    std::filesystem::remove(PathOf("user/master.scp"));
    ASSERT_TRUE(TakeProgramFolder());
    EXPECT_EQ(BytesOf("user/master.scp"), Installed("master.scp"));
    EXPECT_EQ(BytesOf("user/zrtlog125.ini"), "[Preferences]\nTimeCorrection=7\n");
}

TEST_F(FilledFolder, GetsAFileAnewThatAFullDiskHasCut) {
    const std::string whole = Installed("ZRTLOG126.DAT");
    ASSERT_GT(whole.size(), 1024U);
    const auto withinALine = whole.find("/") + 1;
    for (const std::size_t length : {std::size_t{0}, std::size_t{512}, withinALine}) {
        MakeFile("user/ZRTLOG126.DAT", whole.substr(0, length));
        ASSERT_TRUE(TakeProgramFolder());
        EXPECT_EQ(BytesOf("user/ZRTLOG126.DAT"), whole) << length;
    }
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(FilledFolder, GetsWholeSettingsAndWhatIsMissingIfTheSettingsAreCut) {
    MakeFile("user/zrtlog125.ini", Installed("zrtlog125.ini").substr(0, 512));
    std::filesystem::remove(PathOf("user/master.scp"));
    ASSERT_TRUE(TakeProgramFolder());
    ExpectWholeFolder();
}

TEST_F(FilledFolder, KeepsWhatTheOperatorHasChanged) {
    const std::string whole = Installed("ZRTLOG126.DAT");
    const std::string lines = whole.substr(0, whole.find('\n', 600) + 1);
    ASSERT_NE(lines.size() % 512, 0U);
    for (const std::string &text : {lines, whole + "\r\n", "x" + whole.substr(1), whole.substr(1),
                                    "x" + whole.substr(0, 511)}) {
        MakeFile("user/ZRTLOG126.DAT", text);
        ASSERT_TRUE(TakeProgramFolder());
        EXPECT_EQ(BytesOf("user/ZRTLOG126.DAT"), text);
    }
}

TEST_F(FilledFolder, WhoseCutFileCantBeRenewedIsToldAndUsed) {
    const std::string cut = Installed("master.scp").substr(0, 3);
    MakeFile("user/master.scp", cut);
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    ASSERT_TRUE(TakeProgramFolder());
    EXPECT_EQ(LastBox().Text, "No space left on device");
    EXPECT_EQ(BytesOf("user/master.scp"), cut);
}

TEST_F(FilledFolder, NeedsNoInstallation) {
    std::filesystem::remove_all(PathOf("installed"));
    ASSERT_TRUE(TakeProgramFolder());
    EXPECT_TRUE(Devices.Boxes.empty());
}

// ---- where it is

TEST_F(FirstStart, WithoutAHomeTellsAndEndsWithStatus1) {
    ProgramFolders.UserFolder = [] { return std::string(); };
    Answer({BoxAnswer::Ok});
    StartProgram();
    EXPECT_EQ(LastBox().Text,
              "ZRTLOG finds no home directory for its files.  Set HOME and start it again.");
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(Program.ExitStatus, 1);
}

TEST_F(FirstStart, OfRootWithoutHomeNamesTheFolder) {
    ProgramFolders.RootWithoutHome = [] { return true; };
    Answer({BoxAnswer::Ok});
    ASSERT_TRUE(TakeProgramFolder());
    EXPECT_NE(LastBox().Text.find("HOME is not set"), std::string::npos);
    EXPECT_NE(LastBox().Text.find(" " + PathOf("user/") + "."), std::string::npos);
}

TEST_F(FirstStart, BesideSettingsUsesTheFolderOfTheExecutable) {
    std::filesystem::copy(PathOf("installed"), PathOf("bin"));
    ProgramFolders.RootWithoutHome = [] { return true; };
    ASSERT_TRUE(TakeProgramFolder());
    EXPECT_EQ(Session.AppPath, PathOf("bin/"));
    EXPECT_TRUE(Devices.Boxes.empty());
    EXPECT_FALSE(FileExists("user"));
}

// ---- what stands in place of a file

TEST_F(ProgramTest, APipeInPlaceOfTheTemporaryLogDelaysNothing) {
    ASSERT_EQ(::mkfifo(PathOf(kTempLog).c_str(), 0600), 0);
    Answer({BoxAnswer::Cancel});
    StartProgram();
    EXPECT_EQ(LastBox().Text, "That is a pipe or a device, and no file");
    EXPECT_FALSE(Program.Ending);
}

TEST_F(ProgramTest, APipeInPlaceOfAReferenceFileIsToldAsMissing) {
    std::filesystem::remove(PathOf("master.scp"));
    ASSERT_EQ(::mkfifo(PathOf("master.scp").c_str(), 0600), 0);
    Answer({BoxAnswer::Ok});
    StartProgram();
    EXPECT_EQ(LastBox().Title, "Error Reading Super Check Partial File");
}

} // namespace
} // namespace zrt
