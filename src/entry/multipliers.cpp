#include "entry/multipliers.h"

#include "entry/callsign.h"
#include "entry/log_form.h"
#include "session/contests.h"

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
    for (i16 row = 1; row <= static_cast<i16>(Multipliers.SsMults.size()); ++row)
        Multipliers.SsRows.emplace(SsShortForm(row), row); // the first of two alike
}

// ---- the keys of a contact

// What the tables know a contact by: read from the fields when it is logged, from the record when a
// log is read.
struct MultKeys {
    i16 Band = 0;    // BandIndex
    i16 Row = 0;     // in the contest's table
    i16 Country = 0; // of CountryTable
    i16 Zone = 0;
    std::string Text; // WPX and AA: the prefix; CW Open: the call
};

MultTable *TableOfContest() {
    switch (Contest.ContestId) {
    case kArrlDx: return &Multipliers.ArrlMults;
    case kZrt: return &Multipliers.ZrtMults;
    case kSprint: return &Multipliers.SprintMults;
    case kSs: return &Multipliers.SsMults;
    case kPaqp: return &Multipliers.PaqpMults;
    case kNaqp: return &Multipliers.NaqpMults;
    case kTenMeter: return &Multipliers.TenMults;
    case kNeqp: return &Multipliers.NeqpMults;
    default: return nullptr;
    }
}

int SpellingsOfContest() {
    return Contest.ContestId == kNeqp ? 2 : 3; // the third one of NEQP is for display
}

// The stations that give their state instead of a number in ARRL 10 m.
bool GivesState(i16 country) {
    return country != 0 &&
           (country == Reference.CountryRowUsa || country == Reference.CountryRowCanada ||
            country == Reference.CountryRowAlaska || country == Reference.CountryRowHawaii);
}

// In ARRL DX a station in the USA or Canada works the others.
bool IsRefused(i16 country) {
    return country != 0 &&
           (country == Reference.CountryRowUsa || country == Reference.CountryRowCanada);
}

// ---- marking

NewMults MarkRow(i16 row, i16 flag, NewMults worth = {1, 1}) {
    MultTable &table = *TableOfContest();
    if (row < 1 || row > static_cast<i16>(table.size()))
        return {};
    bool &worked = table[static_cast<std::size_t>(row) - 1].Worked[static_cast<std::size_t>(flag)];
    if (worked)
        return {};
    worked = true;
    Entry.NewMultFlag = true;
    Entry.NewMultRow = row;
    return worth;
}

// Where a multiplier counts once a band, the bands of the table are 1 to 14.
NewMults MarkRowOnBand(const MultKeys &keys) {
    const bool inTable = keys.Band >= 1 && keys.Band <= 14;
    return inTable ? MarkRow(keys.Row, keys.Band) : NewMults{};
}

// True for the first contact of the row on the band. A damaged record counts nowhere.
bool CountOnBand(std::vector<CountsByBand> &table, i16 row, i16 band) {
    if (row < 1 || row >= static_cast<i16>(table.size()) || !IsBandCode(band))
        return false;
    i16 &contacts = table[static_cast<std::size_t>(row)][static_cast<std::size_t>(band)];
    return ++contacts == 1;
}

NewMults MarkCountry(const MultKeys &keys) {
    return CountOnBand(Multipliers.CountryWorked, keys.Country, keys.Band) ? NewMults{1, 1}
                                                                           : NewMults{};
}

NewMults MarkArrlDx(const MultKeys &keys) {
    if (!Contest.StationUSVE)
        return MarkRowOnBand(keys);
    const NewMults found = IsRefused(keys.Country) ? NewMults{} : MarkCountry(keys);
    Entry.NewMultFlag = Entry.NewMultFlag || found.Total > 0;
    return found;
}

NewMults MarkCqWw(const MultKeys &keys) {
    NewMults found;
    if (CountOnBand(Multipliers.CountryWorked, keys.Country, keys.Band)) {
        ++Multipliers.CountriesPerBand[static_cast<std::size_t>(keys.Band)];
        ++found.Total;
    }
    if (CountOnBand(Multipliers.ZoneWorked, keys.Zone, keys.Band)) {
        ++Multipliers.ZonesPerBand[static_cast<std::size_t>(keys.Band)];
        ++found.Total;
    }
    found.OnBand = found.Total;
    return found;
}

