#include "entry/multipliers.h"

#include "entry/log_form.h"
#include "session/contests.h"
#include "session/log_file.h"

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;

class MultiplierTables : public testing::Test {
  protected:
    MultiplierTables() {
        Reference = {};
        Contest = {};
        for (std::size_t i = 0; i < Reference.CommonList.size(); ++i)
            Reference.CommonList[i] = "R" + std::to_string(i + 1);
    }
    ~MultiplierTables() override {
        Reference = {};
        Contest = {};
        Multipliers = {};
    }
    static void Fill(i16 contestId) {
        Contest.ContestId = contestId;
        FillMultiplierTables();
    }
    static std::string First(const MultTable &table, std::size_t row) {
        return table[row - 1].Spellings[0];
    }
};

TEST_F(MultiplierTables, SplitARowIntoItsSpellings) {
    Reference.PaqpMults[0] = "ADA/ADAM/ADAMS";
    Reference.PaqpMults[1] = "ALL/ALLE/";
    Reference.PaqpMults[2] = "ARM";
    Reference.PaqpMults[3] = "A/B/C/D";
    Fill(kPaqp);
    ASSERT_EQ(Multipliers.PaqpMults.size(), 67U);
    EXPECT_THAT(Multipliers.PaqpMults[0].Spellings, ElementsAre("ADA", "ADAM", "ADAMS"));
    EXPECT_THAT(Multipliers.PaqpMults[1].Spellings, ElementsAre("ALL", "ALLE", ""));
    EXPECT_THAT(Multipliers.PaqpMults[2].Spellings, ElementsAre("ARM", "", ""));
    EXPECT_THAT(Multipliers.PaqpMults[3].Spellings, ElementsAre("A", "B", "C"));
}

TEST_F(MultiplierTables, AreStatesAndCountiesAtHomeAndCountiesElsewhere) {
    Contest.StationInState = true;
    Fill(kZrt);
    ASSERT_EQ(Multipliers.ZrtMults.size(), 58U);
    ASSERT_EQ(Multipliers.ZrtCounties.size(), 58U);
    EXPECT_EQ(First(Multipliers.ZrtMults, 1), "R1");
    EXPECT_EQ(First(Multipliers.ZrtMults, 58), "R58");
    EXPECT_EQ(First(Multipliers.ZrtCounties, 1), "R59");
    EXPECT_EQ(First(Multipliers.ZrtCounties, 58), "R116");
    Contest.StationInState = false;
    Fill(kZrt);
    EXPECT_EQ(First(Multipliers.ZrtMults, 1), "R59");
    EXPECT_EQ(First(Multipliers.ZrtMults, 58), "R116");
    EXPECT_TRUE(Multipliers.ZrtCounties.empty());
}

TEST_F(MultiplierTables, OfNeqpKeepTheWholeRowForTheDisplay) {
    Reference.NeqpMults[0] = "FAICT/CTFAI";
    Reference.NeqpMults[1] = "HARCT";
    Fill(kNeqp);
    EXPECT_THAT(Multipliers.NeqpMults[0].Spellings, ElementsAre("FAICT", "CTFAI", "FAICT/CTFAI"));
    EXPECT_THAT(Multipliers.NeqpMults[1].Spellings, ElementsAre("HARCT", "HARCT", "HARCT"));
}

TEST_F(MultiplierTables, OfSsEndWithTheSectionsOfToday) {
    Fill(kSs);
    ASSERT_EQ(Multipliers.SsMults.size(), 83U);
    EXPECT_EQ(First(Multipliers.SsMults, 1), "R117");
    EXPECT_EQ(First(Multipliers.SsMults, 83), "R199");
    Reference.SsExtraMults[0] = "PE/PEI";
    Reference.SsExtraMults[1] = "XX";
    Reference.SsExtraMultCount = 2;
    Reference.SsExtraShortFormCount = 1; // the second has no short form
    Fill(kSs);
    ASSERT_EQ(Multipliers.SsMults.size(), 84U);
    EXPECT_THAT(Multipliers.SsMults[83].Spellings, ElementsAre("PE", "PEI", ""));
}

