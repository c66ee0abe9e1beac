// The Cabrillo writer against files that a script made apart from it (golden/make_cabrillo.py), and
// against lines written down by hand.
#include "entry/multipliers.h"
#include "postcontest/cabrillo.h"
#include "postcontest/post_contest.h"
#include "postcontest/recount.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/reference_data.h"
#include "session/settings.h"
#include "session/user_profiles.h"
#include "support/program.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace zrt {
namespace {

namespace fs = std::filesystem;

struct TextKey {
    const char *Key;
    std::string SettingsRecord::*Text;
};
constexpr std::array kSentTexts = {
    TextKey{"ExchangeARRLMult", &SettingsRecord::ExchangeARRLMult},
    TextKey{"ExchangeAAMult", &SettingsRecord::ExchangeAAMult},
    TextKey{"ExchangeZRTMult", &SettingsRecord::ExchangeZRTMult},
    TextKey{"ExchangePAQPMult", &SettingsRecord::ExchangePAQPMult},
    TextKey{"ExchangeNEQPMult", &SettingsRecord::ExchangeNEQPMult},
    TextKey{"ExchangeCQWWMult", &SettingsRecord::ExchangeCQWWMult},
    TextKey{"ExchangeSSPrec", &SettingsRecord::ExchangeSSPrec},
    TextKey{"ExchangeSSCall", &SettingsRecord::ExchangeSSCall},
    TextKey{"ExchangeSSCheck", &SettingsRecord::ExchangeSSCheck},
    TextKey{"ExchangeSSSection", &SettingsRecord::ExchangeSSSection},
    TextKey{"ExchangeSprintName", &SettingsRecord::ExchangeSprintName},
    TextKey{"ExchangeSprintMult", &SettingsRecord::ExchangeSprintMult},
    TextKey{"ExchangeNAQPName", &SettingsRecord::ExchangeNAQPName},
    TextKey{"ExchangeNAQPMult", &SettingsRecord::ExchangeNAQPMult},
    TextKey{"ExchangeGeneric", &SettingsRecord::ExchangeGeneric},
    TextKey{"ExchangeCWOName", &SettingsRecord::ExchangeCWOName}};

std::string BytesOfPath(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

// Without their CR LF; a rest behind the last CR LF is a line too, so that it shows.
std::vector<std::string> LinesOf(const std::string &text) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const auto end = text.find("\r\n", begin);
        lines.push_back(text.substr(begin, end - begin));
        begin = end == text.npos ? text.size() : end + 2;
    }
    return lines;
}

// Where two files part, or an empty text if they are the same.
std::string FirstDifference(const std::string &expected, const std::string &written) {
    if (expected == written)
        return "";
    const auto left = LinesOf(expected);
    const auto right = LinesOf(written);
    std::size_t n = 0;
    while (n < left.size() && n < right.size() && left[n] == right[n])
        ++n;
    const auto shown = [n](const std::vector<std::string> &lines) {
        return n < lines.size() ? "|" + FromLatin1(lines[n]) + "|" : "no line";
    };
    return "line " + std::to_string(n + 1) + "\n  expected " + shown(left) + "\n  written  " +
           shown(right);
}

// A program with the multiplier lists that are shipped, and an empty profile.
class Cabrillo : public ProgramTest {
  protected:
    Cabrillo() {
        fs::copy_file(fs::path(ZRT_SHIPPED_DATA) / "ZRTLOG126.DAT", PathOf("ZRTLOG126.DAT"),
                      fs::copy_options::overwrite_existing);
        ReadStartupData();
        Profiles.Current = 1;
    }

    // Takes the log as the program does after a contest.
    static void Take(const std::string &name, std::string_view bytes) {
        MakeFile(name, bytes);
        Log.LogFileName = PathOf(name);
        ASSERT_EQ(ReadHeader(Log.LogFileName, Log.KeptHeader), 0);
        Log.Header = Log.KeptHeader;
        Log.CurrentFormat = Log.KeptHeader.FormatFlag == 1;
        TakeContest(Log.KeptHeader);
        SetUpContest();
        FillMultiplierTables();
        i32 beyond = 0;
        ASSERT_EQ(ReadEntries(Contest.ContestId, beyond), 0);
        ASSERT_EQ(beyond, 0);
        TakePostContestLog();
    }
    static void TakeEntries(std::string_view tag, char qthOption,
                            const std::vector<LogEntry> &entries) {
        std::string bytes = HeaderBytes(tag, qthOption);
        bytes.resize(kEntryLength, '\0');
        for (const LogEntry &entry : entries)
            bytes += EntryBytes(entry);
        Take("test.ZRT", bytes);
    }

