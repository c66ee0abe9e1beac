// The recount of a log: what counts where, and when. What makes a multiplier is in
// recount_multipliers_test.cpp.
#include "postcontest/recount_world.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace zrt {
namespace {

using testing::ElementsAre;

class RecountTable : public RecountTest {};

// The header of each contest, and the longest pause that still is operating time.
struct ContestSample {
    const char *Tag;
    char QthOption;
    i16 Gap;
};
constexpr std::array<ContestSample, 13> kSamples = {{{"ARLCW", '1', 15},
                                                     {"ZRTOS", ' ', 15},
                                                     {"WW CW", '2', 15},
                                                     {"SP CW", ' ', 15},
                                                     {"SS9CW", ' ', 30},
                                                     {"WPXCW", '2', 60},
                                                     {"AA CW", ' ', 15},
                                                     {"PAQOS", ' ', 15},
                                                     {"NA CW", ' ', 30},
                                                     {"TEN  ", ' ', 15},
                                                     {"NEQOS", ' ', 15},
                                                     {"GEN  ", ' ', 15},
                                                     {"CWOCW", '1', 15}}};

// ---- voids

TEST_F(RecountTable, AVoidAddsNothing) {
    LogEntry marked = Qso(" void", 1445, 2, '3', "F", 14);
    Tally("WW CW", '4',
          {Qso("DL1AA", 1437, 3, '3', "DL", 14), marked, Qso("F1AA", 1450, 3, '3', "F", 14)});
    EXPECT_EQ(Recount.TotalQsos, 3); // its number stays taken
    EXPECT_EQ(Shown(Recount.RawByCode), (Counts{{3, 2}}));
    EXPECT_EQ(Shown(Recount.ValidByCode), (Counts{{3, 2}}));
    EXPECT_EQ(Shown(Recount.PointsByCode), (Counts{{3, 6}}));
    EXPECT_EQ(SlotMults(), (Counts{{3, 3}})); // DL, 14 and F
    EXPECT_EQ(Recount.Slots[2].RawQsos, 0);
    EXPECT_THAT(NewMults(), ElementsAre(true, false, true));
    EXPECT_EQ(HourQsos(15, 3).Cw, 2);
    EXPECT_EQ(HourQsos(15, 2).Cw, 0);
    EXPECT_EQ(Recount.Hours[15].Points, 6);
    EXPECT_EQ(Recount.Hours[15].Mults, 3);
    EXPECT_EQ(Recount.TotalPoints, 6);
    EXPECT_EQ(Recount.TotalMults, 3);
    EXPECT_EQ(Recount.Score, 18);
}

TEST_F(RecountTable, AVoidKeepsTheTimeOfTheEntryBeforeAndTheNextPauseIsMeasuredFromThere) {
    Tally("WW CW", '4',
          {Qso("DL1AA", 1400, 3, '3'), Qso("VOID", 1409, 3, '3'), Qso("F1AA", 1415, 3, '3')});
    EXPECT_THAT(Minutes(), ElementsAre(840, 840, 855));
    EXPECT_EQ(Recount.OnTimeMinutes, 15);
    // 16 minutes are too many, though the void stands between them.
    Tally("WW CW", '4',
          {Qso("DL1AA", 1400, 3, '3'), Qso("VOID", 1409, 3, '3'), Qso("F1AA", 1416, 3, '3')});
    EXPECT_EQ(Recount.OnTimeMinutes, 0);
    EXPECT_EQ(Shown(Recount.HalfMinutesByCode), Counts{});
    EXPECT_EQ(Recount.OffMinutes[15], 16 + 59 - 16);
}

TEST_F(RecountTable, AVoidAtTheBeginningHasItsOwnTimeAndCountsForTheDay) {
    Tally("ZRTOS", ' ', {Qso("VOID", 1605, 3, '3', "1"), Qso("W1AW", 1612, 3, '3', "1")});
    EXPECT_THAT(Minutes(), ElementsAre(965, 972));
    EXPECT_EQ(Recount.OnTimeMinutes, 7);
    EXPECT_EQ(Recount.OffMinutes[1], 47); // 59 - 12; the five minutes before it are no pause
    EXPECT_EQ(Shown(Recount.RawByCode), (Counts{{3, 1}}));
    EXPECT_THAT(NewMults(), ElementsAre(false, true));
    // The contest began the day before.
    Tally("ZRTOS", ' ', {Qso("VOID", 5, 3, '3'), Qso("W1AW", 10, 3, '3')});
    EXPECT_THAT(Minutes(), ElementsAre(1445, 1450));
}

TEST_F(RecountTable, AVoidAtTheEndEndsTheLogAtTheTimeOfTheEntryBefore) {
    Tally("WW CW", '4', {Qso("DL1AA", 5, 3, '3'), Qso("VOID", 47, 3, '3')});
    EXPECT_EQ(Recount.OffMinutes[1], 54);
    EXPECT_EQ(Recount.OffMinutes[2], 60);
    EXPECT_EQ(Recount.OffMinutes[48], 60);
}

TEST_F(RecountTable, TheDateOfAVoidCountsForTheDay) {
    Tally("WW CW", '4',
          {Qso("DL1AA", 2350, 3, '3'), Qso("VOID", 5, 3, '3', "", 0, 1),
           Qso("F1AA", 10, 3, '3', "", 0, 1)});
    EXPECT_THAT(Minutes(), ElementsAre(1430, 1430, 1450));
    Tally(
        "WW CW", '4',
        {Qso("DL1AA", 2350, 3, '3'), Qso("VOID", 5, 3, '3', "", 0, 1), Qso("F1AA", 2355, 3, '3')});
    EXPECT_THAT(Minutes(), ElementsAre(1430, 1430, 2880 + 1435));
}

TEST_F(RecountTable, ALogOfVoidsAloneCountsNothing) {
    Tally("WW CW", '4', {Qso("VOID", 1, 3, '3'), Qso("Void", 2, 4, '3')});
    EXPECT_EQ(Recount.TotalQsos, 2);
    EXPECT_EQ(Shown(Recount.RawByCode), Counts{});
    EXPECT_EQ(Recount.TotalMults, 0);
    EXPECT_EQ(Recount.Score, 0);
}

// ---- operating time

TEST_F(RecountTable, APauseOfTheContestsGapIsOperatingTimeAndAMinuteMoreIsNot) {
    for (const ContestSample &sample : kSamples) {
        SCOPED_TRACE(sample.Tag);
        const auto later = [&](i16 minutes) {
            return Qso("F1AA", static_cast<i16>(2100 + minutes / 60 * 100 + minutes % 60), 3, '1');
        };
        Tally(sample.Tag, sample.QthOption, {Qso("DL1AA", 2100, 3, '1'), later(sample.Gap)});
        EXPECT_EQ(Recount.OnTimeMinutes, sample.Gap);
        EXPECT_EQ(Shown(Recount.HalfMinutesByCode), (Counts{{3, 2 * sample.Gap}}));
        const auto over = static_cast<i16>(sample.Gap + 1);
        Tally(sample.Tag, sample.QthOption, {Qso("DL1AA", 2100, 3, '1'), later(over)});
        EXPECT_EQ(Recount.OnTimeMinutes, 0);
        EXPECT_EQ(Shown(Recount.HalfMinutesByCode), Counts{});
    }
}

TEST_F(RecountTable, HalfOfAPauseGoesToEachBandAtAChangeOfBandOrMode) {
    Tally("GEN  ", ' ',
          {Qso("A", 1400, 3, '2'), Qso("B", 1407, 4, '2'), Qso("C", 1410, 4, '2'),
           Qso("D", 1411, 12, '1'), Qso("E", 1431, 12, '1')});
    // 7 minutes shared by 3 and 4, 3 on 4, 1 shared by 4 and 12; 20 are too many.
    EXPECT_EQ(Shown(Recount.HalfMinutesByCode), (Counts{{3, 7}, {4, 7 + 6 + 1}, {12, 1}}));
    EXPECT_EQ(Recount.OnTimeMinutes, 11);
}

TEST_F(RecountTable, NoTimeIsAddedWhenTheClockStoodOrWentBack) {
    Tally("WW CW", '4',
          {Qso("A", 1400, 3, '3'), Qso("B", 1400, 4, '3'), Qso("C", 1355, 3, '3'),
           Qso("D", 1359, 3, '3')});
    EXPECT_THAT(Minutes(), ElementsAre(840, 840, 835, 839));
    EXPECT_EQ(Recount.OnTimeMinutes, 4);
    EXPECT_EQ(Shown(Recount.HalfMinutesByCode), (Counts{{3, 8}}));
}

// ---- days

TEST_F(RecountTable, ContestsThatStartLateInTheDayHaveEarlyContactsOnTheirSecondDay) {
    struct Row {
        const char *Tag;
        i16 LastOfSecondDay, FirstOfFirstDay;
    };
    constexpr std::array kRows = {Row{"SS9CW", 2059, 2100}, Row{"ZRTIN", 1559, 1600},
                                  Row{"PAQOS", 1559, 1600}, Row{"NEQOS", 1959, 2000}};
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.Tag);
        Tally(row.Tag, ' ', {Qso("W1AW", row.LastOfSecondDay, 3, '2')});
        EXPECT_EQ(Recount.Minutes[1], 1440 + row.LastOfSecondDay / 100 * 60 + 59);
        Tally(row.Tag, ' ', {Qso("W1AW", row.FirstOfFirstDay, 3, '2')});
        EXPECT_EQ(Recount.Minutes[1], row.FirstOfFirstDay / 100 * 60);
        Tally(row.Tag, ' ', {Qso("W1AW", 5, 3, '2')});
        EXPECT_EQ(Recount.Minutes[1], 1445);
    }
}

