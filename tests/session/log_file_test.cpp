#include "session/log_file.h"

#include "entry/log_form.h"
#include "platform/files.h"
#include "session/bands.h"
#include "support/program.h"

#include <cerrno>
#include <cstdio>

namespace zrt {
namespace {

class LogFile : public ProgramTest {
  protected:
    // Appends n entries that are told apart by their calls.
    static void Append(int n) {
        for (int i = 0; i < n; ++i) {
            Log.WorkingEntry =
                MakeEntry("K" + std::to_string(Log.NextEntry) + "ZZ", -21155, 1437, 3, '2');
            EXPECT_EQ(AppendEntry(), 0);
        }
    }
    static std::string Entries(int from, int to) {
        std::string bytes;
        for (int n = from; n <= to; ++n)
            bytes += EntryBytes(Log.LogEntries[n]);
        return bytes;
    }
};

TEST_F(LogFile, ThatIsNewHoldsTheHeaderAloneIn26Bytes) {
    OpenNewLog(kGeneric);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(HeaderBytes("GEN  ")));
    EXPECT_EQ(Log.NextEntry, 1);
}

TEST_F(LogFile, HasItsFirstEntryAtByte60AndZerosBeforeIt) {
    OpenNewLog(kGeneric);
    Append(1);
    const std::string bytes = BytesOf(kTempLog);
    EXPECT_EQ(bytes.size(), 120U);
    EXPECT_EQ(Hex(bytes.substr(0, 26)), Hex(HeaderBytes("GEN  ")));
    EXPECT_EQ(Hex(bytes.substr(26, 34)), Hex(std::string(34, '\0')));
    EXPECT_EQ(Hex(bytes.substr(60)), Hex(EntryBytes(Log.LogEntries[1])));
    EXPECT_EQ(Log.NextEntry, 2);
}

TEST_F(LogFile, GrowsBy60BytesAnEntryInOrder) {
    OpenNewLog(kGeneric);
    Append(5);
    EXPECT_EQ(Hex(BytesOf(kTempLog).substr(60)), Hex(Entries(1, 5)));
    EXPECT_EQ(Log.LogEntries[5].Callsign.Trimmed(), "K5ZZ");
}

TEST_F(LogFile, IsClosedBetweenContacts) {
    OpenNewLog(kGeneric);
    static int open;
    open = 0;
    Files.Open = [](const std::string &path, OpenMode mode, int &handle) {
        ++open;
        return DiskFiles().Open(path, mode, handle);
    };
    Files.Close = [](int handle) {
        --open;
        return DiskFiles().Close(handle);
    };
    Append(3);
    EXPECT_EQ(open, 0);
}

TEST_F(LogFile, IsSyncedBeforeAppendEntryReturns) {
    OpenNewLog(kGeneric);
    static int syncs;
    syncs = 0;
    Files.Sync = [](int handle) {
        ++syncs;
        return DiskFiles().Sync(handle);
    };
    Append(1);
    EXPECT_EQ(syncs, 1);
}

TEST_F(LogFile, WriteEntryRewritesOneEntryInItsPlace) {
    OpenNewLog(kGeneric);
    Append(3);
    const std::string before = BytesOf(kTempLog);
    Log.WorkingEntry = MakeEntry("VOID", -21155, 1437, 3, '0');
    EXPECT_EQ(WriteEntry(2), 0);
    const std::string after = BytesOf(kTempLog);
    EXPECT_EQ(after.size(), before.size());
    EXPECT_EQ(Hex(after.substr(0, 120)), Hex(before.substr(0, 120)));
    EXPECT_EQ(Hex(after.substr(120, 60)), Hex(EntryBytes(Log.WorkingEntry)));
    EXPECT_EQ(Hex(after.substr(180)), Hex(before.substr(180)));
    EXPECT_EQ(Log.NextEntry, 4);
    EXPECT_TRUE(IsVoid(Log.LogEntries[2])); // it keeps its place and number
}

TEST(EntryCountFromFile, IsTheNumberOfRecordsWithTheHeadersSlot) {
    EXPECT_EQ(EntryCountFromFile(26, 60), 1);
    EXPECT_EQ(EntryCountFromFile(120, 60), 2);
    EXPECT_EQ(EntryCountFromFile(std::uint64_t{60} * 9001, 60), 9001);
    EXPECT_EQ(EntryCountFromFile(26, 26), 1);
    EXPECT_EQ(EntryCountFromFile(52, 26), 2);
    EXPECT_EQ(EntryCountFromFile(72, 36), 2);
}

TEST(EntryCountFromFile, RoundsOddLengthsWithTiesToEven) {
    EXPECT_EQ(EntryCountFromFile(150, 60), 2); // 2.5
    EXPECT_EQ(EntryCountFromFile(210, 60), 4); // 3.5
    EXPECT_EQ(EntryCountFromFile(149, 60), 2);
    EXPECT_EQ(EntryCountFromFile(151, 60), 3);
    EXPECT_EQ(EntryCountFromFile(90, 60), 2); // 1.5
    EXPECT_EQ(EntryCountFromFile(39, 26), 2); // 1.5
    EXPECT_EQ(EntryCountFromFile(65, 26), 2); // 2.5
}

TEST(EntryCountFromFile, IsNeverBelowOneAndBearsAnyLength) {
    EXPECT_EQ(EntryCountFromFile(0, 60), 1);
    EXPECT_EQ(EntryCountFromFile(1, 60), 1);
    EXPECT_GT(EntryCountFromFile(std::uint64_t(1) << 60, 26), 9001);
}

TEST(RecordLengthOf, FollowsFormatAndContest) {
    for (i16 id = 1; id <= kContests; ++id) {
        EXPECT_EQ(RecordLength(true, id), 60U);
        EXPECT_EQ(RecordLength(false, id), id == 4 || id == 9 || id == 12 ? 36U : 26U) << id;
    }
}

TEST_F(LogFile, HeaderIsReadOf26BytesAndNotOfFewer) {
    MakeFile("a.zrt", HeaderBytes("SS9CW"));
    LogHeader header;
    EXPECT_EQ(ReadHeader(PathOf("a.zrt"), header), 0);
    EXPECT_EQ(header.ContestTag.Whole(), "SS9CW");
    MakeFile("a.zrt", HeaderBytes("SS9CW").substr(0, 25));
    EXPECT_NE(ReadHeader(PathOf("a.zrt"), header), 0);
    EXPECT_EQ(ReadHeader(PathOf("none.zrt"), header), ENOENT);
    EXPECT_FALSE(FileExists("none.zrt")); // opening for reading makes no file
}

TEST_F(LogFile, BytesBehindTheHeaderNeverMatter) {
    LoadTemporary(HeaderBytes("GEN  ") + std::string(34, '\xAA') +
                  EntryBytes(MakeEntry("K1ZZ", -21155, 1437, 3, '2')));
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Log.LogEntries[1].Callsign.Trimmed(), "K1ZZ");
}