    static std::vector<std::string> Written() {
        EXPECT_EQ(WriteCabrilloFile(), 0);
        const std::string text = BytesOf("test.LOG");
        EXPECT_TRUE(text.ends_with("\r\nEND-OF-LOG:\r\n"));
        return LinesOf(text);
    }
    static std::vector<std::string> WrittenQsos() {
        auto lines = Written();
        std::erase_if(lines, [](const std::string &line) { return !line.starts_with("QSO:"); });
        return lines;
    }
    static bool Has(const std::vector<std::string> &lines, std::string_view line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    static bool HasBeginning(const std::vector<std::string> &lines, std::string_view beginning) {
        return std::any_of(lines.begin(), lines.end(), [beginning](const std::string &line) {
            return line.starts_with(beginning);
        });
    }
};

// ---- the golden files

std::vector<std::string> GoldenCases() {
    std::vector<std::string> names;
    for (const auto &file : fs::directory_iterator(ZRT_GOLDEN_CABRILLO))
        if (file.path().extension() == ".case")
            names.push_back(file.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

class CabrilloGolden : public Cabrillo, public testing::WithParamInterface<std::string> {
  protected:
    static fs::path Golden(const char *extension) {
        return fs::path(ZRT_GOLDEN_CABRILLO) / (GetParam() + extension);
    }
    static std::map<std::string, std::string> Values() {
        std::map<std::string, std::string> values;
        std::istringstream lines(BytesOfPath(Golden(".case")));
        for (std::string line; std::getline(lines, line);) {
            const auto equals = line.find('=');
            EXPECT_NE(equals, line.npos) << line;
            values[line.substr(0, equals)] = line.substr(equals + 1);
        }
        return values;
    }
    static void TakeValues(const std::map<std::string, std::string> &values) {
        for (const TextKey &row : kSentTexts)
            Settings.*row.Text = values.at(std::string("Settings.") + row.Key);
        for (const UserProfileField &field : kUserProfileFields)
            if (const auto value = values.find(std::string("Profile.") + field.Key);
                value != values.end())
                Profiles.Table[0].*field.Text = value->second;
        PostData.Category = {values.at("Category.Class"), values.at("Category.Overlay"),
                             values.at("Category.Band"),  values.at("Category.Mode"),
                             values.at("Category.Power"), values.at("Category.Station")};
        PostData.ExactFrequency = values.at("ExactFrequency") == "True";
        PostData.ShowRst = values.at("ShowRst") == "True";
        Extensions.InStateStateNames = values.at("InStateStateNames") == "True";
        Recount.Score = std::stoi(values.at("Score"));
    }
};

TEST_P(CabrilloGolden, IsWrittenByteForByte) {
    const auto values = Values();
    Take("golden.ZRT", BytesOfPath(Golden(".ZRT")));
    ASSERT_FALSE(HasFatalFailure());
    TakeValues(values);
    ASSERT_EQ(WriteCabrilloFile(), 0);
    EXPECT_EQ(FirstDifference(BytesOfPath(Golden(".LOG")), BytesOf("golden.LOG")), "");
    for (const TextKey &row : kSentTexts)
        EXPECT_EQ(Settings.*row.Text, values.at(std::string("After.") + row.Key)) << row.Key;
    // What is written a second time is the same: nothing is cut or padded twice.
    ASSERT_EQ(WriteCabrilloFile(), 0);
    EXPECT_EQ(FirstDifference(BytesOfPath(Golden(".LOG")), BytesOf("golden.LOG")), "");
}

INSTANTIATE_TEST_SUITE_P(Files, CabrilloGolden, testing::ValuesIn(GoldenCases()),
                         [](const auto &golden) { return golden.param; });

TEST_F(Cabrillo, EveryContestHasItsGoldenFiles) {
    std::set<std::pair<i16, i16>> forms; // contest and FormatFlag
    for (const std::string &name : GoldenCases()) {
        LogHeader header;
        ASSERT_EQ(ReadHeader((fs::path(ZRT_GOLDEN_CABRILLO) / (name + ".ZRT")).string(), header),
                  0);
        forms.insert({ContestOfTag(header.ContestTag.Whole()), header.FormatFlag});
    }
    for (i16 contest = 1; contest <= kContests; ++contest)
        for (const i16 format : {i16{0}, i16{1}})
            EXPECT_TRUE(forms.contains({contest, format})) << contest << " form " << format;
}

// ---- a line of each contest

struct SampleLine {
    const char *Tag;
    char QthOption;
    i16 BandIndex, Time;
    const char *Callsign;
    i16 RcvdNumber;
    const char *RcvdExchange, *RcvdName;
    const char *Line;
};

LogEntry SampleEntry(const SampleLine &sample) {
    LogEntry entry = MakeEntry(sample.Callsign, -21155, sample.Time, sample.BandIndex, '1');
    entry.SentNumber = 12;
    entry.RcvdNumber = sample.RcvdNumber;
    entry.RcvdExchange = sample.RcvdExchange;
    entry.RcvdName = sample.RcvdName;
    return entry;
}

TEST_F(Cabrillo, OneLineOfEachContest) {
    constexpr std::array kSamples = {
        SampleLine{
            "ARLCW", '1', 3, 1437, "DL1ABC", 100, "", "",
            "QSO: 14000 CW 2015-01-15 1437 K1ZZ          599 MA     DL1ABC        599   100"},
        SampleLine{
            "ZRTOS", ' ', 12, 5, "ZT1A", 7, "ABC", "",
            "QSO:  7000 PH 2015-01-15 0005 K1ZZ         12 MA         ZT1A          7 ABC       "},
        SampleLine{"WW SB", '2', 10, 5, "DL1ABC", 14, "", "",
                   "QSO: 21000 PH 2015-01-15 0005 K1ZZ          59  05     DL1ABC        59    14"},
        SampleLine{"SP CW", ' ', 5, 5, "W1AW", 34, "7", "HIRAM",
                   "QSO:  3500 CW 2015-01-15 0005 K1ZZ         12 JOE        MA  W1AW         34 "
                   "HIRAM      CT    "},
        SampleLine{
            "SS9CW", ' ', 4, 2105, "W1AW", 34, "B68EM", "",
            "QSO:  7000 CW 2015-01-15 2105 K1ZZ         12 A 72 CT  W1AW         34 B 68 EMA"},
        SampleLine{"WPXCW", '2', 3, 5, "DL1ABC", 34, "DL1", "",
                   "QSO: 14000 CW 2015-01-15 0005 K1ZZ          599   12 DL1ABC        599   34"},
        SampleLine{"AA CW", ' ', 3, 5, "JA1XYZ", 33, "JA1", "",
                   "QSO: 14000 CW 2015-01-15 0005 K1ZZ       599 45 JA1XYZ     599   33"},
        SampleLine{
            "PAQOS", ' ', 4, 1605, "W3ABC", 34, "2", "",
            "QSO:  7000 CW 2015-01-15 1605 K1ZZ         12 EMA        W3ABC        34 ALL       "},
        SampleLine{
            "NA CW", ' ', 4, 1805, "W1AW", 0, "CT", "HIRAM",
            "QSO:  7000 CW 2015-01-15 1805 K1ZZ       JOE        MA  W1AW       HIRAM      CT "},
        SampleLine{"TEN  ", ' ', 9, 5, "DL1ABC", 34, "", "",
                   "QSO: 28000 PH 2015-01-15 0005 K1ZZ       59  MA     DL1ABC     59     34"},
        SampleLine{"NEQOS", ' ', 4, 2005, "W1AW", 0, "2", "",
                   "QSO:  7000 CW 2015-01-15 2005 K1ZZ       599 MA     W1AW       599 HARCT     "},
        SampleLine{"GEN  ", ' ', 21, 5, "W1AW", 0, "3211", "HIRAM",
                   "QSO: 24890 CW 2015-01-15 0005 K1ZZ       599    12  CA    W1AW       599 HIRAM "
                   "    3211"},
        SampleLine{"CWOCW", '1', 4, 1205, "W1AW", 34, "", "HIRAM",
                   "QSO:  7000 CW 2015-01-15 1205 K1ZZ         12  JOE        W1AW         34  "
                   "HIRAM     "},
    };
    Profiles.Table[0].Callsign = "K1ZZ";
    for (const SampleLine &sample : kSamples) {
        SCOPED_TRACE(sample.Tag);
        Settings.ExchangeARRLMult = Settings.ExchangeZRTMult = Settings.ExchangeNEQPMult = "MA";
        Settings.ExchangeSprintMult = Settings.ExchangeNAQPMult = "MA";
        Settings.ExchangeSprintName = Settings.ExchangeNAQPName = Settings.ExchangeCWOName = "JOE";
        Settings.ExchangeCQWWMult = "05";
        Settings.ExchangeSSPrec = "A";
        Settings.ExchangeSSCheck = "72";
        Settings.ExchangeSSSection = "CT";
        Settings.ExchangeAAMult = "45";
        Settings.ExchangePAQPMult = "EMA";
        Settings.ExchangeGeneric = "# CA";
        TakeEntries(sample.Tag, sample.QthOption, {SampleEntry(sample)});
        PostData.ShowRst = true;
        EXPECT_EQ(WrittenQsos(), std::vector<std::string>{sample.Line});
    }
}

TEST_F(Cabrillo, AnExactFrequencyStandsAtTheLeftAndAPowerOfZeroIsPrintedAsZero) {
    Profiles.Table[0].Callsign = "K1ZZ";
    Settings.ExchangeARRLMult = "MA";
    LogEntry entry = SampleEntry({"", ' ', 4, 1437, "DL1ABC", 0, "", "", ""});
    entry.Frequency = "7025.3";
    TakeEntries("ARLCW", '1', {entry});
    PostData.ExactFrequency = true;
    EXPECT_EQ(
        WrittenQsos(),
        std::vector<std::string>{
            "QSO: 7025  CW 2015-01-15 1437 K1ZZ          599 MA     DL1ABC        599     0"});
    EXPECT_EQ(Log.LogEntries[1].RcvdNumber, 0);
    PostData.ExactFrequency = false;
    EXPECT_EQ(WrittenQsos().at(0).substr(0, 14), "QSO:  7000 CW ");
}

// ---- the head

TEST_F(Cabrillo, AnEmptyLogHasItsHeadAndItsEnd) {
    Profiles.Table[0] = {.ProfileName = "Home",
                         .Callsign = " K1ZZ ",
                         .Operators = "W1AW K1ZZ",
                         .Location = "WMA",
                         .Name = "Joe Doe",
                         .Address = "1 Main Street",
                         .City = "Springfield",
                         .Country = "",
                         .Club = "Valley Club",
                         .Rig = "rig",
                         .Ant = "dipole",
                         .Email = "joe@example.org"};
    Recount.Score = 12345678;
    Take("test.ZRT", HeaderBytes("ARLSB", '1'));
    PostData.Category = {"SINGLE-OP-ASSISTED", "TB-WIRES", "20M", "SSB", "LOW", "PORTABLE"};
    const std::vector<std::string> lines = {"START-OF-LOG: 3.0",
                                            "CALLSIGN: K1ZZ",
                                            "LOCATION: WMA",
                                            "CATEGORY-OPERATOR: SINGLE-OP",
                                            "CATEGORY-ASSISTED: ASSISTED",
                                            "CATEGORY-TRANSMITTER: ONE",
                                            "CATEGORY-OVERLAY: TB-WIRES",
                                            "CATEGORY-POWER: LOW",
                                            "CATEGORY-BAND: 20M",
                                            "CATEGORY-STATION: PORTABLE",
                                            "CLAIMED-SCORE: 12345678",
                                            "CLUB: Valley Club",
                                            "CONTEST: ARRL-DX-SSB",
                                            "CREATED-BY: ZRTLOG VER. 12.7",
                                            "NAME: Joe Doe",
                                            "ADDRESS: 1 Main Street",
                                            "ADDRESS: Springfield",
                                            "ADDRESS: ",
                                            "EMAIL: joe@example.org",
                                            "OPERATORS:",
                                            "SOAPBOX:",
                                            "SOAPBOX:",
                                            "SOAPBOX:",
                                            "END-OF-LOG:"};
    EXPECT_EQ(Written(), lines);
}

TEST_F(Cabrillo, ACheckLogHasNoLinesOfOperators) {
    Take("test.ZRT", HeaderBytes("ZRTOS"));
    PostData.Category = {"CHECKLOG", "[NONE]", "ALL", "MIXED", "HIGH", "FIXED"};
    const auto lines = Written();
    for (const char *beginning :
         {"CATEGORY-OPERATOR", "CATEGORY-ASSISTED", "CATEGORY-TRANSMITTER", "CATEGORY-OVERLAY"})
        EXPECT_FALSE(HasBeginning(lines, beginning)) << beginning;
    for (const char *line : {"CATEGORY-POWER: HIGH", "CATEGORY-BAND: ALL", "CATEGORY-MODE: MIXED",
                             "CATEGORY-STATION: FIXED"})
        EXPECT_TRUE(Has(lines, line)) << line;
}

TEST_F(Cabrillo, SeveralOperatorsAreNeitherAssistedNorNamed) {
    Take("test.ZRT", HeaderBytes("WW CW", '6'));
    Profiles.Table[0].Operators = "W1AW K1ZZ";
    PostData.Category = {"MULTI-TWO", "[NONE]", "ALL", "CW", "HIGH", "FIXED"};
    const auto lines = Written();
    EXPECT_TRUE(Has(lines, "CATEGORY-OPERATOR: MULTI-OP"));
    EXPECT_TRUE(Has(lines, "CATEGORY-TRANSMITTER: TWO"));
    EXPECT_FALSE(HasBeginning(lines, "CATEGORY-ASSISTED"));
    EXPECT_TRUE(Has(lines, "OPERATORS:"));
}

// ---- odd contacts

TEST_F(Cabrillo, HawaiiInTheSprintIsPrintedAsItsNumber) {
    TakeEntries("SP CW", ' ', {SampleEntry({"", ' ', 3, 5, "KH6ABC", 7, "11", "AL", ""})});
    const auto lines = WrittenQsos();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].ends_with("    7 AL         11    ")) << lines[0];
}

TEST_F(Cabrillo, ABandOfNobodyTakesModeAndFrequencyOfTheLineBefore) {
    std::vector<LogEntry> entries;
    for (const i16 band : std::initializer_list<i16>{0, 12, 20, 3, 24, 99})
        entries.push_back(SampleEntry({"", ' ', band, 5, "W1AW", 7, "", "", ""}));
    TakeEntries("GEN  ", ' ', entries);
    const auto lines = WrittenQsos();
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[0].substr(0, 14), "QSO:          ");
    EXPECT_EQ(lines[1].substr(0, 14), "QSO:  7000 PH ");
    EXPECT_EQ(lines[2].substr(0, 14), "QSO:  7000 PH ");
    EXPECT_EQ(lines[3].substr(0, 14), "QSO: 14000 CW ");
    EXPECT_EQ(lines[4].substr(0, 14), "QSO: 14000 CW ");
    EXPECT_EQ(lines[5].substr(0, 14), "QSO: 14000 CW ");
}

