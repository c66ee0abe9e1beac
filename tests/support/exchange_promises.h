// What holds for every exchange, whatever was typed: judged after a run of the contest's parser.
// For the random tests and the fuzzer.
#pragma once

#include "entry/exchange_parsers.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "platform/dialogs.h"
#include "session/contests.h"
#include "session/reference_data.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace zrt {

// A few rows of each list, with all three forms of a row and the sections that end in a digit.
inline void FillExchangeLists() {
    Reference.CommonList[0] = "AL";
    Reference.CommonList[1] = "AK/KL7";
    Reference.CommonList[54] = "ON/ONT";
    Reference.CommonList[58] = "ALDR/ALD/ALDRU";
    Reference.CommonList[59] = "AMBE/AMB/AMBER";
    Reference.CommonList[116] = "CT";
    Reference.CommonList[117] = "EMA";
    Reference.CommonList[131] = "MDC/MD/DC";
    Reference.CommonList[144] = "PR/KP4";
    Reference.CommonList[198] = "NT/NWT";
    Reference.PaqpMults[0] = "ADA/ADAM/ADAMS";
    Reference.PaqpMults[66] = "YOR/YORK";
    Reference.NeqpMults[0] = "FAICT/CTFAI";
    Reference.NeqpMults[1] = "HAR";
    Reference.ArrlMults = {"CT", "ON"};
    Reference.TenMults = {"NH", "PR"};
}

inline void OpenExchanges(i16 contestId, bool atHome = false) {
    Contest = {};
    Contest.ContestId = contestId;
    Contest.StationUSVE = Contest.StationInState = atHome;
    FillMultiplierTables();
}

struct ExchangeRun {
    std::string CallField, Field; // as typed
    ParsedExchange Before, Parsed;
    ParserState TenBefore;
    int Boxes = 0;
};

inline int boxesOfExchange = 0;

// Counts the boxes of the parser. The call stands in its field as it is given.
inline ExchangeRun RunParser(const std::string &call, const std::string &exchange) {
    boxesOfExchange = 0;
    Dialogs.Box = [](const MessageBox &) {
        ++boxesOfExchange;
        return BoxAnswer::Ok;
    };
    SetFieldText(LogForm.InData[0], call);
    SetFieldText(LogForm.InData[1], exchange);
    Entry.DupeFlag = false;
    ExchangeRun run{call, exchange, {}, {}, Parsers};
    run.Before.Call = UpperCase(Trim(call));
    run.Parsed = run.Before;
    ParseExchange(run.Parsed);
    run.Boxes = boxesOfExchange;
    return run;
}