TEST_F(RecountTable, AllOtherContestsBeginOnTheirFirstDay) {
    for (const char *tag :
         {"ARLCW", "WW CW", "SP CW", "WPXCW", "AA CW", "NA CW", "TEN  ", "GEN  ", "CWOCW"}) {
        Tally(tag, '1', {Qso("W1AW", 5, 3, '2')});
        EXPECT_EQ(Recount.Minutes[1], 5) << tag;
    }
}

TEST_F(RecountTable, TheRuleOfTheFirstDayIsForTheFirstEntryAlone) {
    Tally("ZRTOS", ' ',
          {Qso("W1AW", 1700, 3, '3'), Qso("W2AW", 10, 3, '3', "", 0, 1),
           Qso("W3AW", 20, 3, '3', "", 0, 1)});
    EXPECT_THAT(Minutes(), ElementsAre(1020, 1450, 1460));
    EXPECT_EQ(HourQsos(2, 3).Cw, 1);
    EXPECT_EQ(HourQsos(9, 3).Cw, 2);
}

TEST_F(RecountTable, EachChangeOfDateIsADayAndTheDaysEndWithTheEighteenth) {
    std::vector<LogEntry> entries;
    entries.reserve(25);
    for (int i = 0; i < 25; ++i)
        entries.push_back(Qso("W1AW", 30, 3, '1', "", 0, i % 2)); // to and fro
    Tally("GEN  ", ' ', entries);
    for (int i = 0; i < 25; ++i)
        EXPECT_EQ(Recount.Minutes[static_cast<std::size_t>(i) + 1], std::min(i, 17) * 1440 + 30);
}

