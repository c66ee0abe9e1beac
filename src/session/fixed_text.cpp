#include "session/fixed_text.h"

#include <cmath>
#include <limits>

namespace zrt {

namespace {

constexpr char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Digits further behind the point than this change nothing that a double can hold.
constexpr double kFinestScale = 1e17;

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

std::string_view TrimLeft(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view TrimRight(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view Trim(std::string_view text) {
    return TrimLeft(TrimRight(text));
}

std::string UpperCase(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return upper;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Upper(x) == Upper(y); });
}

std::string PadLeft(std::string_view text, std::size_t width, char fill) {
    const std::size_t missing = width - std::min(width, text.size());
    return std::string(missing, fill).append(text);
}

std::string PadRight(std::string_view text, std::size_t width) {
    std::string padded(text);
    padded.resize(std::max(width, text.size()), ' ');
    return padded;
}

double Value(std::string_view text) {
    text = TrimLeft(text);
    double sign = 1;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        sign = text.front() == '-' ? -1 : 1;
        text.remove_prefix(1);
    }
    double value = 0;
    double scale = 1; // 10 to the number of digits behind the point
    bool point = false;
    for (const char c : text) {
        if (c == '.' && !point) {
            point = true;
        } else if (IsDigit(c)) {
            if (scale >= kFinestScale)
                continue;
            value = value * 10 + (c - '0');
            scale *= point ? 10 : 1;
        } else {
            break;
        }
    }
    return sign * value / scale;
}

i32 RoundToEven(double value) {
    return static_cast<i32>(std::nearbyint(value));
}

i16 ValueI16(std::string_view text) {
    using Limits = std::numeric_limits<i16>;
    const double value = std::clamp<double>(Value(text), Limits::min(), Limits::max());
    return static_cast<i16>(RoundToEven(value));
}

i16 TextHash(std::string_view text) {
    std::uint16_t sum = 0;
    for (const char c : text)
        sum = static_cast<std::uint16_t>(sum + static_cast<unsigned char>(c));
    return static_cast<i16>(sum);
}

std::string ToLatin1(std::string_view utf8) {
    std::string latin1;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            latin1 += utf8[i];
            continue;
        }
        // A lead byte and what follows it are one character, a stray byte is one by itself.
        std::size_t next = i + 1;
        while (lead >= 0xC0 && next < utf8.size() && (utf8[next] & 0xC0) == 0x80)
            ++next;
        const bool inLatin1 = (lead == 0xC2 || lead == 0xC3) && next == i + 2;
        latin1 += inLatin1 ? static_cast<char>(((lead & 0x03) << 6) | (utf8[i + 1] & 0x3F)) : '?';
        i = next - 1;
    }
    return latin1;
}

std::string FromLatin1(std::string_view latin1) {
    std::string utf8;
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0 | (byte >> 6));
            utf8 += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return utf8;
}

namespace {

bool BeginsCharacter(char byte) {
    return (byte & 0xC0) != 0x80;
}

} // namespace

std::size_t CharactersOf(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), BeginsCharacter));
}

std::string_view CutAt(std::string_view utf8, std::size_t length) {
    std::size_t end = 0;
    for (std::size_t characters = 0; end < utf8.size(); ++end)
        if (BeginsCharacter(utf8[end]) && ++characters > length)
            break;
    return utf8.substr(0, end);
}

} // namespace zrt
