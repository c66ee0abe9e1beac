// The parser of SS: serial, precedence, perhaps a corrected call, check and section, in any
// spacing.
#include "entry/dupes.h"
#include "entry/exchange_field.h"
#include "entry/exchange_parsers.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"

#include <string_view>

namespace zrt {

namespace {

constexpr std::size_t kLongestCall = 10;

// A "/" belongs to a call: it is dropped at the first two places and the last four.
Typed ReadSsField() {
    const Typed all = ReadField(IsLetterDigitOrSlash, Blanks::AsTyped);
    Typed typed;
    for (std::size_t i = 0; i < all.Text.size(); ++i) {
        if (all.Text[i] == '/' && (i < 2 || i + 4 >= all.Text.size()))
            continue;
        typed.Text += all.Text[i];
        typed.Places.push_back(all.Places[i]);
    }
    return typed;
}

// Where the parts of an SS exchange begin in the text; each ends where the next begins.
struct SsParts {
    std::size_t Prec = 0; // one character
    std::size_t Call = 0; // empty unless the call was corrected
    std::size_t Check = 0;
    std::size_t Section = 0;
};

// The section is the letters at the end; its last character may be a digit.
std::size_t SectionStart(std::string_view text, std::size_t first) {
    std::size_t start = text.size();
    if (start > first && IsLetterOrDigit(text[start - 1]))
        --start;
    while (start > first && start < text.size() && IsLetter(text[start - 1]))
        --start;
    return start;
}

// False if the exchange has been refused. The order of the tests tells which box shows.
bool SplitSs(const Typed &typed, SsParts &parts) {
    const std::string &text = typed.Text;
    const std::size_t end = text.size();
    parts.Prec = LeadingRun(text, IsDigit);
    parts.Call = parts.Prec + 1;
    if (!BeginsWithNumber(typed))
        return false;
    if (parts.Prec == end) {
        Refuse(kIncomplete, EndOfField());
        return false;
    }
    if (std::string_view("ABMQSU").find(text[parts.Prec]) == std::string_view::npos) {
        Refuse("Precedence Error -- Must be A, B, M, Q, S, or U",
               PartOf(typed, parts.Prec, parts.Call));
        return false;
    }
    if (end - parts.Call < 4) {
        Refuse("Multiplier or Check Error", EndOfField());
        return false;
    }
    if (IsDigit(text[end - 2])) {
        Refuse("Multiplier error", PartOf(typed, end - 2, end - 1));
        return false;
    }
    parts.Section = SectionStart(text, parts.Call);
    if (FindMult(Multipliers.SsMults, text.substr(parts.Section)) == 0) {
        Refuse(kMultInvalid, PartOf(typed, parts.Section, end));
        return false;
    }
    if (parts.Section - parts.Call < 2) {
        Refuse("Check error", PartOf(typed, parts.Section, end));
        return false;
    }
    parts.Check = parts.Section - 2;
    const std::size_t digits = LeadingRun(text.substr(parts.Check, 2), IsDigit);
    if (digits < 2) {
        Refuse("Check Error", PartOf(typed, parts.Check + digits, parts.Check + digits + 1));
        return false;
    }
    return true;
}

void TakeCorrectedCall(const std::string &typed, ParsedExchange &parsed) {
    const std::string call = typed.substr(0, kLongestCall);
    if (call.size() <= 3 || call == parsed.Call)
        return;
    parsed.Call = call;
    SetFieldText(LogForm.InData[0], call);
    Dupecheck(call);
    if (!Entry.DupeFlag)
        return;
    LogForm.InData[0].ForeColor = Color::Red;
    DupeLabelShow();
}

} // namespace

void SSParse(ParsedExchange &parsed) {
    BeginParse();
    const Typed typed = ReadSsField();
    const std::string &text = typed.Text;
    SsParts parts;
    if (!SplitSs(typed, parts))
        return;
    TakeCorrectedCall(text.substr(parts.Call, parts.Check - parts.Call), parsed);
    parsed.Number = ValueI16(text.substr(0, parts.Prec));
    parsed.Prec = text.substr(parts.Prec, 1);
    parsed.Check = text.substr(parts.Check, 2);
    parsed.Mult = text.substr(parts.Section);
}

} // namespace zrt