TEST_F(Cabrillo, TheSignOfADateTellsItsDecade) {
    std::vector<LogEntry> entries;
    for (const i16 date :
         std::initializer_list<i16>{-21155, 21155, 1158, 11158, 32319, -21010, 21156}) {
        entries.push_back(SampleEntry({"", ' ', 3, 5, "W1AW", 7, "", "", ""}));
        entries.back().Date = date;
    }
    entries.back().Reserved = "2"; // the mark of the years from 2020
    TakeEntries("GEN  ", ' ', entries);
    std::vector<std::string> dates;
    for (const std::string &line : WrittenQsos())
        dates.push_back(line.substr(14, 10));
    EXPECT_EQ(dates,
              (std::vector<std::string>{"2015-01-15", "2005-01-15", "1998-01-15", "1998-11-15",
                                        "2009-12-31", "2010-01-01", "2026-01-15"}));
}

TEST_F(Cabrillo, AVoidContactIsLeftOutAndItsNumberIsMissing) {
    std::vector<LogEntry> entries;
    for (const char *call : {"W1AW", "void", "K1ZZ"}) {
        entries.push_back(SampleEntry({"", ' ', 3, 5, call, 7, "", "", ""}));
        entries.back().SentNumber = static_cast<i16>(entries.size());
    }
    TakeEntries("WPXCW", '2', entries);
    const auto lines = WrittenQsos();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NE(lines[0].find("599    1 W1AW "), std::string::npos) << lines[0];
    EXPECT_NE(lines[1].find("599    3 K1ZZ "), std::string::npos) << lines[1];
}

