// The records of the log and their form on disk: little-endian 16-bit integers and blank-padded
// Latin-1 text, no terminators, no marks. The oldest form is the beginning of the newer ones.
#pragma once

#include "session/fixed_text.h"

#include <array>
#include <cstddef>
#include <span>

namespace zrt {

// The form of the first logs, 26 bytes.
struct OldEntry26 {
    i16 Date = 0; // see DateCode
    i16 Time = 0; // HHMM in UTC as a decimal number: 5 is 00:05
    i16 BandIndex = 0;
    FixedText<10> Callsign; // "VOID" for a voided entry
    i16 SentNumber = 0;     // the entry's own number at the moment it was logged
    i16 RcvdNumber = 0;     // serial, zone, age or power; 0 where the contest has none
    FixedText<5> RcvdExchange;
    FixedText<1> Points; // one digit
    friend bool operator==(const OldEntry26 &, const OldEntry26 &) = default;
};

// The old form of the contests that need a name (4, 9 and 12), 36 bytes.
struct OldEntry36 : OldEntry26 {
    FixedText<10> RcvdName; // the name; the free field in Generic
    friend bool operator==(const OldEntry36 &, const OldEntry36 &) = default;
};

// The form of today, 60 bytes.
struct LogEntry : OldEntry36 {
    FixedText<10> Frequency;  // kHz, "0" when no radio reports one
    FixedText<2> RadioNumber; // "1" or "2", "0" for none
    // Raw bytes. The first may hold the decade digit of the year, "2" to "9", else it is blank.
    FixedText<12> Reserved;
    friend bool operator==(const LogEntry &, const LogEntry &) = default;
};

// The first record of the file. It has the shape of an OldEntry26.
struct LogHeader {
    i16 Reserved1 = 0;
    i16 Reserved2 = 0;
    i16 FormatFlag = 0; // 1 for a file of 60-byte entries
    FixedText<10> Reserved3;
    i16 IncompatibleMark = 0; // above 0 the file is refused
    i16 Reserved4 = 0;
    FixedText<5> ContestTag; // three letters of the contest, two of mode or location
    FixedText<1> QthOption;
    friend bool operator==(const LogHeader &, const LogHeader &) = default;
};

inline constexpr std::size_t kHeaderLength = 26;
inline constexpr std::size_t kOld26Length = 26;
inline constexpr std::size_t kOld36Length = 36;
inline constexpr std::size_t kEntryLength = 60;

std::array<std::byte, kHeaderLength> Encode(const LogHeader &header);
std::array<std::byte, kOld26Length> Encode(const OldEntry26 &entry);
std::array<std::byte, kOld36Length> Encode(const OldEntry36 &entry);
std::array<std::byte, kEntryLength> Encode(const LogEntry &entry);

// Bytes that are missing at the end read as 0 and blanks.
void Decode(std::span<const std::byte> bytes, LogHeader &header);
void Decode(std::span<const std::byte> bytes, OldEntry26 &entry);
void Decode(std::span<const std::byte> bytes, OldEntry36 &entry);
void Decode(std::span<const std::byte> bytes, LogEntry &entry);

// Writing "VOID" over the call takes a contact out of the log; its place and number stay.
bool IsVoid(const OldEntry26 &entry);

// The date code: the decimal digits MMDDY, where 20 is added to the month from 2000 on and the
// whole is negative for 2010 to 2019. Compare codes for equality, never for order.
// Year is complete, month 1 to 12, day 1 to 31.
i16 DateCode(int year, int month, int day);
// Whether a code reads as a year from 2000 to 2009, which years from 2020 on share.
bool IsYear200x(i16 dateCode);

} // namespace zrt
