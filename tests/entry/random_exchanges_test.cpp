// A hundred thousand exchanges for each contest, of plausible pieces and of noise: no text breaks a
// promise of the parsers.
#include "support/exchange_promises.h"
#include "support/program.h"

#include <array>
#include <random>

namespace zrt {
namespace {

constexpr int kRuns = 100'000;

constexpr auto kPieces = std::to_array<const char *>(
    {"1",    "12",  "123",   "1234",  "12345", "0",        "9999", "599", "K",     "KW",
     "A",    "B",   "Q",     "U",     "72",    "07",       "CT",   "ct",  "EMA",   "KP4",
     "MD",   "NWT", "ON",    "NH",    "ALD",   "ADA",      "JOE",  "joe", "FAICT", "HAR",
     "W1AW", "/",   "W1A/4", "99999", "40",    "14",       "41",   "5",   " ",     " ",
     " ",    "  ",  "-",     ".",     "?",     "\xC3\xA4", "\xFF", "\t"});
constexpr auto kCalls = std::to_array<const char *>({"K1ZZ",
                                                     "k1zz",
                                                     "K1ZZ5",
                                                     "DL1ABC14",
                                                     "W1AW",
                                                     "VK9NS",
                                                     "K1ZZ123",
                                                     "K1A",
                                                     "K1A5",
                                                     "W1AW/4",
                                                     "TM50",
                                                     "5",
                                                     "15",
                                                     "K1Z12",
                                                     "K1ZZ00",
                                                     "K1ZZ99999",
                                                     "",
                                                     " K1ZZ ",
                                                     "A\xC3\xA4"
                                                     "1",
                                                     "W1A0"});

using Random = std::mt19937;

template <typename List> std::string OneOf(Random &random, const List &list) {
    return list[random() % list.size()];
}

std::string RandomExchange(Random &random) {
    std::string text;
    const bool noise = random() % 8 == 0;
    for (auto n = random() % 7; n > 0; --n) {
        if (noise)
            text += static_cast<char>(random() % 256);
        else
            text += OneOf(random, kPieces);
        if (!noise && random() % 2 == 0)
            text += ' ';
    }
    return text;
}

class RandomExchanges : public ProgramTest {
  protected:
    static void Run(i16 contestId, bool atHome = false) {
        FillExchangeLists();
        OpenNewLog(contestId);
        Parsers = {};
        OpenExchanges(contestId, atHome);
        Random random(static_cast<unsigned>(contestId * 2 + atHome));
        int accepted = 0;
        int refused = 0;
        for (int i = 0; i < kRuns; ++i) {
            const std::string call = OneOf(random, kCalls);
            const std::string exchange = RandomExchange(random);
            const std::string broken = BrokenPromise(RunParser(call, exchange));
            ASSERT_EQ(broken, "") << "call '" << call << "', exchange '" << exchange << "'";
            ++(Entry.ParseError ? refused : accepted);
        }
        // Else the promises of one of the two sides were never asked for.
        EXPECT_GT(accepted, kRuns / 1000);
        EXPECT_GT(refused, kRuns / 100);
    }
};

TEST_F(RandomExchanges, OfArrlDxElsewhere) {
    Run(kArrlDx);
}

TEST_F(RandomExchanges, OfArrlDxAtAUsStation) {
    Run(kArrlDx, true);
}

TEST_F(RandomExchanges, OfZrtOutside) {
    Run(kZrt);
}

TEST_F(RandomExchanges, OfZrtAtHome) {
    Run(kZrt, true);
}

TEST_F(RandomExchanges, OfPaqp) {
    Run(kPaqp);
}

TEST_F(RandomExchanges, OfNeqp) {
    Run(kNeqp);
}

TEST_F(RandomExchanges, OfCqWw) {
    Run(kCqWw);
}

TEST_F(RandomExchanges, OfSprint) {
    Run(kSprint);
}

TEST_F(RandomExchanges, OfSs) {
    Run(kSs);
}

TEST_F(RandomExchanges, OfWpx) {
    Run(kWpx);
}

TEST_F(RandomExchanges, OfNaqp) {
    Run(kNaqp);
}

TEST_F(RandomExchanges, OfTenMeter) {
    Run(kTenMeter);
}

TEST_F(RandomExchanges, OfCwOpen) {
    Run(kCwOpen);
}

} // namespace
} // namespace zrt
