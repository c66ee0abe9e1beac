#include "entry/partial_calls.h"

#include "entry/dupes.h"
#include "entry/old_calls.h"
#include "session/log_file.h"
#include "session/reference_data.h"
#include "support/plain_partials.h"
#include "support/program.h"

#include <random>
#include <utility>

namespace zrt {
namespace {

constexpr i16 k20Cw = 3, k40Cw = 4;

// A row, as the start reads it from the file.
void AddKnownCalls(const std::vector<std::string> &rows) {
    for (const std::string &row : rows) {
        Reference.SCPStart.push_back(static_cast<std::uint32_t>(Reference.SCPTable.size()));
        Reference.SCPTable += row + "\n";
        ++Reference.SCPCount;
    }
    Reference.SCPLoaded = true;
}

void AddToLog(std::string_view call, i16 band = k20Cw) {
    const i16 n = Log.NextEntry;
    Log.LogEntries[static_cast<std::size_t>(n)] =
        MakeEntry(call, DateCode(2015, 1, 15), 1437, band, '1');
    AppendCall(n, call, band, PortableTie::Right);
    ++Log.NextEntry;
}

class PartialCalls : public ProgramTest {
  protected:
    PartialCalls() { OpenNewLog(kGeneric); }
    static std::vector<i32> Known(std::string_view text) {
        FindPartials(text);
        return Partials.ScpEntries;
    }
};

// ---- the plain loops, row by row

// Few letters, so that much is found, and rows that are full, so that texts run from one into the
// next.
std::string RandomCall(std::mt19937 &random, std::size_t longest) {
    constexpr std::string_view kLetters = "AB1/";
    std::string call(1 + random() % longest, ' ');
    for (char &c : call)
        c = kLetters[random() % kLetters.size()];
    return call;
}

void MakeWorld(std::mt19937 &random) {
    constexpr std::size_t kLongestCall = 10;
    Log.NextEntry = 1;
    Dupes = {};
    OldCalls = {};
    Reference.SCPTable.clear();
    Reference.SCPStart.clear();
    Reference.SCPCount = 0;
    for (std::size_t i = random() % 60; i > 0; --i)
        AddToLog(RandomCall(random, kLongestCall));
    for (std::size_t i = random() % 60; i > 0; --i)
        InsertOldCall(RandomCall(random, kLongestCall), "GEX");
    std::vector<std::string> rows;
    for (std::size_t i = random() % 200; i > 0; --i)
        rows.push_back(std::array{"", "*", "+"}[random() % 3] + RandomCall(random, kLongestCall));
    AddKnownCalls(rows);
}

TEST_F(PartialCalls, AreThoseOfThePlainLoops) {
    std::mt19937 random(28);
    std::size_t logMatches = 0, oldMatches = 0, knownMatches = 0;
    for (int world = 0; world < 300; ++world) {
        MakeWorld(random);
        for (int i = 0; i < 40; ++i) {
            const std::string text = RandomCall(random, i < 30 ? 4 : 11);
            Contest.SCPSelection = std::array{"ALL", "US", "DX", "All"}[random() % 4];
            OldCalls.ShowOldCalls = random() % 4 != 0;
            SCOPED_TRACE("world " + std::to_string(world) + ": " + text);
            FindPartials(text);
            const std::vector<i16> matches = PlainMatches(text);
            ASSERT_EQ(Partials.MatchEntries, matches);
            const std::size_t room = OldCalls.ShowOldCalls ? kMostPartials - matches.size() : 0;
            ASSERT_EQ(Partials.OldEntries, PlainOldCalls(text, room));
            ASSERT_EQ(Partials.ScpEntries, PlainKnownCalls(text));
            logMatches += matches.size();
            oldMatches += Partials.OldEntries.size();
            knownMatches += Partials.ScpEntries.size();
        }
    }
    // Random as it is, the test has seen much of each.
    EXPECT_GT(logMatches, 5000U);
    EXPECT_GT(oldMatches, 2000U);
    EXPECT_GT(knownMatches, 5000U);
}

// ---- the log

TEST_F(PartialCalls, StopAtFifteenOfTheLogAndSortOnlyThose) {
    for (int i = 0; i < 20; ++i)
        AddToLog("K" + std::string(1, static_cast<char>('Z' - i)) + "1");
    FindPartials("K");
    ASSERT_EQ(Partials.PartialCalls.size(), 15U);
    EXPECT_EQ(Partials.MatchEntries.back(), 15);
    EXPECT_EQ(Partials.PartialCalls.front().Call, "KL1"); // the 15th, though 5 more are below it
    EXPECT_EQ(Partials.PartialCalls.back().Call, "KZ1");
}

TEST_F(PartialCalls, AreFoundInTheMiddle) {
    AddToLog("DL1ABC");
    AddToLog("K1ZZ");
    AddToLog("VE3/W1AB");
    FindPartials("1AB");
    EXPECT_EQ(Partials.MatchEntries, (std::vector<i16>{1, 3}));
    EXPECT_EQ(Partials.PartialCalls[1], (PartialCall{"VE3/W1AB", k20Cw}));
}

TEST_F(PartialCalls, DoNotRunFromOneRowIntoTheNext) {
    AddToLog("VP2E/K1ABC");
    AddToLog("W1AW");
    FindPartials("BCW1");
    EXPECT_TRUE(Partials.MatchEntries.empty());
    FindPartials("BC");
    EXPECT_EQ(Partials.MatchEntries, (std::vector<i16>{1}));
}

TEST_F(PartialCalls, LeaveOutAnEntryThatWasTakenBack) {
    AddToLog("W1AW");
    AddToLog("W1AB");
    --Log.NextEntry;
    FindPartials("W1");
    EXPECT_EQ(Partials.MatchEntries, (std::vector<i16>{1}));
}

// Equal calls change places while the others are sorted; operators know the order that comes of it.
TEST_F(PartialCalls, StandInTheOrderOfTheExchangeSort) {
    AddToLog("W2", k20Cw);
    AddToLog("W2", k40Cw);
    AddToLog("W1", k20Cw);
    FindPartials("W");
    // gap 1: the two exchanges of W1 keep the others in order
    EXPECT_EQ(Partials.PartialCalls,
              (std::vector<PartialCall>{{"W1", k20Cw}, {"W2", k20Cw}, {"W2", k40Cw}}));
    AddToLog("W1", k40Cw);
    FindPartials("W");
    // gap 2: 1 and 3 change places, and 2 and 4
    EXPECT_EQ(
        Partials.PartialCalls,
        (std::vector<PartialCall>{{"W1", k20Cw}, {"W1", k40Cw}, {"W2", k20Cw}, {"W2", k40Cw}}));
    AddToLog("W0", k40Cw);
    FindPartials("W");
    // gap 2: 1 and 3, 2 and 4, 3 and 5, 1 and 3 again: the band of the first W1 goes to the back
    EXPECT_EQ(Partials.PartialCalls,
              (std::vector<PartialCall>{
                  {"W0", k40Cw}, {"W1", k40Cw}, {"W1", k20Cw}, {"W2", k40Cw}, {"W2", k20Cw}}));
}

// ---- earlier logs

TEST_F(PartialCalls, TakeEarlierLogsOnlyOnRequestAndUpToFifteen) {
    for (int i = 0; i < 10; ++i)
        AddToLog("K1A");
    for (char c = 'A'; c <= 'Z'; ++c)
        InsertOldCall(std::string("K9") + c, "GE");
    FindPartials("K");
    EXPECT_EQ(Partials.MatchEntries.size(), 10U);
    EXPECT_TRUE(Partials.OldEntries.empty());
    OldCalls.ShowOldCalls = true;
    FindPartials("K");
    EXPECT_EQ(Partials.OldEntries, (std::vector<i16>{0, 1, 2, 3, 4}));
    for (int i = 0; i < 5; ++i)
        AddToLog("K1A");
    FindPartials("K");
    EXPECT_TRUE(Partials.OldEntries.empty());
}

TEST_F(PartialCalls, FindACallThatWasInsertedSince) {
    OldCalls.ShowOldCalls = true;
    InsertOldCall("W1AW", "GE");
    FindPartials("W1");
    EXPECT_EQ(Partials.OldEntries.size(), 1U);
    InsertOldCall("VE3W1", "GE");
    FindPartials("W1");
    EXPECT_EQ(Partials.OldEntries, (std::vector<i16>{0, 1}));
    OldCalls.Rows.clear();
    FindPartials("W1");
    EXPECT_TRUE(Partials.OldEntries.empty());
}

// ---- known calls

TEST_F(PartialCalls, PassTheSelectionByTheirMarks) {
    AddKnownCalls({"DL1A", "*K1A", "+KP4A"});
    Contest.SCPSelection = "ALL";
    EXPECT_EQ(Known("A"), (std::vector<i32>{1, 2, 3}));
    Contest.SCPSelection = "US";
    EXPECT_EQ(Known("A"), (std::vector<i32>{2, 3}));
    Contest.SCPSelection = "DX";
    EXPECT_EQ(Known("A"), (std::vector<i32>{1, 3}));
    EXPECT_EQ(ScpCall(1), "DL1A");
    EXPECT_EQ(ScpCall(2), "K1A");
    EXPECT_EQ(ScpCall(3), "KP4A");
}

TEST_F(PartialCalls, StopAtTwentyKnownOnesThatPass) {
    std::vector<std::string> rows;
    rows.reserve(50);
    for (int i = 0; i < 50; ++i)
        rows.push_back((i % 2 == 0 ? "DL" : "*K") + std::to_string(100 + i));
    AddKnownCalls(rows);
    Contest.SCPSelection = "US";
    const std::vector<i32> found = Known("1");
    ASSERT_EQ(found.size(), 20U);
    EXPECT_EQ(found.front(), 2);
    EXPECT_EQ(found.back(), 40);
}

TEST_F(PartialCalls, AreNotLookedForInAListThatWasNotRead) {
    AddKnownCalls({"K1A"});
    Reference.SCPLoaded = false;
    EXPECT_TRUE(Known("K1A").empty());
}

TEST_F(PartialCalls, AreNoneForAnEmptyText) {
    AddToLog("W1AW");
    AddKnownCalls({"K1A"});
    FindPartials("1A");
    EXPECT_FALSE(Partials.MatchEntries.empty());
    for (const char *text : {"", "  "}) {
        FindPartials(text);
        EXPECT_TRUE(Partials.MatchEntries.empty() && Partials.ScpEntries.empty());
        EXPECT_TRUE(Partials.PartialCalls.empty());
    }
}

} // namespace
} // namespace zrt