// ---- points

TEST_F(RecountTable, AContactWithoutPointsIsARawQsoAndNoValidOne) {
    Tally("WW CW", '4',
          {Qso("F1AA", 1400, 3, '0', "", 15), Qso("EA1AA", 1401, 3, ' ', "", 15),
           Qso("DL1AA", 1402, 3, '3', "", 14)});
    EXPECT_EQ(Recount.Slots[3].RawQsos, 3);
    EXPECT_EQ(Recount.Slots[3].ValidQsos, 1);
    EXPECT_EQ(Recount.Slots[3].Points, 3);
    EXPECT_FLOAT_EQ(Recount.Slots[3].PointsPerQso, 3);
    EXPECT_EQ(Shown(Recount.RawByCode), (Counts{{3, 3}}));
    EXPECT_EQ(Shown(Recount.ValidByCode), (Counts{{3, 1}}));
    EXPECT_EQ(Recount.Slots[3].ValidByMode, (ByMode{1, 0}));
    EXPECT_EQ(HourQsos(15, 3), (ByMode{3, 0}));             // the hour counts it all the same
    EXPECT_THAT(NewMults(), ElementsAre(true, true, true)); // and so do its multipliers
    EXPECT_EQ(Recount.TotalMults, 5);
}

TEST_F(RecountTable, PointsPerQsoAreTheMeanOfTheValidOnes) {
    Tally("WW CW", '4',
          {Qso("DL1AA", 1400, 3, '3'), Qso("F1AA", 1401, 3, '1'), Qso("G1AA", 1402, 3, '1'),
           Qso("G1AA", 1402, 2, '2')});
    EXPECT_FLOAT_EQ(Recount.Slots[3].PointsPerQso, 5.0F / 3.0F);
    EXPECT_FLOAT_EQ(Recount.Slots[2].PointsPerQso, 2);
    EXPECT_EQ(Recount.TotalPoints, 7);
}

