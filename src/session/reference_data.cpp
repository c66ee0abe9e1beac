#include "session/reference_data.h"

#include "platform/dialogs.h"
#include "session/call_areas.h"
#include "session/data_files.h"
#include "session/settings.h"

#include <algorithm>
#include <cassert>

namespace zrt {

ReferenceData Reference;

namespace {

constexpr float kMostLatitude = 90;
constexpr float kMostLongitude = 360;

// Takes what stands before the next separator off `rest`; the last one takes all that is left.
std::string_view NextPiece(std::string_view &rest, char separator) {
    const auto end = rest.find(separator);
    const std::string_view piece = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    return Trim(piece);
}

float Degrees(std::string_view text, float most) {
    return static_cast<float>(
        std::clamp(Value(text), -static_cast<double>(most), static_cast<double>(most)));
}

// Name: CQ zone: ITU zone: continent: latitude: longitude: time offset: main prefix:
Country ParseCountry(std::string_view line) {
    std::array<std::string_view, 8> columns;
    for (std::string_view &column : columns)
        column = NextPiece(line, ':');
    Country country;
    country.Name = columns[0];
    country.CQZone = columns[1];
    country.Continent = columns[3];
    country.Latitude = Degrees(columns[4], kMostLatitude);
    country.Longitude = Degrees(columns[5], kMostLongitude);
    country.MainPrefix = UpperCase(columns[7]);
    return country;
}

// False if the table is full.
bool TakeCountry(std::string_view line) {
    if (Reference.CountryCount == kMostCountries)
        return false;
    Reference.CountryTable[++Reference.CountryCount] = ParseCountry(line);
    return true;
}

bool TakePrefix(std::string_view piece) {
    if (Reference.Prefixes.Entries.size() >= kMostPrefixes)
        return false;
    const i16 row = Reference.CountryCount;
    const bool starred = Reference.CountryTable[row].MainPrefix.Whole().starts_with('*');
    AddPrefix(Reference.Prefixes, ParsePrefix(piece, row), starred);
    return true;
}

// Pieces with a comma behind them; the last one may have ";" or nothing.
bool TakePrefixLine(std::string_view line) {
    while (line.find(',') != std::string_view::npos)
        if (!TakePrefix(NextPiece(line, ',')))
            return false;
    if (line.ends_with(';'))
        line.remove_suffix(1);
    line = Trim(line);
    return line.empty() || TakePrefix(line);
}

// False if a table is full.
bool TakeCountryFile(std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = NextLine(text);
        const std::string_view trimmed = Trim(line);
        if (trimmed.empty() || line.front() == '\'')
            continue;
        if (!(trimmed.ends_with(':') ? TakeCountry(trimmed) : TakePrefixLine(trimmed)))
            return false;
    }
    return true;
}

void FindCountryRows() {
    struct RowOfPrefix {
        std::string_view MainPrefix;
        i16 *Row;
    };
    const std::array kRows = {RowOfPrefix{"K", &Reference.CountryRowUsa},
                              RowOfPrefix{"VE", &Reference.CountryRowCanada},
                              RowOfPrefix{"KH6", &Reference.CountryRowHawaii},
                              RowOfPrefix{"KL", &Reference.CountryRowAlaska}};
    for (const RowOfPrefix &row : kRows) {
        *row.Row = 0;
        for (i16 country = 1; country <= Reference.CountryCount; ++country)
            if (Trim(Reference.CountryTable[country].MainPrefix.Whole()) == row.MainPrefix)
                *row.Row = country;
    }
}

std::string_view ScpMark(std::string_view two) {
    if (InRanges(two, kUsAreas) || InRanges(two, kCanadianAreas))
        return "*";
    if (InRanges(two, kUsNorthAmerica) || InRanges(two, kUsPacific))
        return "+";
    return BeginsWithUsLetter(two) ? "*" : "";
}

// The file is sorted, so most rows have the two letters and the mark of the row before.
struct MarkOfRow {
    std::string_view TwoLetters;
    std::string_view Mark;
};

void TakeScpLine(std::string_view line, MarkOfRow &last) {
    constexpr std::size_t kRowLength = 11;
    const std::string_view two = line.substr(0, 2);
    if (two != last.TwoLetters)
        last = {two, ScpMark(two)};
    const std::string_view mark = last.Mark;
    Reference.SCPStart.push_back(static_cast<std::uint32_t>(Reference.SCPTable.size()));
    Reference.SCPTable += mark;
    Reference.SCPTable += TrimRight(line.substr(0, kRowLength - mark.size()));
    Reference.SCPTable += '\n';
    ++Reference.SCPCount;
}

} // namespace

std::string_view SCPRow(i32 n) {
    assert(n >= 1 && n <= Reference.SCPCount);
    const auto row = static_cast<std::size_t>(n);
    const std::size_t begin = Reference.SCPStart[row - 1];
    const std::size_t next =
        n == Reference.SCPCount ? Reference.SCPTable.size() : Reference.SCPStart[row];
    return std::string_view(Reference.SCPTable).substr(begin, next - 1 - begin);
}

i32 SCPRowAt(std::size_t place) {
    const auto &start = Reference.SCPStart;
    return static_cast<i32>(std::upper_bound(start.begin(), start.end(), place) - start.begin());
}

void ReadCountries() {
    Reference.CountryTable = {};
    Reference.CountryCount = 0;
    Reference.Prefixes = {};
    std::string text;
    const int error = ReadDataFile("cty.dat", text);
    const bool taken = TakeCountryFile(text);
    Reference.PrefixCount = static_cast<i32>(Reference.Prefixes.Entries.size());
    FindCountryRows();
    if (error != 0 || !taken)
        ShowMessageBox({"Can't find or read country file cty.dat.  This is not a fatal error "
                        "unless you are using a contest that requires it.  Make sure it is in the "
                        "same drive/directory used to start program.",
                        "Error Reading Initiation Files", BoxButtons::Ok, BoxIcon::Exclamation});
}

void ReadMasterScp() {
    Reference.SCPTable.clear();
    Reference.SCPStart.clear();
    Reference.SCPCount = 0;
    Reference.SCPLoaded = false;
    std::string text;
    if (ReadDataFile("master.scp", text) != 0) {
        ShowMessageBox({"Can't find or read Super Check Partial file master.scp.  To use this "
                        "feature,make sure it is in the same drive/directory used to start program "
                        "and restart. The program will work without this file, but the View "
                        "Partial window will only show matches in current log and InstaMatch "
                        "files.",
                        "Error Reading Super Check Partial File", BoxButtons::Ok, BoxIcon::None});
        return;
    }
    const i32 limit = Extensions.ScpLimit > 0 ? Extensions.ScpLimit : kScpLimit;
    MarkOfRow mark;
    std::string_view rest = text;
    while (!rest.empty() && Reference.SCPCount < limit) {
        const std::string_view line = NextLine(rest);
        if (!Trim(line).empty() && line.front() != '#')
            TakeScpLine(line, mark);
    }
    Reference.SCPLoaded = true;
}

void ReadCallMatch() {
    Reference.CallMatchTable = {};
    Reference.CallMatchCount = 0;
    std::string text;
    (void)ReadDataFile("callmtch.dat", text); // a station without recordings has no such file
    std::string_view rest = text;
    while (!rest.empty() && Reference.CallMatchCount < kCallMatchRows) {
        const std::string_view line = Trim(NextLine(rest));
        if (++Reference.CallMatchCount < kCallMatchRows)
            Reference.CallMatchTable[Reference.CallMatchCount - 1] = line;
    }
}

} // namespace zrt
