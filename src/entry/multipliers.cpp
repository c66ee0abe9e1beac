#include "entry/multipliers.h"

#include "session/contests.h"
#include "session/reference_data.h"

#include <algorithm>
#include <span>

namespace zrt {

MultiplierState Multipliers;

namespace {

constexpr std::size_t kZrtRows = 58;
constexpr std::size_t kSsFirst = 2 * kZrtRows; // of the common list, which SS ends

using Texts = std::span<const std::string>;

// Up to three forms with "/" between; one at the end may be left out.
MultRow SplitRow(std::string_view text) {
    MultRow row;
    for (std::string &spelling : row.Spellings) {
        const auto slash = text.find('/');
        spelling = Trim(text.substr(0, slash));
        if (slash == std::string_view::npos)
            break;
        text.remove_prefix(slash + 1);
    }
    return row;
}

MultRow WholeRow(std::string_view text) {
    MultRow row;
    row.Spellings[0] = text;
    return row;
}

// Two spellings to match, and the row as the list has it for the display.
MultRow NeqpRow(std::string_view text) {
    MultRow row = SplitRow(text);
    if (text.find('/') == std::string_view::npos)
        row.Spellings[1] = text;
    row.Spellings[2] = text;
    return row;
}

MultTable TableOf(Texts texts, MultRow (*rowOf)(std::string_view)) {
    MultTable table;
    for (const std::string &text : texts)
        table.push_back(rowOf(text));
    return table;
}

void FillZrt() {
    const Texts list = Reference.CommonList;
    const MultTable counties = TableOf(list.subspan(kZrtRows, kZrtRows), SplitRow);
    if (Contest.StationInState) {
        Multipliers.ZrtMults = TableOf(list.first(kZrtRows), SplitRow);
        Multipliers.ZrtCounties = counties;
    } else {
        Multipliers.ZrtMults = counties;
    }
}

// Sections that were added since stand behind the 83; each has its short form.
void FillSs() {
    Multipliers.SsMults = TableOf(Texts(Reference.CommonList).subspan(kSsFirst), SplitRow);
    const auto extra = static_cast<std::size_t>(
        std::min(Reference.SsExtraMultCount, Reference.SsExtraShortFormCount));
    for (const std::string &text : Texts(Reference.SsExtraMults).first(extra))
        Multipliers.SsMults.push_back(SplitRow(text));
}

} // namespace

void FillMultiplierTables() {
    Multipliers = {};
    switch (Contest.ContestId) {
    case kZrt: FillZrt(); break;
    case kPaqp: Multipliers.PaqpMults = TableOf(Reference.PaqpMults, SplitRow); break;
    case kNeqp: Multipliers.NeqpMults = TableOf(Reference.NeqpMults, NeqpRow); break;
    case kSprint: Multipliers.SprintMults = TableOf(Reference.SprintMults, WholeRow); break;
    case kSs: FillSs(); break;
    case kArrlDx: Multipliers.ArrlMults = TableOf(Reference.ArrlMults, WholeRow); break;
    case kNaqp: Multipliers.NaqpMults = TableOf(Reference.NaqpMults, WholeRow); break;
    case kTenMeter: Multipliers.TenMults = TableOf(Reference.TenMults, WholeRow); break;
    default: break; // countries, zones, prefixes and calls have no list
    }
}

} // namespace zrt
