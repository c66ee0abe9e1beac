// What becomes of a contact when the disk refuses it.
#include "app/log_loader.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/keys.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "support/program.h"

#include <cerrno>

namespace zrt {
namespace {

// A started program with a Generic log of one contact.
class WritingAContact : public ProgramTest {
  protected:
    WritingAContact() {
        StartProgram();
        OpenNewLog(kGeneric);
        LogContact("K1ZZ");
    }
    static std::string AllEntries() {
        std::string bytes;
        for (int n = 1; n < Log.NextEntry; ++n)
            bytes += EntryBytes(Log.LogEntries[n]);
        return bytes;
    }
    static void ExpectAllOnDisk() {
        EXPECT_EQ(Hex(BytesOf(kTempLog).substr(0, 26)), Hex(HeaderBytes("GEN  ")));
        EXPECT_EQ(Hex(BytesOf(kTempLog).substr(60)), Hex(AllEntries()));
        EXPECT_TRUE(Log.Unwritten.empty());
        EXPECT_FALSE(LogForm.lblNotOnDisk.Visible);
    }
    static void PassSeconds(int seconds) {
        PumpUntil(Clock.Steady() + seconds * kSecond, [] { return false; });
    }
};

TEST_F(WritingAContact, IsDoneBeforeTheFieldsClear) {
    static std::string field;
    field.clear();
    Files.Sync = [](int handle) {
        field = LogForm.InData[0].Text;
        return DiskFiles().Sync(handle);
    };
    LogContact("K2ZZ");
    EXPECT_EQ(field, "K2ZZ");
    ExpectAllOnDisk();
}

TEST_F(WritingAContact, OnAFullDiskTellsAndGoesOnAfterCancel) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(LastBox().Text, "No space left on device");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::RetryCancel);
    EXPECT_EQ(Log.NextEntry, 3); // the contact is in the log
    EXPECT_EQ(LogForm.InData[0].Text, "");
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
    EXPECT_TRUE(LogForm.lblNotOnDisk.Visible);
    EXPECT_NE(LogForm.lblNotOnDisk.Caption.find("1 QSO, Nr 2."), std::string::npos)
        << LogForm.lblNotOnDisk.Caption;
}

TEST_F(WritingAContact, OnABrokenDiskTellsAndGoesOnAfterCancel) {
    Devices.Disk = DiskMode::Broken;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    EXPECT_EQ(LastBox().Text, "Input/output error");
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_TRUE(LogForm.lblNotOnDisk.Visible);
}

TEST_F(WritingAContact, IsRepeatedAfterRetryUntilItWorks) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Retry, BoxAnswer::Retry, BoxAnswer::Retry});
    WhileBoxShows([] {});
    WhileBoxShows([] {});
    WhileBoxShows([] { Devices.Disk = DiskMode::Ok; });
    LogContact("K2ZZ");
    EXPECT_EQ(Devices.Boxes.size(), 3U);
    EXPECT_EQ(Log.NextEntry, 3);
    ExpectAllOnDisk();
}

TEST_F(WritingAContact, TakesTheOwedOnesAlong) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel, BoxAnswer::Cancel});
    LogContact("K2ZZ");
    LogContact("K3ZZ");
    EXPECT_NE(LogForm.lblNotOnDisk.Caption.find("2 to 3"), std::string::npos);
    Devices.Disk = DiskMode::Ok;
    LogContact("K4ZZ");
    ExpectAllOnDisk();
}

TEST_F(WritingAContact, ThatIsOwedIsTriedQuietlyEveryTenSeconds) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    PassSeconds(30);
    EXPECT_EQ(Devices.Boxes.size(), 1U); // no box while it still fails
    EXPECT_TRUE(LogForm.lblNotOnDisk.Visible);
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
    Devices.Disk = DiskMode::Ok;
    PassSeconds(11);
    ExpectAllOnDisk();
}

TEST_F(WritingAContact, MakesAVanishedFileAgain) {
    std::remove(PathOf(kTempLog).c_str());
    LogContact("K2ZZ");
    EXPECT_TRUE(Devices.Boxes.empty());
    ExpectAllOnDisk();
}

TEST_F(WritingAContact, MakesAFileThatLostItsHeaderAgain) {
    MakeFile(kTempLog, "");
    LogContact("K2ZZ");
    EXPECT_TRUE(Devices.Boxes.empty());
    ExpectAllOnDisk();
}

TEST_F(WritingAContact, ThatWasCountedIsCountedOnceWhateverTheDiskDoes) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Retry, BoxAnswer::Cancel});
    LogContact("K2ZZ");
    Devices.Disk = DiskMode::Ok;
    LogContact("K3ZZ");
    EXPECT_EQ(Log.LogEntries[2].SentNumber, 2);
    EXPECT_EQ(Log.LogEntries[3].SentNumber, 3);
    EXPECT_EQ(BytesOf(kTempLog).size(), 240U);
}

TEST_F(WritingAContact, ThatIsOwedIsForgottenWithTheLog) {
    Devices.Disk = DiskMode::Full;
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    Devices.Disk = DiskMode::Ok;
    OpenNewLog(kSs);
    Session.ReplacingLog = true;
    LoadLog(0);
    EXPECT_TRUE(Log.Unwritten.empty());
    EXPECT_FALSE(LogForm.lblNotOnDisk.Visible);
}

TEST_F(WritingAContact, ToAFileThatMayNotBeOpenedIsOwed) {
    Files.Open = [](const std::string &, OpenMode, int &) { return EACCES; };
    Answer({BoxAnswer::Cancel});
    LogContact("K2ZZ");
    EXPECT_EQ(LastBox().Text, "Permission denied");
    Files.Open = DiskFiles().Open;
    LogContact("K3ZZ");
    ExpectAllOnDisk();
}

} // namespace
} // namespace zrt