TEST_F(Cabrillo, AnOldLogKeepsItsVoidContacts) {
    std::string bytes = HeaderBytes("WPXCW", '2');
    bytes[4] = 0;
    bytes += EntryBytes(SampleEntry({"", ' ', 3, 5, "VOID", 7, "", "", ""})).substr(0, 26);
    Take("test.ZRT", bytes);
    const auto lines = WrittenQsos();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find(" VOID "), std::string::npos) << lines[0];
}

TEST_F(Cabrillo, AnExchangeWithoutTheNumberSignSendsNoNumber) {
    Profiles.Table[0].Callsign = "K1ZZ";
    Settings.ExchangeGeneric = "CA";
    TakeEntries("GEN  ", ' ', {SampleEntry({"", ' ', 3, 5, "W1AW", 7, "", "CT", ""})});
    EXPECT_EQ(WrittenQsos(), std::vector<std::string>{
                                 "QSO: 14000 CW 2015-01-15 0005 K1ZZ       CA    W1AW       CT"});
}

TEST_F(Cabrillo, WithoutALocationTheStationReceivesPowersAndWithoutAModeItIsPhone) {
    TakeEntries("ARL  ", ' ', {SampleEntry({"", ' ', 3, 5, "DL1ABC", 100, "MA", "", ""})});
    const auto lines = Written();
    EXPECT_TRUE(Has(lines, "CONTEST: ARRL-DX-SSB"));
    ASSERT_GE(lines.size(), 2U);
    EXPECT_TRUE(lines[lines.size() - 2].ends_with("DL1ABC        59    100")) << lines.back();
}

