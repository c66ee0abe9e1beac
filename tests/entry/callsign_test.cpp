#include "entry/callsign.h"

#include "session/contests.h"
#include "session/data_files.h"
#include "session/reference_data.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "support/file_in_memory.h"
#include "support/plain_countries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <random>
#include <sstream>

namespace zrt {
namespace {

// ---- WpxPrefix

struct PrefixRow {
    const char *Call;
    const char *Prefix;
};

void ExpectPrefixes(std::initializer_list<PrefixRow> rows) {
    for (const PrefixRow &row : rows)
        EXPECT_EQ(WpxPrefix(row.Call), row.Prefix) << row.Call;
}

TEST(WpxPrefix, GoesUpToTheLastDigit) {
    ExpectPrefixes({{"W1AW", "W1"},
                    {"KH6XX", "KH6"},
                    {"LY2000A", "LY2000"},
                    {"3DA0RS", "3DA0"},
                    {"4U1UN", "4U1"},
                    {"9A1A", "9A1"},
                    {"K1", "K1"}});
}

TEST(WpxPrefix, OfLettersOnlyIsTheFirstTwoAndAZero) {
    ExpectPrefixes({{"RAEM", "RA0"}, {"AB", "AB0"}, {"9ABC", "9A0"}});
}

TEST(WpxPrefix, OfVeryShortCallsIsSafe) {
    ExpectPrefixes({{"", ""}, {"K", "K0"}, {"4", "40"}, {"/", ""}, {"//", "/0"}, {"/4", "40"}});
}

TEST(WpxPrefix, ASignBehindTellsNoPlace) {
    ExpectPrefixes({{"W1AW/P", "W1"},
                    {"W1AW/A", "W1"},
                    {"W1AW/J", "W1"},
                    {"W1AW/M", "W1"},
                    {"W1AW/MM", "W1"},
                    {"W1AW/N", "W1"},
                    {"W1AW/T", "W1"},
                    {"RAEM/P", "RA0"}});
}

TEST(WpxPrefix, ASignBeforeTellsNoPlace) {
    ExpectPrefixes({{"P/W1AW", "W1"},
                    {"A/W1AW", "W1"},
                    {"J/W1AW", "W1"},
                    {"M/W1AW", "W1"},
                    {"MM/W1AW", "W1"}});
}

TEST(WpxPrefix, NAndTAreSignsOnlyBehind) {
    ExpectPrefixes({{"N/W1AW", "N0"}, {"T/W1AW", "T0"}});
}

TEST(WpxPrefix, TheShorterSideTellsThePlace) {
    ExpectPrefixes({{"KH6/W1AW", "KH6"},
                    {"F/W1AW", "F0"},
                    {"W1AW/VE3", "VE3"},
                    {"W1AW/KH6A", "KH6A"},
                    {"PA/W1AW", "PA0"},
                    {"W1AW/PA", "PA0"},
                    {"W1AW/QRP", "QRP0"},
                    {"VP2M/DL1AAA", "VP2M"},
                    {"LX1A/W1AW", "W1AW0"}}); // on a tie the side behind is taken for the place
}

TEST(WpxPrefix, ThreePrefixesAreAsLongAsACall) {
    ExpectPrefixes({{"VP2M/W1AW", "VP2M"},
                    {"VP2E/W1AW", "VP2E"},
                    {"VP2V/W1AW", "VP2V"},
                    {"VP2A/W1AW", "W1AW0"}});
}

TEST(WpxPrefix, ADigitReplacesTheDigitOfTheCall) {
    ExpectPrefixes({{"W1AW/4", "W4"},
                    {"4/W1AW", "W4"},
                    {"LY2000A/5", "LY2005"},
                    {"RAEM/4", "RA4"},
                    {"W1AW/", "W1"},
                    {"/W1AW", "W1"}});
}

TEST(WpxPrefix, OfTheBahamasHasNoLetterBehind) {
    ExpectPrefixes({{"C6AFO", "C6"}, {"C6A/W1AW", "C6"}, {"C6A", "C6"}, {"C6B", "C6"}});
}

// ---- ClassifyNorthAmerica

// Every text of two characters that a prefix may begin with.
std::vector<std::string> TwoCharacters() {
    const std::string characters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    std::vector<std::string> texts;
    for (const char a : characters)
        for (const char b : characters)
            texts.push_back({a, b});
    return texts;
}

bool IsOneOf(const std::string &text, const std::string &list) {
    return (" " + list + " ").find(" " + text + " ") != std::string::npos;
}

constexpr const char *kUsa = "AA AB AC AD AE AF AG AI AJ AK";
constexpr const char *kCanada =
    "CF CG CH CI CJ CK CY CZ VA VB VC VD VE VF VG VO VX VY XJ XK XL XM XN XO";

TEST(ClassifyNorthAmerica, OfThreeCharactersGoesByTheFirstTwo) {
    for (const std::string &two : TwoCharacters()) {
        const bool usLetter = two[0] == 'K' || two[0] == 'N' || two[0] == 'W';
        CallArea area = CallArea::Neither;
        if (IsOneOf(two, "6D 6E 6F 6G 6H 6I 6J 6Y 8P C6 CM CO FG FJ FM FP FS HH HI HO HP HQ HR OX "
                         "TG TD TI TE XA XB XC XD XE XF XG XH XI YN YS ZF KP NP WP AL KL NL WL J3 "
                         "J6 J7 J8 V2 V3 V4 HT HU"))
            area = CallArea::NorthAmerica;
        else if (IsOneOf(two, kCanada))
            area = CallArea::Canada;
        else if (IsOneOf(two, kUsa) || (usLetter && !IsOneOf(two, "KH NH WH")))
            area = CallArea::Usa;
        EXPECT_EQ(ClassifyNorthAmerica(two + "0"), area) << two;
    }
}

TEST(ClassifyNorthAmerica, OfTwoCharactersHasATableOfItsOwn) {
    for (const std::string &two : TwoCharacters()) {
        CallArea area = CallArea::Neither;
        if (two[0] == 'K' || two[0] == 'N' || two[0] == 'W')
            area = CallArea::Usa;
        else if (IsOneOf(two, "C6 J3 J6 J7 J8 V2 V3 V4"))
            area = CallArea::NorthAmerica;
        EXPECT_EQ(ClassifyNorthAmerica(two), area) << two;
    }
}

TEST(ClassifyNorthAmerica, SomeIslandsTakeThreeCharacters) {
    for (const char first : std::string("PV")) {
        for (const std::string &two : TwoCharacters()) {
            const std::string prefix = first + two;
            if (IsOneOf(prefix.substr(0, 2), kCanada))
                continue;
            const bool island = IsOneOf(prefix, "PJ5 PJ6 PJ7 PJ8 VP2 VP5 VP9") ||
                                IsOneOf(prefix.substr(0, 2), "V2 V3 V4");
            EXPECT_EQ(ClassifyNorthAmerica(prefix) == CallArea::NorthAmerica, island) << prefix;
        }
    }
    EXPECT_EQ(ClassifyNorthAmerica("VP2M"), CallArea::NorthAmerica);
}

TEST(ClassifyNorthAmerica, OfLessThanTwoCharactersIsNeither) {
    EXPECT_EQ(ClassifyNorthAmerica(""), CallArea::Neither);
    EXPECT_EQ(ClassifyNorthAmerica("K"), CallArea::Neither);
}

// ---- DefaultZone

TEST(DefaultZone, OfTheUsaGoesByTheFirstDigit) {
    constexpr std::array kZones = {4, 5, 5, 5, 5, 4, 3, 3, 4, 4};
    for (const char *letters : {"K", "N", "W", "AA", "AG", "AI", "AK", "KA", "WX"})
        for (int digit = 0; digit <= 9; ++digit)
            EXPECT_EQ(DefaultZone(letters + std::to_string(digit) + "A9"), kZones[digit]);
}

TEST(DefaultZone, OfCanadaGoesByTheFirstDigit) {
    constexpr std::array kZones = {3, 5, 5, 4, 4, 4, 4, 3, 1, 5};
    for (const char *letters : {"VE", "VA", "CF", "XO", "CY"})
        for (int digit = 0; digit <= 9; ++digit)
            EXPECT_EQ(DefaultZone(letters + std::to_string(digit) + "A"), kZones[digit]);
}

TEST(DefaultZone, OfTheNorthHasRowsOfItsOwn) {
    EXPECT_EQ(DefaultZone("VY1AA"), 1);
    EXPECT_EQ(DefaultZone("VE8AA"), 1);
    EXPECT_EQ(DefaultZone("VO2AA"), 2);
    EXPECT_EQ(DefaultZone("VY2AA"), 2);
    EXPECT_EQ(DefaultZone("VO1AA"), 5);
    EXPECT_EQ(DefaultZone("VY0AA"), 3);
}

TEST(DefaultZone, OfAnyOtherCallIsNone) {
    for (const char *call : {"", "K", "KABC", "DL1ABC", "KH6XX", "KL7A", "KP4A", "AH6A", "AL7A",
                             "NL7A", "WL7A", "NH6A", "WH6A", "NP4A", "WP4A", "AH", "XE1A", "4U1UN"})
        EXPECT_EQ(DefaultZone(call), 0) << call;
}

// ---- CountryLookup

constexpr const char *kSmallWorld = "Germany:14:28:EU:51:-10:-1:DL:\n"
                                    "DA,DL,DP,=DL0WHOLE(15)[29],DL1(16);\n"
                                    "Italy:15:28:EU:42.82:-12.58:-1:I:\n"
                                    "I,=IT9EXACT;\n"
                                    "Sicily:15:28:EU:37.5:-14:-1:*IT9:\n"
                                    "IT9,IB9,=II9ABC(33);\n"
                                    "USA:5:8:NA:37.6:91.87:5:K:\n"
                                    "K,W,N,AA,K6(3)[6],K7(3),=KH6WHOLE,W1AW/9(4);\n"
                                    "Guantanamo Bay:8:11:NA:20:75:5:KG4:\n"
                                    "KG4;\n"
                                    "Hawaii:31:61:OC:21:157:10:KH6:\n"
                                    "KH6,AH6,W1AW/9,=W1AW/KH5;\n"
                                    "Canada:5:9:NA:45:80:5:VE:\n"
                                    "VE,VE3(4),VA,VA;\n"
                                    "Netherlands:14:27:EU:52:-5:-1:PA:\n"
                                    "PA,VA(9),DL1;\n"
                                    "France:14:27:EU:46:-2:-1:F:\n"
                                    "F;\n"
                                    "Falkland:13:16:SA:-51:57:4:VP8:\n"
                                    "VP8,,{}(40);\n";

enum SmallRow : i16 {
    kGermany = 1,
    kItaly,
    kSicily,
    kUs,
    kGuantanamo,
    kHawaii,
    kCanadaRow,
    kNetherlands,
    kFrance,
    kFalkland
};

class CallCountries : public testing::Test {
  protected:
    CallCountries() {
        Contest = {};
        Contest.ContestId = kCqWw;
        TakeFile(kSmallWorld);
    }
    ~CallCountries() override {
        Contest = {};
        Reference = {};
        Settings = {};
        Session = {};
        CallAnalysis = {};
        Files = {};
    }
    static void TakeFile(const std::string &text) {
        PutFileInMemory("cty.dat", text);
        ReadCountries();
    }
};

void ExpectCountry(std::string_view call, i16 row, i16 zone = 0) {
    CallAnalysis.LastZone = 99;
    EXPECT_EQ(CountryLookup(call), row) << call;
    EXPECT_EQ(CallAnalysis.LastZone, zone) << call;
}

TEST_F(CallCountries, TheLongestPrefixWins) {
    ExpectCountry("DL2ABC", kGermany);
    ExpectCountry("DL1ABC", kGermany, 16);
    ExpectCountry("K1ABC", kUs);
    ExpectCountry("K6ABC", kUs, 3);
    ExpectCountry("KH6ABC", kHawaii);
    ExpectCountry("I2ABC", kItaly);
    ExpectCountry("VP8ABC", kFalkland);
}

TEST_F(CallCountries, OfEqualPrefixesTheFirstWins) {
    ExpectCountry("VA3ABC", kCanadaRow);
    ExpectCountry("VA", kCanadaRow);
}

TEST_F(CallCountries, AnEntryOfAWholeCallIsThatCallOnly) {
    ExpectCountry("DL0WHOLE", kGermany, 15);
    ExpectCountry("DL0WHOLES", kGermany);
    ExpectCountry("KH6WHOLE", kUs);
    ExpectCountry("KH6WHOLES", kHawaii);
}

TEST_F(CallCountries, AnUnknownCallIsRowZero) {
    for (const char *call : {"XX9ABC", "Q", "?", "XX9A/ZZ9"})
        ExpectCountry(call, 0);
}

TEST_F(CallCountries, AnEmptyPieceIsTheEmptyCall) {
    ExpectCountry("", kFalkland);
    Reference = {};
    ExpectCountry("", 0);
    ExpectCountry("K1A", 0);
    ExpectCountry("K1A/DL", 0);
    ExpectCountry("KG4ABC", 0, 5);
}

TEST_F(CallCountries, APortableCallIsLookedUpByItsPrefix) {
    ExpectCountry("W1AW/VE3", kCanadaRow, 4);
    ExpectCountry("KH6/W1AW", kHawaii);
    ExpectCountry("F/W1AW", kFrance);
    ExpectCountry("W1AW/P", kUs);
    ExpectCountry("W1AW/6", kUs);
    ExpectCountry("K1AW/6", kUs, 3);
    ExpectCountry("W1AW/ZZ9", 0);
}

TEST_F(CallCountries, UnlessAnEntryHoldsTheWholeOfIt) {
    ExpectCountry("W1AW/KH5", kHawaii);
    ExpectCountry("W1AW/9", kUs, 4); // an entry need not be marked to equal the call
}

TEST_F(CallCountries, ArrlDxSkipsTheCountriesOfCqContests) {
    ExpectCountry("IT9ABC", kSicily);
    ExpectCountry("II9ABC", kSicily, 33);
    ExpectCountry("IT9EXACT", kItaly);
    Contest.ContestId = kArrlDx;
    ExpectCountry("IT9ABC", kItaly);
    ExpectCountry("II9ABC", kItaly);
    ExpectCountry("IB9", kItaly);
    ExpectCountry("IT9EXACT", kItaly);
    ExpectCountry("K6ABC", kUs, 3);
}

TEST_F(CallCountries, GuantanamoHasTwoLettersBehindTheDigit) {
    ExpectCountry("KG4AB", kGuantanamo, 8);
    ExpectCountry("KG4ABC", kUs, 5);
    ExpectCountry("KG4A", kUs, 5);
    ExpectCountry("KG4", kUs, 5);
    ExpectCountry("KG4ABC/P", kUs, 5);
    ExpectCountry("KG4ABC/VE3", kCanadaRow, 4); // the call is there, not at home
    ExpectCountry("KG5BTN/4", kUs, 5);          // the prefix KG4 of a call area
}

TEST_F(CallCountries, TheDesignatorKg4IsGuantanamo) {
    for (const char *call : {"DL1AA/KG4", "KG4/DL1AA", "W1AW/KG4", "KG4/W1AW"})
        ExpectCountry(call, kGuantanamo, 8);
    ExpectCountry("KG4/VE3", kCanadaRow, 4); // the right side tells the place
}

TEST_F(CallCountries, AnyBytesAreSafe) {
    ExpectCountry(std::string(1000000, 'K'), kUs);
    ExpectCountry(std::string(1000000, '/'), 0);
    ExpectCountry(std::string("\0\xFF/\0", 4), 0);
    EXPECT_EQ(WpxPrefix(std::string("\0\xFF/\0", 4)), (std::string{'\0', '0'}));
}

// ---- the hash against the plain loop

// Calls of every shape: letters and digits as they come, known beginnings, "/" in many places.
std::vector<std::string> MakeCalls(const PlainCountries &plain, int count) {
    std::mt19937 random(20150115);
    const auto below = [&random](std::size_t n) { return random() % n; };
    const auto letters = [&](std::string_view from, std::size_t most) {
        std::string text;
        for (std::size_t n = below(most + 1); n > 0; --n)
            text += from[below(from.size())];
        return text;
    };
    const auto beginning = [&] {
        const auto &entry = plain.Entries[below(plain.Entries.size())];
        return below(4) == 0 ? letters("ABDKNVWX0123456789", 3) : entry.Text;
    };
    std::vector<std::string> calls;
    for (int i = 0; i < count; ++i) {
        std::string call = beginning() + letters("ABCDEFGHIJKLMNOPQRSTUVWXYZ", 3);
        if (below(3) == 0)
            call += "/" + (below(2) == 0 ? beginning() : letters("0123456789AMPJQR", 3));
        if (below(20) == 0)
            call = "KG4" + letters("ABCX/1", 4);
        calls.push_back(call);
    }
    return calls;
}

void ExpectAsPlain(const PlainCountries &plain, const std::string &call, bool arrlDx) {
    Contest.ContestId = arrlDx ? kArrlDx : kCqWw;
    const PlainCountries::Answer answer = plain.Lookup(call, arrlDx);
    EXPECT_EQ(CountryLookup(call), answer.Row) << call << (arrlDx ? " in ARRL DX" : "");
    EXPECT_EQ(CallAnalysis.LastZone, answer.Zone) << call << (arrlDx ? " in ARRL DX" : "");
}

void ExpectTableAsPlain(const PlainCountries &plain) {
    ASSERT_EQ(Reference.Prefixes.Entries.size(), plain.Entries.size());
    ASSERT_EQ(Reference.CountryCount, plain.Countries.size());
    EXPECT_EQ(Reference.CountryRowUsa, plain.RowOf("K"));
    EXPECT_EQ(Reference.CountryRowCanada, plain.RowOf("VE"));
    EXPECT_EQ(Reference.CountryRowHawaii, plain.RowOf("KH6"));
    EXPECT_EQ(Reference.CountryRowAlaska, plain.RowOf("KL"));
    for (std::size_t i = 0; i < plain.Entries.size(); ++i) {
        const PrefixEntry &entry = Reference.Prefixes.Entries[i];
        EXPECT_EQ(entry.Text, plain.Entries[i].Text);
        EXPECT_EQ(entry.Row, plain.Entries[i].Row);
        EXPECT_EQ(entry.Zone, plain.Entries[i].Zone);
        EXPECT_EQ(entry.WholeCall, plain.Entries[i].WholeCall);
    }
}

TEST_F(CallCountries, TheHashAgreesWithThePlainLoop) {
    const PlainCountries plain(kSmallWorld);
    ExpectTableAsPlain(plain);
    for (const std::string &call : MakeCalls(plain, 50000))
        for (const bool arrlDx : {false, true})
            ExpectAsPlain(plain, call, arrlDx);
}

std::string ShippedFile(const char *name) {
    std::ifstream file(std::string(ZRT_SHIPPED_DATA "/") + name, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

TEST_F(CallCountries, TheHashAgreesWithThePlainLoopOnTheRealFile) {
    const std::string text = ShippedFile("cty.dat");
    if (text.empty())
        GTEST_SKIP() << "this machine has no country file";
    const PlainCountries plain(text);
    TakeFile(text);
    ExpectTableAsPlain(plain);
    for (std::size_t i = 0; i < plain.Entries.size(); ++i)
        ExpectAsPlain(plain, plain.Entries[i].Text, i % 2 == 0);
}

TEST_F(CallCountries, TheHashAgreesWithThePlainLoopOnRealCalls) {
    const std::string text = ShippedFile("cty.dat");
    std::string known = ShippedFile("master.scp");
    if (text.empty() || known.empty())
        GTEST_SKIP() << "this machine has no country file or no known calls";
    const PlainCountries plain(text);
    TakeFile(text);
    std::vector<std::string> calls;
    for (std::string_view rest = known; !rest.empty();) {
        const std::string_view line = NextLine(rest);
        if (!line.starts_with('#'))
            calls.emplace_back(line);
    }
    ASSERT_GT(calls.size(), 1000U);
    const std::size_t step = std::max<std::size_t>(1, calls.size() / 14000);
    bool arrlDx = false;
    for (std::size_t i = 0; i < calls.size(); i += step)
        ExpectAsPlain(plain, calls[i], arrlDx = !arrlDx);
    for (const std::string &call : MakeCalls(plain, 6000))
        ExpectAsPlain(plain, call, arrlDx = !arrlDx);
}

// ---- HeadingTo

class Headings : public CallCountries {
  protected:
    // The heading from a station to a place, west positive, through a country file.
    static i16 Heading(double fromNorth, double fromWest, double north, double west) {
        Settings.StationLatitude = fromNorth;
        Settings.StationLongitude = fromWest;
        TakeFile("There:1:2:EU:" + std::to_string(north) + ":" + std::to_string(west) + ":0:T:\n");
        return HeadingTo(1);
    }
};

TEST_F(Headings, OfTheFourQuartersAreDegreesFromNorth) {
    EXPECT_EQ(Heading(0, 0, 0, -10), 90);
    EXPECT_EQ(Heading(0, 0, 0, 10), 270);
    EXPECT_EQ(Heading(0, 0, 10, 0), 0);
    EXPECT_EQ(Heading(0, 0, -10, 0), 180);
    EXPECT_EQ(Heading(10, 5, 10, 5), 0);
    EXPECT_EQ(Heading(0, 0, 1, -1), 45);
    EXPECT_EQ(Heading(0, 0, -1, -1), 135);
    EXPECT_EQ(Heading(0, 0, -1, 1), 225);
    EXPECT_EQ(Heading(0, 0, 1, 1), 315);
}

TEST_F(Headings, FollowTheGreatCircle) {
    // From Newington, Connecticut (41.7 N, 72.7 W).
    EXPECT_EQ(Heading(41.7, 72.7, 51, -10), 50);        // Germany
    EXPECT_EQ(Heading(41.7, 72.7, 36.4, -138.38), 335); // Japan
    EXPECT_EQ(Heading(41.7, 72.7, -35, 64), 173);       // Argentina
    EXPECT_EQ(Heading(41.7, 72.7, 21.12, 157.48), 283); // Hawaii
    EXPECT_EQ(Heading(90, 0, 0, 0), 180);
    EXPECT_EQ(Heading(0, 0, 80, 180) % 360, 0);
}

// The same angle by vectors: north and east at the station, and the way to the country.
double ByVectors(double fromNorth, double fromWest, double north, double west) {
    const auto radians = [](double degrees) { return degrees * std::acos(-1.0) / 180; };
    struct Vector {
        double X, Y, Z;
        double operator*(const Vector &other) const {
            return X * other.X + Y * other.Y + Z * other.Z;
        }
    };
    const double latitude = radians(fromNorth), longitude = -radians(fromWest);
    const Vector northward{-std::sin(latitude) * std::cos(longitude),
                           -std::sin(latitude) * std::sin(longitude), std::cos(latitude)};
    const Vector eastward{-std::sin(longitude), std::cos(longitude), 0};
    const Vector there{std::cos(radians(north)) * std::cos(-radians(west)),
                       std::cos(radians(north)) * std::sin(-radians(west)),
                       std::sin(radians(north))};
    const double degrees = std::atan2(there * eastward, there * northward) * 180 / std::acos(-1.0);
    return degrees < 0 ? degrees + 360 : degrees;
}

TEST_F(Headings, AgreeWithVectorsAllOverTheEarth) {
    for (int fromNorth = -80; fromNorth <= 80; fromNorth += 40)
        for (int fromWest = -170; fromWest <= 170; fromWest += 85)
            for (int north = -85; north <= 85; north += 17)
                for (int west = -173; west <= 173; west += 31) {
                    const double expected = ByVectors(fromNorth, fromWest, north, west);
                    EXPECT_NEAR(Heading(fromNorth, fromWest, north, west), expected, 0.51);
                }
}

TEST_F(Headings, AreKeptOnceComputed) {
    EXPECT_EQ(Heading(0, 0, 0, -10), 90);
    EXPECT_EQ(Reference.CountryTable[1].Heading.Trimmed(), "90");
    Settings.StationLongitude = -50;
    EXPECT_EQ(HeadingTo(1), 90);
}

TEST_F(Headings, OfNoCountryAreZero) {
    for (const i16 row : std::array<i16, 5>{-1, 0, 11, 351, 32767})
        EXPECT_EQ(HeadingTo(row), 0) << row;
    EXPECT_EQ(Reference.CountryTable[0].Heading.Trimmed(), "");
}

} // namespace
} // namespace zrt
