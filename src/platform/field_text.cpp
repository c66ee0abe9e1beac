#include "platform/field_text.h"

#include "platform/utf8.h"

#include <algorithm>
#include <array>

namespace zrt {

namespace {

struct Range {
    int First, Last;
};

template <std::size_t N> bool IsIn(const std::array<Range, N> &ranges, int character) {
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range &range) {
        return character >= range.First && character <= range.Last;
    });
}

// Tabs, line ends and the blanks of typesetters.
constexpr std::array kBlanks = {Range{0x09, 0x0D},     Range{0x20, 0x20},     Range{0x85, 0x85},
                                Range{0xA0, 0xA0},     Range{0x1680, 0x1680}, Range{0x2000, 0x200A},
                                Range{0x2028, 0x2029}, Range{0x202F, 0x202F}, Range{0x205F, 0x205F},
                                Range{0x3000, 0x3000}};

// Controls, and marks that have no width: a call with one of them would look like another call.
constexpr std::array kUnseen = {
    Range{0x00, 0x1F},       Range{0x7F, 0x9F},        Range{0xAD, 0xAD},     Range{0x061C, 0x061C},
    Range{0x180E, 0x180E},   Range{0x200B, 0x200F},    Range{0x202A, 0x202E}, Range{0x2060, 0x206F},
    Range{0xD800, 0xDFFF},   Range{0xFE00, 0xFE0F},    Range{0xFEFF, 0xFEFF}, Range{0xFFF9, 0xFFFF},
    Range{0xE0000, 0xE0FFF}, Range{0x110000, 0x1FFFFF}};

bool IsContinuation(char byte) {
    return (byte & 0xC0) == 0x80;
}

std::string_view WithoutBlanksAtEnds(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

std::string TextTaken(const TextBox &box, std::string_view text) {
    const bool isTyped = text == " ";
    std::string taken;
    while (!text.empty())
        if (const int character = CharacterTaken(box, TakeCharacter(text)))
            taken += Utf8(character);
    return isTyped ? taken : std::string(WithoutBlanksAtEnds(taken));
}

// False if nothing is left of the text.
bool Replace(TextBox &box, std::size_t start, std::size_t length, std::string_view text) {
    const std::string taken = TextTaken(box, text);
    start = std::min(start, box.Text.size());
    if (taken.empty() && !text.empty())
        return false;
    box.Text.replace(start, length, taken);
    box.SelStart = static_cast<int>(start + taken.size());
    box.SelLength = 0;
    return true;
}

bool RunChange(const TextBox &box, const std::string &before) {
    if (box.Text == before)
        return false;
    if (const auto change = box.Change)
        change();
    return true;
}

} // namespace

int CharacterTaken(const TextBox &box, int character) {
    if (IsIn(kBlanks, character))
        character = ' ';
    if (IsIn(kUnseen, character) || (box.Takes != nullptr && !box.Takes(character)))
        return 0;
    return character;
}

void InsertText(TextBox &box, std::string_view text) {
    const std::string before = box.Text;
    (void)Replace(box, static_cast<std::size_t>(box.SelStart),
                  static_cast<std::size_t>(box.SelLength), text);
    RunChange(box, before);
}

bool TakeEdit(TextBox &box, const std::string &shown, int selStart, int selLength) {
    const std::string before = box.Text;
    const std::size_t caret =
        std::min(static_cast<std::size_t>(selStart + selLength), shown.size());
    // What stands behind the caret was there before, and so was what both texts begin with.
    const std::size_t behind =
        before.ends_with(std::string_view(shown).substr(caret)) ? shown.size() - caret : 0;
    const std::size_t oldEnd = before.size() - behind;
    const std::size_t newEnd = shown.size() - behind;
    const auto differ = std::mismatch(before.begin(), before.begin() + static_cast<long>(oldEnd),
                                      shown.begin(), shown.begin() + static_cast<long>(newEnd));
    auto start = static_cast<std::size_t>(differ.second - shown.begin());
    while (start > 0 && ((start < newEnd && IsContinuation(shown[start])) ||
                         (start < oldEnd && IsContinuation(before[start]))))
        --start;
    const bool taken =
        Replace(box, start, oldEnd - start, std::string_view(shown).substr(start, newEnd - start));
    if (taken && box.Text == shown) {
        box.SelStart = selStart;
        box.SelLength = selLength;
    }
    return RunChange(box, before);
}

} // namespace zrt
