#include "app/log_loader.h"

#include "app/background.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/statistics.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

#include <algorithm>
#include <cerrno>

namespace zrt {
namespace {

class LogLoader : public ProgramTest {
  protected:
    static std::string LogOf(const std::string &header, int entries) {
        std::string bytes = header + std::string(34, '\0');
        for (int n = 1; n <= entries; ++n)
            bytes += EntryBytes(MakeEntry("K" + std::to_string(n) + "ZZ", -21155, 1437, 12, '1'));
        return bytes;
    }
};

TEST_F(LogLoader, OpensAnEmptyLogOnTheDefaultBand) {
    struct Row {
        const char *Tag;
        i16 Band;
    };
    for (const Row &row : {Row{"GEN  ", 3}, Row{"TEN  ", 1}, Row{"SS9SB", 11}, Row{"SS9CW", 3}}) {
        BeginProcess(Devices.ProgramFolder);
        LoadTemporary(HeaderBytes(row.Tag));
        EXPECT_EQ(Log.NextEntry, 1);
        EXPECT_EQ(CurrentBand(), row.Band) << row.Tag;
    }
}

TEST_F(LogLoader, TakesTheBandOfTheLastEntryForBothRadios) {
    Radios.LogRadio = Radios.TXRadio = 2;
    LoadTemporary(LogOf(HeaderBytes("GEN  "), 3));
    EXPECT_EQ(CurrentBand(), 12);
    EXPECT_EQ(Radios.RadioBandMode[0], 12);
    EXPECT_EQ(Radios.RadioBandMode[1], 12);
    EXPECT_EQ(Radios.LogRadio, 1);
    EXPECT_EQ(Radios.TXRadio, 1);
}

TEST_F(LogLoader, SetsUpTheContestOfTheHeader) {
    LoadTemporary(LogOf(HeaderBytes("WPXCW", '6'), 1));
    EXPECT_EQ(Contest.ContestId, kWpx);
    EXPECT_EQ(Contest.QthContinent, "EU");
    EXPECT_EQ(Contest.OffTimeGap, 60);
    EXPECT_EQ(LogForm.lblLog.Caption, "Log: [Unnamed] - - Contest: WPX CW");
    EXPECT_TRUE(LogForm.InData[0].Visible);
    EXPECT_FALSE(BkgdForm.Visible);
}

TEST_F(LogLoader, NamesAnOpenFileInTheLabel) {
    MakeFile("mine.zrt", LogOf(HeaderBytes("NEQOS"), 1));
    Settings.RecentFile[0] = PathOf("mine.zrt");
    LoadLog(1);
    EXPECT_EQ(LogForm.lblLog.Caption, "Log: mine.zrt - - Contest: NEQP CW");
}

TEST_F(LogLoader, RefusesAFileThatIsNoLog) {
    for (const std::string &bytes : {std::string(), std::string(25, 'x'), HeaderBytes("XYZCW")}) {
        BeginProcess(Devices.ProgramFolder);
        Answer({BoxAnswer::Ok});
        LoadTemporary(bytes);
        EXPECT_EQ(LastBox().Title, "File or Disk Error");
        EXPECT_EQ(Log.LogState, kNoLog);
        EXPECT_FALSE(LogForm.InData[0].Visible);
        EXPECT_EQ(BytesOf(kTempLog), bytes);
    }
}

TEST_F(LogLoader, RefusesAMissingFileAndMakesNone) {
    Settings.RecentFile[0] = PathOf("none.zrt");
    Answer({BoxAnswer::Cancel});
    LoadLog(1);
    EXPECT_EQ(LastBox().Text, "No such file or directory");
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_FALSE(FileExists("none.zrt"));
}

TEST_F(LogLoader, EndsTheProgramAtAnIncompatibleMark) {
    std::string bytes = LogOf(HeaderBytes("GEN  "), 1);
    bytes[17] = 1; // 256
    Answer({BoxAnswer::Ok});
    LoadTemporary(bytes);
    EXPECT_EQ(LastBox().Title, "Incompatible file format error");
    EXPECT_TRUE(Program.Ending);
    EXPECT_EQ(Log.NextEntry, 1);
}

TEST_F(LogLoader, ReadsAsFarAsTheRoundedCountSays) {
    LoadTemporary(LogOf(HeaderBytes("GEN  "), 2) + std::string(29, 'x'));
    EXPECT_EQ(Log.NextEntry, 3);
    BeginProcess(Devices.ProgramFolder);
    LoadTemporary(LogOf(HeaderBytes("GEN  "), 2) + std::string(31, 'x'));
    EXPECT_EQ(Log.NextEntry, 4);
}

TEST_F(LogLoader, TakesABandOutsideOf1To24For16WithoutWritingIt) {
    std::string bytes = HeaderBytes("GEN  ") + std::string(34, '\0');
    for (const i16 band : {i16{0}, i16{25}, i16{-7}, i16{24}})
        bytes += EntryBytes(MakeEntry("K1ZZ", -21155, 1437, band, '1'));
    LoadTemporary(bytes);
    EXPECT_EQ(Log.LogEntries[1].BandIndex, 16);
    EXPECT_EQ(Log.LogEntries[2].BandIndex, 16);
    EXPECT_EQ(Log.LogEntries[3].BandIndex, 16);
    EXPECT_EQ(Log.LogEntries[4].BandIndex, 24);
    EXPECT_EQ(Statistics.QsosPerBand[16], 3);
    EXPECT_EQ(Hex(BytesOf(kTempLog)), Hex(bytes));
}

TEST_F(LogLoader, RepairsTheBandOfOldEntriesOf26BytesButNotOf36) {
    const std::string entry = EntryBytes(MakeEntry("K1ZZ", 21155, 1437, 99, '1'));
    std::string header = HeaderBytes("SS9CW");
    header[4] = 0;
    LoadTemporary(header + entry.substr(0, 26));
    EXPECT_EQ(Log.OldEntries26[1].BandIndex, 16);
    BeginProcess(Devices.ProgramFolder);
    header = HeaderBytes("NA CW");
    header[4] = 0;
    LoadTemporary(header + std::string(10, ' ') + entry.substr(0, 36));
    EXPECT_EQ(Log.OldEntries36[1].BandIndex, 99);
    EXPECT_EQ(CurrentBand(), 99);
    for (int band = 1; band <= 24; ++band)
        EXPECT_EQ(Statistics.QsosPerBand[band], 0);
}

TEST_F(LogLoader, ReadsTheFirst9000EntriesOfAFileThatHoldsMore) {
    Answer({BoxAnswer::Ok, BoxAnswer::Ok});
    LoadTemporary(LogOf(HeaderBytes("GEN  "), 9003));
    EXPECT_EQ(Log.NextEntry, 9001);
    EXPECT_NE(LastBox().Text.find("9003"), std::string::npos) << LastBox().Text;
    LogContact("W1AW");
    EXPECT_EQ(LastBox().Title, "Log Full");
    EXPECT_EQ(Log.NextEntry, 9001);
}

TEST_F(LogLoader, AKilledLastEntryComesBack) {
    LoadTemporary(LogOf(HeaderBytes("GEN  "), 3));
    Log.NextEntry = 3; // killed: the bytes remain
    Answer({BoxAnswer::Yes});
    CrashAndStart();
    EXPECT_EQ(Log.NextEntry, 4);
    EXPECT_EQ(Log.LogEntries[3].Callsign.Trimmed(), "K3ZZ");
}

TEST_F(LogLoader, AKilledLastEntryIsOverwrittenByTheNextContact) {
    LoadTemporary(LogOf(HeaderBytes("GEN  "), 3));
    Log.NextEntry = 3;
    LogContact("W1AW");
    Answer({BoxAnswer::Yes});
    CrashAndStart();
    EXPECT_EQ(Log.NextEntry, 4);
    EXPECT_EQ(Log.LogEntries[3].Callsign.Trimmed(), "W1AW");
}

TEST_F(LogLoader, ClearsACancelOfTheChooserBefore) {
    Session.ChooserCancelled = true;
    LoadTemporary(LogOf(HeaderBytes("GEN  "), 1));
    EXPECT_FALSE(Session.ChooserCancelled);
}

TEST_F(LogLoader, ARescanReadsTheSameFileAgain) {
    LoadTemporary(LogOf(HeaderBytes("GEN  "), 3));
    Session.RescanInPlace = true;
    LoadLog(0);
    EXPECT_EQ(Log.NextEntry, 4);
    EXPECT_EQ(Statistics.QsosPerBand[12], 3); // counted once
    EXPECT_EQ(Statistics.TotalPoints, 3);
    EXPECT_TRUE(Session.RescanInPlace); // stays set
}

TEST_F(LogLoader, ARescanKeepsTheLastLine) {
    LoadTemporary(LogOf(HeaderBytes("GEN  "), 1));
    LogContact("W1AW");
    const std::string last = LogForm.lblLast.Caption;
    Session.RescanInPlace = true;
    LoadLog(0);
    EXPECT_EQ(LogForm.lblLast.Caption, last);
}

TEST_F(LogLoader, ShowsTheLastContactAsAfterItWasLogged) {
    StartProgram();
    OpenNewLog(kSs);
    EXPECT_EQ(LogForm.lblLast.Caption, "");
    LogContact("K6XY", "7 Q 70 SCV");
    const std::string last = LogForm.lblLast.Caption;
    EXPECT_EQ(last, "Last: 20 CW  K6XY  Nr 1  7 Q 70 SCV  Pts 2");
    LogForm.lblLast.Caption.clear();
    LoadTemporary(BytesOf(kTempLog));
    EXPECT_EQ(LogForm.lblLast.Caption, last);
    LogForm.lblLast.Caption.clear();
    LoadTemporary(BytesOf(kTempLog) + EntryBytes(MakeEntry("VOID", -21155, 1437, 3, '0')));
    EXPECT_EQ(LogForm.lblLast.Caption, last); // a void is no contact
}

TEST_F(LogLoader, GivesTheMessageAndVoiceWindowsTheirLeastSizes) {
    static Form messages, voice;
    messages = voice = {};
    RegisterForm(messages, "ViewMac", "stands for the message window", {});
    RegisterForm(voice, "Audio", "stands for the voice window", {});
    auto &rows = Settings.Windows[kGeneric - 1];
    for (const i16 size : {i16{2000}, i16{3050}, i16{5000}}) {
        rows[kViewMac] = {"VIEWMAC", "OPEN", 10, 20, size, size};
        rows[kAudio] = {"AUDIO", "OPEN", 10, 20, size, size};
        rows[kLogForm] = {"LOGFORM", "OPEN", 10, 20, size, size};
        LoadTemporary(LogOf(HeaderBytes("GEN  "), 1));
        EXPECT_EQ(messages.Height, std::max<i16>(size, 3100));
        EXPECT_EQ(messages.Width, size);
        EXPECT_EQ(voice.Width, std::max<i16>(size, 3000));
        EXPECT_EQ(voice.Height, size);
        EXPECT_EQ(LogForm.Width, size);
        EXPECT_EQ(LogForm.Height, size);
    }
    RegisterForm(messages, "", "", {}); // the next test knows nothing of them
    RegisterForm(voice, "", "", {});
}

TEST_F(LogLoader, AReadErrorMayBeRetriedOrGivenUp) {
    static int failures;
    failures = 2;
    MakeFile(kTempLog, LogOf(HeaderBytes("GEN  "), 2));
    Log.LogFileName = PathOf(kTempLog);
    Log.LogState = kTemporaryName;
    Files.ReadAt = [](int handle, std::uint64_t offset, std::span<std::byte> bytes,
                      std::size_t &got) {
        return bytes.size() > 26 && failures-- > 0 ? EIO
                                                   : DiskFiles().ReadAt(handle, offset, bytes, got);
    };
    Answer({BoxAnswer::Retry, BoxAnswer::Retry});
    LoadLog(0);
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(BkgdForm.lblTask.Caption, "Processing: !temp%!!.zrb");
    EXPECT_EQ(BkgdForm.lblEntryNr.Caption, "Log Entry Nr: 2");
    failures = 1;
    Session.RescanInPlace = true;
    Answer({BoxAnswer::Cancel});
    LoadLog(0);
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_EQ(BkgdForm.lblTask.Caption, "Loading: !temp%!!.zrb");
    EXPECT_EQ(BkgdForm.lblEntryNr.Caption, "Log Entry Nr: 1");
    EXPECT_FALSE(BkgdForm.Visible);
}

} // namespace
} // namespace zrt
