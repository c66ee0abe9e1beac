#include "platform/files.h"

#include "support/program.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace zrt {
namespace {

using testing::ElementsAre;

std::span<const std::byte> AsBytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

class FileTools : public ProgramTest {
  protected:
    FileTools() { EXPECT_EQ(Files.MakeFolder(PathOf("here")), 0); }
};

TEST_F(FileTools, ReplaceFileWritesWhole) {
    EXPECT_EQ(ReplaceFile(PathOf("here/a"), AsBytes("first")), 0);
    EXPECT_EQ(BytesOf("here/a"), "first");
    EXPECT_EQ(ReplaceFile(PathOf("here/a"), AsBytes("2nd")), 0);
    EXPECT_EQ(BytesOf("here/a"), "2nd");
    EXPECT_THAT(Files.List(PathOf("here")), ElementsAre("a"));
}

TEST_F(FileTools, ReplaceFileLeavesTheOldFileWhenTheDiskIsFull) {
    MakeFile("here/a", "old");
    Devices.Disk = DiskMode::Full;
    EXPECT_EQ(ReplaceFile(PathOf("here/a"), AsBytes("new")), ENOSPC);
    EXPECT_EQ(BytesOf("here/a"), "old");
    EXPECT_THAT(Files.List(PathOf("here")), ElementsAre("a"));
}

TEST_F(FileTools, ReplaceFileLeavesTheOldFileWhateverStepFails) {
    const FileDoor whole = Files;
    const auto fails = [](const char *step) {
        SCOPED_TRACE(step);
        MakeFile("a", "old");
        EXPECT_EQ(ReplaceFile(PathOf("a"), AsBytes("new")), EIO);
        EXPECT_EQ(BytesOf("a"), "old");
        EXPECT_FALSE(FileExists("a.new"));
    };
    Files.Sync = [](int) { return EIO; };
    fails("sync");
    Files = whole;
    Files.Close = [](int handle) { return DiskFiles().Close(handle) == 0 ? EIO : EBADF; };
    fails("close");
    Files = whole;
    Files.Rename = [](const std::string &, const std::string &) { return EIO; };
    fails("rename");
    Files = whole;
    Files.Open = [](const std::string &, OpenMode, int &) { return EIO; };
    fails("open");
}

TEST_F(FileTools, ReplaceFileSyncsBeforeItRenames) {
    static std::string steps;
    steps.clear();
    Files.Sync = [](int) {
        steps += "sync ";
        return 0;
    };
    Files.Rename = [](const std::string &from, const std::string &to) {
        steps += "rename ";
        return DiskFiles().Rename(from, to);
    };
    Files.SyncFolder = [](const std::string &) {
        steps += "folder";
        return 0;
    };
    EXPECT_EQ(ReplaceFile(PathOf("a"), AsBytes("x")), 0);
    EXPECT_EQ(steps, "sync rename folder");
}

TEST_F(FileTools, CopyFileCopiesEveryByte) {
    std::string bytes;
    for (int i = 0; i < 100000; ++i)
        bytes += static_cast<char>(i * 7);
    MakeFile("a", bytes);
    EXPECT_EQ(CopyFile(PathOf("a"), PathOf("b")), 0);
    EXPECT_TRUE(BytesOf("b") == bytes);
    EXPECT_EQ(CopyFile(PathOf("none"), PathOf("b")), ENOENT);
    EXPECT_TRUE(BytesOf("b") == bytes);
    EXPECT_FALSE(FileExists("none"));
}

TEST_F(FileTools, ReadFileReadsEmptyAndMissingOnes) {
    MakeFile("a", "");
    FileBytes bytes{std::byte{1}};
    EXPECT_EQ(ReadFile(PathOf("a"), bytes), 0);
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(ReadFile(PathOf("none"), bytes), ENOENT);
    EXPECT_NE(ReadFile(Devices.ProgramFolder, bytes), 0); // a folder
}

TEST_F(FileTools, AWriteBehindTheEndLeavesZeros) {
    OpenedFile file;
    ASSERT_EQ(file.Open(PathOf("a"), OpenMode::Create), 0);
    EXPECT_EQ(file.WriteAt(5, AsBytes("x")), 0);
    std::uint64_t length = 0;
    EXPECT_EQ(file.Length(length), 0);
    EXPECT_EQ(length, 6U);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(BytesOf("a"), std::string(5, '\0') + "x");
}

TEST_F(FileTools, UpdateNeedsAFileAndKeepsItsBytes) {
    OpenedFile file;
    EXPECT_EQ(file.Open(PathOf("a"), OpenMode::Update), ENOENT);
    EXPECT_FALSE(FileExists("a"));
    MakeFile("a", "abc");
    ASSERT_EQ(file.Open(PathOf("a"), OpenMode::Update), 0);
    EXPECT_EQ(file.WriteAt(1, AsBytes("X")), 0);
    std::array<std::byte, 8> bytes{};
    std::size_t got = 0;
    EXPECT_EQ(file.ReadAt(1, bytes, got), 0);
    EXPECT_EQ(got, 2U);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(BytesOf("a"), "aXc");
}

TEST_F(FileTools, ADoorThatFailsFailsTheWriteAndNotTheRead) {
    MakeFile("a", "abc");
    Devices.Disk = DiskMode::Broken;
    FileBytes bytes;
    EXPECT_EQ(ReadFile(PathOf("a"), bytes), 0);
    OpenedFile file;
    ASSERT_EQ(file.Open(PathOf("a"), OpenMode::Update), 0);
    EXPECT_EQ(file.WriteAt(0, AsBytes("x")), EIO);
    EXPECT_EQ(BytesOf("a"), "abc");
}

TEST_F(FileTools, ListsFilesSortedAndWithoutFolders) {
    MakeFile("here/b", "");
    MakeFile("here/A", "");
    EXPECT_EQ(Files.MakeFolder(PathOf("here/inner/more")), 0);
    EXPECT_EQ(Files.MakeFolder(PathOf("here/inner/more")), 0); // existing is no error
    EXPECT_THAT(Files.List(PathOf("here")), ElementsAre("A", "b"));
    EXPECT_TRUE(Files.List(PathOf("none")).empty());
}

TEST_F(FileTools, RemoveAndRenameTellWhatIsMissing) {
    EXPECT_EQ(Files.Remove(PathOf("none")), ENOENT);
    EXPECT_EQ(Files.Rename(PathOf("none"), PathOf("a")), ENOENT);
    MakeFile("a", "x");
    EXPECT_TRUE(Files.Exists(PathOf("a")));
    EXPECT_EQ(Files.Remove(PathOf("a")), 0);
    EXPECT_FALSE(Files.Exists(PathOf("a")));
}

TEST(Paths, AreCutAtEitherSeparator) {
    EXPECT_EQ(FolderOf("/a/b/c.zrt"), "/a/b/");
    EXPECT_EQ(NameOf("/a/b/c.zrt"), "c.zrt");
    EXPECT_EQ(FolderOf("C:\\logs\\c.zrt"), "C:\\logs\\");
    EXPECT_EQ(NameOf("C:\\logs\\c.zrt"), "c.zrt");
    EXPECT_EQ(FolderOf("c.zrt"), "");
    EXPECT_EQ(NameOf("c.zrt"), "c.zrt");
    EXPECT_EQ(NameOf("/a/"), "");
    EXPECT_EQ(WithSeparator("/a"), "/a/");
    EXPECT_EQ(WithSeparator("/a/"), "/a/");
    EXPECT_EQ(WithSeparator("C:\\a\\"), "C:\\a\\");
    EXPECT_EQ(WithSeparator(""), "/");
}

} // namespace
} // namespace zrt