TEST_F(LogFile, AHalfRecordAtTheEndReadsAsZerosAndBlanks) {
    const std::string entry = EntryBytes(MakeEntry("K1ZZ", -21155, 1437, 3, '2'));
    LoadTemporary(HeaderBytes("GEN  ") + std::string(34, '\0') + entry + entry.substr(0, 31));
    ASSERT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.LogEntries[2].Callsign.Trimmed(), "K1ZZ");
    EXPECT_EQ(Log.LogEntries[2].Frequency.Trimmed(), "");
}

TEST_F(LogFile, OldFormsAreReadIntoTheirOwnArrays) {
    const std::string entry = EntryBytes(MakeEntry("K1ZZ", 21155, 1437, 3, '2'));
    std::string header = HeaderBytes("SS9CW");
    header[4] = 0;
    LoadTemporary(header + entry.substr(0, 26) + entry.substr(0, 26));
    EXPECT_FALSE(Log.CurrentFormat);
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.OldEntries26[2].Callsign.Trimmed(), "K1ZZ");
    EXPECT_EQ(EntryFields(2).Callsign.Trimmed(), "K1ZZ");
    EXPECT_EQ(Log.LogEntries[1], LogEntry{});

    BeginProcess(Devices.ProgramFolder);
    header = HeaderBytes("NA CW");
    header[4] = 2; // anything but 1
    LoadTemporary(header + std::string(10, '\0') + entry.substr(0, 26) + "JOE       ");
    EXPECT_FALSE(Log.CurrentFormat);
    EXPECT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Log.OldEntries36[1].RcvdName.Trimmed(), "JOE");
    EXPECT_EQ(EntryFields(1).RcvdName.Trimmed(), "JOE");
}

