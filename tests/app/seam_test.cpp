// The seam between the two paths by which a contact is counted: live, by LogQso, and when its log
// is read. For each contest, in each of its modes and locations, random logs must lead to one
// state.
#include "app/log_loader.h"
#include "app/session_reset.h"
#include "app/start_up.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/multipliers.h"
#include "entry/points.h"
#include "entry/statistics.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/session_flags.h"
#include "support/program.h"

#include <random>

namespace zrt {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int kLogs = 5; // a tenth: the sanitizers slow it down as much
#else
constexpr int kLogs = 50;
#endif
constexpr int kContacts = 300;
constexpr int kStations = 150; // so that every other contact is with a known one

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

std::string Letters(Dice &dice, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += static_cast<char>('A' + dice.Below(26));
    return text;
}

std::string RandomCall(Dice &dice) {
    static const std::array prefixes = {"K",  "W",  "N",  "AA", "VE", "KH6", "KL7", "KP4", "G",
                                        "DL", "F",  "EA", "I",  "JA", "UA",  "PY",  "LU",  "VK",
                                        "ZL", "ZS", "XE", "CO", "6Y", "HB0", "GM",  "KG4", "QQ"};
    std::string call = dice.Pick(prefixes);
    call += std::to_string(dice.Below(10)) + Letters(dice, 1 + dice.Below(3));
    if (dice.OneIn(20))
        call += "/" + std::to_string(dice.Below(10));
    else if (dice.OneIn(40))
        call = "VE3/" + call;
    return call.substr(0, 10);
}

std::string AnySpelling(Dice &dice, const MultTable &table) {
    std::string spelling;
    while (spelling.empty())
        spelling = dice.Pick(dice.Pick(table).Spellings);
    return spelling;
}

std::string Serial(Dice &dice) {
    return std::to_string(1 + dice.Below(9999));
}

std::string StateOrNumber(Dice &dice, const std::string &call) {
    return std::string("KWNAV").find(call[0]) != std::string::npos
               ? AnySpelling(dice, Multipliers.TenMults)
               : Serial(dice);
}

// What is typed: an exchange of the contest, sometimes on the end of the call.
void TypeContact(Dice &dice, std::string call) {
    static const std::array names = {"BOB", "ANN", "HIRAM", "MAXIMILIANUS"};
    std::string exchange;
    switch (Contest.ContestId) {
    case kArrlDx:
        exchange = !Contest.StationUSVE ? AnySpelling(dice, Multipliers.ArrlMults)
                   : dice.OneIn(4)      ? "KW"
                                        : std::to_string(1 + dice.Below(1500));
        break;
    case kZrt:
        exchange = Serial(dice) + " ";
        if (Contest.StationInState && dice.OneIn(3))
            exchange += AnySpelling(dice, Multipliers.ZrtCounties);
        else if (Contest.StationInState && dice.OneIn(6))
            exchange += "DX";
        else
            exchange += AnySpelling(dice, Multipliers.ZrtMults);
        exchange += dice.OneIn(15) ? "/" : "";
        break;
    case kCqWw:
        if (dice.OneIn(5))
            call += std::to_string(10 + dice.Below(31));
        else
            exchange = std::to_string(1 + dice.Below(40));
        break;
    case kSprint:
        exchange = Serial(dice) + " " + dice.Pick(names) + " " +
                   AnySpelling(dice, Multipliers.SprintMults);
        break;
    case kSs:
        exchange = Serial(dice) + " " + "ABMQSU"[dice.Below(6)] + " ";
        exchange += dice.OneIn(10) ? RandomCall(dice) + " " : "";
        exchange += std::to_string(10 + dice.Below(90)) + AnySpelling(dice, Multipliers.SsMults);
        break;
    case kWpx:
        if (dice.OneIn(5))
            call += std::to_string(1 + dice.Below(999));
        else
            exchange = Serial(dice);
        break;
    case kAa: exchange = std::to_string(dice.Below(100)); break;
    case kPaqp: exchange = Serial(dice) + " " + AnySpelling(dice, Multipliers.PaqpMults); break;
    case kNaqp:
        exchange = std::string(dice.Pick(names)) + " " +
                   (dice.OneIn(5) ? "DX" : AnySpelling(dice, Multipliers.NaqpMults));
        break;
    case kTenMeter: exchange = StateOrNumber(dice, call); break;
    case kNeqp: exchange = dice.Pick(dice.Pick(Multipliers.NeqpMults).Spellings); break;
    case kGeneric: exchange = Letters(dice, dice.Below(16)); break;
    case kCwOpen: exchange = Serial(dice) + " " + dice.Pick(names); break;
    default: break;
    }
    if (dice.OneIn(30))
        exchange = Letters(dice, dice.Below(8)); // refused in most contests
    Fill(call, exchange);
}

void ChangeBand(Dice &dice) {
    int position = 0;
    while (position == 0 || !Contest.ActiveBands[static_cast<std::size_t>(position) - 1])
        position = 1 + dice.Below(kBandPositions);
    const bool phone = Contest.ModePhone && (!Contest.ModeCW || dice.OneIn(2));
    Radios.BandIndex = CodeInMode(position, phone);
}

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

std::vector<ContestState> Variants(i16 contestId) {
    ContestState plain;
    plain.ContestId = contestId;
    std::vector<ContestState> located;
    const auto add = [&](auto change) {
        located.push_back(plain);
        change(located.back());
    };
    switch (contestId) {
    case kArrlDx:
    case kZrt:
        for (const bool inside : {true, false})
            add([&](ContestState &c) { c.StationUSVE = c.StationInState = inside; });
        break;
    case kCqWw:
    case kWpx:
        add([](ContestState &c) { c.QthUSA = true; });
        add([](ContestState &c) { c.QthVE = true; });
        for (const char *continent : {"EU", "NA", "SA"})
            add([&](ContestState &c) { c.QthContinent = continent; });
        break;
    case kCwOpen:
        for (const i16 session : {i16{0}, i16{1200}, i16{2000}})
            add([&](ContestState &c) { c.CWOSession = session; });
        break;
    default: add([](ContestState &) {});
    }
    std::vector<ContestState> variants;
    for (const ContestState &state : located) {
        for (const bool cw : {true, false}) {
            ContestState variant = state;
            const bool both = ContestTable(contestId).BothModes;
            variant.ModeCW = both || cw;
            variant.ModePhone = both || !cw;
            if (cw || !both)
                variants.push_back(variant);
        }
    }
    return variants;
}

class Seam : public ProgramTest, public testing::WithParamInterface<i16> {
  protected:
    Seam() {
        StartProgram();
        Files.Sync = [](int) { return 0; };
        Dialogs.Box = [](const MessageBox &) { return BoxAnswer::Ok; }; // refusals, portables
    }
    static void LogRandomContacts(Dice &dice) {
        std::vector<std::string> stations;
        for (int i = 0; i < kStations; ++i)
            stations.push_back(RandomCall(dice));
        // From the first hour of the contest on; the whole log stays within two days of it.
        SetTime(2015, 1, 15, 21, 5);
        for (int i = 0; i < kContacts; ++i) {
            PassMinutes(dice.OneIn(60) ? dice.Below(70) : dice.Below(4));
            if (dice.OneIn(12))
                ChangeBand(dice);
            TypeContact(dice, dice.Pick(stations));
            LogQso(0, 0);
        }
        WipeEntry();
    }
    static void ReadAgain() {
        Session.RescanInPlace = true;
        LoadLog(0);
        Session.RescanInPlace = false;
    }
};

TEST_P(Seam, LoggedAndReadAreOneState) {
    unsigned seed = 1;
    for (const ContestState &variant : Variants(GetParam())) {
        for (int log = 0; log < kLogs && !HasFailure(); ++log, ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            Dice dice(seed);
            ResetSession();
            OpenNewLog(variant);
            LogRandomContacts(dice);
            EXPECT_GT(Log.NextEntry, kContacts / 2);
            const Derived live = TakeDerived();
            ReadAgain();
            ExpectEqual(live, TakeDerived());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Contests, Seam, testing::Range(i16{1}, static_cast<i16>(kContests + 1)),
                         [](const auto &contest) {
                             return "Contest" + std::to_string(contest.param);
                         });

} // namespace
} // namespace zrt
