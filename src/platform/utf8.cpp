#include "platform/utf8.h"

namespace zrt {

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

} // namespace zrt