TEST_F(LogFile, AFailedWriteIsOwedAndComesWithTheNextOne) {
    OpenNewLog(kGeneric);
    Append(1);
    Devices.Disk = DiskMode::Full;
    Log.WorkingEntry = MakeEntry("K2ZZ", -21155, 1438, 3, '2');
    EXPECT_EQ(AppendEntry(), ENOSPC);
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(Log.Unwritten, (std::vector<i16>{2}));
    EXPECT_EQ(BytesOf(kTempLog).size(), 120U);
    Devices.Disk = DiskMode::Ok;
    Append(1);
    EXPECT_TRUE(Log.Unwritten.empty());
    EXPECT_EQ(Hex(BytesOf(kTempLog).substr(60)), Hex(Entries(1, 3)));
}

TEST_F(LogFile, AFailedSyncIsAFailedWrite) {
    OpenNewLog(kGeneric);
    Files.Sync = [](int) { return EIO; };
    Log.WorkingEntry = MakeEntry("K1ZZ", -21155, 1437, 3, '2');
    EXPECT_EQ(AppendEntry(), EIO);
    EXPECT_EQ(Log.Unwritten, (std::vector<i16>{1}));
}

TEST_F(LogFile, AFailedCloseIsAFailedWrite) {
    OpenNewLog(kGeneric);
    Files.Close = [](int handle) { return DiskFiles().Close(handle) == 0 ? EIO : EBADF; };
    Log.WorkingEntry = MakeEntry("K1ZZ", -21155, 1437, 3, '2');
    EXPECT_EQ(AppendEntry(), EIO);
    EXPECT_EQ(Log.Unwritten, (std::vector<i16>{1}));
}

TEST_F(LogFile, ThatHasVanishedIsMadeAgainWithAllEntries) {
    OpenNewLog(kGeneric);
    Append(3);
    std::remove(PathOf(kTempLog).c_str());
    Append(1);
    const std::string bytes = BytesOf(kTempLog);
    EXPECT_EQ(bytes.size(), 300U);
    EXPECT_EQ(Hex(bytes.substr(0, 26)), Hex(HeaderBytes("GEN  ")));
    EXPECT_EQ(Hex(bytes.substr(60)), Hex(Entries(1, 4)));
}

TEST_F(LogFile, ThatHasLostItsHeaderIsMadeAgainWithAllEntries) {
    for (const std::size_t left : {std::size_t{0}, std::size_t{25}}) {
        BeginProcess(Devices.ProgramFolder);
        OpenNewLog(kGeneric);
        Append(3);
        MakeFile(kTempLog, BytesOf(kTempLog).substr(0, left));
        Append(1);
        const std::string bytes = BytesOf(kTempLog);
        EXPECT_EQ(Hex(bytes.substr(0, 26)), Hex(HeaderBytes("GEN  ")));
        EXPECT_EQ(Hex(bytes.substr(60)), Hex(Entries(1, 4)));
    }
}

TEST_F(LogFile, ThatHasLostEntriesGetsThemBack) {
    OpenNewLog(kGeneric);
    Append(3);
    MakeFile(kTempLog, BytesOf(kTempLog).substr(0, 150));
    Append(1);
    const std::string bytes = BytesOf(kTempLog);
    EXPECT_EQ(Hex(bytes.substr(0, 26)), Hex(HeaderBytes("GEN  ")));
    EXPECT_EQ(Hex(bytes.substr(60)), Hex(Entries(1, 4)));
}

TEST_F(LogFile, ThatHasVanishedFromAFullDiskIsMadeAgainLater) {
    OpenNewLog(kGeneric);
    Append(2);
    std::remove(PathOf(kTempLog).c_str());
    Devices.Disk = DiskMode::Full;
    Log.WorkingEntry = MakeEntry("K3ZZ", -21155, 1438, 3, '2');
    EXPECT_EQ(AppendEntry(), ENOSPC);
    Devices.Disk = DiskMode::Ok;
    EXPECT_EQ(WriteOwedEntries(), 0);
    EXPECT_EQ(Hex(BytesOf(kTempLog).substr(60)), Hex(Entries(1, 3)));
}

