#include "session/log_entry.h"

namespace zrt {

namespace {

// Where the fields stand in the record.
enum Offset : std::size_t {
    kDateAt = 0,
    kTimeAt = 2,
    kBandIndexAt = 4,
    kCallsignAt = 6,
    kSentNumberAt = 16,
    kRcvdNumberAt = 18,
    kRcvdExchangeAt = 20,
    kPointsAt = 25,
    kRcvdNameAt = 26,
    kFrequencyAt = 36,
    kRadioNumberAt = 46,
    kReservedAt = 48
};

static_assert(kBandIndexAt + sizeof(i16) == kCallsignAt);
static_assert(kCallsignAt + decltype(OldEntry26::Callsign)::kSize == kSentNumberAt);
static_assert(kRcvdNumberAt + sizeof(i16) == kRcvdExchangeAt);
static_assert(kRcvdExchangeAt + decltype(OldEntry26::RcvdExchange)::kSize == kPointsAt);
static_assert(kPointsAt + decltype(OldEntry26::Points)::kSize == kOld26Length);
static_assert(kRcvdNameAt == kOld26Length);
static_assert(kRcvdNameAt + decltype(OldEntry36::RcvdName)::kSize == kOld36Length);
static_assert(kFrequencyAt == kOld36Length);
static_assert(kFrequencyAt + decltype(LogEntry::Frequency)::kSize == kRadioNumberAt);
static_assert(kRadioNumberAt + decltype(LogEntry::RadioNumber)::kSize == kReservedAt);
static_assert(kReservedAt + decltype(LogEntry::Reserved)::kSize == kEntryLength);

void Put(std::span<std::byte> record, std::size_t offset, i16 value) {
    record[offset] = static_cast<std::byte>(value & 0xFF);
    record[offset + 1] = static_cast<std::byte>((value >> 8) & 0xFF);
}

template <std::size_t N>
void Put(std::span<std::byte> record, std::size_t offset, const FixedText<N> &text) {
    const auto bytes = std::as_bytes(std::span(text.Whole()));
    std::copy(bytes.begin(), bytes.end(), record.begin() + static_cast<std::ptrdiff_t>(offset));
}

void Take(std::span<const std::byte> record, std::size_t offset, i16 &value) {
    const auto byteAt = [&](std::size_t i) {
        return i < record.size() ? std::to_integer<unsigned>(record[i]) : 0U;
    };
    value = static_cast<i16>(byteAt(offset) | (byteAt(offset + 1) << 8));
}

template <std::size_t N>
std::string_view BytesAt(std::span<const std::byte> record, std::size_t offset) {
    if (offset >= record.size())
        return {};
    const auto field = record.subspan(offset, std::min(N, record.size() - offset));
    return {reinterpret_cast<const char *>(field.data()), field.size()};
}

template <std::size_t N>
void Take(std::span<const std::byte> record, std::size_t offset, FixedText<N> &text) {
    text = FixedText<N>(BytesAt<N>(record, offset));
}

void PutFields(std::span<std::byte> record, const OldEntry26 &entry) {
    Put(record, kDateAt, entry.Date);
    Put(record, kTimeAt, entry.Time);
    Put(record, kBandIndexAt, entry.BandIndex);
    Put(record, kCallsignAt, entry.Callsign);
    Put(record, kSentNumberAt, entry.SentNumber);
    Put(record, kRcvdNumberAt, entry.RcvdNumber);
    Put(record, kRcvdExchangeAt, entry.RcvdExchange);
    Put(record, kPointsAt, entry.Points);
}

void PutFields(std::span<std::byte> record, const OldEntry36 &entry) {
    PutFields(record, static_cast<const OldEntry26 &>(entry));
    Put(record, kRcvdNameAt, entry.RcvdName);
}

} // namespace

std::array<std::byte, kHeaderLength> Encode(const LogHeader &header) {
    std::array<std::byte, kHeaderLength> record{};
    Put(record, kDateAt, header.Reserved1);
    Put(record, kTimeAt, header.Reserved2);
    Put(record, kBandIndexAt, header.FormatFlag);
    Put(record, kCallsignAt, header.Reserved3);
    Put(record, kSentNumberAt, header.IncompatibleMark);
    Put(record, kRcvdNumberAt, header.Reserved4);
    Put(record, kRcvdExchangeAt, header.ContestTag);
    Put(record, kPointsAt, header.QthOption);
    return record;
}

std::array<std::byte, kOld26Length> Encode(const OldEntry26 &entry) {
    std::array<std::byte, kOld26Length> record{};
    PutFields(record, entry);
    return record;
}

std::array<std::byte, kOld36Length> Encode(const OldEntry36 &entry) {
    std::array<std::byte, kOld36Length> record{};
    PutFields(record, entry);
    return record;
}

std::array<std::byte, kEntryLength> Encode(const LogEntry &entry) {
    std::array<std::byte, kEntryLength> record{};
    PutFields(record, static_cast<const OldEntry36 &>(entry));
    Put(record, kFrequencyAt, entry.Frequency);
    Put(record, kRadioNumberAt, entry.RadioNumber);
    Put(record, kReservedAt, entry.Reserved);
    return record;
}

void Decode(std::span<const std::byte> bytes, LogHeader &header) {
    Take(bytes, kDateAt, header.Reserved1);
    Take(bytes, kTimeAt, header.Reserved2);
    Take(bytes, kBandIndexAt, header.FormatFlag);
    Take(bytes, kCallsignAt, header.Reserved3);
    Take(bytes, kSentNumberAt, header.IncompatibleMark);
    Take(bytes, kRcvdNumberAt, header.Reserved4);
    Take(bytes, kRcvdExchangeAt, header.ContestTag);
    Take(bytes, kPointsAt, header.QthOption);
}

void Decode(std::span<const std::byte> bytes, OldEntry26 &entry) {
    Take(bytes, kDateAt, entry.Date);
    Take(bytes, kTimeAt, entry.Time);
    Take(bytes, kBandIndexAt, entry.BandIndex);
    Take(bytes, kCallsignAt, entry.Callsign);
    Take(bytes, kSentNumberAt, entry.SentNumber);
    Take(bytes, kRcvdNumberAt, entry.RcvdNumber);
    Take(bytes, kRcvdExchangeAt, entry.RcvdExchange);
    Take(bytes, kPointsAt, entry.Points);
}

void Decode(std::span<const std::byte> bytes, OldEntry36 &entry) {
    Decode(bytes, static_cast<OldEntry26 &>(entry));
    Take(bytes, kRcvdNameAt, entry.RcvdName);
}

void Decode(std::span<const std::byte> bytes, LogEntry &entry) {
    Decode(bytes, static_cast<OldEntry36 &>(entry));
    Take(bytes, kFrequencyAt, entry.Frequency);
    Take(bytes, kRadioNumberAt, entry.RadioNumber);
    entry.Reserved.TakeRaw(BytesAt<decltype(LogEntry::Reserved)::kSize>(bytes, kReservedAt));
}

bool IsVoid(const OldEntry26 &entry) {
    return EqualIgnoringCase(Trim(entry.Callsign.Whole()), "VOID");
}

i16 DateCode(int year, int month, int day) {
    const int shownMonth = year >= 2000 ? month + 20 : month;
    const int code = shownMonth * 1000 + day * 10 + year % 10;
    const bool tens = year / 10 % 10 == 1;
    return static_cast<i16>(tens ? -code : code);
}

bool IsYear200x(i16 dateCode) {
    constexpr i16 kFirstCode = 21000; // month 1 and 20
    return dateCode >= kFirstCode;
}

} // namespace zrt