TEST_F(MultiplierTables, OfTheOthersHaveOneSpelling) {
    struct Row {
        i16 ContestId;
        MultTable *Table;
        std::size_t Rows;
    };
    Reference.SprintMults[0] = Reference.ArrlMults[0] = Reference.NaqpMults[0] =
        Reference.TenMults[0] = "AL/BAMA";
    for (const Row &row :
         {Row{kSprint, &Multipliers.SprintMults, 72}, Row{kArrlDx, &Multipliers.ArrlMults, 63},
          Row{kNaqp, &Multipliers.NaqpMults, 72}, Row{kTenMeter, &Multipliers.TenMults, 65}}) {
        Fill(row.ContestId);
        ASSERT_EQ(row.Table->size(), row.Rows);
        EXPECT_EQ(First(*row.Table, 1), "AL/BAMA");
    }
}

TEST_F(MultiplierTables, BelongToOneContestAndStartUnworked) {
    Fill(kSs);
    Multipliers.SsMults[0].Worked[0] = true;
    Fill(kSs);
    EXPECT_FALSE(Multipliers.SsMults[0].Worked[0]);
    Fill(kGeneric);
    EXPECT_TRUE(Multipliers.SsMults.empty());
}

TEST_F(MultiplierTables, AreSearchedFromTheFirstRowAndNeverForNothing) {
    Reference.PaqpMults[0] = "ADA/ADAM";
    Reference.PaqpMults[1] = "ALL//ADAM";
    Fill(kPaqp);
    EXPECT_EQ(FindMult(Multipliers.PaqpMults, "ADAM"), 1);
    EXPECT_EQ(FindMult(Multipliers.PaqpMults, "ALL"), 2);
    EXPECT_EQ(FindMult(Multipliers.PaqpMults, ""), 0); // many spellings are empty
    EXPECT_EQ(FindMult(Multipliers.PaqpMults, "@"), 0);
    EXPECT_EQ(FindMult(Multipliers.PaqpMults, "ADAM", 1), 0);
}

// ---- what a contact marks

constexpr i16 kUsaRow = 1, kCanadaRow = 2, kHawaiiRow = 4; // Germany is 3

// Four countries and short lists; a contact is applied, and the same record replayed afresh.
class Marking : public MultiplierTables {
  protected:
    Marking() {
        AddCountry("K", "K", 5);
        AddCountry("VE", "VE", 5);
        AddCountry("*DL", "DL", 14);
        AddCountry("KH6", "KH6", 31);
        Reference.CountryRowUsa = kUsaRow;
        Reference.CountryRowCanada = kCanadaRow;
        Reference.CountryRowHawaii = kHawaiiRow;
        Reference.ArrlMults = {"CT", "NY", "ON"};
        Reference.TenMults = {"CT", "NY", "ON"};
        Reference.SprintMults[10] = "HI";
        Reference.SprintMults[11] = "ID";
        Reference.NaqpMults = {"CT", "NY"};
        Reference.PaqpMults = {"ADA/ADAM/ADAMS", "ALL"};
        Reference.NeqpMults = {"FAICT/CTFAI"};
        for (std::size_t i = 0; i < Reference.SsShortForms.size(); ++i)
            Reference.SsShortForms[i] = "S" + std::to_string(i + 1);
    }
    ~Marking() override {
        Log = {};
        Entry = {};
    }
    static void AddCountry(const char *mainPrefix, const char *prefix, i16 zone) {
        Country &country = Reference.CountryTable[++Reference.CountryCount];
        country.MainPrefix = mainPrefix;
        country.CQZone = std::to_string(zone);
        AddPrefix(Reference.Prefixes, ParsePrefix(prefix, Reference.CountryCount),
                  *mainPrefix == '*');
    }
    // Applies a contact with what the parser made of it; the record is left in `Made`.
    NewMults Apply(const char *call, const char *mult, i16 band = 3, i16 number = 0) {
        Entry = {};
        Made = {};
        Made.Callsign = call;
        Made.BandIndex = band;
        Made.RcvdNumber = number;
        Made.Points = "3";
        ParsedExchange parsed;
        parsed.Mult = mult;
        parsed.Prec = "A";
        parsed.Check = "74";
        const NewMults found = ApplyMultiplier(Made, parsed);
        Records.push_back(Made);
        Found.push_back(found);
        return found;
    }
    std::string Exchange() const { return Made.RcvdExchange.Trimmed(); }
    // What was applied, replayed from the records alone, marks and counts the same.
    void ExpectReplayEqual() {
        const MultiplierState live = Multipliers;
        FillMultiplierTables();
        for (std::size_t i = 0; i < Records.size(); ++i)
            EXPECT_EQ(ReplayMultiplier(Records[i]), Found[i]) << "entry " << i + 1;
        EXPECT_EQ(Multipliers.WpxPrefixes, live.WpxPrefixes);
        EXPECT_EQ(Multipliers.CountryWorked, live.CountryWorked);
        EXPECT_EQ(Multipliers.ZoneWorked, live.ZoneWorked);
        EXPECT_EQ(Multipliers.CwoCalls, live.CwoCalls);
        EXPECT_EQ(Multipliers.TenCwMults, live.TenCwMults);
        EXPECT_EQ(Multipliers.TenSsbMults, live.TenSsbMults);
    }
    LogEntry Made;
    std::vector<LogEntry> Records;
    std::vector<NewMults> Found;
};