// A system may call the pages of a failed sync clean: the next sync succeeds, and the disk has
// nothing.
TEST_F(LogFile, ThatWasMadeAgainAndNotSyncedIsWrittenWholeAgain) {
    OpenNewLog(kGeneric);
    Append(3);
    std::remove(PathOf(kTempLog).c_str());
    Files.Sync = [](int) { return EIO; };
    Log.WorkingEntry = MakeEntry("K4ZZ", -21155, 1438, 3, '2');
    EXPECT_EQ(AppendEntry(), EIO);
    EXPECT_EQ(Log.Unwritten.size(), 4U);
    static std::uint64_t written;
    written = 0;
    Files.Sync = DiskFiles().Sync;
    Files.WriteAt = [](int handle, std::uint64_t offset, std::span<const std::byte> bytes) {
        written += bytes.size();
        return DiskFiles().WriteAt(handle, offset, bytes);
    };
    EXPECT_EQ(WriteOwedEntries(), 0);
    EXPECT_EQ(written, 300U);
    EXPECT_FALSE(IsOwedToDisk());
    EXPECT_EQ(Hex(BytesOf(kTempLog).substr(60)), Hex(Entries(1, 4)));
}

TEST_F(LogFile, ThatWasMadeAgainIsOwedUntilItsFolderIsSynced) {
    OpenNewLog(kGeneric);
    Append(2);
    std::remove(PathOf(kTempLog).c_str());
    Files.SyncFolder = [](const std::string &) { return EIO; };
    EXPECT_EQ(BringFileUpToDate(), EIO);
    EXPECT_EQ(Log.Unwritten.size(), 2U);
    static int folderSyncs;
    folderSyncs = 0;
    Files.SyncFolder = [](const std::string &) { return ++folderSyncs, 0; };
    EXPECT_EQ(WriteOwedEntries(), 0);
    EXPECT_EQ(folderSyncs, 1);
}

TEST_F(LogFile, StaysLockedWhenAnotherFileTakesItsPlace) {
    const auto isLocked = [] {
        FileLock other;
        DiskFiles().LockOpenFile(PathOf(kTempLog), other);
        const bool held = other.Result == LockResult::Held;
        DiskFiles().Unlock(other);
        return held;
    };
    OpenNewLog(kGeneric);
    EXPECT_TRUE(isLocked());
    Append(1);
    EXPECT_EQ(EmptyLogFile(), 0);
    EXPECT_TRUE(isLocked());
    std::remove(PathOf(kTempLog).c_str());
    EXPECT_EQ(BringFileUpToDate(), 0);
    EXPECT_TRUE(isLocked());
    UnlockLog();
    EXPECT_FALSE(isLocked());
}

// ---- what other processes do to the file

TEST_F(LogFile, IsComparedWithMemoryAndGetsBackWhatItLacks) {
    OpenNewLog(kGeneric);
    Append(5);
    const std::string whole = BytesOf(kTempLog);
    std::string holed = whole;
    holed.replace(120, 60, std::string(60, '\0'));
    for (const std::string &left : {std::string(), std::string(1000, 'x'), whole.substr(0, 25),
                                    whole.substr(0, 26), whole.substr(0, 60), whole.substr(0, 150),
                                    whole.substr(0, 300), holed, std::string(360, 'x')}) {
        MakeFile(kTempLog, left);
        EXPECT_EQ(BringFileUpToDate(), 0);
        EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(whole)) << left.size();
    }
    std::remove(PathOf(kTempLog).c_str());
    EXPECT_EQ(BringFileUpToDate(), 0);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(whole));
}

TEST_F(LogFile, ThatHoldsAllIsNotWritten) {
    OpenNewLog(kGeneric);
    Append(3);
    --Log.NextEntry; // killed: the file keeps it
    const std::string whole = BytesOf(kTempLog);
    Devices.Disk = DiskMode::Broken;
    EXPECT_EQ(BringFileUpToDate(), 0);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(whole));
}

