#include "app/log_conversion.h"

#include "app/file_menu.h"
#include "app/log_loader.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/reference_data.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/program.h"

#include <cerrno>

namespace zrt {
namespace {

class OldVersion : public ProgramTest {
  protected:
    OldVersion() {
        StartProgram();
        for (std::size_t i = 0; i < Reference.SsShortForms.size(); ++i)
            Reference.SsShortForms[i] = std::string(1, static_cast<char>('A' + (i + 1) / 10)) +
                                        static_cast<char>('0' + (i + 1) % 10);
    }
    static std::string Header(std::string_view tag, char qthOption, bool currentFormat = false) {
        std::string bytes = HeaderBytes(tag, qthOption);
        bytes[4] = currentFormat ? 1 : 0;
        return bytes;
    }
    static std::string Old26(const char *call, const char *exchange) {
        OldEntry26 entry;
        entry.Date = 11094;
        entry.Time = 2103;
        entry.BandIndex = 3;
        entry.Callsign = call;
        entry.SentNumber = 7;
        entry.RcvdNumber = 13;
        entry.RcvdExchange = exchange;
        entry.Points = "1";
        const auto record = Encode(entry);
        return {reinterpret_cast<const char *>(record.data()), record.size()};
    }
    static void Open(const std::string &bytes) {
        MakeFile("old.ZRT", bytes);
        Settings.RecentFile[0] = PathOf("old.ZRT");
        ClickControl(LogForm.mnuFileRecent[0]);
    }
};

using OldWpx = OldVersion;
using OldSs = OldVersion;
using OldZrt = OldVersion;

// ---- WPX

TEST_F(OldWpx, GetsItsPrefixesAndANewCode) {
    const std::string old =
        Header("WPXCW", '0') + Old26("W1AW/4", "") + Old26("LY2000A", "") + Old26("K1ZZ", "K9");
    Answer({BoxAnswer::Ok});
    Open(old);
    EXPECT_EQ(LastBox().Title, "WPX File Conversion");
    EXPECT_EQ(LastBox().Text,
              "The File selected,  " + PathOf("old.ZRT") +
                  ", is in the format for versions 6.5 and earlier of ZRTLOG.  It will be "
                  "converted to new format readable only by version 7.0 and later.  The old file "
                  "will be saved as  " +
                  PathOf("old.ZRb"));
    EXPECT_EQ(Hex(BytesOf("old.ZRb")), Hex(old));
    EXPECT_EQ(Hex(BytesOf("old.ZRT")), Hex(Header("WPXCW", '2') + Old26("W1AW/4", "W4") +
                                           Old26("LY2000A", "LY200") + Old26("K1ZZ", "K9")));
    EXPECT_EQ(Log.NextEntry, 4);
    EXPECT_EQ(Log.OldEntries26[1].RcvdExchange.Trimmed(), "W4");
    EXPECT_TRUE(Contest.QthUSA);
    EXPECT_EQ(Log.KeptHeader.QthOption.Whole(), "2");
    EXPECT_FALSE(HasSideFile());
}

TEST_F(OldWpx, CodesOfCanadaAndOfNobodyAreTakenAsTold) {
    struct Row {
        char Before, After;
        bool Usa, Canada;
    };
    for (const Row &row :
         {Row{'1', '3', false, true}, Row{' ', '2', true, false}, Row{'x', '2', true, false}}) {
        (void)Files.Remove(PathOf("old.ZRb"));
        if (Log.LogState != kNoLog)
            Answer({BoxAnswer::Yes});
        Answer({BoxAnswer::Ok});
        Open(Header("WPXSB", row.Before) + Old26("K1ZZ", ""));
        EXPECT_EQ(BytesOf("old.ZRT")[25], row.After);
        EXPECT_EQ(Contest.QthUSA, row.Usa);
        EXPECT_EQ(Contest.QthVE, row.Canada);
    }
}

TEST_F(OldWpx, OfTodaysCodesIsNotConverted) {
    const std::string log = Header("WPXCW", '9') + Old26("K1ZZ", "");
    Open(log);
    EXPECT_EQ(BytesOf("old.ZRT"), log);
    EXPECT_FALSE(FileExists("old.ZRb"));
    EXPECT_EQ(Contest.QthContinent, "SA");
}

TEST_F(OldWpx, InTodaysFormatKeepsItsLongRecords) {
    LogEntry entry = MakeEntry("K1ZZ", -21155, 1437, 3, '1');
    const std::string before = EntryBytes(entry);
    entry.RcvdExchange = "K1";
    const std::string gap(34, '\0');
    Answer({BoxAnswer::Ok});
    Open(Header("WPXCW", '?', true) + gap + before + before);
    EXPECT_EQ(Hex(BytesOf("old.ZRT")),
              Hex(Header("WPXCW", '2', true) + gap + EntryBytes(entry) + EntryBytes(entry)));
    EXPECT_EQ(Log.NextEntry, 3);
}

TEST_F(OldWpx, WhoseSavedNameIsTakenIsNotTouched) {
    MakeFile("old.ZRb", "somebody's");
    const std::string old = Header("WPXCW", '0') + Old26("K1ZZ", "");
    Answer({BoxAnswer::Ok, BoxAnswer::Ok});
    Open(old);
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(LastBox().Text.find("File exists"), 0U) << LastBox().Text;
    EXPECT_EQ(BytesOf("old.ZRb"), "somebody's");
    EXPECT_EQ(BytesOf("old.ZRT"), old);
    EXPECT_EQ(Log.LogState, kNoLog);
    EXPECT_FALSE(HasSideFile());
}

TEST_F(OldWpx, OnADiskThatFailsIsNotTouched) {
    const std::string old = Header("WPXCW", '0') + Old26("K1ZZ", "");
    for (const DiskMode disk : {DiskMode::Full, DiskMode::Broken}) {
        MakeFile("old.ZRT", old);
        Settings.RecentFile[0] = PathOf("old.ZRT");
        Devices.Disk = disk;
        Answer({BoxAnswer::Ok, BoxAnswer::Ok});
        FileOpenRecent(1);
        EXPECT_EQ(LastBox().Title, "File or Disk Error");
        EXPECT_EQ(BytesOf("old.ZRT"), old);
        EXPECT_FALSE(FileExists("old.ZRb"));
        EXPECT_EQ(Log.LogState, kNoLog);
        Devices.Disk = DiskMode::Ok;
    }
}

TEST_F(OldWpx, KeepsItsNameWhenTheNewFileCantTakeIt) {
    const std::string old = Header("WPXCW", '0') + Old26("K1ZZ", "");
    Files.Rename = [](const std::string &from, const std::string &to) {
        return to.ends_with("old.ZRT") ? EACCES : DiskFiles().Rename(from, to);
    };
    Answer({BoxAnswer::Ok, BoxAnswer::Ok});
    Open(old);
    EXPECT_EQ(LastBox().Text.find("Permission denied"), 0U) << LastBox().Text;
    EXPECT_EQ(BytesOf("old.ZRT"), old);
    EXPECT_FALSE(FileExists("old.ZRb"));
    EXPECT_FALSE(HasSideFile());
}

// A crash after the copy and before the conversion must not keep the log from being converted.
TEST_F(OldWpx, WhoseCopyIsThereAlreadyIsConverted) {
    const std::string old = Header("WPXCW", '0') + Old26("K1ZZ", "");
    MakeFile("old.ZRb", old);
    Answer({BoxAnswer::Ok});
    Open(old);
    EXPECT_EQ(BytesOf("old.ZRb"), old);
    EXPECT_EQ(BytesOf("old.ZRT"), Header("WPXCW", '2') + Old26("K1ZZ", "K1"));
}

TEST_F(OldWpx, LeavesAFileOfTheOperatorBesideIt) {
    MakeFile("old.ZRT.new", "the operator's own");
    Answer({BoxAnswer::Ok});
    Open(Header("WPXCW", '0') + Old26("K1ZZ", ""));
    EXPECT_TRUE(FileExists("old.ZRb"));
    EXPECT_EQ(BytesOf("old.ZRT.new"), "the operator's own");
}

// ---- SS

TEST_F(OldSs, MapsTheSectionNumbersOfEachYear) {
    struct Row {
        BoxAnswer Answer;
        i16 Year;
        int Number;
        const char *Section; // the row of the short forms: "A1" is row 1, "B2" row 12
    };
    for (const Row &row : {Row{BoxAnswer::No, 95, 1, "A1"}, Row{BoxAnswer::No, 95, 10, "B0"},
                           Row{BoxAnswer::No, 95, 11, "B2"}, Row{BoxAnswer::No, 95, 69, "H0"},
                           Row{BoxAnswer::No, 95, 70, "H2"}, Row{BoxAnswer::No, 95, 77, "H9"},
                           Row{BoxAnswer::Yes, 96, 1, "A1"}, Row{BoxAnswer::Yes, 96, 70, "H0"},
                           Row{BoxAnswer::Yes, 96, 71, "H2"}, Row{BoxAnswer::Yes, 96, 78, "H9"}}) {
        (void)Files.Remove(PathOf("old.ZRb"));
        if (Log.LogState != kNoLog)
            Answer({BoxAnswer::Yes});
        Answer({row.Answer});
        const std::string number = PadLeft(std::to_string(row.Number), 2, '0');
        const std::string old = Header("SS CW", ' ') + Old26("K1ZZ", ("A74" + number).c_str());
        Open(old);
        EXPECT_EQ(LastBox().Title, "Pre-1997 SS Log.  How Many Sections?");
        EXPECT_EQ(LastBox().Buttons, BoxButtons::YesNo);
        EXPECT_EQ(Contest.SsSectionYear, row.Year);
        EXPECT_EQ(Hex(BytesOf("old.ZRb")), Hex(old));
        EXPECT_EQ(
            Hex(BytesOf("old.ZRT")),
            Hex(Header("SS9CW", ' ') + Old26("K1ZZ", (std::string("A74") + row.Section).c_str())))
            << row.Number;
    }
}

TEST_F(OldSs, ANumberThatWasNoSectionTakesTheSectionBefore) {
    Answer({BoxAnswer::No});
    Open(Header("SS CW", ' ') + Old26("K1ZZ", "A7400") + Old26("K2ZZ", "B8012") +
         Old26("K3ZZ", "Q6678") + Old26("K4ZZ", "M91xx"));
    EXPECT_EQ(Log.OldEntries26[1].RcvdExchange.Whole(), "A74  ");
    EXPECT_EQ(Log.OldEntries26[2].RcvdExchange.Whole(), "B80B3");
    EXPECT_EQ(Log.OldEntries26[3].RcvdExchange.Whole(), "Q66B3");
    EXPECT_EQ(Log.OldEntries26[4].RcvdExchange.Whole(), "M91B3");
}

TEST_F(OldSs, IsConvertedOnce) {
    Answer({BoxAnswer::No});
    Open(Header("SS CW", ' ') + Old26("K1ZZ", "A7401"));
    const std::string converted = BytesOf("old.ZRT");
    Answer({BoxAnswer::Yes}); // open another
    ClickControl(LogForm.mnuFileRecent[0]);
    EXPECT_EQ(LastBox().Title, "Log Already Opened");
    EXPECT_EQ(Contest.SsSectionYear, 97);
    EXPECT_EQ(BytesOf("old.ZRT"), converted);
}

// The desktop ends the session while the question stands: nobody has answered it.
TEST_F(OldSs, IsNotConvertedWhenTheProgramEndsInFrontOfTheQuestion) {
    Dialogs.Box = [](const MessageBox &) {
        EndProgram(0);
        return BoxAnswer::No;
    };
    const std::string old = Header("SS CW", ' ') + Old26("K1ZZ", "A7401");
    Open(old);
    EXPECT_EQ(Hex(BytesOf("old.ZRT")), Hex(old));
    EXPECT_FALSE(FileExists("old.ZRb"));
}

TEST_F(OldSs, InTodaysFormatIsNoOldLog) {
    const std::string log = Header("SS CW", ' ', true) + std::string(34, '\0') +
                            EntryBytes(MakeEntry("K1ZZ", -21155, 1437, 3, '2'));
    Open(log);
    EXPECT_EQ(BytesOf("old.ZRT"), log);
    EXPECT_EQ(Contest.SsSectionYear, 97);
}

TEST_F(OldSs, CutInTheMiddleIsConvertedAsFarAsTheRoundedCountSays) {
    Answer({BoxAnswer::No});
    const std::string entry = Old26("K1ZZ", "A7401");
    Open(Header("SS CW", ' ') + entry + entry.substr(0, 20)); // the exchange is lost
    EXPECT_EQ(Log.NextEntry, 3);
    EXPECT_EQ(BytesOf("old.ZRT").size(), 78U);
    EXPECT_EQ(Log.OldEntries26[2].RcvdExchange.Whole(), "   A1");
}

// ---- ZRT

TEST_F(OldZrt, AsksWhereTheStationWasAtEachOpening) {
    const std::string log = Header("ZRTCW", ' ') + Old26("K1ZZ", "5");
    for (const BoxAnswer answer : {BoxAnswer::Yes, BoxAnswer::No}) {
        if (Log.LogState != kNoLog)
            Answer({BoxAnswer::Yes});
        Answer({answer});
        Open(log);
        EXPECT_EQ(LastBox().Title, "Need Station Location Info");
        EXPECT_EQ(LastBox().Text,
                  "This ZRT file was produced with ver. 2.0 or earlier of this program or ver. 4.5 "
                  "or earlier of the DOS program.  The log file header does not indicate whether "
                  "or not the log was produced by a Zarthia or out of state station.       Was the "
                  "station in Zarthia?");
        EXPECT_EQ(Contest.StationInState, answer == BoxAnswer::Yes);
        EXPECT_EQ(BytesOf("old.ZRT"), log);
    }
}

TEST_F(OldZrt, WithItsLocationIsNotAsked) {
    for (const char *tag : {"ZRTIN", "ZRTOS"}) {
        if (Log.LogState != kNoLog)
            Answer({BoxAnswer::Yes});
        Open(Header(tag, ' ') + Old26("K1ZZ", "5"));
        EXPECT_EQ(Contest.StationInState, std::string_view(tag) == "ZRTIN");
    }
}

TEST_F(OldZrt, KeepsTheAnswerWhileItIsReadAgain) {
    Answer({BoxAnswer::Yes});
    Open(Header("ZRTCW", ' ') + Old26("K1ZZ", "5"));
    Session.RescanInPlace = true;
    LoadLog(0);
    EXPECT_TRUE(Contest.StationInState);
    EXPECT_EQ(Log.NextEntry, 2);
}

} // namespace
} // namespace zrt