TEST_F(RecountTable, PointsOfPaqpAreTenthsAndThreeIsOneAndAHalf) {
    Tally("PAQOS", ' ',
          {Qso("W3A", 1700, 3, '3', "1"), Qso("W3B", 1701, 5, '2', "2"),
           Qso("W3C", 1702, 11, '1', "3"), Qso("W3D", 1703, 11, '0', "3")});
    EXPECT_EQ(Shown(Recount.PointsByCode), (Counts{{3, 15}, {5, 20}, {11, 10}}));
    EXPECT_EQ(Recount.TotalPoints, 45);
    EXPECT_EQ(Recount.TotalMults, 3);
    EXPECT_EQ(Recount.Score, 14); // 13.5 to the even number
    EXPECT_EQ(Recount.Hours[2].Points, 45);
    EXPECT_FLOAT_EQ(Recount.Slots[3].PointsPerQso, 12.5F);
    Tally("PAQOS", ' ', {Qso("W3A", 1700, 3, '3', "1")});
    EXPECT_EQ(Recount.Score, 2); // 1.5
}

TEST_F(RecountTable, PointsOfABandMayPass32767) {
    Tally("PAQOS", ' ', std::vector<LogEntry>(3000, Qso("W3A", 1700, 3, '3', "1")));
    EXPECT_EQ(Recount.Slots[3].Points, 45000);
    EXPECT_EQ(Recount.PointsByCode[3], 45000);
    EXPECT_EQ(Recount.Hours[2].Points, 45000);
    EXPECT_EQ(Recount.Score, 4500);
}