NewMults MarkWpx(const MultKeys &keys) {
    if (!InsertPrefix(keys.Text, false).IsNew)
        return {};
    Entry.NewMultFlag = true;
    return {1, 1};
}

// A full column takes no further prefix, which therefore counts each time.
NewMults MarkAa(const MultKeys &keys) {
    if (!IsBandCode(keys.Band) || !AaPrefixIsNew(keys.Text, keys.Band))
        return {};
    auto &column = Multipliers.AaPrefixes[static_cast<std::size_t>(keys.Band)];
    if (column.size() < kMostAaPrefixes)
        column.push_back(keys.Text);
    Entry.NewMultFlag = true;
    return {1, 1};
}

// States count once in each mode, countries on each band. Only 10 m CW is CW.
NewMults MarkTenMeter(const MultKeys &keys) {
    if (!GivesState(keys.Country))
        return MarkCountry(keys);
    const i16 flag = keys.Band == 1 ? kCwFlag : kSsbFlag;
    const NewMults found = MarkRow(keys.Row, flag, {1, 0});
    (flag == kCwFlag ? Multipliers.TenCwMults : Multipliers.TenSsbMults) += found.Total;
    return found;
}

NewMults MarkGeneric(const MultKeys &keys) {
    if (CountOnBand(Multipliers.CountryWorked, keys.Country, keys.Band))
        ++Multipliers.CountriesPerBand[static_cast<std::size_t>(keys.Band)];
    if (keys.Country > 0 && keys.Country <= kMostCountries)
        ++(IsCw(keys.Band) ? Multipliers.GenericCwCountry
                           : Multipliers.GenericSsbCountry)[static_cast<std::size_t>(keys.Country)];
    return {}; // counted, but no multiplier
}

NewMults MarkCwOpen(const MultKeys &keys) {
    auto &calls = Multipliers.CwoCalls;
    const FixedText<10> call(keys.Text);
    if (calls.size() >= kMostCwoCalls || std::find(calls.begin(), calls.end(), call) != calls.end())
        return {};
    calls.push_back(call);
    return {1, 0};
}

// The one core: a contact counts in one way only, live and when its log is read.
NewMults Mark(const MultKeys &keys) {
    switch (Contest.ContestId) {
    case kArrlDx: return MarkArrlDx(keys);
    case kZrt:
    case kPaqp:
    case kNeqp:
    case kSs: return MarkRow(keys.Row, 0);
    case kSprint: return keys.Row == kSprintHomelessRow ? NewMults{} : MarkRow(keys.Row, 0);
    case kCqWw: return MarkCqWw(keys);
    case kWpx: return MarkWpx(keys);
    case kAa: return MarkAa(keys);
    case kNaqp: return MarkRowOnBand(keys);
    case kTenMeter: return MarkTenMeter(keys);
    case kGeneric: return MarkGeneric(keys);
    case kCwOpen: return MarkCwOpen(keys);
    default: return {};
    }
}

// ---- the keys of a contact that is being logged, and its RcvdExchange

// The number of the row where the table has the text, the text itself where it has not.
void TakeTableRow(LogEntry &entry, const ParsedExchange &parsed, MultKeys &keys) {
    keys.Row = FindMult(*TableOfContest(), parsed.Mult, SpellingsOfContest());
    entry.RcvdExchange = keys.Row != 0 ? std::to_string(keys.Row) : ToLatin1(parsed.Mult);
}

void TakeArrlDx(LogEntry &entry, const ParsedExchange &parsed, MultKeys &keys) {
    if (!Contest.StationUSVE) {
        keys.Row = FindMult(Multipliers.ArrlMults, parsed.Mult);
        entry.RcvdExchange = parsed.Mult;
        return;
    }
    keys.Country = CountryLookup(entry.Callsign.Trimmed());
    entry.RcvdExchange = DisplayPrefix(keys.Country);
    if (IsRefused(keys.Country))
        entry.Points = "0";
}