TEST_F(Cabrillo, AFullLogIsWrittenWhole) {
    std::vector<LogEntry> entries(kMostEntries,
                                  SampleEntry({"", ' ', 3, 5, "W1AW", 7, "", "", ""}));
    entries.back().Callsign = "K1ZZ";
    TakeEntries("WPXCW", '2', entries);
    const auto lines = WrittenQsos();
    EXPECT_EQ(lines.size(), static_cast<std::size_t>(kMostEntries));
    EXPECT_NE(lines.back().find(" K1ZZ "), std::string::npos);
}

// ---- the file and the settings

TEST_F(Cabrillo, AnOlderFileIsReplaced) {
    MakeFile("test.LOG", std::string(100000, 'x'));
    Take("test.ZRT", HeaderBytes("WPXCW", '2'));
    ASSERT_EQ(WriteCabrilloFile(), 0);
    EXPECT_EQ(BytesOf("test.LOG").find('x'), std::string::npos);
    EXPECT_EQ(BytesOf("test.LOG"), ToLatin1(CabrilloText()));
}

TEST_F(Cabrillo, AFileThatCanNotBeWrittenIsAnError) {
    Take("test.ZRT", HeaderBytes("WPXCW", '2'));
    PostData.BaseName = PathOf("no such folder/test");
    EXPECT_NE(WriteCabrilloFile(), 0);
}

