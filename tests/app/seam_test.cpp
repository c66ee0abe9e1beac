// The seam between the two paths by which a contact is counted: live, by LogQso, and when its log
// is read. For each contest, in each of its modes and locations, random logs must lead to one
// state.
#include "app/log_loader.h"
#include "app/session_reset.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "entry/points.h"
#include "entry/statistics.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "support/program.h"
#include "support/random_log.h"

namespace zrt {
namespace {

// Everything that is derived from the entries, but for what the two paths have always made
// differently: the base call of a portable with two sides of one length, and the minutes on the
// present band.
struct Derived {
    MultiplierState Multipliers;
    StatisticsState Statistics;
    PointsState Points;
    std::vector<FixedText<10>> CallText;
    std::vector<i16> CallHash;
    std::vector<CallAndBand> CurrentCalls;
    std::vector<FixedText<10>> Portables;
    std::string ScoreText, MultsText;
};

Derived TakeDerived() {
    Derived derived{Multipliers,
                    Statistics,
                    Points,
                    Dupes.CallText,
                    Dupes.CallHash,
                    Dupes.CurrentCalls,
                    {},
                    LogForm.ScoreLabel.Caption,
                    LogForm.MultsLabel.Caption};
    for (const PortableRow &row : Dupes.PortableTable)
        derived.Portables.push_back(row.FullCall);
    return derived;
}

void ExpectEqualTables(const MultiplierState &live, const MultiplierState &read) {
    const auto worked = [](const MultTable &table) {
        std::vector<std::array<bool, 15>> flags;
        for (const MultRow &row : table)
            flags.push_back(row.Worked);
        return flags;
    };
    for (const auto table :
         {&MultiplierState::ZrtMults, &MultiplierState::PaqpMults, &MultiplierState::NeqpMults,
          &MultiplierState::SprintMults, &MultiplierState::SsMults, &MultiplierState::ArrlMults,
          &MultiplierState::NaqpMults, &MultiplierState::TenMults})
        EXPECT_EQ(worked(live.*table), worked(read.*table));
    EXPECT_EQ(live.CountryWorked, read.CountryWorked);
    EXPECT_EQ(live.ZoneWorked, read.ZoneWorked);
    EXPECT_EQ(live.CountriesPerBand, read.CountriesPerBand);
    EXPECT_EQ(live.ZonesPerBand, read.ZonesPerBand);
    EXPECT_EQ(live.GenericCwCountry, read.GenericCwCountry);
    EXPECT_EQ(live.GenericSsbCountry, read.GenericSsbCountry);
    EXPECT_EQ(live.AaPrefixes, read.AaPrefixes);
    EXPECT_EQ(live.WpxPrefixes, read.WpxPrefixes);
    EXPECT_EQ(live.CwoCalls, read.CwoCalls);
    EXPECT_EQ(live.TenCwMults, read.TenCwMults);
    EXPECT_EQ(live.TenSsbMults, read.TenSsbMults);
}

void ExpectEqualCounters(const StatisticsState &live, const StatisticsState &read) {
    EXPECT_EQ(live.TotalPoints, read.TotalPoints);
    EXPECT_EQ(live.TotalMults, read.TotalMults);
    EXPECT_EQ(live.Score, read.Score);
    EXPECT_EQ(live.QsosPerBand, read.QsosPerBand);
    EXPECT_EQ(live.MultsPerBand, read.MultsPerBand);
    EXPECT_EQ(live.PointsPerBand, read.PointsPerBand);
    EXPECT_EQ(live.PointsAllPerBand, read.PointsAllPerBand);
    EXPECT_EQ(live.PointsPerQso, read.PointsPerQso);
    EXPECT_EQ(live.MinutesPerBand, read.MinutesPerBand);
    EXPECT_EQ(live.CwCount, read.CwCount);
    EXPECT_EQ(live.SsbCount, read.SsbCount);
    EXPECT_EQ(live.CwMinutes, read.CwMinutes);
    EXPECT_EQ(live.SsbMinutes, read.SsbMinutes);
    EXPECT_EQ(live.DayCount, read.DayCount);
    EXPECT_EQ(live.MinuteIndex, read.MinuteIndex);
    EXPECT_EQ(live.OnTimeMinutes, read.OnTimeMinutes);
}

void ExpectEqual(const Derived &live, const Derived &read) {
    ExpectEqualTables(live.Multipliers, read.Multipliers);
    ExpectEqualCounters(live.Statistics, read.Statistics);
    EXPECT_EQ(live.Points.SameContinentCount, read.Points.SameContinentCount);
    EXPECT_EQ(live.CallText, read.CallText);
    EXPECT_EQ(live.CallHash, read.CallHash);
    EXPECT_EQ(live.CurrentCalls, read.CurrentCalls);
    EXPECT_EQ(live.Portables, read.Portables);
    EXPECT_EQ(live.ScoreText, read.ScoreText);
    EXPECT_EQ(live.MultsText, read.MultsText);
}

class Seam : public RandomLogTest {
  protected:
    static void ReadAgain() {
        Session.RescanInPlace = true;
        LoadLog(0);
        Session.RescanInPlace = false;
    }
};

TEST_P(Seam, LoggedAndReadAreOneState) {
    unsigned seed = 1;
    for (const ContestState &variant : VariantsOf(GetParam())) {
        for (int log = 0; log < kRandomLogs && !HasFailure(); ++log, ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            Dice dice(seed);
            ResetSession();
            OpenNewLog(variant);
            // From the first hour of the contest on; the whole log stays within two days of it.
            LogRandomContacts(dice, 21);
            EXPECT_GT(Log.NextEntry, kRandomContacts / 2);
            const Derived live = TakeDerived();
            ReadAgain();
            ExpectEqual(live, TakeDerived());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Contests, Seam, testing::Range(i16{1}, static_cast<i16>(kContests + 1)),
                         ContestOfTest);

} // namespace
} // namespace zrt
