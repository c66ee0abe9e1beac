#include "platform/characters.h"

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

} // namespace

int TakeCharacter(std::string_view &text) {
    const auto lead = static_cast<unsigned char>(text.front());
    std::size_t length = 1;
    unsigned character = lead;
    if (lead >= 0xC2 && lead < 0xF5) {
        length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        character = lead & (0xFFU >> (length + 1));
        for (std::size_t i = 1; i < length; ++i) {
            const bool follows = i < text.size() && (text[i] & 0xC0) == 0x80;
            if (!follows) {
                length = 1;
                character = lead;
                break;
            }
            character = character << 6U | (static_cast<unsigned char>(text[i]) & 0x3FU);
        }
    }
    text.remove_prefix(length);
    return static_cast<int>(character);
}

std::string Utf8(int character) {
    const auto c = static_cast<unsigned>(character);
    const auto tail = [&](unsigned shift) {
        return static_cast<char>(0x80U | ((c >> shift) & 0x3FU));
    };
    if (c < 0x80)
        return {static_cast<char>(c)};
    if (c < 0x800)
        return {static_cast<char>(0xC0U | (c >> 6U)), tail(0)};
    if (c < 0x10000)
        return {static_cast<char>(0xE0U | (c >> 12U)), tail(6), tail(0)};
    return {static_cast<char>(0xF0U | (c >> 18U)), tail(12), tail(6), tail(0)};
}

int PlainCharacter(int character) {
    if (IsIn(kBlanks, character))
        return ' ';
    return IsIn(kUnseen, character) ? 0 : character;
}

} // namespace zrt
