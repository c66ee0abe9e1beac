#include "entry/exchange_parsers.h"

#include "entry/exchange_field.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "session/contests.h"
#include "session/settings.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace zrt {

ParserState Parsers;

namespace {

constexpr std::size_t kLongestName = 10;
constexpr std::size_t kLongestMult = 5;
constexpr std::size_t kMostNumberDigits = 4;

constexpr const char *kNoExchange = "No Exchange";

bool IsFrom(std::string_view text, double lowest, double highest) {
    const double value = Value(text);
    return value >= lowest && value <= highest;
}

std::string CutTo(std::string_view text, std::size_t most) {
    return std::string(TrimRight(text.substr(0, most)));
}

// The exchanges that begin with a number: the field, and how many of its characters are the
// number's.
struct NumberFirst {
    Typed All;
    std::size_t Number = 0;
};

// Refuses what begins with a letter.
NumberFirst ReadNumberFirst() {
    NumberFirst field{ReadField(IsLetterDigitOrBlank)};
    (void)BeginsWithNumber(field.All);
    field.Number = LeadingRun(field.All.Text, IsDigitOrBlank, kMostNumberDigits);
    return field;
}

// ---- ARRL DX

void ReadPower(const std::string &text, ParsedExchange &parsed) {
    if (text == "K" || text == "KW" || text == "0") {
        SetFieldText(ExchangeField(), "1000");
        parsed.Number = 1000;
    } else if (!IsAll(text, IsDigit)) {
        Refuse("Enter a power between 1 and 1500.", WholeField());
    } else if (!IsFrom(text, 1, 1500)) {
        Refuse("Power must be between 1 and 1500.", WholeField());
    } else {
        parsed.Number = ValueI16(text);
    }
}

void ReadState(const std::string &text, ParsedExchange &parsed) {
    if (!IsAll(text, IsLetter))
        Refuse("Enter a valid State or Province abbreviation.", WholeField());
    else if (FindMult(Multipliers.ArrlMults, text, 1) == 0)
        Refuse("W/VE Multiplier is Invalid.  Use only the abbreviations in the Multiplier table.",
               WholeField());
    else
        parsed.Mult = text;
}

// ---- ZRT, PAQP, NEQP

// A station in the area works all others too, who send a state, a province or a section. It is
// taken as it is typed, like the states of a ZRT station at home. Digits are stored for a county's
// row.
bool IsFromOutside(const std::string &mult) {
    return Extensions.InAreaContests && Contest.StationInState && !mult.empty() &&
           IsAll(mult, IsLetter);
}

bool CountyIsGood(const std::string &mult) {
    switch (Contest.ContestId) {
    case kZrt: return Contest.StationInState || FindMult(Multipliers.ZrtMults, mult) != 0;
    case kPaqp: return FindMult(Multipliers.PaqpMults, mult) != 0 || IsFromOutside(mult);
    case kNeqp: // the third spelling is for display
        return FindMult(Multipliers.NeqpMults, mult, 2) != 0 || IsFromOutside(mult);
    default: return false;
    }
}

// ---- CQ WW and WPX

// How many characters on the end of a call are a zone.
std::size_t ZoneDigits(std::string_view call) {
    const std::size_t length = call.size();
    if (call.find('/') != std::string_view::npos || length < 2 || length == 3 ||
        !IsDigit(call.back()))
        return 0;
    const bool two = IsDigit(call[length - 2]);
    // The second digit of a call of four, as in "TM50", is the call's own, and so is the whole of
    // a text that would leave no call at all.
    if (two && (length == 4 || length == 2))
        return 0;
    return two ? 2 : 1;
}

std::string ZoneOfField() {
    std::string field = TrimmedField();
    const auto blank = field.find(' ');
    if (blank == std::string::npos)
        return field;
    const std::string front = field.substr(0, blank);
    const double value = Value(front);
    return value >= 0 && value < 41 ? front : std::string();
}

// How many characters on the end of a call are a serial; 0 if it ends in none.
std::size_t SerialDigits(std::string_view call) {
    const std::size_t length = call.size();
    if (length < 4 || !IsDigit(call.back()) || call.find('/') != std::string_view::npos)
        return 0;
    if (length == 4)
        return 1;
    std::size_t digits = 1;
    while (length - digits > 3 && IsDigit(call[length - 1 - digits]))
        ++digits;
    return length - digits == 3 ? 0 : digits; // at the third place they are the call's own
}

bool IsSerial(std::string_view text) {
    return IsFrom(text, 1, 9999);
}

} // namespace

void ARRLParse(ParsedExchange &parsed) {
    BeginParse();
    const Typed typed = ReadField(IsLetterOrDigit);
    if (TrimmedField().empty())
        Refuse(kNoExchange, EndOfField());
    else if (Contest.StationUSVE)
        ReadPower(typed.Text, parsed);
    else
        ReadState(typed.Text, parsed);
}

void CountyParse(ParsedExchange &parsed) {
    BeginParse();
    Entry.CountyLineFlag = TrimmedField().ends_with('/');
    const Typed typed = ReadField(IsLetterDigitOrBlank);
    const std::string &text = typed.Text;
    std::size_t digits = 0;
    if (Contest.ContestId != kNeqp) {
        if (!BeginsWithNumber(typed))
            return;
        digits = LeadingRun(text, IsDigit, kMostNumberDigits);
    }
    const std::string_view rest = TrimLeft(std::string_view(text).substr(digits));
    const std::string mult = CutTo(rest, kLongestMult);
    if (!CountyIsGood(mult)) {
        const std::size_t start = text.size() - rest.size();
        Refuse(kMultInvalid, PartOf(typed, start, start + TrimRight(rest).size()));
        return;
    }
    parsed.Number = ValueI16(text.substr(0, digits));
    parsed.Mult = mult;
}