// A band that was repaired and texts with NUL are no difference.
TEST_F(LogFile, ThatCameFromElsewhereIsNotWrittenForItsOddBytes) {
    std::string entry = EntryBytes(MakeEntry("K1ZZ", -21155, 1437, 99, '2'));
    entry.replace(10, 6, std::string(6, '\0'));
    const std::string bytes =
        HeaderBytes("GEN\0\0") + std::string(34, '\xAA') + entry + entry.substr(0, 31);
    LoadTemporary(bytes);
    ASSERT_EQ(Log.LogEntries[1].BandIndex, kBandOfBadCode);
    EXPECT_EQ(BringFileUpToDate(), 0);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(bytes));
}

TEST_F(LogFile, ThatWasReplacedOrChangedOnPurposeIsLeftAlone) {
    OpenNewLog(kGeneric);
    Append(3);
    std::string changed = BytesOf(kTempLog);
    changed.replace(126, 4, "VOID");
    const std::string other = HeaderBytes("AA CW") + std::string(34, '\0');
    for (const std::string &bytes : {changed, other}) {
        MakeFile(kTempLog, bytes);
        EXPECT_EQ(BringFileUpToDate(), 0);
        EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(bytes));
    }
}

TEST_F(LogFile, ThatWasReplacedTakesNoContactsOfThisOne) {
    OpenNewLog(kGeneric);
    Append(3);
    const std::string whole = BytesOf(kTempLog);
    const std::string other = HeaderBytes("AA CW") + std::string(400, '\0');
    MakeFile(kTempLog, other);
    Log.WorkingEntry = MakeEntry("K4ZZ", -21155, 1437, 3, '2');
    EXPECT_EQ(AppendEntry(), EEXIST);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(other));
    MakeFile(kTempLog, std::string(500, 'x')); // no log at all
    EXPECT_EQ(WriteOwedEntries(), 0);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(whole + EntryBytes(Log.LogEntries[4])));
}

TEST_F(LogFile, ThatCantBeReadIsOwedAsAWhole) {
    OpenNewLog(kGeneric);
    Append(3);
    Files.ReadAt = [](int, std::uint64_t, std::span<std::byte>, std::size_t &) { return EIO; };
    EXPECT_EQ(BringFileUpToDate(), EIO);
    EXPECT_EQ(Log.Unwritten.size(), 3U);
    EXPECT_EQ(WriteOwedEntries(), 0);
    EXPECT_FALSE(IsOwedToDisk());
}

TEST_F(LogFile, OfAnOldFormIsMadeAgainInItsOwnForm) {
    const std::string entry = EntryBytes(MakeEntry("K1ZZ", 21155, 1437, 3, '2'));
    std::string header = HeaderBytes("SS9CW");
    header[4] = 0;
    const std::string old26 = header + entry.substr(0, 26) + entry.substr(0, 26);
    header = HeaderBytes("NA CW");
    header[4] = 0;
    const std::string old36 = header + std::string(10, '\0') + entry.substr(0, 26) + "JOE       ";
    for (const std::string &bytes : {old26, old36}) {
        BeginProcess(Devices.ProgramFolder);
        LoadTemporary(bytes);
        std::remove(PathOf(kTempLog).c_str());
        EXPECT_EQ(BringFileUpToDate(), 0);
        EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(bytes));
        MakeFile(kTempLog, bytes.substr(0, 40));
        EXPECT_EQ(BringFileUpToDate(), 0);
        EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(bytes));
    }
}

TEST_F(LogFile, TheArraysHold9000EntriesAnd5000OfTheOldNamedForm) {
    EXPECT_EQ(Log.LogEntries.size(), 9001U);
    EXPECT_EQ(Log.OldEntries26.size(), 9001U);
    EXPECT_EQ(Log.OldEntries36.size(), 5001U);
    OpenNewLog(kGeneric);
    Log.NextEntry = 9000;
    EXPECT_FALSE(IsFull());
    Log.NextEntry = 9001;
    EXPECT_TRUE(IsFull());
    Log.CurrentFormat = false;
    Log.NextEntry = 5000;
    EXPECT_FALSE(IsFull());
    Log.NextEntry = 5001;
    EXPECT_TRUE(IsFull());
}

} // namespace
} // namespace zrt