// A county counts for the home state; it is looked for before the states.
void TakeZrt(LogEntry &entry, const ParsedExchange &parsed, MultKeys &keys) {
    const i16 county =
        Contest.StationInState ? FindMult(Multipliers.ZrtCounties, parsed.Mult) : i16{0};
    if (county == 0) {
        TakeTableRow(entry, parsed, keys);
        return;
    }
    keys.Row = kCountyRow;
    entry.RcvdExchange = Multipliers.ZrtCounties[static_cast<std::size_t>(county) - 1].Spellings[0];
    Entry.CountyContact = true;
}

void TakeSs(LogEntry &entry, const ParsedExchange &parsed, MultKeys &keys) {
    keys.Row = FindMult(Multipliers.SsMults, parsed.Mult);
    entry.RcvdExchange = parsed.Prec + parsed.Check + SsShortForm(keys.Row);
}

void TakeTenMeter(LogEntry &entry, const ParsedExchange &parsed, MultKeys &keys) {
    keys.Country = CountryLookup(entry.Callsign.Trimmed());
    if (!GivesState(keys.Country)) {
        entry.RcvdExchange = MainPrefix(keys.Country);
        return;
    }
    keys.Row = FindMult(Multipliers.TenMults, parsed.Mult);
    entry.RcvdExchange = parsed.Mult;
}

void TakeCountry(LogEntry &entry, MultKeys &keys) {
    keys.Country = CountryLookup(entry.Callsign.Trimmed());
    keys.Zone = entry.RcvdNumber;
    entry.RcvdExchange = MainPrefix(keys.Country);
}

// The prefix counts as it is stored, cut to 5 characters, or a log would count anew when it is
// read.
void TakePrefix(LogEntry &entry, MultKeys &keys) {
    entry.RcvdExchange = WpxPrefix(entry.Callsign.Trimmed());
    keys.Text = entry.RcvdExchange.Trimmed();
}

MultKeys KeysOfFields(LogEntry &entry, const ParsedExchange &parsed) {
    MultKeys keys;
    keys.Band = entry.BandIndex;
    switch (Contest.ContestId) {
    case kArrlDx: TakeArrlDx(entry, parsed, keys); break;
    case kZrt: TakeZrt(entry, parsed, keys); break;
    case kPaqp:
    case kNeqp:
    case kSprint:
    case kNaqp: TakeTableRow(entry, parsed, keys); break;
    case kSs: TakeSs(entry, parsed, keys); break;
    case kCqWw: TakeCountry(entry, keys); break;
    case kWpx:
    case kAa: TakePrefix(entry, keys); break;
    case kTenMeter: TakeTenMeter(entry, parsed, keys); break;
    case kGeneric: keys.Country = CountryLookup(entry.Callsign.Trimmed()); break;
    case kCwOpen: keys.Text = entry.Callsign.Trimmed(); break;
    default: break;
    }
    return keys;
}

// ---- the keys of a stored contact

// The row that a stored text of digits names, 0 for none.
i16 NumberedRow(const MultTable &table, std::string_view text) {
    const bool number = !text.empty() && std::all_of(text.begin(), text.end(),
                                                     [](char c) { return c >= '0' && c <= '9'; });
    const i16 row = number ? ValueI16(text) : i16{0};
    return row <= static_cast<i16>(table.size()) ? row : i16{0};
}

// A number is a row; any other text is looked for as a spelling.
i16 RowOfStoredText(const MultTable &table, const std::string &text, int spellings = 3) {
    const i16 row = NumberedRow(table, text);
    return row != 0 ? row : FindMult(table, text, spellings);
}

i16 RowOfStoredZrt(const std::string &text) {
    if (Contest.StationInState && FindMult(Multipliers.ZrtCounties, text) != 0)
        return kCountyRow;
    return RowOfStoredText(Multipliers.ZrtMults, text);
}

std::string StoredPrefix(const OldEntry36 &entry) {
    const std::string stored = entry.RcvdExchange.Trimmed();
    return stored.empty() ? FixedText<5>(WpxPrefix(entry.Callsign.Trimmed())).Trimmed() : stored;
}

