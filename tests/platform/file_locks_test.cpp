#include "platform/file_locks.h"

#include "platform/files.h"
#include "support/other_process.h"
#include "support/program.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace zrt {
namespace {

class FileLocks : public ProgramTest {
  protected:
    void TearDown() override {
        for (FileLock *lock : {&First, &Second})
            Unlock(*lock);
        ProgramTest::TearDown();
    }
    FileLock First, Second;
};

// What the superuser may do, other users may not; a test that runs as the superuser acts as one of
// them for a while.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        EXPECT_EQ(::chmod(Devices.ProgramFolder.c_str(), 0755), 0);
        BecomeUser(kNobody);
    }
    ~OrdinaryUser() { BecomeUser(0); }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

  private:
    static constexpr uid_t kNobody = 65534;
    void BecomeUser(uid_t user) const {
        if (Super) {
            EXPECT_EQ(::seteuid(user), 0);
        }
    }
    const bool Super = ::geteuid() == 0;
};

TEST_F(FileLocks, OfAProcessIsTakenOnce) {
    EXPECT_EQ(LockProcess(PathOf("lock")).Result, LockResult::Taken);
    EXPECT_EQ(LockProcess(PathOf("lock")).Result, LockResult::Held);
    EXPECT_EQ(LockProcess(PathOf("other")).Result, LockResult::Taken);
}

TEST_F(FileLocks, OfAProcessIsFoundHeldInAFileOfAnotherOwner) {
    EXPECT_EQ(LockProcess(PathOf("lock")).Result, LockResult::Taken);
    ASSERT_EQ(::chmod(PathOf("lock").c_str(), 0444), 0);
    const OrdinaryUser user;
    EXPECT_EQ(LockProcess(PathOf("lock")).Result, LockResult::Held);
}

TEST_F(FileLocks, OfAProcessIsTakenInAFileOfAnotherOwner) {
    MakeFile("lock", "");
    ASSERT_EQ(::chmod(PathOf("lock").c_str(), 0444), 0);
    const OrdinaryUser user;
    EXPECT_EQ(LockProcess(PathOf("lock")).Result, LockResult::Taken);
    EXPECT_EQ(LockProcess(PathOf("lock")).Result, LockResult::Held);
}

TEST_F(FileLocks, OfAProcessThatCantBeAskedForIsNeitherTakenNorHeld) {
    MakeFile("lock", "");
    ASSERT_EQ(::chmod(PathOf("lock").c_str(), 0), 0);
    EXPECT_EQ(LockProcess(PathOf("none/lock")).Error, ENOENT);
    const OrdinaryUser user;
    const FileLock lock = LockProcess(PathOf("lock"));
    EXPECT_EQ(lock.Result, LockResult::Impossible);
    EXPECT_EQ(lock.Error, EACCES);
}

TEST_F(FileLocks, OfAnOpenFileKeepsAnotherProcessAwayAndNamesItsHolder) {
    MakeFile("a.ZRT", "x");
    {
        const OtherProcess other([] {
            FileLock lock;
            LockWhileOpen(PathOf("a.ZRT"), lock);
            return lock.Result == LockResult::Taken;
        });
        ASSERT_TRUE(other.Succeeded);
        LockWhileOpen(PathOf("a.ZRT"), First);
        EXPECT_EQ(First.Result, LockResult::Held);
        EXPECT_TRUE(First.Holder.starts_with("process " + std::to_string(other.Id) + " of "))
            << First.Holder;
    }
    LockWhileOpen(PathOf("a.ZRT"), First);
    EXPECT_EQ(First.Result, LockResult::Taken);
}

TEST_F(FileLocks, OfAnOpenFileOutlivesEachReadingAndWritingOfIt) {
    MakeFile("a.ZRT", "x");
    LockWhileOpen(PathOf("a.ZRT"), First);
    FileBytes bytes;
    ASSERT_EQ(ReadFile(PathOf("a.ZRT"), bytes), 0);
    {
        OpenedFile file;
        ASSERT_EQ(file.Open(PathOf("a.ZRT"), OpenMode::Update), 0);
        ASSERT_EQ(file.WriteAt(0, bytes), 0);
    }
    const OtherProcess other([] {
        FileLock lock;
        LockWhileOpen(PathOf("a.ZRT"), lock);
        return lock.Result == LockResult::Held;
    });
    EXPECT_TRUE(other.Succeeded);
}

TEST_F(FileLocks, OfAnOpenFileGoesOverToTheFileThatReplacedIt) {
    MakeFile("a.ZRT", "x");
    LockWhileOpen(PathOf("a.ZRT"), First);
    ASSERT_EQ(Files.Rename(PathOf("a.ZRT"), PathOf("b.ZRT")), 0);
    MakeFile("a.ZRT", "y");
    LockWhileOpen(PathOf("a.ZRT"), First);
    EXPECT_EQ(First.Result, LockResult::Taken);
    LockWhileOpen(PathOf("a.ZRT"), Second);
    EXPECT_EQ(Second.Result, LockResult::Held);
    LockWhileOpen(PathOf("b.ZRT"), Second);
    EXPECT_EQ(Second.Result, LockResult::Taken);
}

TEST_F(FileLocks, OfAnOpenFileStaysWhenTheNextOneCantBeTaken) {
    MakeFile("a.ZRT", "x");
    MakeFile("b.ZRT", "x");
    LockWhileOpen(PathOf("a.ZRT"), First);
    LockWhileOpen(PathOf("b.ZRT"), Second);
    FileLock third;
    for (const char *name : {"b.ZRT", "none.ZRT"}) {
        LockWhileOpen(PathOf(name), First);
        EXPECT_NE(First.Result, LockResult::Taken);
        LockWhileOpen(PathOf("a.ZRT"), third);
        EXPECT_EQ(third.Result, LockResult::Held);
    }
}

TEST_F(FileLocks, OfAFileThatCanOnlyBeReadLetsOtherReadersIn) {
    MakeFile("a.ZRT", "x");
    ASSERT_EQ(::chmod(PathOf("a.ZRT").c_str(), 0444), 0);
    {
        const OrdinaryUser user;
        LockWhileOpen(PathOf("a.ZRT"), First);
        LockWhileOpen(PathOf("a.ZRT"), Second);
        EXPECT_EQ(First.Result, LockResult::Taken);
        EXPECT_EQ(Second.Result, LockResult::Taken);
    }
    Unlock(First);
    Unlock(Second);
    ASSERT_EQ(::chmod(PathOf("a.ZRT").c_str(), 0644), 0);
    LockWhileOpen(PathOf("a.ZRT"), First); // writes
    const OrdinaryUser user;
    LockWhileOpen(PathOf("a.ZRT"), Second);
    EXPECT_EQ(Second.Result, LockResult::Held);
}

TEST_F(FileLocks, DoNotWaitForTheOtherEndOfAPipe) {
    ASSERT_EQ(::mkfifo(PathOf("a.ZRT").c_str(), 0444), 0);
    LockWhileOpen(PathOf("a.ZRT"), First);
    const OrdinaryUser user;
    LockWhileOpen(PathOf("a.ZRT"), Second);
    (void)LockProcess(PathOf("a.ZRT"));
}

} // namespace
} // namespace zrt