void CQWWParse(ParsedExchange &parsed) {
    BeginParse();
    const std::size_t onCall = ZoneDigits(parsed.Call);
    const std::size_t callLength = parsed.Call.size() - onCall;
    const std::string zone = onCall > 0 ? parsed.Call.substr(callLength) : ZoneOfField();
    if (!IsFrom(zone, 1, 40)) {
        parsed.DigitsOnCall = static_cast<int>(onCall);
        const Part bad = TrimmedField().empty() ? EndOfField() : WholeField();
        Refuse("Enter zone between 1 and 40.", bad, "Invalid Zone");
        return;
    }
    parsed.Call.resize(callLength);
    parsed.Number = ValueI16(zone);
}

void SprintParse(ParsedExchange &parsed) {
    BeginParse();
    const auto [typed, number] = ReadNumberFirst();
    if (Entry.ParseError)
        return;
    const std::string_view text = typed.Text;
    if (text.size() - number < 3) {
        Refuse(kIncomplete, EndOfField());
        return;
    }
    const std::string_view rest = TrimLeft(text.substr(number));
    const auto blank = rest.find(' ');
    // Without a blank the state is the last two letters.
    const std::size_t nameEnd = blank != std::string_view::npos
                                    ? blank
                                    : rest.size() - std::min<std::size_t>(2, rest.size());
    parsed.Number = ValueI16(text.substr(0, number));
    parsed.Name = CutTo(rest.substr(0, nameEnd), kLongestName);
    parsed.Mult = CutTo(TrimLeft(rest.substr(nameEnd)), kLongestMult);
}

void WPXParse(ParsedExchange &parsed) {
    BeginParse();
    parsed.DigitsOnCall = 0;
    const std::string field = TrimmedField();
    const std::size_t onCall = field.empty() ? SerialDigits(parsed.Call) : 0;
    const std::size_t callLength = parsed.Call.size() - onCall;
    const std::string serial = onCall > 0 ? parsed.Call.substr(callLength) : field;
    if (!IsSerial(serial)) {
        MarkRefused(WholeField());
        parsed.DigitsOnCall = static_cast<int>(onCall);
        return;
    }
    parsed.Call.resize(callLength);
    parsed.Number = ValueI16(serial);
}

void NaqpParse(ParsedExchange &parsed) {
    BeginParse();
    if (TrimmedField().empty()) {
        Refuse(kNoExchange, EndOfField());
        return;
    }
    const Typed typed = ReadField(IsLetterDigitOrBlank);
    const std::string_view text = typed.Text;
    const auto blank = text.find(' ');
    const std::string_view mult = TrimLeft(text.substr(std::min(blank, text.size())));
    // A mark that was dropped is no word.
    if (blank == 0 || mult.empty()) {
        Refuse(kIncomplete, EndOfField());
        return;
    }
    if (mult.find(' ') != std::string_view::npos) {
        Refuse("Exchange Error", PartOf(typed, text.size() - mult.size(), text.size()));
        return;
    }
    parsed.Name = text.substr(0, std::min(blank, kLongestName));
    parsed.Mult = mult;
}

void TenParse(ParsedExchange &parsed) {
    BeginParse();
    if (TrimmedField().empty()) {
        Refuse(kNoExchange, EndOfField());
        return;
    }
    const std::string text = ReadField(IsLetterOrDigit).Text;
    if (IsAll(text, IsLetter)) {
        if (FindMult(Multipliers.TenMults, text, 1) == 0) {
            Refuse("W/VE Multiplier is Invalid.", WholeField());
            return;
        }
        Parsers = {0, text};
    } else if (!IsAll(text, IsDigit)) {
        Refuse("", WholeField());
        return;
    } else if (IsSerial(text)) {
        Parsers = {ValueI16(text), ""};
    } else {
        // Told, and logged all the same with what the contact before had: operators rely on it that
        // a strange serial never holds up the contact.
        ShowRefusal("Number must be between 1 and 9999.", "Invalid Serial Number");
        ExchangeField().SelStart = 0;
        ExchangeField().SelLength = static_cast<int>(ExchangeField().Text.size());
        SetFocus(ExchangeField());
    }
    parsed.Number = Parsers.TenNumber;
    parsed.Mult = Parsers.TenMult;
}

void CWOParse(ParsedExchange &parsed) {
    BeginParse();
    const auto [typed, number] = ReadNumberFirst();
    if (Entry.ParseError)
        return;
    const std::string_view text = typed.Text;
    const std::string_view rest = Trim(text.substr(number));
    if (rest.empty()) {
        Refuse(kIncomplete, EndOfField());
        return;
    }
    const auto blank = rest.find(' ');
    // Of two words the first is dropped.
    const std::string_view name =
        blank == std::string_view::npos ? rest : TrimLeft(rest.substr(blank));
    parsed.Number = ValueI16(text.substr(0, number));
    parsed.Name = CutTo(name, kLongestName);
}

void ParseExchange(ParsedExchange &parsed) {
    using Parser = void (*)(ParsedExchange &);
    static constexpr auto kParsers = std::to_array<Parser>({
        nullptr,
        ARRLParse,
        CountyParse,
        CQWWParse,
        SprintParse,
        SSParse,
        WPXParse,
        nullptr,
        CountyParse,
        NaqpParse,
        TenParse,
        CountyParse,
        nullptr,
        CWOParse,
    });
    static_assert(kParsers.size() == kContests + 1);
    BeginParse(); // where there is no parser, nothing is refused
    const auto contest = static_cast<std::size_t>(Contest.ContestId);
    if (contest < kParsers.size() && kParsers[contest] != nullptr)
        kParsers[contest](parsed);
}

} // namespace zrt
