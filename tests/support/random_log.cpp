#include "support/random_log.h"

#include "app/start_up.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/multipliers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/radio_state.h"
#include "session/settings.h"

namespace zrt {
namespace {

constexpr int kStations = 150; // so that every other contact is with a known one

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

// Novices and technicians, who are worth more in ARRL 10 m.
std::string SignedAsNovice(Dice &dice, const std::string &call) {
    const bool fits = call.size() <= 8 && call.find('/') == std::string::npos;
    return fits && dice.OneIn(5) ? call + (dice.OneIn(2) ? "/T" : "/N") : call;
}

// What is typed: an exchange of the contest, sometimes on the end of the call.
void TypeContact(Dice &dice, std::string call) {
    static const std::array names = {"BOB", "ANN", "HIRAM", "MAXIMILIANUS"};
    // What stations outside of the area send to one in it.
    static const std::array<std::string, 4> outside = {"NY", "ON", "MDC", "DX"};
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
    case kPaqp:
        exchange =
            Serial(dice) + " " +
            (Contest.StationInState && dice.OneIn(3) ? dice.Pick(outside)
                                                     : AnySpelling(dice, Multipliers.PaqpMults));
        break;
    case kNaqp:
        exchange = std::string(dice.Pick(names)) + " " +
                   (dice.OneIn(5) ? "DX" : AnySpelling(dice, Multipliers.NaqpMults));
        break;
    case kTenMeter:
        exchange = StateOrNumber(dice, call);
        call = SignedAsNovice(dice, call);
        break;
    case kNeqp:
        exchange = Contest.StationInState && dice.OneIn(3)
                       ? dice.Pick(outside)
                       : dice.Pick(dice.Pick(Multipliers.NeqpMults).Spellings);
        break;
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

} // namespace

RandomLogTest::RandomLogTest() {
    StartProgram();
    Extensions.InAreaContests = true;
    Files.Sync = [](int) { return 0; };
    Dialogs.Box = [](const MessageBox &) { return BoxAnswer::Ok; };
}

std::string ContestOfTest(const testing::TestParamInfo<i16> &contest) {
    return "Contest" + std::to_string(contest.param);
}

std::vector<ContestState> VariantsOf(i16 contestId) {
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
    case kPaqp:
    case kNeqp:
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

void LogRandomContacts(Dice &dice, int hour) {
    std::vector<std::string> stations;
    stations.reserve(kStations);
    for (int i = 0; i < kStations; ++i)
        stations.push_back(RandomCall(dice));
    SetTime(2015, 1, 15, hour, 5);
    for (int i = 0; i < kRandomContacts; ++i) {
        PassMinutes(dice.OneIn(60) ? dice.Below(70) : dice.Below(4));
        if (dice.OneIn(12))
            ChangeBand(dice);
        TypeContact(dice, dice.Pick(stations));
        LogQso(0, 0);
    }
    WipeEntry();
}

} // namespace zrt
