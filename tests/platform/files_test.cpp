#include "platform/files.h"

#include "support/program.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <filesystem>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace zrt {
namespace {

using testing::ElementsAre;

std::span<const std::byte> AsBytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

std::vector<std::string> NamesIn(const char *folder) {
    std::vector<std::string> names;
    EXPECT_EQ(Files.List(PathOf(folder), names), 0);
    return names;
}

int Replace(std::string_view name, std::string_view text) {
    return ReplaceFile(PathOf(name), AsBytes(text));
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
    EXPECT_THAT(NamesIn("here"), ElementsAre("a"));
}

TEST_F(FileTools, ReplaceFileLeavesTheOldFileWhenTheDiskIsFull) {
    MakeFile("here/a", "old");
    Devices.Disk = DiskMode::Full;
    EXPECT_EQ(ReplaceFile(PathOf("here/a"), AsBytes("new")), ENOSPC);
    EXPECT_EQ(BytesOf("here/a"), "old");
    EXPECT_THAT(NamesIn("here"), ElementsAre("a"));
}

TEST_F(FileTools, ReplaceFileLeavesTheOldFileWhateverStepFails) {
    const FileDoor whole = Files;
    const auto fails = [](const char *step) {
        SCOPED_TRACE(step);
        MakeFile("a", "old");
        EXPECT_EQ(ReplaceFile(PathOf("a"), AsBytes("new")), EIO);
        EXPECT_EQ(BytesOf("a"), "old");
        EXPECT_FALSE(HasSideFile());
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
    Files.CreateSide = [](const std::string &, std::string &, int &) { return EIO; };
    fails("create");
    Files = whole;
    Files.FollowLinks = [](const std::string &, std::string &) { return EIO; };
    fails("follow");
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
    EXPECT_THAT(NamesIn("here"), ElementsAre("A", "b"));
    std::vector<std::string> names = {"of another folder"};
    EXPECT_EQ(Files.List(PathOf("none"), names), ENOENT);
    EXPECT_TRUE(names.empty());
}

TEST_F(FileTools, AFolderThatCantBeMadeIsAnError) {
    MakeFile("a", "");
    EXPECT_EQ(Files.MakeFolder(PathOf("a")), EEXIST);
    EXPECT_EQ(Files.MakeFolder(PathOf("a/inner")), EEXIST);
    EXPECT_EQ(Files.MakeFolder("/proc/none"), ENOENT);
}

TEST_F(FileTools, AFolderThatCantBeSyncedIsAnError) {
    EXPECT_EQ(Files.SyncFolder(PathOf("none")), ENOENT);
    EXPECT_EQ(Files.SyncFolder(PathOf("here")), 0);
    EXPECT_EQ(Files.SyncFolder(""), 0); // the one that the process is in
}

// What can't be looked at must not be written over as if it were not there.
TEST_F(FileTools, OnlyWhatIsSurelyMissingDoesNotExist) {
    MakeFile("a", "");
    std::filesystem::create_symlink("nowhere", PathOf("broken link"));
    std::filesystem::create_symlink("ring", PathOf("ring"));
    EXPECT_TRUE(Files.Exists(PathOf("broken link")));
    EXPECT_TRUE(Files.Exists(PathOf("ring/a")));
    EXPECT_FALSE(Files.Exists(PathOf("a/inner")));
    EXPECT_FALSE(Files.Exists(PathOf("none")));
    EXPECT_FALSE(Files.Exists(PathOf(std::string(300, 'x'))));
}

// ---- what is replaced

TEST_F(FileTools, ReplaceFileTouchesNoFileOfTheOperator) {
    MakeFile("here/s.ZRT", "old");
    MakeFile("here/s.ZRT.new", "the operator's own");
    EXPECT_EQ(Replace("here/s.ZRT", "new"), 0);
    EXPECT_EQ(BytesOf("here/s.ZRT.new"), "the operator's own");
    EXPECT_THAT(NamesIn("here"), ElementsAre("s.ZRT", "s.ZRT.new"));
}

TEST_F(FileTools, ReplaceFileWritesToWhereALinkLeads) {
    namespace fs = std::filesystem;
    fs::create_directory(PathOf("there"));
    MakeFile("there/log", "old");
    fs::create_symlink("../there/log", PathOf("here/near"));
    fs::create_symlink(PathOf("here/near"), PathOf("far"));
    EXPECT_EQ(Replace("far", "new"), 0);
    EXPECT_EQ(BytesOf("there/log"), "new");
    EXPECT_TRUE(fs::is_symlink(PathOf("far")) && fs::is_symlink(PathOf("here/near")));
    EXPECT_FALSE(HasSideFile() || HasSideFile("here") || HasSideFile("there"));

    fs::remove(PathOf("there/log")); // as on a disk that was renewed
    EXPECT_EQ(Replace("far", "again"), 0);
    EXPECT_EQ(BytesOf("there/log"), "again");
    EXPECT_TRUE(fs::is_symlink(PathOf("here/near")));

    fs::create_symlink("ring", PathOf("ring"));
    EXPECT_EQ(Replace("ring", "x"), ELOOP);
}

TEST_F(FileTools, ReplaceFileKeepsTheModeOfTheFile) {
    for (const mode_t mode : {0600U, 0640U, 0666U, 0444U}) {
        MakeFile("a", "old");
        ASSERT_EQ(::chmod(PathOf("a").c_str(), mode), 0);
        EXPECT_EQ(Replace("a", "new"), 0);
        struct stat status {};
        ASSERT_EQ(::stat(PathOf("a").c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, mode);
        EXPECT_EQ(Files.Remove(PathOf("a")), 0);
    }
}

TEST_F(FileTools, ANewFileIsReadableAsTheUmaskSays) {
    const mode_t before = ::umask(0027);
    EXPECT_EQ(Replace("a", "new"), 0);
    ::umask(before);
    struct stat status {};
    ASSERT_EQ(::stat(PathOf("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(FileTools, ReplaceFileKeepsTheOwnerWhereItMay) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a file away";
    constexpr uid_t kOther = 1234;
    MakeFile("a", "old");
    ASSERT_EQ(::chown(PathOf("a").c_str(), kOther, kOther), 0);
    EXPECT_EQ(Replace("a", "new"), 0);
    struct stat status {};
    ASSERT_EQ(::stat(PathOf("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, kOther);
    EXPECT_EQ(status.st_gid, kOther);
}

TEST_F(FileTools, ReplaceFileTakesTheLongestNames) {
    const std::string name(255, 'x');
    EXPECT_EQ(Replace(name, "first"), 0);
    EXPECT_EQ(Replace(name, "2nd"), 0);
    EXPECT_EQ(BytesOf(name), "2nd");
    EXPECT_EQ(Replace(name + "x", ""), ENAMETOOLONG);
    EXPECT_FALSE(HasSideFile());
}

// A crash can't remove its side file: a later write in that folder does, when no process can be
// writing it.
TEST_F(FileTools, ReplaceFileRemovesOldSideFilesAndNothingElse) {
    namespace fs = std::filesystem;
    using std::chrono::hours;
    const auto makeOld = [](const char *name, hours age) {
        MakeFile(name, "x");
        fs::last_write_time(PathOf(name), fs::file_time_type::clock::now() - age);
    };
    OpenedFile file;
    std::string side;
    ASSERT_EQ(file.CreateSide(PathOf("here/a"), side), 0);
    ASSERT_EQ(file.Close(), 0);
    const std::string own = "here/" + NameOf(side);
    for (const char *name : {"here/.zrtlog-12345678.new", "here/a.new", "here/.zrtlog-1234567.new",
                             "here/.zrtlog-1234567_.new", "here/.zrtlog-12345678.old"})
        makeOld(name, hours(25));
    makeOld("here/.zrtlog-abcdefgh.new", hours(23));
    fs::create_symlink(PathOf("here/a.new"), PathOf("here/.zrtlog-zzzzzzzz.new"));
    EXPECT_EQ(Replace("here/a", "x"), 0);
    EXPECT_THAT(NamesIn("here"),
                testing::UnorderedElementsAre(NameOf(side), "a", "a.new", ".zrtlog-1234567.new",
                                              ".zrtlog-1234567_.new", ".zrtlog-12345678.old",
                                              ".zrtlog-abcdefgh.new", ".zrtlog-zzzzzzzz.new"));
    makeOld(own.c_str(), hours(25));
    EXPECT_EQ(Replace("here/a", "x"), 0);
    EXPECT_FALSE(FileExists(own));
}

TEST_F(FileTools, CopyToFirstMovesTheOthersOn) {
    const std::array names = {PathOf("here/1"), PathOf("here/2")};
    for (const char *text : {"first", "2nd", "3rd"}) {
        MakeFile("a", text);
        EXPECT_EQ(CopyToFirst(PathOf("a"), names), 0);
    }
    EXPECT_EQ(BytesOf("a"), "3rd");
    EXPECT_EQ(BytesOf("here/1"), "3rd");
    EXPECT_EQ(BytesOf("here/2"), "2nd");
    Files.Rename = [](const std::string &, const std::string &) { return EIO; };
    EXPECT_EQ(CopyToFirst(PathOf("a"), names), EIO);
    EXPECT_THAT(NamesIn("here"), ElementsAre("1", "2"));
}

// ---- what is no file

class NoFile : public FileTools {
  protected:
    NoFile() {
        EXPECT_EQ(::mkfifo(PathOf("pipe").c_str(), 0600), 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = PathOf("socket");
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        Socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        EXPECT_EQ(::bind(Socket, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    }
    ~NoFile() override { ::close(Socket); }

  private:
    int Socket = -1;
};

// Opening a pipe would wait for its other end; this test then never ends.
TEST_F(NoFile, IsOpenedInNoWay) {
    for (const OpenMode mode : {OpenMode::Read, OpenMode::Update, OpenMode::Create}) {
        // Devices are only opened: a test that could replace one would harm the machine.
        for (const std::string &path :
             {PathOf("pipe"), PathOf("socket"), std::string("/dev/null")}) {
            OpenedFile file;
            EXPECT_EQ(file.Open(path, mode), kNotRegularFile) << path;
        }
        OpenedFile file;
        EXPECT_EQ(file.Open(PathOf("here"), mode), EISDIR);
    }
}

TEST_F(NoFile, IsNotReplaced) {
    for (const char *name : {"pipe", "socket"}) {
        EXPECT_EQ(Replace(name, "x"), kNotRegularFile) << name;
        EXPECT_FALSE(std::filesystem::is_regular_file(PathOf(name)));
    }
    EXPECT_EQ(Replace("here", "x"), EISDIR);
    EXPECT_FALSE(HasSideFile());
}

TEST_F(NoFile, AFileThatIsTooLongIsRefusedUnread) {
    Files.ReadAt = [](int, std::uint64_t, std::span<std::byte>, std::size_t &) {
        ADD_FAILURE() << "it was read";
        return EIO;
    };
    MakeFile("a", "");
    std::filesystem::resize_file(PathOf("a"), std::uint64_t{1} << 40); // all of it a hole
    FileBytes bytes;
    EXPECT_EQ(ReadFile(PathOf("a"), bytes), EFBIG);
    EXPECT_EQ(ReadFileUpTo(PathOf("a"), 100, bytes), EFBIG);
    EXPECT_EQ(CopyFile(PathOf("a"), PathOf("b")), EFBIG);
    EXPECT_TRUE(bytes.empty());
    EXPECT_FALSE(FileExists("b"));
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