TEST_F(Cabrillo, TheTextsOfTheExchangeStayCut) {
    struct Row {
        const char *Tag;
        std::string SettingsRecord::*Text;
        const char *Before, *After;
    };
    for (const Row &row :
         {Row{"ZRTOS", &SettingsRecord::ExchangeZRTMult, "ABCDEFGHIJKL", "ABCDEFGHIJ"},
          Row{"PAQOS", &SettingsRecord::ExchangePAQPMult, "ABCDEFGHIJKL", "ABCDEFGHIJ"},
          Row{"NEQOS", &SettingsRecord::ExchangeNEQPMult, "HARCTX", "HARCT"},
          Row{"SP CW", &SettingsRecord::ExchangeSprintMult, "ONTARIO", "ONT"},
          Row{"NA CW", &SettingsRecord::ExchangeNAQPMult, "ONTARIO", "ONT"},
          Row{"SS9CW", &SettingsRecord::ExchangeSSSection, "CT", "CT "},
          Row{"SS9CW", &SettingsRecord::ExchangeSSSection, "EMA", "EMA"},
          Row{"ARLCW", &SettingsRecord::ExchangeARRLMult, "KILOWATT", "KILOWATT"}}) {
        SCOPED_TRACE(row.Tag);
        Settings.*row.Text = row.Before;
        TakeEntries(row.Tag, '1', {SampleEntry({"", ' ', 3, 5, "W1AW", 7, "", "", ""})});
        ASSERT_EQ(WriteCabrilloFile(), 0);
        EXPECT_EQ(Settings.*row.Text, row.After);
    }
}

} // namespace
} // namespace zrt
