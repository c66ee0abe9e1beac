// The start-up data file ZRTLOG126.DAT: sections of values, each of which fills one table.
#include "platform/dialogs.h"
#include "platform/program.h"
#include "session/data_files.h"
#include "session/radio_state.h"
#include "session/reference_data.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <variant>

namespace zrt {

namespace {

struct BandFrequencies {};
using Target = std::variant<std::string *, i16 *, BandFrequencies>;

struct Section {
    std::string_view Header;
    i16 Rows;
    Target Values;
    i16 *Count = nullptr; // where there is one: the first value is the count, Rows at most
};

const std::array kSections = {
    Section{"[ZRT State/Province Mults]", 58, &Reference.CommonList[0]},
    Section{"[ZRT Zar County Mults]", 58, &Reference.CommonList[58]},
    Section{"[SS Mults]", 83, &Reference.CommonList[116]},
    Section{"[SS Short Forms]", 83, Reference.SsShortForms.data()},
    Section{"[SS Extra Mults]", kMostSsExtra, Reference.SsExtraMults.data(),
            &Reference.SsExtraMultCount},
    Section{"[SS Extra Short Forms]", kMostSsExtra, Reference.SsExtraShortForms.data(),
            &Reference.SsExtraShortFormCount},
    Section{"[Sprint Mults]", 72, Reference.SprintMults.data()},
    Section{"[PAQP Mults]", 67, Reference.PaqpMults.data()},
    Section{"[NEQP Mults]", 67, Reference.NeqpMults.data()},
    Section{"[NAQP Mults]", 72, Reference.NaqpMults.data()},
    Section{"[10M Mults]", 65, Reference.TenMults.data()},
    Section{"[ARRL Mults]", 63, Reference.ArrlMults.data()},
    Section{"[ZRT X Coordinates]", 72, Reference.ZrtX.data()},
    Section{"[ZRT Y Coordinates]", 72, Reference.ZrtY.data()},
    Section{"[SS X Coordinates]", 83, Reference.SsX.data()},
    Section{"[SS Y Coordinates]", 83, Reference.SsY.data()},
    Section{"[ARRL USVEMultOrder]", 63, Reference.UsVeMultOrder.data()},
    Section{"[10M X Coordinates]", 65, Reference.TenX.data()},
    Section{"[10M Y Coordinates]", 65, Reference.TenY.data()},
    Section{"[ARRL X Coordinates]", 63, Reference.ArrlX.data()},
    Section{"[ARRL Y Coordinates]", 63, Reference.ArrlY.data()},
    Section{"[CW Characters]", 42, Reference.CwCharacters.data()},
    Section{"[Band Frequencies]", kBandCodes, BandFrequencies{}},
};

// Takes the next value off `rest`: to a comma or the end of the line, without blanks around it and
// without a pair of quotes, which may hold commas. Empty lines before it don't count. False at the
// end of the file.
bool NextValue(std::string_view &rest, std::string_view &value) {
    constexpr std::string_view kEnds = ",\r\n";
    rest.remove_prefix(std::min(rest.find_first_not_of(" \r\n"), rest.size()));
    if (rest.empty())
        return false;
    const auto closing = rest.front() == '"' ? rest.find_first_of("\"\r\n", 1) : rest.npos;
    const bool closed = closing != rest.npos && rest[closing] == '"';
    const auto behind =
        closed ? std::min(rest.find_first_not_of(' ', closing + 1), rest.size()) : 0;
    const bool quoted = closed && (behind == rest.size() || kEnds.find(rest[behind]) != rest.npos);
    const auto end = quoted ? behind : std::min(rest.find_first_of(kEnds), rest.size());
    value = quoted ? rest.substr(1, closing - 1) : Trim(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return true;
}

void TakeValue(std::string *table, i16 row, std::string_view value) {
    table[row - 1] = value;
}

void TakeValue(i16 *table, i16 row, std::string_view value) {
    table[row - 1] = ValueI16(value);
}

void TakeValue(BandFrequencies, i16 bandIndex, std::string_view value) {
    using Limits = std::numeric_limits<i32>;
    const i32 frequency =
        RoundToEven(std::clamp<double>(Value(value), Limits::min(), Limits::max()));
    Radios.LastFrequency[0][bandIndex] = Radios.LastFrequency[1][bandIndex] = frequency;
}

void TakeRow(const Section &section, i16 row, std::string_view value) {
    std::visit([&](auto table) { TakeValue(table, row, value); }, section.Values);
}

void Clear(const Section &section) {
    for (i16 row = 1; row <= section.Rows; ++row)
        TakeRow(section, row, "");
    if (section.Count != nullptr)
        *section.Count = 0;
}

// The number of rows to read; below 0 if the file tells of more than the table has.
i16 RowsToRead(const Section &section, std::string_view &rest) {
    if (section.Count == nullptr)
        return section.Rows;
    constexpr i16 kBad = -1;
    std::string_view value;
    if (!NextValue(rest, value))
        return kBad;
    const i16 count = ValueI16(value);
    if (count < 0 || count > section.Rows)
        return kBad;
    *section.Count = count;
    return count;
}

// False if the file is damaged.
bool TakeSection(const Section &section, std::string_view &rest) {
    Clear(section);
    const i16 rows = RowsToRead(section, rest);
    std::string_view value;
    for (i16 row = 1; row <= rows; ++row) {
        if (!NextValue(rest, value))
            return false;
        TakeRow(section, row, value);
    }
    return rows >= 0;
}

// What stands outside the sections is left for notes.
bool TakeFile(std::string_view rest) {
    while (!rest.empty()) {
        const std::string_view header = Trim(NextLine(rest));
        const auto *const section =
            std::find_if(kSections.begin(), kSections.end(),
                         [header](const Section &row) { return row.Header == header; });
        if (section != kSections.end() && !TakeSection(*section, rest))
            return false;
    }
    return true;
}

} // namespace

void ReadStartupData() {
    for (const Section &section : kSections)
        Clear(section);
    std::string text;
    if (ReadDataFile("ZRTLOG126.DAT", text) == 0 && TakeFile(text))
        return;
    ShowMessageBox({"Can't find or read startup file zrtlog126.dat, and can't proceed without it. "
                    "Make sure it is in the same drive/directory used to start program.",
                    "Error Reading Initiation File", BoxButtons::Ok, BoxIcon::Critical});
    EndProgram(1);
}

} // namespace zrt