TEST_F(RecountTable, TheModeOfAContactIsToldByItsPointsWhereTheSheetsPartTheModes) {
    struct Row {
        const char *Tag;
        const char *Phone, *Cw, *Neither; // stored points
        i32 Worth;                        // of one point as it is counted
    };
    constexpr std::array kRows = {
        Row{"ZRTOS", "2", "3", "0145", 1},  Row{"NEQOS", "1", "2", "0345", 1},
        Row{"GEN  ", "1", "2", "0345", 1},  Row{"PAQOS", "1", "3245", "0", 10},
        Row{"TEN  ", "2", "48", "0135", 1}, Row{"WW CW", "", "12368", "0", 1},
        Row{"SS9SB", "", "24", "0", 1},
    };
    for (const Row &row : kRows) {
        const auto expect = [&](const char *points, ByMode expected) {
            for (const char *digit = points; *digit != '\0'; ++digit) {
                SCOPED_TRACE(std::string(row.Tag) + " " + *digit);
                // A phone contact, so that nothing but the points tells the mode.
                Tally(row.Tag, '4', {Qso("W1AW", 2130, 9, *digit)});
                const i32 worth = row.Worth == 1  ? *digit - '0'
                                  : *digit == '3' ? 15
                                                  : (*digit - '0') * 10;
                EXPECT_EQ(Recount.Slots[1].ValidByMode, expected);
                EXPECT_EQ(Recount.Slots[1].PointsByMode,
                          (ByMode{expected.Cw * worth, expected.Phone * worth}));
                EXPECT_EQ(Recount.Slots[1].Points, worth);
                EXPECT_EQ(Recount.Slots[1].RawQsos, 1);
            }
        };
        expect(row.Phone, {0, 1});
        expect(row.Cw, {1, 0});
        expect(row.Neither, {0, 0});
    }
}

TEST_F(RecountTable, PointsOfBothCwValuesOfTenMetersAreSummedApartFromPhone) {
    Tally("TEN  ", ' ',
          {Qso("W1AW/T", 1400, 1, '8', "AL"), Qso("W1AW", 1401, 1, '4', "AL"),
           Qso("W1AW", 1402, 9, '2', "AL")});
    EXPECT_EQ(Recount.Slots[1].PointsByMode, (ByMode{12, 2}));
    EXPECT_EQ(Recount.Slots[1].ValidByMode, (ByMode{2, 1}));
    EXPECT_EQ(Recount.TotalPoints, 14);
}

// ---- slots and codes

TEST_F(RecountTable, ASlotIsABandOfBothModes) {
    Tally("ZRTOS", ' ',
          {Qso("A", 1700, 3, '3'), Qso("B", 1701, 11, '2'), Qso("C", 1702, 8, '3'),
           Qso("D", 1703, 16, '2')});
    EXPECT_EQ(Shown(Recount.RawByCode), (Counts{{3, 1}, {8, 1}, {11, 1}, {16, 1}}));
    EXPECT_EQ(Recount.Slots[3].RawQsos, 2);
    EXPECT_EQ(Recount.Slots[8].RawQsos, 2);
    EXPECT_EQ(HourQsos(2, 3), (ByMode{1, 1}));
    EXPECT_EQ(HourQsos(2, 8), (ByMode{1, 1}));
}

TEST_F(RecountTable, EveryCodeHasItsRowAndItsSlotAndABadCodeIsThatOf2mPhone) {
    struct Row {
        i16 BandIndex;
        std::size_t Code, Slot;
    };
    constexpr std::array kRows = {
        Row{1, 1, 1},    Row{8, 8, 8},    Row{9, 9, 1},       Row{16, 16, 8},
        Row{17, 17, 9},  Row{19, 19, 11}, Row{20, 20, 12},    Row{21, 21, 13},
        Row{22, 22, 14}, Row{23, 23, 15}, Row{24, 24, 16},    Row{0, 16, 8},
        Row{25, 16, 8},  Row{-1, 16, 8},  Row{-32768, 16, 8}, Row{32767, 16, 8}};
    for (const char *tag : {"GEN  ", "WW CW", "ZRTIN", "NA CW", "ARLCW"}) {
        for (const Row &row : kRows) {
            SCOPED_TRACE(std::string(tag) + " " + std::to_string(row.BandIndex));
            Tally(tag, '2', {Qso("DL1AA", 1700, row.BandIndex, '2')});
            EXPECT_EQ(Shown(Recount.RawByCode), (Counts{{row.Code, 1}}));
            EXPECT_EQ(Shown(Recount.ValidByCode), (Counts{{row.Code, 1}}));
            EXPECT_EQ(Recount.Slots[row.Slot].RawQsos, 1);
            EXPECT_EQ(Recount.Slots[row.Slot].Points, 2);
        }
    }
}

