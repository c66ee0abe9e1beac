#include "session/reference_data.h"

#include "platform/program.h"
#include "session/data_files.h"
#include "session/radio_state.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/file_in_memory.h"
#include "support/program.h"
#include "support/startup_data_text.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <filesystem>

namespace zrt {
namespace {

using testing::ElementsAre;

class ReferenceTest : public ProgramTest {
  protected:
    ReferenceTest() {
        for (const auto &file : std::filesystem::directory_iterator(PathOf("")))
            std::filesystem::remove(file);
        Session.AppPath = PathOf("");
        Reference = {};
    }
    ~ReferenceTest() override {
        Program = {};
        Reference = {};
    }
};

std::string TextOf(const Country &country) {
    return country.Name.Trimmed() + "|" + country.CQZone.Trimmed() + "|" +
           country.Continent.Trimmed() + "|" + country.MainPrefix.Trimmed();
}

// Every prefix as the old table wrote it: text, "*" and the country's number.
std::vector<std::string> Prefixes() {
    std::vector<std::string> texts;
    for (const PrefixEntry &entry : Reference.Prefixes.Entries)
        texts.push_back((entry.WholeCall ? "=" : "") + entry.Text + "*" +
                        std::to_string(entry.Row) +
                        (entry.Zone == 0 ? "" : " zone " + std::to_string(entry.Zone)));
    return texts;
}

// ---- the files

class DataFiles : public ReferenceTest {};

TEST_F(DataFiles, AreFoundInAnyCase) {
    MakeFile("CtY.DaT", "A:1:2:EU:3:4:5:A1:\n");
    ReadCountries();
    EXPECT_EQ(Reference.CountryCount, 1);
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(DataFiles, TheExactNameGoesBeforeOthers) {
    MakeFile("CTY.DAT", "Upper:1:2:EU:3:4:5:A1:\n");
    MakeFile("cty.dat", "Lower:1:2:EU:3:4:5:A1:\n");
    ReadCountries();
    EXPECT_EQ(Reference.CountryTable[1].Name.Trimmed(), "Lower");
}

TEST_F(DataFiles, AFolderOfTheNameIsNoFile) {
    std::filesystem::create_directory(PathOf("cty.dat"));
    Answer({BoxAnswer::Ok});
    ReadCountries();
    EXPECT_EQ(Devices.Boxes.size(), 1U);
}

TEST_F(DataFiles, AboveTheLimitAreRefusedUnread) {
    MakeFile("master.scp", "K1ABC\n");
    std::filesystem::resize_file(PathOf("master.scp"), kMostFileBytes + 1);
    Files.ReadAt = [](int, std::uint64_t, std::span<std::byte>, std::size_t &) -> int {
        ADD_FAILURE() << "the file was read";
        return EIO;
    };
    Answer({BoxAnswer::Ok});
    ReadMasterScp();
    EXPECT_FALSE(Reference.SCPLoaded);
    EXPECT_EQ(LastBox().Title, "Error Reading Super Check Partial File");
}

TEST_F(DataFiles, LinesEndWithCrLfOrBoth) {
    std::string_view rest = "one\rtwo\nthree\r\n\r\nfour\n\rfive";
    std::vector<std::string> lines;
    while (!rest.empty())
        lines.emplace_back(NextLine(rest));
    EXPECT_THAT(lines, ElementsAre("one", "two", "three", "", "four", "", "five"));
}

// ---- cty.dat

class Countries : public ReferenceTest {
  protected:
    static void Read(std::string_view text) {
        MakeFile("cty.dat", text);
        ReadCountries();
    }
};

TEST_F(Countries, ALineThatEndsInAColonIsACountry) {
    Read("Monaco:                   14:  27:  EU:   43.73:    -7.40:    -1.0:  3a:\r\n"
         "    3A,=3A/4Z5KJ/LH;\r\n");
    ASSERT_EQ(Reference.CountryCount, 1);
    const Country &monaco = Reference.CountryTable[1];
    EXPECT_EQ(TextOf(monaco), "Monaco|14|EU|3A");
    EXPECT_FLOAT_EQ(monaco.Latitude, 43.73F);
    EXPECT_FLOAT_EQ(monaco.Longitude, -7.40F);
    EXPECT_EQ(monaco.Heading.Trimmed(), "");
    EXPECT_THAT(Prefixes(), ElementsAre("3A*1", "=3A/4Z5KJ/LH*1"));
    EXPECT_EQ(Reference.PrefixCount, 2);
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(Countries, TextsAreCutToTheirFields) {
    Read("  A name of more than twenty-five characters :123:2:EUROPE:3:4:5: *abcdefg : \n");
    EXPECT_EQ(TextOf(Reference.CountryTable[1]), "A name of more than twent|12|EU|*ABCD");
}

TEST_F(Countries, ShortLinesLeaveTheRestBlank) {
    Read("Nowhere:\n:\n");
    EXPECT_EQ(Reference.CountryCount, 2);
    EXPECT_EQ(TextOf(Reference.CountryTable[1]), "Nowhere|||");
    EXPECT_EQ(TextOf(Reference.CountryTable[2]), "|||");
    EXPECT_FLOAT_EQ(Reference.CountryTable[2].Latitude, 0);
}

TEST_F(Countries, PlacesOffTheEarthAreBroughtBack) {
    Read("Far:1:2:EU:" + std::string(400, '9') + ":-" + std::string(400, '9') + ":5:F:\n");
    EXPECT_FLOAT_EQ(Reference.CountryTable[1].Latitude, 90);
    EXPECT_FLOAT_EQ(Reference.CountryTable[1].Longitude, -360);
}

TEST_F(Countries, ACommentBeginsWithAQuoteInTheFirstColumn) {
    Read("' a comment: with a colon:\nA:1:2:EU:3:4:5:A1:\n'B1,\n 'C1,\n");
    EXPECT_EQ(Reference.CountryCount, 1);
    EXPECT_THAT(Prefixes(), ElementsAre("'C1*1"));
}

TEST_F(Countries, BlankLinesAreSkipped) {
    Read("\n   \nA:1:2:EU:3:4:5:A1:\n\r\n     \r\nA1;\n");
    EXPECT_EQ(Reference.CountryCount, 1);
    EXPECT_THAT(Prefixes(), ElementsAre("A1*1"));
}

TEST_F(Countries, EveryEndOfAPrefixLineKeepsTheLastPrefix) {
    for (const char *line : {"A1,B2", "A1,B2,", "A1,B2;", " A1 , B2 ; ", "A1,\r\nB2;\r\n"}) {
        Read(std::string("A:1:2:EU:3:4:5:A1:\n") + line);
        EXPECT_THAT(Prefixes(), ElementsAre("A1*1", "B2*1")) << line;
    }
}

TEST_F(Countries, ALonelyEndMarkStoresNothing) {
    Read("A:1:2:EU:3:4:5:A1:\n;\n ; \nA1,;\n");
    EXPECT_THAT(Prefixes(), ElementsAre("A1*1"));
}

TEST_F(Countries, AnEmptyPieceTakesItsPlace) {
    Read("A:1:2:EU:3:4:5:A1:\nA1,,B1;\n");
    EXPECT_THAT(Prefixes(), ElementsAre("A1*1", "*1", "B1*1"));
}

TEST_F(Countries, APrefixBeforeTheFirstCountryBelongsToNone) {
    Read("X1;\nA:1:2:EU:3:4:5:A1:\nA1;\n");
    EXPECT_THAT(Prefixes(), ElementsAre("X1*0", "A1*1"));
}

TEST_F(Countries, PrefixesAreParsedOnce) {
    Read("A:1:2:EU:3:4:5:A1:\n"
         "=A1B(26)[50],A2[50](3),A3<1/2>{AF}~-1~,A*4,(7)A5,A6(x),A7(5,A8(5;\n");
    EXPECT_THAT(Prefixes(), ElementsAre("=A1B*1 zone 26", "A2*1 zone 3", "A3*1", "A*4*1",
                                        "A5*1 zone 7", "A6*1", "A7*1 zone 5", "A8*1 zone 5"));
}

TEST_F(Countries, TheRowsOfFourCountriesAreKept) {
    Read("A:1:2:EU:3:4:5:A1:\nAlaska:1:2:NA:3:4:5:KL:\nUSA:5:8:NA:3:4:5:k:\n"
         "Hawaii:31:61:OC:3:4:5: KH6 :\nCanada:5:9:NA:3:4:5:VE:\n");
    EXPECT_EQ(Reference.CountryRowUsa, 3);
    EXPECT_EQ(Reference.CountryRowCanada, 5);
    EXPECT_EQ(Reference.CountryRowHawaii, 4);
    EXPECT_EQ(Reference.CountryRowAlaska, 2);
    Read("A:1:2:EU:3:4:5:A1:\n");
    EXPECT_EQ(Reference.CountryRowUsa, 0);
}

std::string ManyCountries(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += "Land " + std::to_string(i) + ":1:2:EU:3:4:5:P" + std::to_string(i) + ":\nP" +
                std::to_string(i) + ";\n";
    return text;
}

TEST_F(Countries, ThreeHundredAndFiftyAreAll) {
    Read(ManyCountries(350));
    EXPECT_EQ(Reference.CountryCount, 350);
    EXPECT_EQ(Reference.PrefixCount, 350);
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(Countries, OneMoreIsAWarningAndTheRestIsUsed) {
    Answer({BoxAnswer::Ok});
    Read(ManyCountries(351));
    EXPECT_EQ(Devices.Boxes.size(), 1U);
    EXPECT_EQ(Reference.CountryCount, 350);
    EXPECT_EQ(Reference.PrefixCount, 350);
    EXPECT_EQ(Reference.CountryTable[350].Name.Trimmed(), "Land 350");
}

TEST_F(Countries, PrefixesBeyondMeasureAreAWarning) {
    std::string text = "A:1:2:EU:3:4:5:A1:\n";
    for (int i = 0; i <= kMostPrefixes; ++i)
        text += "A1,";
    Answer({BoxAnswer::Ok});
    Read(text);
    EXPECT_EQ(Devices.Boxes.size(), 1U);
    EXPECT_EQ(Reference.PrefixCount, kMostPrefixes);
}

TEST_F(Countries, AMissingFileIsAWarning) {
    Answer({BoxAnswer::Ok});
    ReadCountries();
    EXPECT_EQ(LastBox().Text,
              "Can't find or read country file cty.dat.  This is not a fatal error unless you are "
              "using a contest that requires it.  Make sure it is in the same drive/directory used "
              "to start program.");
    EXPECT_EQ(LastBox().Title, "Error Reading Initiation Files");
    EXPECT_EQ(LastBox().Icon, BoxIcon::Exclamation);
    EXPECT_EQ(LastBox().Buttons, BoxButtons::Ok);
    EXPECT_FALSE(Program.Ending);
    EXPECT_EQ(Reference.CountryCount, 0);
    EXPECT_EQ(Reference.PrefixCount, 0);
}

TEST_F(Countries, ADiskThatBreaksOffKeepsTheLinesBefore) {
    PutFileInMemory("cty.dat", ManyCountries(10));
    memoryFile.BreaksAt = ManyCountries(4).size() + 7;
    Answer({BoxAnswer::Ok});
    ReadCountries();
    EXPECT_EQ(Devices.Boxes.size(), 1U);
    EXPECT_EQ(Reference.CountryCount, 4);
    EXPECT_EQ(Reference.PrefixCount, 4);
}

TEST_F(Countries, ASecondReadingForgetsTheFirst) {
    Read(ManyCountries(20));
    Read(ManyCountries(2));
    EXPECT_EQ(Reference.CountryCount, 2);
    EXPECT_EQ(Reference.PrefixCount, 2);
    EXPECT_EQ(TextOf(Reference.CountryTable[3]), "|||");
}

TEST_F(Countries, StrangeBytesDoNoHarm) {
    std::string text = "A:1:2:EU:3:4:5:A1:\n" + std::string(1000000, 'x') + "\n";
    text += std::string("\0B1\0,\xFF;\n", 8) + std::string(1000000, ':');
    Read(text);
    EXPECT_EQ(Reference.CountryCount, 2);
    EXPECT_EQ(Reference.PrefixCount, 3);
    EXPECT_EQ(Reference.Prefixes.Entries[0].Text.size(), 1000000U);
    EXPECT_EQ(Reference.Prefixes.Entries[1].Text, std::string("\0B1\0", 4));
}

// ---- master.scp

class MasterScp : public ReferenceTest {
  protected:
    static std::vector<std::string> Read(std::string_view text) {
        MakeFile("master.scp", text);
        ReadMasterScp();
        std::vector<std::string> rows;
        for (i32 n = 1; n <= Reference.SCPCount; ++n)
            rows.emplace_back(SCPRow(n));
        return rows;
    }
    static std::string Calls(int count) {
        std::string text;
        for (int i = 1; i <= count; ++i)
            text += "DL" + std::to_string(i) + "\n";
        return text;
    }
};

TEST_F(MasterScp, MarksTheCallsOfTheUsaAndItsPossessions) {
    EXPECT_THAT(Read("KH6XX\nK6XX\nVE3XX\nDL1XX\nWP4X\nAL7X\n"),
                ElementsAre("+KH6XX", "*K6XX", "*VE3XX", "DL1XX", "+WP4X", "+AL7X"));
    EXPECT_TRUE(Reference.SCPLoaded);
}

TEST_F(MasterScp, MarksEveryTwoLettersAsTold) {
    const std::string both =
        " AA AB AC AD AE AF AG AI AJ AK CF CG CH CI CJ CK CY CZ VA VB VC VD VE "
        "VF VG VO VX VY XJ XK XL XM XN XO ";
    const std::string possessions = " KP NP WP AL KL NL WL AH KH NH WH ";
    for (char first = 'A'; first <= 'Z'; ++first) {
        for (char second = 'A'; second <= 'Z'; ++second) {
            const std::string two{first, second};
            const bool possession = possessions.find(" " + two + " ") != std::string::npos;
            const bool main = both.find(" " + two + " ") != std::string::npos || first == 'K' ||
                              first == 'N' || first == 'W';
            const std::string mark = possession ? "+" : main ? "*" : "";
            EXPECT_THAT(Read(two + "1X"), ElementsAre(mark + two + "1X"));
        }
    }
}

TEST_F(MasterScp, OneCharacterIsACallToo) {
    EXPECT_THAT(Read("K\nA\nV\n1\n"), ElementsAre("*K", "A", "V", "1"));
}

TEST_F(MasterScp, SkipsNotesAndBlankLines) {
    EXPECT_THAT(Read("# Release\r\n#\r\n\r\n   \r\nDL1A\r\nDL1B"), ElementsAre("DL1A", "DL1B"));
}

TEST_F(MasterScp, CutsRowsToElevenCharactersWithTheMark) {
    EXPECT_THAT(Read("DL1ABCDEFGHIJK\nK1ABCDEFGHIJKL\nDL1A      \n"),
                ElementsAre("DL1ABCDEFGH", "*K1ABCDEFGH", "DL1A"));
}

TEST_F(MasterScp, StopsAtItsLimit) {
    MakeFile("master.scp", Calls(50000));
    ReadMasterScp();
    EXPECT_EQ(Reference.SCPCount, 44990);
    EXPECT_EQ(SCPRow(44990), "DL44990");
    EXPECT_TRUE(Reference.SCPLoaded);
}

TEST_F(MasterScp, TheOperatorMaySetAnotherLimit) {
    MakeFile("master.scp", Calls(50000));
    Extensions.ScpLimit = 200000;
    ReadMasterScp();
    EXPECT_EQ(Reference.SCPCount, 50000);
    Extensions.ScpLimit = 7;
    ReadMasterScp();
    EXPECT_EQ(Reference.SCPCount, 7);
}

TEST_F(MasterScp, EveryPlaceInTheBlockBelongsToARow) {
    Read("DL1A\nK1B\nDL1CCC");
    EXPECT_EQ(Reference.SCPTable, "DL1A\n*K1B\nDL1CCC\n");
    const std::string rows = "11111222223333333";
    for (std::size_t place = 0; place < rows.size(); ++place)
        EXPECT_EQ(SCPRowAt(place), rows[place] - '0') << place;
}

TEST_F(MasterScp, AMissingFileIsToldAndTheProgramGoesOn) {
    Read("DL1A\n");
    std::filesystem::remove(PathOf("master.scp"));
    Answer({BoxAnswer::Ok});
    ReadMasterScp();
    EXPECT_EQ(LastBox().Text,
              "Can't find or read Super Check Partial file master.scp.  To use this feature,make "
              "sure it is in the same drive/directory used to start program and restart. The "
              "program will work without this file, but the View Partial window will only show "
              "matches in current log and InstaMatch files.");
    EXPECT_EQ(LastBox().Title, "Error Reading Super Check Partial File");
    EXPECT_FALSE(Reference.SCPLoaded);
    EXPECT_EQ(Reference.SCPCount, 0);
    EXPECT_FALSE(Program.Ending);
}

TEST_F(MasterScp, AnEmptyFileIsAFile) {
    EXPECT_TRUE(Read("").empty());
    EXPECT_TRUE(Reference.SCPLoaded);
}

TEST_F(MasterScp, StrangeBytesDoNoHarm) {
    const auto rows = Read(std::string("\0\xFF\xFE\n", 4) + std::string(1000000, 'K') + "\n\t\n");
    EXPECT_THAT(rows, ElementsAre(std::string("\0\xFF\xFE", 3), "*" + std::string(10, 'K'), "\t"));
}

// ---- callmtch.dat

class CallMatch : public ReferenceTest {
  protected:
    static void ReadLines(int count) {
        std::string text;
        for (int i = 1; i <= count; ++i)
            text += "  CALL" + std::to_string(i) + " \r\n";
        MakeFile("callmtch.dat", text);
        ReadCallMatch();
    }
};

TEST_F(CallMatch, CountsItsLines) {
    for (const int count : {0, 1, 398, 399}) {
        ReadLines(count);
        EXPECT_EQ(Reference.CallMatchCount, count);
        for (int row = 1; row <= kCallMatchRows; ++row)
            EXPECT_EQ(Reference.CallMatchTable[row - 1],
                      row <= count ? "CALL" + std::to_string(row) : "");
    }
}

TEST_F(CallMatch, TheFourHundredthLineEndsTheReading) {
    for (const int count : {400, 401, 5000}) {
        ReadLines(count);
        EXPECT_EQ(Reference.CallMatchCount, 400);
        EXPECT_EQ(Reference.CallMatchTable[398], "CALL399");
        EXPECT_EQ(Reference.CallMatchTable[399], "");
    }
}

TEST_F(CallMatch, ABlankLineIsARow) {
    MakeFile("callmtch.dat", "K1A\n\nK1B\n");
    ReadCallMatch();
    EXPECT_EQ(Reference.CallMatchCount, 3);
    EXPECT_EQ(Reference.CallMatchTable[1], "");
    EXPECT_EQ(Reference.CallMatchTable[2], "K1B");
}

TEST_F(CallMatch, AMissingFileIsSilentAndEmpty) {
    ReadLines(5);
    std::filesystem::remove(PathOf("callmtch.dat"));
    ReadCallMatch();
    EXPECT_EQ(Reference.CallMatchCount, 0);
    EXPECT_EQ(Reference.CallMatchTable[0], "");
    EXPECT_TRUE(Devices.Boxes.empty());
}

// ---- ZRTLOG126.DAT

class StartupData : public ReferenceTest {
  protected:
    static void Read(std::string_view text) {
        MakeFile("ZRTLOG126.DAT", text);
        ReadStartupData();
    }
    static void ExpectRead(std::string_view text) {
        Read(text);
        EXPECT_FALSE(Program.Ending);
        EXPECT_TRUE(Devices.Boxes.empty());
    }
    static void ExpectEnd() {
        EXPECT_TRUE(Program.Ending);
        EXPECT_EQ(Program.ExitStatus, 1);
        EXPECT_EQ(
            LastBox().Text,
            "Can't find or read startup file zrtlog126.dat, and can't proceed without it. Make "
            "sure it is in the same drive/directory used to start program.");
        EXPECT_EQ(LastBox().Title, "Error Reading Initiation File");
        EXPECT_EQ(LastBox().Icon, BoxIcon::Critical);
        EXPECT_EQ(LastBox().Buttons, BoxButtons::Ok);
    }
    static void ReadAndEnd(std::string_view text) {
        Answer({BoxAnswer::Ok});
        Read(text);
        ExpectEnd();
    }
};

template <std::size_t N>
void ExpectTexts(const std::array<std::string, N> &table, const char *text, int firstRow = 1,
                 int rows = static_cast<int>(N)) {
    for (int row = 1; row <= rows; ++row)
        EXPECT_EQ(table[firstRow + row - 2], text + std::to_string(row));
}

template <std::size_t N> void ExpectNumbers(const std::array<i16, N> &table, int base) {
    for (std::size_t row = 1; row <= N; ++row)
        EXPECT_EQ(table[row - 1], base + static_cast<int>(row));
}

void ExpectEveryTable() {
    ExpectTexts(Reference.CommonList, "ST", 1, 58);
    ExpectTexts(Reference.CommonList, "CO", 59, 58);
    ExpectTexts(Reference.CommonList, "SS", 117, 83);
    ExpectTexts(Reference.SsShortForms, "SF");
    ExpectTexts(Reference.SprintMults, "SP");
    ExpectTexts(Reference.PaqpMults, "PA");
    ExpectTexts(Reference.NeqpMults, "NE");
    ExpectTexts(Reference.NaqpMults, "NA");
    ExpectTexts(Reference.TenMults, "TE");
    ExpectTexts(Reference.ArrlMults, "AR");
    ExpectTexts(Reference.CwCharacters, "CW");
    ExpectNumbers(Reference.ZrtX, 1000);
    ExpectNumbers(Reference.ZrtY, 2000);
    ExpectNumbers(Reference.SsX, 3000);
    ExpectNumbers(Reference.SsY, 4000);
    ExpectNumbers(Reference.UsVeMultOrder, 5000);
    ExpectNumbers(Reference.TenX, 6000);
    ExpectNumbers(Reference.TenY, 7000);
    ExpectNumbers(Reference.ArrlX, 8000);
    ExpectNumbers(Reference.ArrlY, 9000);
    for (const auto &radio : Radios.LastFrequency) {
        EXPECT_EQ(radio[0], 0);
        for (int bandIndex = 1; bandIndex <= 24; ++bandIndex)
            EXPECT_EQ(radio[bandIndex], 1200000 + bandIndex);
    }
}

TEST_F(StartupData, EverySectionFillsItsTable) {
    ExpectRead(WholeStartupText());
    ExpectEveryTable();
}

TEST_F(StartupData, SectionsMayStandInAnyOrderWithNotesBetween) {
    std::string text;
    for (const StartupSection &section : kStartupSections)
        text.insert(0, "  " + StartupText(section, "\n") + "; " + section.Header + "\n");
    ExpectRead("a note\r\n\r\n" + text);
    ExpectEveryTable();
}

TEST_F(StartupData, ValuesMayShareALine) {
    std::string text;
    for (const StartupSection &section : kStartupSections) {
        text += std::string(section.Header) + "\r";
        for (int row = 1; row <= section.Rows; ++row)
            text += (row % 3 == 0 ? "\r \r\r" : "") + std::string("  \"") +
                    StartupValue(section, row) + "\" " + (row % 3 == 1 ? ",\r" : " , ");
        text += "\r";
    }
    ExpectRead(text);
    ExpectEveryTable();
}

TEST_F(StartupData, AMissingSectionLeavesItsTableBlank) {
    for (std::size_t missing = 0; missing < kStartupSections.size(); ++missing) {
        std::string text;
        for (std::size_t i = 0; i < kStartupSections.size(); ++i)
            text += i == missing ? "" : StartupText(kStartupSections[i]);
        ExpectRead(text);
    }
    // The last one to be missing is the band frequencies; what an earlier reading gave is gone.
    EXPECT_EQ(Radios.LastFrequency[0][3], 0);
    EXPECT_EQ(Reference.ZrtX[71], 1072);
    ExpectRead("");
    EXPECT_EQ(Reference.ZrtX[71], 0);
    EXPECT_EQ(Reference.CommonList[198], "");
}

TEST_F(StartupData, ATextIsKeptAsItStands) {
    std::string text = "[CW Characters]\n\"A,B\",C \"D\" E,,\"\", a/b/c ,\"open,\"x\"y\n";
    for (int row = 8; row <= 42; ++row)
        text += "x\n";
    ExpectRead(text);
    const auto &values = Reference.CwCharacters;
    EXPECT_EQ(values[0], "A,B");
    EXPECT_EQ(values[1], "C \"D\" E");
    EXPECT_EQ(values[2], "");
    EXPECT_EQ(values[3], "");
    EXPECT_EQ(values[4], "a/b/c");
    EXPECT_EQ(values[5], "\"open"); // the next quote does not end it: more text follows
    EXPECT_EQ(values[6], "\"x\"y");
}

TEST_F(StartupData, AQuoteThatIsNotClosedEndsWithItsLine) {
    std::string text = "[CW Characters]\n\"one\n\"two\"\n";
    for (int row = 3; row <= 42; ++row)
        text += "x\n";
    ExpectRead(text);
    EXPECT_EQ(Reference.CwCharacters[0], "\"one");
    EXPECT_EQ(Reference.CwCharacters[1], "two");
}

TEST_F(StartupData, NumbersAreRoundedAndTextsAreZero) {
    std::string text = "[ARRL X Coordinates]\n-5,2.5,3.5,none,32767,-32768,12 and more";
    for (int row = 8; row <= 63; ++row)
        text += "\n8";
    ExpectRead(text);
    EXPECT_THAT(std::vector(Reference.ArrlX.begin(), Reference.ArrlX.begin() + 8),
                ElementsAre(-5, 2, 4, 0, 32767, -32768, 12, 8));
}

TEST_F(StartupData, ANumberTooLargeForItsTableBecomesTheLargest) {
    std::string text = "[ARRL X Coordinates]\n32768\n-40000\n1e3\n";
    for (int row = 4; row <= 63; ++row)
        text += "5\n";
    ExpectRead(text);
    EXPECT_EQ(Reference.ArrlX[0], 32767);
    EXPECT_EQ(Reference.ArrlX[1], -32768);
    EXPECT_EQ(Reference.ArrlX[2], 1);
}

TEST_F(StartupData, ARowTooFewEatsTheNextHeader) {
    std::string text = "[10M Mults]\n";
    for (int row = 1; row <= 64; ++row)
        text += "T\n";
    ExpectRead(text + "[ARRL Mults]\nA\n");
    EXPECT_EQ(Reference.TenMults[64], "[ARRL Mults]");
    EXPECT_EQ(Reference.ArrlMults[0], "");
}

TEST_F(StartupData, AHeaderThatComesAgainReadsAgain) {
    const StartupSection other{"[CW Characters]", 42, "B"};
    ExpectRead(StartupText(kStartupSections[19]) + StartupText(other));
    EXPECT_EQ(Reference.CwCharacters[41], "B42");
}

TEST_F(StartupData, AHeaderIsTheWholeLineToTheLetter) {
    std::string text;
    for (const char *header : {"[cw characters]", "[CW Characters] ;", "x[CW Characters]"})
        text += std::string(header) + "\n1\n";
    ExpectRead(text);
    EXPECT_EQ(Reference.CwCharacters[0], "");
}

TEST_F(StartupData, EverySectionThatIsCutOffEndsTheProgram) {
    for (const StartupSection &section : kStartupSections) {
        Program = {};
        std::string text = StartupText(section);
        text.resize(text.size() - StartupValue(section, section.Rows).size() - 2);
        ReadAndEnd(text);
        Program = {};
        const auto boxes = Devices.Boxes.size();
        Read(text + "9"); // the last value needs no end of line
        EXPECT_FALSE(Program.Ending) << section.Header;
        EXPECT_EQ(Devices.Boxes.size(), boxes);
    }
}

TEST_F(StartupData, AMissingFileEndsTheProgram) {
    Answer({BoxAnswer::Ok});
    ReadStartupData();
    ExpectEnd();
}

TEST_F(StartupData, ADiskThatBreaksOffEndsTheProgram) {
    PutFileInMemory("zrtlog126.dat", WholeStartupText());
    memoryFile.BreaksAt = WholeStartupText().size() - 1;
    Answer({BoxAnswer::Ok});
    ReadStartupData();
    ExpectEnd();
}

TEST_F(StartupData, SsMayHaveSectionsBeyondItsTable) {
    ExpectRead("[SS Extra Mults]\n2\nGH\nTER\n[SS Extra Short Forms]\n2,GH,TE\n[SS Mults]\n" +
               StartupText(kStartupSections[2]).substr(12));
    EXPECT_EQ(Reference.SsExtraMultCount, 2);
    EXPECT_EQ(Reference.SsExtraShortFormCount, 2);
    EXPECT_EQ(Reference.SsExtraMults[1], "TER");
    EXPECT_EQ(Reference.SsExtraShortForms[1], "TE");
    EXPECT_EQ(Reference.SsExtraMults[2], "");
    EXPECT_EQ(Reference.CommonList[198], "SS83");
    ExpectRead("[SS Extra Mults]\n0\n");
    EXPECT_EQ(Reference.SsExtraMultCount, 0);
    EXPECT_EQ(Reference.SsExtraMults[1], "");
}

TEST_F(StartupData, MoreExtraSectionsThanTheTableHoldsEndTheProgram) {
    for (const char *count : {"18", "-1", "99999", "3\nA\nB", ""}) {
        Program = {};
        ReadAndEnd(std::string("[SS Extra Mults]\n") + count);
    }
}

TEST_F(StartupData, StrangeBytesDoNoHarm) {
    ExpectRead(std::string(1000000, '"') + "\n" + std::string("\0\xFF\n", 3));
    std::string text =
        "[CW Characters]\n" + std::string(1000000, '"') + ',' + std::string("\0\xFF,", 3);
    for (int row = 3; row <= 42; ++row)
        text += "x\n";
    ExpectRead(text);
    EXPECT_EQ(Reference.CwCharacters[1], std::string("\0\xFF", 2));
}

TEST_F(StartupData, ASectionThatIsMissingLeavesItsTableEmpty) {
    ExpectRead(WholeStartupText());
    Reference.SsExtraMultCount = Reference.SsExtraShortFormCount = 3;
    ExpectRead("; nothing but a note\r\n");
    EXPECT_EQ(Reference.SsExtraMultCount, 0);
    EXPECT_EQ(Reference.SsExtraShortFormCount, 0);
    EXPECT_EQ(Reference.CommonList[0], "");
    EXPECT_EQ(Reference.ZrtX[0], 0);
}

} // namespace
} // namespace zrt