constexpr NewMults kNone{}, kOne{1, 1};

TEST_F(Marking, ArrlDxInTheUsaCountsCountriesOncePerBand) {
    Contest.StationUSVE = true;
    Fill(kArrlDx);
    EXPECT_EQ(Apply("XX1ZZ", ""), kNone); // no country
    EXPECT_EQ(Exchange(), "");
    // Starred countries don't count in ARRL DX, so the call has none.
    EXPECT_EQ(Apply("DL1ABC", ""), kNone);
    EXPECT_EQ(Apply("KH6XX", ""), kOne);
    EXPECT_EQ(Exchange(), "KH6");
    EXPECT_TRUE(Entry.NewMultFlag);
    EXPECT_EQ(Apply("KH6YY", ""), kNone);
    EXPECT_FALSE(Entry.NewMultFlag);
    EXPECT_EQ(Apply("KH6XX", "", 4), kOne);
    EXPECT_EQ(Multipliers.CountryWorked[kHawaiiRow][3], 2);
    ExpectReplayEqual();
}

TEST_F(Marking, ArrlDxInTheUsaRefusesTheUsaAndCanada) {
    Contest.StationUSVE = true;
    Fill(kArrlDx);
    for (const char *call : {"K1ZZ", "VE3ZZ"}) {
        EXPECT_EQ(Apply(call, ""), kNone);
        EXPECT_EQ(Made.Points.Whole(), "0");
    }
    EXPECT_EQ(Multipliers.CountryWorked[kUsaRow][3], 0);
    ExpectReplayEqual();
}

TEST_F(Marking, ArrlDxElsewhereCountsStatesOncePerBand) {
    Fill(kArrlDx);
    EXPECT_EQ(Apply("K1ZZ", "NY"), kOne);
    EXPECT_EQ(Exchange(), "NY");
    EXPECT_EQ(Entry.NewMultRow, 2);
    EXPECT_EQ(Apply("K2ZZ", "NY"), kNone);
    EXPECT_EQ(Apply("K2ZZ", "NY", 12), kOne);
    EXPECT_EQ(Apply("K3ZZ", "CT", 21), kNone); // no band of this contest
    ExpectReplayEqual();
}

TEST_F(Marking, ZrtAtHomeCountsStatesAndItselfByItsCounties) {
    Reference.CommonList[1] = "AK/KL7";
    Reference.CommonList[58] = "ALDR/ALD";
    Contest.StationInState = true;
    Fill(kZrt);
    EXPECT_EQ(Apply("K1ZZ", "ALD"), kOne);
    EXPECT_EQ(Exchange(), "ALDR");
    EXPECT_EQ(Entry.NewMultRow, kCountyRow);
    EXPECT_TRUE(Entry.CountyContact);
    EXPECT_EQ(Apply("K2ZZ", "R60"), kNone); // another county, the same row
    EXPECT_EQ(Apply("KL7AA", "KL7"), kOne);
    EXPECT_EQ(Exchange(), "2");
    EXPECT_FALSE(Entry.CountyContact);
    EXPECT_EQ(Apply("G3ZZ", "DX"), kNone);
    EXPECT_EQ(Exchange(), "DX");
    EXPECT_EQ(Apply("KL7AA", "AK", 12), kNone); // once in the contest
    ExpectReplayEqual();
}

TEST_F(Marking, ZrtElsewhereCountsCounties) {
    Fill(kZrt);
    EXPECT_EQ(Apply("K1ZZ", "R59"), kOne);
    EXPECT_EQ(Exchange(), "1");
    EXPECT_EQ(Apply("K1ZZ", "R59", 12), kNone);
    ExpectReplayEqual();
}