// ---- hours

TEST_F(RecountTable, TheHourHoldsQsosByBandWithPointsAndMultipliersOfAll) {
    Tally("WW CW", '4',
          {Qso("DL1AA", 5, 3, '3', "", 14), Qso("F1AA", 59, 4, '1', "", 14),
           Qso("DL1AA", 100, 3, '3', "", 14), Qso("F2AA", 105, 3, '1', "", 14)});
    EXPECT_EQ(HourQsos(1, 3), (ByMode{1, 0}));
    EXPECT_EQ(HourQsos(1, 4), (ByMode{1, 0}));
    EXPECT_EQ(HourQsos(2, 3), (ByMode{2, 0}));
    EXPECT_EQ(Recount.Hours[1].Points, 4);
    EXPECT_EQ(Recount.Hours[1].Mults, 4); // a country and a zone on each band
    EXPECT_EQ(Recount.Hours[2].Points, 4);
    EXPECT_EQ(Recount.Hours[2].Mults, 1);
}

TEST_F(RecountTable, HoursOfTwoModesArePartedByPointsAndLeaveOutWhatHasNone) {
    for (const char *tag : {"ZRTOS", "NEQOS", "TEN  ", "PAQOS"}) {
        SCOPED_TRACE(tag);
        const std::string name = tag;
        const char phone = name == "ZRTOS" || name == "TEN  " ? '2' : '1';
        const char cw = name == "ZRTOS" ? '3' : name == "TEN  " ? '4' : '2';
        Tally(tag, ' ',
              {Qso("A", 2000, 1, cw), Qso("B", 2000, 9, phone), Qso("C", 2000, 9, phone),
               Qso("D", 2000, 9, '0')});
        const auto hour = static_cast<std::size_t>(GetContestHour(1200, false));
        EXPECT_EQ(HourQsos(hour, 1), (ByMode{1, 2}));
    }
}

TEST_F(RecountTable, ContactsBeforeAndBehindTheContestAreInItsFirstAndLastHour) {
    Tally("CWOCW", '1',
          {Qso("A", 1130, 3, '1'), Qso("B", 1200, 3, '1'), Qso("C", 1559, 3, '1'),
           Qso("D", 1710, 3, '1')});
    EXPECT_EQ(HourQsos(1, 3).Cw, 2);
    EXPECT_EQ(HourQsos(4, 3).Cw, 2);
    Tally("WW SB", '4',
          {Qso("A", 0, 9, '1'), Qso("B", 0, 9, '1', "", 0, 1), Qso("C", 0, 9, '1', "", 0, 2),
           Qso("D", 1200, 9, '1', "", 0, 3)});
    EXPECT_EQ(HourQsos(1, 1).Cw, 1);
    EXPECT_EQ(HourQsos(25, 1).Cw, 1);
    EXPECT_EQ(HourQsos(48, 1).Cw, 2);
}

TEST_F(RecountTable, TheMinutesOffTheAirAreThoseOfAllItsPauses) {
    Tally("NA CW", ' ',
          {Qso("A", 1811, 3, '1'), Qso("B", 1821, 3, '1'), Qso("C", 1855, 3, '1'),
           Qso("D", 1906, 3, '1'), Qso("E", 2230, 3, '1')});
    // Hour 1: 11 before, 34 within, 4 to its end. Hour 2: 6, and 53 to its end; hours 3 and 4; hour
    // 5: 30, and 29 behind. Then the rest of twelve hours.
    Counts expected{{1, 11 + 34 + 4}, {2, 6 + 53}, {3, 60}, {4, 60}, {5, 30 + 29}};
    for (std::size_t hour = 6; hour <= 12; ++hour)
        expected[hour] = 60;
    EXPECT_EQ(Shown(Recount.OffMinutes), expected);
}

