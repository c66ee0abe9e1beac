#include "entry/meters.h"

#include "entry/multipliers.h"
#include "entry/points.h"
#include "entry/statistics.h"
#include "entry/utc_clock.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/log_file.h"

#include <array>
#include <cmath>
#include <span>

namespace zrt {

namespace {

using i64 = std::int64_t;

constexpr i32 kMinutesAnHour = 60;
constexpr const char *kNoData = "--";

// ---- texts of numbers

// The whole number nearest to a quotient of two numbers that are not negative, halves up.
i64 Nearest(i64 dividend, i64 divisor) {
    return (2 * dividend + divisor) / (2 * divisor);
}

// No digit stands for none: a rate below a half is blank.
std::string WithoutZero(i64 number) {
    return number == 0 ? std::string() : std::to_string(number);
}

// "1:05". Minutes not below 0.
std::string HourMinute(i32 minutes) {
    return std::to_string(minutes / kMinutesAnHour) + ":" +
           PadLeft(std::to_string(minutes % kMinutesAnHour), 2, '0');
}

// The times of bands and modes are halves of a minute at the finest.
i32 HalfMinutes(float minutes) {
    return static_cast<i32>(std::lround(minutes * 2));
}

i32 WholeMinutes(i32 halfMinutes) {
    return (halfMinutes + 1) / 2;
}

// What a sum of NumericPoints has to be divided by.
i32 PointUnit() {
    return Contest.ContestId == kPaqp ? 10 : 1;
}

// ---- meters

// Which meters show points too. Row: ContestId.
struct MeterRow {
    bool PointsInLast10;
    bool PointsInOthers;
    const char *OnBandTitle;
};
constexpr auto kMeters = std::to_array<MeterRow>({
    {false, false, ""},            // none
    {false, false, "On Band: "},   // ARRL DX
    {true, true, "Band-Mode: "},   // ZRT
    {true, true, "On Band: "},     // CQ WW
    {false, false, "On Band: "},   // Sprint
    {false, false, "On Band: "},   // SS
    {true, true, "On Band: "},     // WPX
    {true, true, "On Band: "},     // AA
    {true, true, "Band-Mode: "},   // PAQP
    {false, false, "On Band: "},   // NAQP
    {true, true, "Mode: "},        // ARRL 10 m
    {false, true, "Band-Mode: "},  // NEQP
    {false, false, "Band-Mode: "}, // Generic
    {true, false, "On Band: "},    // CW Open
});
static_assert(kMeters.size() == kContests + 1);

i16 LastEntry() {
    return static_cast<i16>(Log.NextEntry - 1);
}

// The contest minute of a contact that would be logged now.
i32 MinuteOfNow() {
    const ContestTime now = TimeNow();
    const bool nextDay = now.Date != EntryFields(LastEntry()).Date;
    const i32 day = Statistics.DayCount + (nextDay && Statistics.DayCount < kMostDays ? 1 : 0);
    return MinuteOfDay(now.Time) + (day - 1) * kMinutesADay;
}

// The minute that the rates are those of.
i32 MeterMinute(bool force) {
    const i32 last = Statistics.MinuteIndex[LastEntry()];
    if (!force)
        return last;
    const i32 now = MinuteOfNow();
    return now >= last && now - last < Contest.OffTimeGap ? now : last;
}

// The sum of NumericPoints of the entries behind entry n. What was taken out of the log has none.
i32 PointsAfter(i16 n) {
    i32 sum = 0;
    for (i16 i = static_cast<i16>(n + 1); i <= LastEntry(); ++i) {
        const OldEntry36 entry = EntryFields(i);
        if (!IsVoid(entry))
            sum += NumericPoints(entry.Points.Whole().front());
    }
    return sum;
}

// Contacts, and points if they are shown, of so many minutes (above 0) as rates an hour.
std::string Rates(i64 contacts, i64 points, i64 minutes, bool withPoints) {
    std::string text = WithoutZero(Nearest(contacts * kMinutesAnHour, minutes));
    if (withPoints)
        text += "/" + std::to_string(Nearest(points * kMinutesAnHour, minutes * PointUnit()));
    return text;
}

std::string Last10Text(i32 minute) {
    constexpr i16 kContacts = 10;
    if (LastEntry() <= kContacts)
        return {};
    const i16 start = static_cast<i16>(LastEntry() - kContacts);
    const i32 minutes = minute - Statistics.MinuteIndex[start];
    if (minutes <= 0)
        return {};
    return "Last 10: " +
           Rates(kContacts, PointsAfter(start), minutes, kMeters[Contest.ContestId].PointsInLast10);
}

std::string OverallText() {
    if (Statistics.OnTimeMinutes <= 0)
        return {};
    return "Overall: " + Rates(LastEntry(), Statistics.TotalPoints, Statistics.OnTimeMinutes,
                               kMeters[Contest.ContestId].PointsInOthers);
}

// The last entry that is not after the minute; the first one is not. Edited times may run back, so
// the halving narrows two bounds and ends whatever it meets.
i16 EntryOfMinute(i32 minute) {
    i16 low = 1;
    i16 above = Log.NextEntry;
    while (above - low > 1) {
        const i16 middle = static_cast<i16>((low + above) / 2);
        (Statistics.MinuteIndex[middle] <= minute ? low : above) = middle;
    }
    return low;
}

std::string LastHourText(i32 minute) {
    const i32 hourAgo = minute - kMinutesAnHour;
    if (hourAgo < Statistics.MinuteIndex[1])
        return {};
    const i16 start = EntryOfMinute(hourAgo);
    const bool withPoints = kMeters[Contest.ContestId].PointsInOthers;
    return "Last Hr: " + Rates(LastEntry() - start, withPoints ? PointsAfter(start) : 0,
                               kMinutesAnHour, withPoints);
}

i32 AllContacts() {
    i32 sum = 0;
    for (const i32 contacts : Statistics.QsosPerBand)
        sum += contacts;
    return sum;
}

void AddContinents(MeterTexts &texts) {
    const std::string title = Contest.QthUSA  ? "USA: "
                              : Contest.QthVE ? "CAN: "
                                              : "   " + Contest.QthContinent + ": ";
    texts.SameContinent = title + std::to_string(Points.SameContinentCount);
    texts.Dx = "DX: " + std::to_string(AllContacts() - Points.SameContinentCount);
}

std::string ModeTimesText() {
    const auto time = [](float minutes) { return HourMinute(WholeMinutes(HalfMinutes(minutes))); };
    return "SSB/CW: " + time(Statistics.SsbMinutes) + "/" + time(Statistics.CwMinutes);
}

// ---- the table by bands

// What a column is made of.
struct BandFigures {
    i32 Contacts = 0;
    i32 HalfMinutes = 0;
    i32 Points = 0; // tenths in PAQP
    i32 Mults = 0;
    i32 Countries = 0;
    i32 Zones = 0;
    i32 States = 0; // ARRL 10 m
};

BandFigures &operator+=(BandFigures &sum, const BandFigures &more) {
    sum.Contacts += more.Contacts;
    sum.HalfMinutes += more.HalfMinutes;
    sum.Points += more.Points;
    sum.Mults += more.Mults;
    sum.Countries += more.Countries;
    sum.Zones += more.Zones;
    sum.States += more.States;
    return sum;
}

BandFigures FiguresOf(i16 bandIndex) {
    BandFigures figures;
    figures.Contacts = Statistics.QsosPerBand[bandIndex];
    figures.HalfMinutes = HalfMinutes(Statistics.MinutesPerBand[bandIndex]);
    figures.Points = Statistics.PointsPerBand[bandIndex];
    figures.Mults = Statistics.MultsPerBand[bandIndex];
    figures.Countries = Multipliers.CountriesPerBand[bandIndex];
    figures.Zones = Multipliers.ZonesPerBand[bandIndex];
    return figures;
}

std::string Number(i32 number) {
    return number == 0 ? kNoData : std::to_string(number);
}

// An hour's rate of something, which `unit` of the sum make one of.
std::string HourlyRate(i64 sum, i64 unit, i32 halfMinutes) {
    constexpr i64 kMost = 999;
    if (sum == 0 || halfMinutes == 0)
        return kNoData;
    return std::to_string(std::min(kMost, Nearest(sum * 2 * kMinutesAnHour, unit * halfMinutes)));
}

std::string ContactsCell(const BandFigures &figures) {
    return Number(figures.Contacts);
}

std::string HoursCell(const BandFigures &figures) {
    const i32 minutes = WholeMinutes(figures.HalfMinutes);
    return minutes == 0 ? kNoData : HourMinute(minutes);
}

std::string ContactRateCell(const BandFigures &figures) {
    return HourlyRate(figures.Contacts, 1, figures.HalfMinutes);
}

std::string PointsCell(const BandFigures &figures) {
    return Number(figures.Points);
}

// "2.75"
std::string PointsPerQsoCell(const BandFigures &figures) {
    if (figures.Contacts == 0 || figures.Points == 0)
        return kNoData;
    const i64 hundredths = Nearest(i64{figures.Points} * 100, figures.Contacts);
    return std::to_string(hundredths / 100) + "." +
           PadLeft(std::to_string(hundredths % 100), 2, '0');
}

std::string PointRateCell(const BandFigures &figures) {
    return HourlyRate(figures.Points, PointUnit(), figures.HalfMinutes);
}

std::string MultsCell(const BandFigures &figures) {
    return Number(figures.Mults);
}

std::string CountriesCell(const BandFigures &figures) {
    return Number(figures.Countries);
}

std::string ZonesCell(const BandFigures &figures) {
    return Number(figures.Zones);
}

std::string StatesCell(const BandFigures &figures) {
    return Number(figures.States);
}

struct TableRow {
    const char *Title;
    std::string (*Cell)(const BandFigures &figures);
};

constexpr TableRow kContacts = {"QSOs:", ContactsCell};
constexpr TableRow kContactRate = {" Qs/Hr:", ContactRateCell};
constexpr TableRow kPointRate = {" Pts/Hr:", PointRateCell};

constexpr std::array kPlain = {kContacts, TableRow{"Hours:", HoursCell}, kContactRate,
                               TableRow{"Mults:", MultsCell}};
constexpr std::array kQsoParty = {kContacts, kContactRate, kPointRate,
                                  TableRow{"Mults", MultsCell}};
constexpr std::array kWorldWide = {kContacts,
                                   TableRow{"Pts:", PointsCell},
                                   TableRow{" Pts/Q:", PointsPerQsoCell},
                                   kContactRate,
                                   TableRow{"Pts/Hr:", PointRateCell},
                                   TableRow{"Cties:", CountriesCell},
                                   TableRow{"Zones:", ZonesCell}};
constexpr std::array kPrefixes = {
    kContacts,    TableRow{"Pts:", PointsCell},       TableRow{" Pts/Q:", PointsPerQsoCell},
    kContactRate, TableRow{"Pts/Hr:", PointRateCell}, TableRow{"Pfxs:", MultsCell}};
// Of the 10 m multipliers the states and provinces count by mode, the countries by band.
constexpr std::array kTenMeters = {kContacts, kContactRate, kPointRate,
                                   TableRow{"W/VE Mults:", StatesCell},
                                   TableRow{"DX Mults:", MultsCell}};
constexpr std::array kAllCountries = {kContacts, kContactRate, TableRow{"Cties:", CountriesCell}};

enum class ColumnsOf {
    Bands,
    BandsInPairs, // each value is that on phone, "/", that on CW
    Modes
};

struct TableForm {
    ColumnsOf Columns;
    std::span<const TableRow> Rows;
};

// Row: ContestId.
constexpr auto kTables = std::to_array<TableForm>({
    {ColumnsOf::Bands, {}},
    {ColumnsOf::Bands, kPlain},               // ARRL DX
    {ColumnsOf::BandsInPairs, kQsoParty},     // ZRT
    {ColumnsOf::Bands, kWorldWide},           // CQ WW
    {ColumnsOf::Bands, kPlain},               // Sprint
    {ColumnsOf::Bands, kPlain},               // SS
    {ColumnsOf::Bands, kPrefixes},            // WPX
    {ColumnsOf::Bands, kPrefixes},            // AA
    {ColumnsOf::BandsInPairs, kQsoParty},     // PAQP
    {ColumnsOf::Bands, kPlain},               // NAQP
    {ColumnsOf::Modes, kTenMeters},           // ARRL 10 m
    {ColumnsOf::BandsInPairs, kQsoParty},     // NEQP
    {ColumnsOf::BandsInPairs, kAllCountries}, // Generic
    {ColumnsOf::Bands, kPlain},               // CW Open
});
static_assert(kTables.size() == kContests + 1);

// The pair of a value; the side without data is a zero beside the other.
std::string Pair(const std::string &phone, const std::string &cw) {
    if (phone == kNoData && cw == kNoData)
        return kNoData;
    const auto side = [](const std::string &text) { return text == kNoData ? "0" : text; };
    return side(phone) + "/" + side(cw);
}

BandColumn BandColumnOf(const TableForm &form, int position) {
    const BandFigures cw = FiguresOf(kCwCodes[position - 1]);
    const BandFigures phone = FiguresOf(kPhoneCodes[position - 1]);
    BandFigures both = cw;
    both += phone;
    BandColumn column = {std::string(Trim(kBandNamesLong[position - 1]))};
    for (const TableRow &row : form.Rows)
        column.push_back(form.Columns == ColumnsOf::BandsInPairs
                             ? Pair(row.Cell(phone), row.Cell(cw))
                             : row.Cell(both));
    return column;
}

bool HasColumn(int position) {
    return Contest.ActiveBands[position - 1] ||
           Statistics.QsosPerBand[kCwCodes[position - 1]] > 0 ||
           Statistics.QsosPerBand[kPhoneCodes[position - 1]] > 0;
}

// ARRL 10 m. The points are those of the mode counters: 4 a contact on CW and 2 on phone, where an
// 8-point contact counts as one on phone.
BandColumn ModeColumnOf(const TableForm &form, bool cw) {
    BandFigures figures;
    for (i16 code = 1; code <= kBandCodes; ++code)
        if (IsCw(code) == cw)
            figures += FiguresOf(code);
    figures.Points = cw ? Statistics.CwCount * 4 : Statistics.SsbCount * 2;
    figures.HalfMinutes = HalfMinutes(cw ? Statistics.CwMinutes : Statistics.SsbMinutes);
    figures.States = cw ? Multipliers.TenCwMults : Multipliers.TenSsbMults;
    BandColumn column = {cw ? "CW" : "PH"};
    for (const TableRow &row : form.Rows)
        column.push_back(row.Cell(figures));
    return column;
}

bool ContestIsOpen() {
    return Contest.ContestId >= 1 && Contest.ContestId <= kContests;
}

} // namespace

MeterTexts Meters(bool force) {
    MeterTexts texts;
    if (!ContestIsOpen())
        return texts;
    if (LastEntry() >= 2) {
        const i32 minute = MeterMinute(force);
        texts.Last10 = Last10Text(minute);
        texts.Overall = OverallText();
        texts.Total = "     Total: " + HourMinute(Statistics.OnTimeMinutes);
        texts.OnBand =
            kMeters[Contest.ContestId].OnBandTitle + HourMinute(Statistics.OnBandMinutes);
        texts.LastHour = LastHourText(minute);
    }
    if (Contest.ContestId == kWpx)
        AddContinents(texts);
    if (ContestTable(Contest.ContestId).BothModes)
        texts.ModeTimes = ModeTimesText();
    return texts;
}

BandTableTexts BandTable() {
    BandTableTexts table;
    if (!ContestIsOpen())
        return table;
    const TableForm &form = kTables[Contest.ContestId];
    table.Titles.emplace_back(form.Columns == ColumnsOf::BandsInPairs ? "SSB/CW" : "");
    for (const TableRow &row : form.Rows)
        table.Titles.emplace_back(row.Title);
    if (form.Columns == ColumnsOf::Modes) {
        table.Columns = {ModeColumnOf(form, true), ModeColumnOf(form, false)};
        return table;
    }
    for (int position = 1; position <= kBandPositions; ++position)
        if (HasColumn(position))
            table.Columns.push_back(BandColumnOf(form, position));
    return table;
}

} // namespace zrt