inline bool IsNumber(const std::string &text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

inline std::string BrokenByRefusal(const ExchangeRun &run) {
    const ParsedExchange &parsed = run.Parsed;
    const std::string &call = run.Before.Call;
    if (run.Boxes != (Contest.ContestId == kWpx ? 0 : 1))
        return "one box, and none in WPX";
    if (LogForm.InData[0].Text != run.CallField || LogForm.InData[1].Text != run.Field)
        return "the fields stay";
    if (parsed.Call != call || parsed.Number != 0 || !parsed.Name.empty() || !parsed.Mult.empty() ||
        !parsed.Prec.empty() || !parsed.Check.empty())
        return "nothing is read";
    const auto onCall = static_cast<std::size_t>(parsed.DigitsOnCall);
    if (onCall > call.size() || !IsNumber(call.substr(call.size() - onCall)) ||
        (onCall > 0 && Contest.ContestId != kWpx && Contest.ContestId != kCqWw))
        return "the digits of a refused number end the call";
    if (Parsers.TenNumber != run.TenBefore.TenNumber || Parsers.TenMult != run.TenBefore.TenMult)
        return "the contact before is remembered";
    if (Entry.SelStart < 0 || Entry.SelLength < 0 ||
        static_cast<std::size_t>(Entry.SelStart + Entry.SelLength) > run.Field.size())
        return "what is selected is in the field";
    // A caret without a selection says that something is missing, and stands where it goes.
    if (Entry.SelLength == 0 && static_cast<std::size_t>(Entry.SelStart) != run.Field.size())
        return "the bad part is selected, or the caret stands at the end";
    return "";
}

inline std::string BrokenBySs(const ExchangeRun &run) {
    const ParsedExchange &parsed = run.Parsed;
    if (parsed.Number < 0 || FindMult(Multipliers.SsMults, parsed.Mult) == 0)
        return "serial and section";
    if (parsed.Prec.size() != 1 || std::string("ABMQSU").find(parsed.Prec) == std::string::npos)
        return "precedence";
    if (parsed.Check.size() != 2 || !IsNumber(parsed.Check))
        return "check";
    const bool corrected = parsed.Call != run.Before.Call;
    if (corrected && (parsed.Call.size() < 4 || parsed.Call.size() > 10))
        return "length of the corrected call";
    if (LogForm.InData[0].Text != (corrected ? parsed.Call : run.CallField))
        return "call field";
    return "";
}

inline std::string BrokenByTen(const ExchangeRun &run) {
    const ParsedExchange &parsed = run.Parsed;
    if (parsed.Number != Parsers.TenNumber || parsed.Mult != Parsers.TenMult)
        return "what is logged is remembered";
    if (run.Boxes == 1)
        return parsed.Number == run.TenBefore.TenNumber && parsed.Mult == run.TenBefore.TenMult
                   ? ""
                   : "a serial out of range takes what the contact before had";
    const bool serial = parsed.Number >= 1 && parsed.Number <= 9999 && parsed.Mult.empty();
    const bool state = parsed.Number == 0 && FindMult(Multipliers.TenMults, parsed.Mult) != 0;
    return serial || state ? "" : "serial or state";
}

inline std::string BrokenByAcceptance(const ExchangeRun &run) {
    const ParsedExchange &parsed = run.Parsed;
    const i16 number = parsed.Number;
    const bool shortNumber = number >= 0 && number <= 9999;
    const bool begins = run.Before.Call.starts_with(parsed.Call);
    if (run.Boxes > (Contest.ContestId == kTenMeter ? 1 : 0))
        return "no box";
    if (Contest.ContestId != kSs && LogForm.InData[0].Text != run.CallField)
        return "the call field stays";
    if (LogForm.InData[1].Text != run.Field &&
        (Contest.ContestId != kArrlDx || LogForm.InData[1].Text != "1000" || number != 1000))
        return "the exchange field stays";
    switch (Contest.ContestId) {
    case kArrlDx:
        if (Contest.StationUSVE)
            return number >= 1 && number <= 1500 ? "" : "power";
        return FindMult(Multipliers.ArrlMults, parsed.Mult) != 0 ? "" : "state";
    case kZrt:
        if (Entry.CountyLineFlag != Trim(run.Field).ends_with('/'))
            return "county line";
        return shortNumber && parsed.Mult.size() <= 5 &&
                       (Contest.StationInState || FindMult(Multipliers.ZrtMults, parsed.Mult) != 0)
                   ? ""
                   : "number and county";
    case kPaqp:
        return shortNumber && FindMult(Multipliers.PaqpMults, parsed.Mult) != 0 ? "" : "county";
    case kNeqp:
        return number == 0 && FindMult(Multipliers.NeqpMults, parsed.Mult, 2) != 0 ? "" : "county";
    case kCqWw: return number >= 1 && number <= 40 && begins ? "" : "zone and call";
    case kWpx: return number >= 1 && number <= 9999 && begins ? "" : "serial and call";
    case kSprint:
        return shortNumber && parsed.Name.size() <= 10 && parsed.Mult.size() <= 5 ? "" : "lengths";
    case kSs: return BrokenBySs(run);
    case kNaqp:
        return !parsed.Name.empty() && parsed.Name.size() <= 10 && !parsed.Mult.empty() &&
                       parsed.Mult.find(' ') == std::string::npos
                   ? ""
                   : "name and mult";
    case kTenMeter: return BrokenByTen(run);
    case kCwOpen:
        return shortNumber && !parsed.Name.empty() && parsed.Name.size() <= 10 ? "" : "name";
    default: return "";
    }
}

// Names what does not hold; empty if all does.
inline std::string BrokenPromise(const ExchangeRun &run) {
    return Entry.ParseError ? BrokenByRefusal(run) : BrokenByAcceptance(run);
}

} // namespace zrt