TEST_F(RecountTable, ALogOfOneEntryIsOffBeforeAndBehindIt) {
    Tally("CWOCW", '2', {Qso("A", 2130, 3, '1')});
    EXPECT_EQ(Shown(Recount.OffMinutes), (Counts{{1, 60}, {2, 59}, {3, 60}, {4, 60}}));
    EXPECT_EQ(Recount.OnTimeMinutes, 0);
}

TEST_F(RecountTable, AGenericLogHasNoHours) {
    Tally("GEN  ", ' ', {Qso("A", 5, 3, '2'), Qso("B", 500, 3, '2'), Qso("C", 501, 11, '1')});
    for (const HourCounts &hour : Recount.Hours) {
        EXPECT_EQ(hour.Points, 0);
        EXPECT_EQ(hour.Mults, 0);
        for (const ByMode &qsos : hour.Qsos)
            EXPECT_EQ(qsos, ByMode());
    }
    EXPECT_EQ(Shown(Recount.OffMinutes), Counts{});
    EXPECT_EQ(Recount.OnTimeMinutes, 1);
}

// ---- files

TEST_F(RecountTable, ALogOfAHeaderAloneHoldsNothing) {
    for (const ContestSample &sample : kSamples) {
        for (const char format : {'\0', '\1'}) {
            std::string header = HeaderBytes(sample.Tag, sample.QthOption);
            header[4] = format;
            Tally(header);
            EXPECT_EQ(Recount.TotalQsos, 0) << sample.Tag;
            EXPECT_EQ(Recount.TotalPoints, 0);
            EXPECT_EQ(Recount.TotalMults, 0);
            EXPECT_EQ(Recount.Score, 0);
            EXPECT_EQ(Shown(Recount.OffMinutes), Counts{});
        }
    }
}

TEST_F(RecountTable, AFileThatCannotBeReadGivesItsErrorAndNoOldCounts) {
    Tally("WW CW", '4', {Qso("DL1AA", 1400, 3, '3', "", 14)});
    ASSERT_EQ(Recount.Score, 6);
    std::filesystem::remove(PathOf("test.ZRT"));
    EXPECT_EQ(PostTally(), ENOENT);
    EXPECT_EQ(Recount.TotalQsos, 0);
    EXPECT_EQ(Recount.Score, 0);
    EXPECT_EQ(Shown(Recount.RawByCode), Counts{});
    EXPECT_EQ(Shown(Recount.OffMinutes), Counts{});
}

TEST_F(RecountTable, ALogBeyond9000IsCountedUpToThereAndTheRestIsTold) {
    std::vector<LogEntry> entries(9000, Qso("DL1AA", 1400, 3, '1', "", 14));
    Tally("WW CW", '4', entries);
    EXPECT_EQ(Recount.TotalQsos, 9000);
    EXPECT_EQ(Recount.Beyond, 0);
    EXPECT_EQ(Recount.TotalPoints, 9000);
    entries.insert(entries.end(), 2, Qso("F1AA", 1400, 4, '1', "", 15));
    Tally("WW CW", '4', entries);
    EXPECT_EQ(Recount.TotalQsos, 9000);
    EXPECT_EQ(Recount.Beyond, 2);
    EXPECT_EQ(Recount.TotalPoints, 9000);
    EXPECT_EQ(Recount.TotalMults, 2);
}