MultKeys KeysOfRecord(const OldEntry36 &entry) {
    MultKeys keys;
    keys.Band = entry.BandIndex;
    const std::string call = entry.Callsign.Trimmed();
    const std::string exchange = entry.RcvdExchange.Trimmed();
    switch (Contest.ContestId) {
    case kArrlDx:
        if (Contest.StationUSVE)
            keys.Country = CountryLookup(call);
        else
            keys.Row = FindMult(Multipliers.ArrlMults, exchange);
        break;
    case kZrt: keys.Row = RowOfStoredZrt(exchange); break;
    case kPaqp:
    case kNeqp:
    case kSprint:
    case kNaqp:
        keys.Row = RowOfStoredText(*TableOfContest(), exchange, SpellingsOfContest());
        break;
    case kSs: keys.Row = SsSectionRow(entry.RcvdExchange.Whole().substr(3)); break;
    case kCqWw:
        keys.Country = CountryLookup(call);
        keys.Zone = entry.RcvdNumber;
        break;
    case kWpx:
    case kAa: keys.Text = StoredPrefix(entry); break;
    case kTenMeter:
        keys.Country = CountryLookup(call);
        keys.Row = GivesState(keys.Country) ? FindMult(Multipliers.TenMults, exchange) : i16{0};
        break;
    case kGeneric: keys.Country = CountryLookup(call); break;
    case kCwOpen: keys.Text = call; break;
    default: break;
    }
    return keys;
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

i16 FindMult(const MultTable &table, std::string_view text, int spellings) {
    if (text.empty())
        return 0;
    for (std::size_t row = 0; row < table.size(); ++row) {
        for (int i = 0; i < spellings; ++i) {
            const std::string &spelling = table[row].Spellings[static_cast<std::size_t>(i)];
            // Most rows part at the first letter: a log that is read asks for thousands.
            if (spelling.size() == text.size() && spelling[0] == text[0] && spelling == text)
                return static_cast<i16>(row + 1);
        }
    }
    return 0;
}

std::string MultText(std::string_view stored) {
    const MultTable *table = TableOfContest();
    const i16 row = table == nullptr ? i16{0} : NumberedRow(*table, stored);
    const bool typed = Contest.ContestId == kSprint && row == kSprintHomelessRow;
    return row == 0 || typed ? std::string(stored)
                             : (*table)[static_cast<std::size_t>(row) - 1].Spellings[0];
}

const std::string &SsShortForm(i16 row) {
    static const std::string none;
    if (row < 1)
        return none;
    const std::size_t place = static_cast<std::size_t>(row) - 1;
    if (place < Reference.SsShortForms.size())
        return Reference.SsShortForms[place];
    const std::size_t extra = place - Reference.SsShortForms.size();
    if (extra >= Reference.SsExtraShortForms.size())
        return none;
    return Reference.SsExtraShortForms[extra];
}

i16 SsSectionRow(std::string_view shortForm) {
    const std::string_view section = Trim(shortForm);
    const auto found = Multipliers.SsRows.find(section);
    return section.empty() || found == Multipliers.SsRows.end() ? i16{0} : found->second;
}

NewMults ApplyMultiplier(LogEntry &entry, const ParsedExchange &parsed) {
    return Mark(KeysOfFields(entry, parsed));
}

NewMults ReplayMultiplier(const OldEntry36 &entry) {
    return Mark(KeysOfRecord(entry));
}

NewMults ReplayCountry(i16 country, i16 bandIndex) {
    MultKeys keys;
    keys.Band = bandIndex;
    keys.Country = country;
    return Mark(keys);
}

PrefixPlace InsertPrefix(std::string_view prefix, bool testOnly) {
    auto &prefixes = Multipliers.WpxPrefixes;
    const std::string stored(prefix.substr(0, 5));
    const auto place = std::lower_bound(prefixes.begin(), prefixes.end(), stored);
    const auto position = static_cast<std::size_t>(place - prefixes.begin());
    const bool isNew = place == prefixes.end() || *place != stored;
    if (isNew && !testOnly)
        prefixes.insert(place, stored);
    return {position, isNew};
}

bool AaPrefixIsNew(std::string_view prefix, i16 bandIndex) {
    if (!IsBandCode(bandIndex))
        return false;
    const auto &column = Multipliers.AaPrefixes[static_cast<std::size_t>(bandIndex)];
    return std::find(column.begin(), column.end(), prefix.substr(0, 5)) == column.end();
}

i16 CountriesWorked(const std::vector<i16> &contacts) {
    return static_cast<i16>(
        std::count_if(contacts.begin(), contacts.end(), [](i16 n) { return n > 0; }));
}

} // namespace zrt
