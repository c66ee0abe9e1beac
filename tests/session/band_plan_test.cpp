#include "session/band_plan.h"

#include "session/bands.h"
#include "session/contests.h"

#include <gtest/gtest.h>

namespace zrt {
namespace {

class BandPlan : public testing::Test {
  protected:
    ~BandPlan() override { Contest = {}; }
    static i16 In(bool cw, bool phone, float kHz) {
        Contest.ModeCW = cw;
        Contest.ModePhone = phone;
        return FrequencyToBandMode(kHz);
    }
};

struct Row {
    float kHz;
    i16 Both, Cw, Phone;
};
// The ends of each band and of its CW part, and what lies just outside.
constexpr Row kRows[] = {
    {1799.9F, 0, 0, 0},     {1800, 6, 6, 14},
    {1849.9F, 6, 6, 14},    {1850, 14, 6, 14},
    {2000, 14, 6, 14},      {2000.1F, 0, 0, 0},
    {3499.9F, 0, 0, 0},     {3500, 5, 5, 13},
    {3749.9F, 5, 5, 13},    {3750, 13, 5, 13},
    {4000, 13, 5, 13},      {4000.1F, 0, 0, 0},
    {6999.9F, 0, 0, 0},     {7000, 4, 4, 12},
    {7049.9F, 4, 4, 12},    {7050, 12, 4, 12},
    {7300, 12, 4, 12},      {7300.1F, 0, 0, 0},
    {10099.9F, 0, 0, 0},    {10100, 23, 23, 23}, // CW alone
    {10150, 23, 23, 23},    {10150.1F, 0, 0, 0},
    {13999.9F, 0, 0, 0},    {14000, 3, 3, 11},
    {14099.9F, 3, 3, 11},   {14100, 11, 3, 11},
    {14350, 11, 3, 11},     {14350.1F, 0, 0, 0},
    {18067.9F, 0, 0, 0},    {18068, 22, 22, 18},
    {18109.9F, 22, 22, 18}, {18110, 0, 22, 18}, // 17 m phone is not known by its frequency
    {18168, 0, 22, 18},     {18168.1F, 0, 0, 0},
    {20999.9F, 0, 0, 0},    {21000, 2, 2, 10},
    {21099.9F, 2, 2, 10},   {21100, 10, 2, 10},
    {21450, 10, 2, 10},     {21450.1F, 0, 0, 0},
    {24889.9F, 0, 0, 0},    {24890, 21, 21, 17},
    {24922.9F, 21, 21, 17}, {24923, 17, 21, 17},
    {24990, 17, 21, 17},    {24990.1F, 0, 0, 0},
    {27999.9F, 0, 0, 0},    {28000, 1, 1, 9},
    {28099.9F, 1, 1, 9},    {28100, 9, 1, 9},
    {29700, 9, 1, 9},       {29700.1F, 0, 0, 0},
    {49999.9F, 0, 0, 0},    {50000, 7, 7, 15},
    {50500, 7, 7, 15}, // the end belongs to CW here
    {50500.1F, 15, 7, 15},  {54000, 15, 7, 15},
    {54000.1F, 0, 0, 0},    {143999.9F, 0, 0, 0},
    {144000, 8, 8, 16},     {144500, 8, 8, 16},
    {144500.1F, 16, 8, 16}, {148000, 16, 8, 16},
    {148000.1F, 0, 0, 0},   {0, 0, 0, 0}};

TEST_F(BandPlan, GivesBandAndModeByTheModesOfTheLog) {
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.kHz);
        EXPECT_EQ(In(true, true, row.kHz), row.Both);
        EXPECT_EQ(In(true, false, row.kHz), row.Cw);
        EXPECT_EQ(In(false, true, row.kHz), row.Phone);
    }
}

TEST_F(BandPlan, HasEachBandOnce) {
    std::array<int, kBandPositions + 1> found{};
    for (const BandRange &range : kBandPlan) {
        ++found[static_cast<std::size_t>(range.Position)];
        EXPECT_EQ(RangeOf(range.Lowest), &range);
        EXPECT_EQ(RangeOf(range.Highest), &range);
    }
    for (std::size_t position = 1; position < found.size(); ++position)
        EXPECT_EQ(found[position], 1) << position;
    EXPECT_EQ(RangeOf(5000), nullptr);
}

} // namespace
} // namespace zrt
