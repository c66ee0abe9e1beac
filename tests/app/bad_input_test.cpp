// Files that nobody should have, but somebody will: a clear answer, in bounded time and memory.
#include "app/file_menu.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/reference_data.h"
#include "session/settings.h"
#include "support/program.h"

#include <filesystem>

namespace zrt {
namespace {

constexpr std::uintmax_t kHundredMegabytes = 100'000'000;

class BadInput : public ProgramTest {
  protected:
    // Makes a file long, with zeros; it takes no room on the disk.
    static void Stretch(const char *name, std::uintmax_t length) {
        std::filesystem::resize_file(PathOf(name), length);
    }
    static void Open(const char *name) {
        Settings.RecentFile[0] = PathOf(name);
        ClickControl(LogForm.mnuFileRecent[0]);
    }
};

TEST_F(BadInput, ALogOfAHundredMegabytesIsReadAsFarAsALogGoes) {
    StartProgram();
    MakeFile("big.ZRT", HeaderBytes("GEN  "));
    Stretch("big.ZRT", kHundredMegabytes);
    Answer({BoxAnswer::Ok});
    Open("big.ZRT");
    EXPECT_EQ(LastBox().Title, "Log Full");
    EXPECT_EQ(LastBox().Text, "The log holds 1666666 entries; only the first 9000 are read, and no "
                              "contact can be added.");
    EXPECT_EQ(Log.NextEntry, 9001);
    EXPECT_EQ(std::filesystem::file_size(PathOf("big.ZRT")), kHundredMegabytes);
}

TEST_F(BadInput, ALogOfATerabyteIsRefusedByItsLength) {
    StartProgram();
    MakeFile("big.ZRT", HeaderBytes("GEN  "));
    Stretch("big.ZRT", std::uintmax_t{1} << 40);
    Answer({BoxAnswer::Cancel});
    Open("big.ZRT");
    EXPECT_EQ(LastBox().Text, "File too large");
    EXPECT_EQ(Log.LogState, kNoLog);
}

TEST_F(BadInput, ATemporaryLogOfATerabyteIsRefusedAndMovedByNew) {
    MakeFile(kTempLog, HeaderBytes("GEN  "));
    Stretch(kTempLog, std::uintmax_t{1} << 40);
    Answer({BoxAnswer::Cancel});
    StartProgram();
    EXPECT_EQ(LastBox().Text, "File too large");
    ChooseInDialog(12);
    ClickControl(LogForm.mnuFileNew);
    EXPECT_EQ(Log.LogState, kTemporaryName);
    EXPECT_EQ(std::filesystem::file_size(PathOf("Unsaved ZRT Log 1.zrt")), std::uintmax_t{1} << 40);
}

TEST_F(BadInput, AnOldLogOfAHundredMegabytesIsNotConverted) {
    StartProgram();
    MakeFile("big.ZRT", HeaderBytes("WPXCW", '0'));
    Stretch("big.ZRT", kHundredMegabytes);
    Answer({BoxAnswer::Ok, BoxAnswer::Ok});
    Open("big.ZRT");
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(LastBox().Text.find("File too large"), 0U) << LastBox().Text;
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_FALSE(FileExists("big.ZRb"));
}

TEST_F(BadInput, SettingsOfAHundredMegabytesCountAsMissing) {
    Stretch(kSettingsFile, kHundredMegabytes);
    Answer({BoxAnswer::Ok});
    StartProgram();
    EXPECT_EQ(LastBox().Title, "Error Reading Initiation Files");
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(std::filesystem::file_size(PathOf(kSettingsFile)), kHundredMegabytes);
}

TEST_F(BadInput, DataFilesOfAHundredMegabytesCountAsMissing) {
    Stretch("cty.dat", kHundredMegabytes);
    Stretch("master.scp", kHundredMegabytes);
    Stretch("callmtch.dat", kHundredMegabytes);
    Answer({BoxAnswer::Ok, BoxAnswer::Ok});
    StartProgram();
    EXPECT_EQ(Devices.Boxes.size(), 2U);
    EXPECT_EQ(Reference.CountryCount, 0);
    EXPECT_FALSE(Reference.SCPLoaded);
    EXPECT_TRUE(LogForm.Visible);
}

TEST_F(BadInput, ALineOfAMillionCharactersIsOneLine) {
    const std::string line(1'000'000, 'A');
    MakeFile("master.scp", "K1ABC\n" + line + "\nK2ABC\n");
    MakeFile("callmtch.dat", line + "\nK2ABC\n");
    MakeFile("cty.dat", line + ":05:08:NA:37.53:91.67:5.0:K:\n    K," + line + ";\n");
    MakeFile(kSettingsFile, BytesOf(kSettingsFile) + line + "\r\n[Preferences]\r\n" + line +
                                "=1\r\nYourCall=" + line + "\r\nTimeCorrection=7\r\n");
    StartProgram();
    EXPECT_EQ(Reference.SCPCount, 3);
    EXPECT_EQ(SCPRow(2).size(), 11U);
    EXPECT_EQ(Reference.CallMatchCount, 2);
    EXPECT_EQ(Reference.CountryCount, 1);
    EXPECT_EQ(Reference.PrefixCount, 2);
    EXPECT_EQ(Settings.TimeCorrection, "7");
}

TEST_F(BadInput, NulBytesAreBytesLikeOthers) {
    using namespace std::string_literals;
    MakeFile("master.scp", "K1\0ABC\nK2ABC\n\0\0\0\n"s);
    MakeFile("cty.dat", "USA\0:05:08:NA:37.53:91.67:5.0:K:\n    K\0,W;\n\0"s);
    MakeFile(kSettingsFile, BytesOf(kSettingsFile) + "\0\r\n[Preferences]\r\nYourCall=A\0B\r\n"s);
    StartProgram();
    EXPECT_EQ(Reference.SCPCount, 3);
    EXPECT_EQ(Reference.CountryCount, 1);
    EXPECT_EQ(Settings.YourCall, "A\0B"s);
    MakeFile("nul.ZRT", std::string(500, '\0'));
    Answer({BoxAnswer::Ok});
    Open("nul.ZRT");
    EXPECT_EQ(LastBox().Text, "The file nul.ZRT is not a ZRT log.");
}

TEST_F(BadInput, AFolderIsNoLog) {
    StartProgram();
    std::filesystem::create_directory(PathOf("folder.ZRT"));
    Devices.FileAnswers = {PathOf("folder.ZRT")};
    Answer({BoxAnswer::Cancel});
    FileOpen(0);
    EXPECT_EQ(LastBox().Text, "Is a directory");
    EXPECT_EQ(Log.LogState, kNoLog);
}

} // namespace
} // namespace zrt
