// Fixed-width text, trimming, and the ways of the program between texts and numbers. All of it is
// byte order and ASCII case, whatever the locale.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zrt {

using i16 = std::int16_t;
using i32 = std::int32_t;

// A text field of a record: Latin-1 bytes, padded with blanks on the right.
template <std::size_t N> class FixedText {
  public:
    static constexpr std::size_t kSize = N;

    constexpr FixedText() { Bytes.fill(' '); }
    // Cuts what does not fit, pads what is short. NUL counts as a blank.
    constexpr FixedText(std::string_view text) : FixedText() {
        for (std::size_t i = 0; i < N && i < text.size(); ++i)
            Bytes[i] = text[i] == '\0' ? ' ' : text[i];
    }
    constexpr FixedText(const char *text) : FixedText(std::string_view(text)) {}
    FixedText(const std::string &text) : FixedText(std::string_view(text)) {}

    constexpr std::string_view Whole() const { return {Bytes.data(), N}; }
    std::string Trimmed() const;
    // The bytes as they are, NUL too; blanks behind them.
    void TakeRaw(std::string_view bytes) {
        Bytes.fill(' ');
        std::copy_n(bytes.begin(), std::min(N, bytes.size()), Bytes.begin());
    }
    friend bool operator==(const FixedText &, const FixedText &) = default;

  private:
    std::array<char, N> Bytes;
};

// Without the blanks at both ends, or at one.
std::string_view Trim(std::string_view text);
std::string_view TrimLeft(std::string_view text);
std::string_view TrimRight(std::string_view text);

template <std::size_t N> std::string FixedText<N>::Trimmed() const {
    return std::string(Trim(Whole()));
}

std::string UpperCase(std::string_view text);
bool EqualIgnoringCase(std::string_view a, std::string_view b);

// At least `width` wide, filled up on the left.
std::string PadLeft(std::string_view text, std::size_t width, char fill = ' ');
// At least `width` wide, blanks on the right.
std::string PadRight(std::string_view text, std::size_t width);

// The number that a text begins with: leading blanks, a sign, digits, one "."; anything else ends
// it, and no digits are 0. No exponent.
double Value(std::string_view text);
// Ties go to the even number: 2.5 is 2, 3.5 is 4.
i32 RoundToEven(double value);
// A text as a whole number, rounded so and clamped to 16 bits.
i16 ValueI16(std::string_view text);

// The sum of the bytes of a text, wrapped to 16 bits: a quick "may be equal" for calls.
i16 TextHash(std::string_view text);

// Between the screen (UTF-8) and the disk (one byte a character; what Latin-1 lacks becomes "?").
std::string ToLatin1(std::string_view utf8);
std::string FromLatin1(std::string_view latin1);
// The number of characters of a text of the screen, and the first `length` of them.
std::size_t CharactersOf(std::string_view utf8);
std::string_view CutAt(std::string_view utf8, std::size_t length);

} // namespace zrt
