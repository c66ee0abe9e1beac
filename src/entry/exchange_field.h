// What the exchange parsers share: the exchange field as a parser reads it, and how it is refused.
// Positions are bytes of the field's text.
#pragma once

#include "entry/log_form.h"
#include "session/fixed_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace zrt {

// All of them ASCII: any other byte of the field is dropped like a mark.
bool IsLetter(char c); // upper case
bool IsDigit(char c);
bool IsDigitOrBlank(char c);
bool IsLetterOrDigit(char c);
bool IsLetterDigitOrBlank(char c);
bool IsLetterDigitOrSlash(char c);
using CharacterTest = bool (*)(char);

bool IsAll(std::string_view text, CharacterTest test); // an empty text is all of anything
// How many of the first characters pass, `most` of them at most.
std::size_t LeadingRun(std::string_view text, CharacterTest test,
                       std::size_t most = std::string_view::npos);

// Some of the characters of the field, upper-cased, and where each stands in it.
struct Typed {
    std::string Text;
    std::vector<std::size_t> Places;
};
enum class Blanks { Trimmed, AsTyped };
Typed ReadField(CharacterTest kept, Blanks blanks = Blanks::Trimmed);
std::string TrimmedField(); // all of it, upper-cased

// A part of the field.
struct Part {
    std::size_t Start = 0;
    std::size_t Length = 0;
};
Part WholeField();
Part EndOfField();
// From one character that was read to before another, with what stands between them in the field.
Part PartOf(const Typed &typed, std::size_t first, std::size_t end);

inline constexpr const char *kIncomplete = "Incomplete Exchange";
inline constexpr const char *kMultInvalid = "Multiplier is Invalid.";

// Every parser begins with this: nothing is refused, nothing is to be selected.
void BeginParse();
// Refuses the exchange: shows the box and tells LogQso what to select: the bad part, or the end of
// the field where something is missing. May pump.
void Refuse(const char *text, Part part, const char *title = "Exchange Error");
// The same without the box.
void MarkRefused(Part part);
// Whether the exchange begins with no letter; one that does is refused, the letter selected.
bool BeginsWithNumber(const Typed &typed);
// The box alone.
void ShowRefusal(const char *text, const char *title);

} // namespace zrt
