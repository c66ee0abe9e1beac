// Random logs: contacts typed into the entry window, minute by minute, in any contest. For the
// tests that compare two ways of counting one log. A test program that needs them names
// random_log.cpp.
#pragma once

#include "session/contests.h"
#include "support/program.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace zrt {

#if defined(__SANITIZE_ADDRESS__)
inline constexpr int kRandomLogs = 5; // a tenth: the sanitizers slow it down as much
#else
inline constexpr int kRandomLogs = 50;
#endif
inline constexpr int kRandomContacts = 300;

class Dice {
  public:
    explicit Dice(unsigned seed) : Engine(seed) {}
    int Below(int n) { return std::uniform_int_distribution(0, n - 1)(Engine); }
    bool OneIn(int n) { return Below(n) == 0; }
    template <typename Range> auto Pick(const Range &range) {
        return range[static_cast<std::size_t>(Below(static_cast<int>(std::size(range))))];
    }

  private:
    std::mt19937 Engine;
};

// The program after its start, for random logs of each contest: its disk does not sync, and boxes
// are answered with OK (refusals, portables).
class RandomLogTest : public ProgramTest, public testing::WithParamInterface<i16> {
  protected:
    RandomLogTest();
};
// By ContestId, for INSTANTIATE_TEST_SUITE_P.
std::string ContestOfTest(const testing::TestParamInfo<i16> &contest);

// The contest in each of its modes and locations.
std::vector<ContestState> VariantsOf(i16 contestId);

// Types kRandomContacts contacts, some of which are refused, from 15 January 2015 at this hour UTC
// on; they take less than a day. The entry window is wiped at the end.
void LogRandomContacts(Dice &dice, int hour);

} // namespace zrt