TEST_F(Marking, PaqpAndNeqpCountCounties) {
    Fill(kPaqp);
    EXPECT_EQ(Apply("K1ZZ", "ADAMS"), kOne);
    EXPECT_EQ(Exchange(), "1");
    EXPECT_EQ(Apply("K2ZZ", "ADA", 12), kNone);
    ExpectReplayEqual();
    Records.clear();
    Found.clear();
    Fill(kNeqp);
    EXPECT_EQ(Apply("K1ZZ", "CTFAI"), kOne);
    EXPECT_EQ(Apply("K1ZZ", "FAICT/CTFAI"), kNone); // the display form is no spelling
    ExpectReplayEqual();
}

TEST_F(Marking, SprintNeverCountsRowEleven) {
    Fill(kSprint);
    EXPECT_EQ(Apply("KH6XX", "HI"), kNone);
    EXPECT_EQ(Exchange(), "11");
    EXPECT_EQ(Apply("K7ZZ", "ID"), kOne);
    EXPECT_EQ(Exchange(), "12");
    EXPECT_EQ(Apply("G3ZZ", "G"), kNone);
    EXPECT_EQ(Exchange(), "G");
    ExpectReplayEqual();
}

TEST_F(Marking, SsStoresPrecedenceCheckAndShortForm) {
    Fill(kSs);
    EXPECT_EQ(Apply("K1ZZ", "R118"), kOne);
    EXPECT_EQ(Made.RcvdExchange.Whole(), "A74S2");
    EXPECT_EQ(Apply("K2ZZ", "R118", 12), kNone);
    EXPECT_EQ(Apply("K3ZZ", "R117", 12), kOne);
    ExpectReplayEqual();
}

TEST_F(Marking, CqWwCountsCountryAndZoneOncePerBandAndSetsNoFlag) {
    Fill(kCqWw);
    EXPECT_EQ(Apply("DL1ABC", "", 3, 14), (NewMults{2, 2}));
    EXPECT_FALSE(Entry.NewMultFlag);
    EXPECT_EQ(Exchange(), "*DL");
    EXPECT_EQ(Apply("DL2ABC", "", 3, 14), kNone);
    EXPECT_EQ(Apply("K1ZZ", "", 3, 14), kOne);  // the zone is worked
    EXPECT_EQ(Apply("XX1ZZ", "", 3, 40), kOne); // no country
    EXPECT_EQ(Apply("XX1ZZ", "", 4, 41), kNone);
    EXPECT_EQ(Multipliers.CountriesPerBand[3], 2);
    EXPECT_EQ(Multipliers.ZonesPerBand[3], 2);
    EXPECT_EQ(Multipliers.ZoneWorked[14][3], 3);
    ExpectReplayEqual();
}

TEST_F(Marking, WpxCountsPrefixesAsTheyAreStored) {
    Fill(kWpx);
    EXPECT_EQ(Apply("DL1ABC", ""), kOne);
    EXPECT_EQ(Exchange(), "DL1");
    EXPECT_EQ(Apply("DL1XYZ", "", 12), kNone);
    EXPECT_EQ(Apply("LY2000A", ""), kOne);
    EXPECT_EQ(Exchange(), "LY200");
    EXPECT_EQ(Apply("LY2001A", ""), kNone); // cut to the same five characters
    EXPECT_EQ(Multipliers.WpxPrefixes, (std::vector<std::string>{"DL1", "LY200"}));
    ExpectReplayEqual();
}

TEST_F(Marking, PrefixesAreFoundInTextOrderWithoutBeingInserted) {
    Fill(kWpx);
    for (const char *prefix : {"K1", "DL1", "W4"})
        InsertPrefix(prefix, false);
    EXPECT_EQ(InsertPrefix("K1", true).Position, 1U);
    EXPECT_FALSE(InsertPrefix("K1", true).IsNew);
    EXPECT_EQ(InsertPrefix("K2", true).Position, 2U);
    EXPECT_TRUE(InsertPrefix("K2", true).IsNew);
    EXPECT_EQ(Multipliers.WpxPrefixes.size(), 3U);
}

