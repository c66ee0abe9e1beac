#include "session/log_entry.h"

#include "support/program.h"

#include <gtest/gtest.h>

namespace zrt {
namespace {

LogEntry FullEntry() {
    LogEntry entry;
    entry.Date = -21155;
    entry.Time = 1437;
    entry.BandIndex = 23;
    entry.Callsign = "K1ZZ/QRP";
    entry.SentNumber = 258;
    entry.RcvdNumber = -2;
    entry.RcvdExchange = "EPA";
    entry.Points = "3";
    entry.RcvdName = "JOS\xC9";
    entry.Frequency = "14025.3";
    entry.RadioNumber = "2";
    entry.Reserved.TakeRaw(std::string_view("2\0\xFF", 3));
    return entry;
}

constexpr const char *kFullEntryHex = "5D AD "                               //  0 Date
                                      "9D 05 "                               //  2 Time
                                      "17 00 "                               //  4 BandIndex
                                      "4B 31 5A 5A 2F 51 52 50 20 20 "       //  6 Callsign
                                      "02 01 "                               // 16 SentNumber
                                      "FE FF "                               // 18 RcvdNumber
                                      "45 50 41 20 20 "                      // 20 RcvdExchange
                                      "33 "                                  // 25 Points
                                      "4A 4F 53 C9 20 20 20 20 20 20 "       // 26 RcvdName
                                      "31 34 30 32 35 2E 33 20 20 20 "       // 36 Frequency
                                      "32 20 "                               // 46 RadioNumber
                                      "32 00 FF 20 20 20 20 20 20 20 20 20"; // 48 Reserved

std::span<const std::byte> AsBytes(const std::string &text) {
    return std::as_bytes(std::span(text));
}

TEST(LogEntryRecord, Has60BytesInTheirPlaces) {
    EXPECT_EQ(Encode(LogEntry{}).size(), 60U);
    EXPECT_EQ(HexOf(FullEntry()), kFullEntryHex);
}

TEST(LogEntryRecord, OldFormsAreTheBeginningOfTheNewOne) {
    const std::string whole = kFullEntryHex;
    EXPECT_EQ(HexOf(static_cast<OldEntry26>(FullEntry())),
              whole.substr(0, std::size_t{26} * 3 - 1));
    EXPECT_EQ(HexOf(static_cast<OldEntry36>(FullEntry())),
              whole.substr(0, std::size_t{36} * 3 - 1));
}

TEST(LogEntryRecord, ReadsBackWhatWasWritten) {
    LogEntry entry;
    Decode(AsBytes(FromHex(kFullEntryHex)), entry);
    EXPECT_EQ(entry, FullEntry());
    EXPECT_EQ(HexOf(entry), kFullEntryHex);
}

TEST(LogEntryRecord, ThatWasNeverFilledIsZerosAndBlanks) {
    const std::string blank26 =
        std::string(6, '\0') + std::string(10, ' ') + std::string(4, '\0') + std::string(6, ' ');
    EXPECT_EQ(HexOf(OldEntry26{}), Hex(blank26));
    EXPECT_EQ(HexOf(LogEntry{}), Hex(blank26 + std::string(34, ' ')));
}

TEST(LogEntryRecord, MissingTailBytesReadAsZerosAndBlanks) {
    LogEntry entry = FullEntry();
    Decode(AsBytes(FromHex(kFullEntryHex).substr(0, 19)), entry);
    EXPECT_EQ(entry.Callsign.Trimmed(), "K1ZZ/QRP");
    EXPECT_EQ(entry.RcvdNumber, 0xFE); // half of a number is its lower byte
    EXPECT_EQ(entry.RcvdExchange.Whole(), "     ");
    EXPECT_EQ(entry.Reserved.Whole(), std::string(12, ' '));
    Decode({}, entry);
    EXPECT_EQ(entry, LogEntry{});
}

TEST(LogEntryRecord, ReadsNulInTextsAsBlanksButKeepsItInReserved) {
    const std::string nulls(60, '\0');
    LogEntry entry;
    Decode(AsBytes(nulls), entry);
    EXPECT_EQ(entry.Callsign.Whole(), "          ");
    EXPECT_EQ(entry.Reserved.Whole(), std::string(12, '\0'));
    EXPECT_EQ(Hex(EntryBytes(entry)).substr(std::size_t{48} * 3), Hex(std::string(12, '\0')));
}

TEST(LogEntryRecord, ATimeOf0005IsTheNumber5) {
    LogEntry entry;
    entry.Time = 5;
    EXPECT_EQ(HexOf(entry).substr(6, 5), "05 00");
}

TEST(LogHeaderRecord, Has26BytesInTheirPlaces) {
    LogHeader header;
    header.FormatFlag = 1;
    header.IncompatibleMark = 7;
    header.ContestTag = "ZRTIN";
    header.QthOption = "9";
    EXPECT_EQ(HexOf(header), "00 00 00 00 01 00 20 20 20 20 20 20 20 20 20 20 07 00 00 00 "
                             "5A 52 54 49 4E 39");
}

TEST(LogHeaderRecord, ReadsBackWhatWasWritten) {
    const std::string bytes = FromHex("01 00 02 00 03 00 41 42 43 44 45 46 47 48 49 4A 05 00 FF FF "
                                      "57 57 20 53 42 36");
    LogHeader header;
    Decode(AsBytes(bytes), header);
    EXPECT_EQ(header.Reserved1, 1);
    EXPECT_EQ(header.Reserved2, 2);
    EXPECT_EQ(header.FormatFlag, 3);
    EXPECT_EQ(header.Reserved3.Whole(), "ABCDEFGHIJ");
    EXPECT_EQ(header.IncompatibleMark, 5);
    EXPECT_EQ(header.Reserved4, -1);
    EXPECT_EQ(header.ContestTag.Whole(), "WW SB");
    EXPECT_EQ(header.QthOption.Whole(), "6");
    EXPECT_EQ(HexOf(header), Hex(bytes));
}

TEST(VoidedEntry, IsOneWhoseCallIsVoidInAnyCase) {
    OldEntry26 entry;
    for (const char *call : {"VOID", "void", " VoId  "}) {
        entry.Callsign = call;
        EXPECT_TRUE(IsVoid(entry)) << call;
    }
    for (const char *call : {"VOIDS", "V0ID", ""}) {
        entry.Callsign = call;
        EXPECT_FALSE(IsVoid(entry)) << call;
    }
}

TEST(DateCode, HoldsMonthDayAndTheYearsLastDigit) {
    EXPECT_EQ(DateCode(1998, 1, 15), 1158);
    EXPECT_EQ(DateCode(2005, 1, 15), 21155);
    EXPECT_EQ(DateCode(2015, 1, 15), -21155);
    EXPECT_EQ(DateCode(1999, 12, 31), 12319);
    EXPECT_EQ(DateCode(2000, 1, 1), 21010);
}

TEST(DateCode, ChangesItsSignAtTheEndOf2009And2019) {
    EXPECT_EQ(DateCode(2009, 12, 31), 32319);
    EXPECT_EQ(DateCode(2010, 1, 1), -21010);
    EXPECT_EQ(DateCode(2019, 12, 31), -32319);
    EXPECT_EQ(DateCode(2020, 1, 1), 21010); // the same as in 2000
}

TEST(DateCode, IsDifferentForEveryDayOfThreeDecades) {
    std::vector<i16> codes;
    for (int year = 1990; year < 2020; ++year)
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= 31; ++day)
                codes.push_back(DateCode(year, month, day));
    std::sort(codes.begin(), codes.end());
    EXPECT_EQ(std::adjacent_find(codes.begin(), codes.end()), codes.end());
}

} // namespace
} // namespace zrt