TEST_F(RecountTable, TheFormOf26BytesIsCounted) {
    std::string bytes = HeaderBytes("WW CW", '4');
    bytes[4] = '\0';
    for (const i16 time : {i16{1400}, i16{1410}}) {
        OldEntry26 entry;
        entry.Date = DateCode(1998, 11, 28);
        entry.Time = time;
        entry.BandIndex = 4;
        entry.Callsign = time == 1400 ? "DL1AA" : "F1AA";
        entry.RcvdNumber = 14;
        entry.Points = "3";
        const auto raw = Encode(entry);
        bytes.append(reinterpret_cast<const char *>(raw.data()), raw.size());
    }
    Tally(bytes);
    EXPECT_EQ(Recount.TotalQsos, 2);
    EXPECT_EQ(Shown(Recount.RawByCode), (Counts{{4, 2}}));
    EXPECT_EQ(Recount.TotalMults, 3);
    EXPECT_EQ(Recount.Score, 18);
    EXPECT_EQ(Recount.OnTimeMinutes, 10);
}

TEST_F(RecountTable, TheFormOf36BytesIsCounted) {
    for (const char *tag : {"SP CW", "NA CW", "GEN  "}) {
        SCOPED_TRACE(tag);
        std::string bytes = HeaderBytes(tag);
        bytes[4] = '\0';
        bytes.resize(kOld36Length, '\0');
        for (const char *call : {"W1AW", "VOID", "W2AW"}) {
            OldEntry36 entry;
            entry.Date = DateCode(1998, 11, 28);
            entry.Time = 5;
            entry.BandIndex = 30; // not put right in these records
            entry.Callsign = call;
            entry.RcvdExchange = "7";
            entry.RcvdName = "HIRAM";
            entry.Points = "1";
            const auto raw = Encode(entry);
            bytes.append(reinterpret_cast<const char *>(raw.data()), raw.size());
        }
        Tally(bytes);
        EXPECT_EQ(Recount.TotalQsos, 3);
        for (std::size_t code = 1; code < kBandCodeRows; ++code)
            EXPECT_EQ(Recount.RawByCode[code], 0);
        EXPECT_EQ(Recount.TotalPoints, 3); // VOID is a call here
    }
}

TEST_F(RecountTable, CountingAgainGivesTheSameAndChangesNoEntry) {
    Tally("ARLCW", '1',
          {Qso("DL1AA", 1400, 3, '3', "DL"), Qso("VOID", 1401, 3, '3'),
           Qso("F1AA", 1402, 99, '3', "F"), Qso("W1AW", 1403, 3, '0', "K")});
    const auto entries = Log.LogEntries;
    const std::string bytes = BytesOf("test.ZRT");
    const RecountState first = Recount;
    ASSERT_EQ(PostTally(), 0);
    EXPECT_EQ(Recount.RawByCode, first.RawByCode);
    EXPECT_EQ(Recount.MultsByCode, first.MultsByCode);
    EXPECT_EQ(Recount.TotalMults, 1); // DL on 20 m; 99 is 2 m, which is none of the six bands
    EXPECT_EQ(first.TotalMults, 1);
    EXPECT_EQ(Recount.Score, first.Score);
    EXPECT_EQ(Recount.OffMinutes, first.OffMinutes);
    EXPECT_EQ(Recount.HalfMinutesByCode, first.HalfMinutesByCode);
    EXPECT_EQ(Recount.NewMult, first.NewMult);
    EXPECT_EQ(Log.LogEntries, entries);
    EXPECT_EQ(Log.LogEntries[3].BandIndex, 99);
    EXPECT_EQ(BytesOf("test.ZRT"), bytes);
}

// The file counts, not what is in memory.
TEST_F(RecountTable, TheFileIsReadAgain) {
    Tally("WW CW", '4', {Qso("DL1AA", 1400, 3, '3', "", 14)});
    Log.LogEntries[1].Points = "9";
    Log.NextEntry = 1;
    ASSERT_EQ(PostTally(), 0);
    EXPECT_EQ(Recount.TotalPoints, 3);
    EXPECT_EQ(Recount.TotalQsos, 1);
}

} // namespace
} // namespace zrt
