#include "entry/exchange_field.h"

#include "entry/log_form.h"
#include "platform/dialogs.h"

#include <algorithm>
#include <limits>

namespace zrt {

namespace {

i16 ToPosition(std::size_t position) {
    constexpr std::size_t kHighest = std::numeric_limits<i16>::max();
    return static_cast<i16>(std::min(position, kHighest));
}

} // namespace

bool IsLetter(char c) {
    return c >= 'A' && c <= 'Z';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetterOrDigit(char c) {
    return IsLetter(c) || IsDigit(c);
}

bool IsDigitOrBlank(char c) {
    return IsDigit(c) || c == ' ';
}

bool IsLetterDigitOrBlank(char c) {
    return IsLetter(c) || IsDigitOrBlank(c);
}

bool IsLetterDigitOrSlash(char c) {
    return IsLetterOrDigit(c) || c == '/';
}

bool IsAll(std::string_view text, CharacterTest test) {
    return std::all_of(text.begin(), text.end(), test);
}

std::size_t LeadingRun(std::string_view text, CharacterTest test, std::size_t most) {
    const std::string_view head = text.substr(0, most);
    const auto end = std::find_if_not(head.begin(), head.end(), test);
    return static_cast<std::size_t>(end - head.begin());
}

Typed ReadField(CharacterTest kept, Blanks blanks) {
    const std::string &field = ExchangeField().Text;
    std::size_t first = 0;
    std::size_t end = field.size();
    if (blanks == Blanks::Trimmed) {
        end = TrimRight(field).size();
        first = end - Trim(field).size();
    }
    const std::string upper = UpperCase(field);
    Typed typed;
    for (std::size_t i = first; i < end; ++i) {
        if (!kept(upper[i]))
            continue;
        typed.Text += upper[i];
        typed.Places.push_back(i);
    }
    return typed;
}

std::string TrimmedField() {
    return UpperCase(Trim(ExchangeField().Text));
}

Part EndOfField() {
    return {ExchangeField().Text.size(), 0};
}

Part WholeField() {
    return {0, ExchangeField().Text.size()};
}

Part PartOf(const Typed &typed, std::size_t first, std::size_t end) {
    if (first >= end)
        return EndOfField();
    const std::size_t start = typed.Places[first];
    return {start, typed.Places[end - 1] + 1 - start};
}

void BeginParse() {
    Entry.ParseError = false;
    Entry.SelStart = 0;
    Entry.SelLength = 0;
}

void ShowRefusal(const char *text, const char *title) {
    ShowMessageBox({text, title, BoxButtons::Ok, BoxIcon::Critical});
}

void MarkRefused(Part part) {
    Entry.ParseError = true;
    Entry.SelStart = ToPosition(part.Start);
    Entry.SelLength = ToPosition(part.Length);
}

void Refuse(const char *text, Part part, const char *title) {
    MarkRefused(part);
    ShowRefusal(text, title);
}

bool BeginsWithNumber(const Typed &typed) {
    if (typed.Text.empty() || !IsLetter(typed.Text.front()))
        return true;
    Refuse("Exchange must begin with a number", PartOf(typed, 0, 1));
    return false;
}

} // namespace zrt