TEST_F(Marking, AaCountsPrefixesOncePerBand) {
    Fill(kAa);
    EXPECT_EQ(Apply("DL1ABC", "", 3), kOne);
    EXPECT_TRUE(Entry.NewMultFlag);
    EXPECT_EQ(Exchange(), "DL1");
    EXPECT_EQ(Apply("DL1XYZ", "", 3), kNone);
    EXPECT_FALSE(Entry.NewMultFlag);
    EXPECT_EQ(Apply("DL1XYZ", "", 4), kOne);
    ExpectReplayEqual();
}

TEST_F(Marking, AFullColumnOfAaCountsEachTime) {
    Fill(kAa);
    for (int i = 0; i < 150; ++i)
        Multipliers.AaPrefixes[3].push_back("P" + std::to_string(i));
    EXPECT_EQ(Apply("DL1ABC", "", 3), kOne);
    EXPECT_EQ(Apply("DL1ABC", "", 3), kOne);
    EXPECT_EQ(Multipliers.AaPrefixes[3].size(), 150U);
}

TEST_F(Marking, NaqpCountsOncePerBand) {
    Fill(kNaqp);
    EXPECT_EQ(Apply("K1ZZ", "NY", 3), kOne);
    EXPECT_EQ(Exchange(), "2");
    EXPECT_EQ(Apply("K1ZZ", "NY", 3), kNone);
    EXPECT_EQ(Apply("K1ZZ", "NY", 4), kOne);
    EXPECT_EQ(Apply("G3ZZ", "DX", 4), kNone);
    EXPECT_EQ(Exchange(), "DX");
    ExpectReplayEqual();
}

TEST_F(Marking, TenMeterCountsStatesByModeAndCountriesByBand) {
    Fill(kTenMeter);
    EXPECT_EQ(Apply("K1ZZ", "CT", 1), (NewMults{1, 0}));
    EXPECT_TRUE(Entry.NewMultFlag);
    EXPECT_EQ(Exchange(), "CT");
    EXPECT_EQ(Apply("K1AW", "CT", 9), (NewMults{1, 0}));
    EXPECT_EQ(Apply("K2ZZ", "CT", 1), kNone);
    EXPECT_EQ(Multipliers.TenCwMults, 1);
    EXPECT_EQ(Multipliers.TenSsbMults, 1);
    EXPECT_EQ(Apply("DL1ABC", "", 1, 17), kOne);
    EXPECT_EQ(Exchange(), "*DL");
    EXPECT_FALSE(Entry.NewMultFlag);
    EXPECT_EQ(Apply("DL1ABC", "", 1, 18), kNone);
    ExpectReplayEqual();
}

TEST_F(Marking, GenericCountsCountriesAndNoMultipliers) {
    Fill(kGeneric);
    EXPECT_EQ(Apply("DL1ABC", "", 3), kNone);
    EXPECT_EQ(Apply("DL1ABC", "", 11), kNone);
    EXPECT_EQ(Apply("K1ZZ", "", 21), kNone);
    EXPECT_EQ(CountriesWorked(Multipliers.GenericCwCountry), 2);
    EXPECT_EQ(CountriesWorked(Multipliers.GenericSsbCountry), 1);
    EXPECT_EQ(Multipliers.CountriesPerBand[3], 1);
    ExpectReplayEqual();
}

TEST_F(Marking, CwOpenCountsCallsUpToAThousand) {
    Fill(kCwOpen);
    EXPECT_EQ(Apply("K1ZZ", ""), (NewMults{1, 0}));
    EXPECT_EQ(Apply("K1ZZ", "", 4), kNone);
    ExpectReplayEqual();
    for (int i = 1; i < 1000; ++i)
        EXPECT_EQ(Apply(("K" + std::to_string(i)).c_str(), "").Total, 1);
    EXPECT_EQ(Apply("G3ZZ", ""), kNone);
}

TEST_F(Marking, DamagedRecordsCountNothing) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        Fill(contest);
        for (const i16 band : {i16{-5}, i16{0}, i16{25}, i16{32767}}) {
            OldEntry36 entry;
            entry.Callsign = "DL1ABC";
            entry.BandIndex = band;
            entry.RcvdNumber = -1;
            entry.RcvdExchange = "99999";
            ReplayMultiplier(entry); // must not write outside of any table
        }
    }
    EXPECT_EQ(CountriesWorked(Multipliers.GenericCwCountry), 0);
}

} // namespace
} // namespace zrt
