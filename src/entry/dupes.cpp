#include "entry/dupes.h"

#include "entry/callsign.h"
#include "entry/log_form.h"
#include "entry/old_calls.h"
#include "platform/dialogs.h"
#include "session/contests.h"
#include "session/date_text.h"
#include "session/radio_state.h"

#include <algorithm>
#include <iterator>

namespace zrt {

DupeState Dupes;

namespace {

bool CallBelow(const CallAndBand &a, const CallAndBand &b) {
    return a.Call.Whole() < b.Call.Whole();
}

void RecordPortable(std::string_view call, PortableTie tie) {
    if (call.find('/') == std::string_view::npos || Dupes.PortableTable.size() >= kMostPortables)
        return;
    const FixedText<10> full(call);
    for (const PortableRow &row : Dupes.PortableTable)
        if (row.FullCall == full)
            return;
    Dupes.PortableTable.push_back({full, BaseCall(call, tie)});
}

void ForgetEntryOf(const std::string &call, i16 n) {
    const auto row = Dupes.EntriesOfCall.find(call);
    if (row == Dupes.EntriesOfCall.end())
        return;
    std::erase(row->second, n);
    if (row->second.empty())
        Dupes.EntriesOfCall.erase(row);
}

// ---- the check

// The other form of a call: its base, or the first portable call that has it as its base. Empty for
// none. Only the second one says that it is in the log.
std::string OtherForm(const std::string &call, bool &knownAsPortable) {
    knownAsPortable = false;
    if (call.find('/') != std::string::npos)
        return std::string(BaseCall(call, PortableTie::Left));
    for (const PortableRow &row : Dupes.PortableTable) {
        if (row.BaseCall.Trimmed() != call)
            continue;
        knownAsPortable = true;
        return row.FullCall.Trimmed();
    }
    return {};
}

void TakeMatch(i16 n) {
    const OldEntry36 entry = EntryFields(n);
    Dupes.SeenBefore = true;
    Dupes.LastMatch = n;
    const bool onBand = entry.BandIndex == CurrentBand();
    if (onBand)
        Dupes.DupeOnBand = true;
    if (onBand || Contest.ContestId == kSs)
        Dupes.DupeEntry = n;
    if (IsBandCode(entry.BandIndex))
        Dupes.SentByBand[static_cast<std::size_t>(entry.BandIndex)] = entry.SentNumber;
}

// The entries below `end` with this call.
std::vector<i16> EntriesOf(const std::string &call, i16 end) {
    std::vector<i16> entries;
    if (const auto row = Dupes.EntriesOfCall.find(call); row != Dupes.EntriesOfCall.end())
        std::copy_if(row->second.begin(), row->second.end(), std::back_inserter(entries),
                     [end](i16 n) { return n < end; });
    return entries;
}

void Search(const std::string &call, const std::string &other) {
    // A killed last entry is none of the log's any more.
    const i16 end = IsNextCounty(call) ? Entry.CountyLineStart : Log.NextEntry;
    std::vector<i16> entries = EntriesOf(call, end);
    if (!other.empty() && other != call) {
        const std::vector<i16> others = EntriesOf(other, end);
        if (!others.empty())
            Dupes.PortableMatch = true;
        const auto middle = static_cast<std::ptrdiff_t>(entries.size());
        entries.insert(entries.end(), others.begin(), others.end());
        std::inplace_merge(entries.begin(), entries.begin() + middle, entries.end());
    }
    for (const i16 n : entries)
        TakeMatch(n);
}

// Returns the other form of the call.
std::string Check(const std::string &call) {
    std::string other = OtherForm(call, Dupes.PortableMatch);
    Dupes.SentByBand.fill(0);
    Dupes.SeenBefore = Dupes.DupeOnBand = Entry.DupeFlag = Entry.PortableAsked = false;
    Dupes.LastMatch = 0;
    Dupes.Checked = {call, CurrentBand(), Log.NextEntry};
    Search(call, other);
    // SS counts a station once on any band and mode.
    Entry.DupeFlag = Dupes.SeenBefore && (Dupes.DupeOnBand || Contest.ContestId == kSs);
    return other;
}

void AskForPortable(const std::string &call, const std::string &other) {
    Entry.PortableAsked = true; // before the focus that the box gives
    const bool typedAsPortable = call.find('/') != std::string::npos;
    ShowMessageBox({std::string("This station is also in the log ") +
                        (typedAsPortable ? "as a nonportable:  " : "as a portable:  ") +
                        FromLatin1(other),
                    "Portable Station?", BoxButtons::Ok, BoxIcon::Information});
    SetFocus(LogForm.InData[1]);
}

// ---- the DUPE line

enum class DupeNumbers { Mine, HisAndMine };

// By ContestId - 1. Where each contact has a number of its own the received one tells too.
constexpr auto kDupeNumbers = std::to_array<DupeNumbers>({
    DupeNumbers::Mine,       // ARRL DX
    DupeNumbers::HisAndMine, // ZRT
    DupeNumbers::Mine,       // CQ WW
    DupeNumbers::HisAndMine, // Sprint
    DupeNumbers::HisAndMine, // SS
    DupeNumbers::HisAndMine, // WPX
    DupeNumbers::Mine,       // AA
    DupeNumbers::HisAndMine, // PAQP
    DupeNumbers::Mine,       // NAQP
    DupeNumbers::Mine,       // ARRL 10 m
    DupeNumbers::Mine,       // NEQP
    DupeNumbers::Mine,       // Generic
    DupeNumbers::HisAndMine, // CW Open
});
static_assert(kDupeNumbers.size() == kContests);

bool ShowsHisNumber() {
    return Contest.ContestId != kNoContest &&
           kDupeNumbers[static_cast<std::size_t>(Contest.ContestId) - 1] == DupeNumbers::HisAndMine;
}

// The entry that is examined is the working record, of whatever form the log has.
void TakeIntoWorkingRecord(i16 n) {
    switch (RecordLength(Log.CurrentFormat, Contest.ContestId)) {
    case kEntryLength: Log.WorkingEntry = Log.LogEntries[n]; break;
    case kOld36Length: Log.WorkingOld36 = Log.OldEntries36[n]; break;
    default: Log.WorkingOld26 = Log.OldEntries26[n]; break;
    }
}

std::string DupeText(i16 n) {
    const OldEntry36 entry = EntryFields(n);
    std::string text =
        "DUPE - " + EntryDateText(n) + "  " + PadLeft(std::to_string(entry.Time), 4, '0') + "Z  ";
    if (ShowsHisNumber())
        text += "His #" + std::to_string(entry.RcvdNumber) + "  ";
    return text + "My #" + std::to_string(entry.SentNumber);
}

// ---- the call-match lines

constexpr std::size_t kMostMatches = 100;
constexpr std::size_t kMostOldMatches = 7;

struct MatchCaptions {
    const char *Here;
    const char *Elsewhere;
};

MatchCaptions CaptionsOfContest() {
    switch (Contest.ContestId) {
    case kZrt:
    case kPaqp:
    case kNeqp:
    case kGeneric: return {"This bd/md: ", "Other bd/mds: "};
    case kTenMeter: return {"This mode: ", "Other mode: "};
    default: return {"This band: ", "Other bands: "};
    }
}

void ShowLogMatches(const std::string &partial) {
    const auto [captionHere, captionElsewhere] = CaptionsOfContest();
    std::string here = captionHere;
    std::string elsewhere = captionElsewhere;
    const std::size_t first = InsertCall(partial, CurrentBand(), true);
    const std::size_t end = std::min(first + kMostMatches, Dupes.CurrentCalls.size());
    for (std::size_t i = first; i < end; ++i) {
        const CallAndBand &row = Dupes.CurrentCalls[i];
        const std::string call = row.Call.Trimmed();
        if (!call.starts_with(partial))
            break;
        (row.BandIndex == CurrentBand() ? here : elsewhere) += FromLatin1(call) + " ";
    }
    ShowLabel(LogForm.CallMatchLabel1, here);
    ShowLabel(LogForm.CallMatchLabel2, elsewhere);
    LogForm.CallMatchLabel1.ForeColor = Color::Black;
    // In SS a call of another band is a dupe as well.
    LogForm.CallMatchLabel2.ForeColor = Contest.ContestId == kSs ? Color::Red : Color::Black;
}

void ShowOldMatches(const std::string &partial) {
    std::string line = "Old logs: ";
    const std::size_t first = FindOldCall(partial);
    const std::size_t end = std::min(first + kMostOldMatches, OldCalls.Rows.size());
    for (std::size_t i = first; i < end && OldCalls.Rows[i].Call.starts_with(partial); ++i)
        line += FromLatin1(OldCalls.Rows[i].Call) + " ";
    ShowLabel(LogForm.OldCallMatchLabel, line);
}

std::array<Label *, 3> MatchLabels() {
    return {&LogForm.CallMatchLabel1, &LogForm.CallMatchLabel2, &LogForm.OldCallMatchLabel};
}

} // namespace

std::string_view BaseCall(std::string_view call, PortableTie tie) {
    const auto slash = call.find('/');
    if (slash == std::string_view::npos)
        return call;
    const std::string_view left = call.substr(0, slash);
    const std::string_view right = call.substr(slash + 1);
    if (left.size() == right.size())
        return tie == PortableTie::Left ? left : right;
    return left.size() > right.size() ? left : right;
}

std::size_t InsertCall(std::string_view call, i16 bandIndex, bool findOnly) {
    auto &calls = Dupes.CurrentCalls;
    const CallAndBand entry{call, bandIndex};
    const auto [first, end] = std::equal_range(calls.begin(), calls.end(), entry, CallBelow);
    if (findOnly)
        return static_cast<std::size_t>(first - calls.begin());
    auto place = std::find(first, end, entry);
    if (place == end)
        place = calls.insert(end, entry);
    return static_cast<std::size_t>(place - calls.begin());
}

void RecordCall(i16 n, std::string_view call, i16 bandIndex, PortableTie tie) {
    ReplaceCall(n, call);
    InsertCall(call, bandIndex, false);
    RecordPortable(call, tie);
}

void AppendCall(i16 n, std::string_view call, i16 bandIndex, PortableTie tie) {
    ReplaceCall(n, call);
    Dupes.CurrentCalls.push_back({call, bandIndex});
    RecordPortable(call, tie);
}

void SortCurrentCalls() {
    auto &calls = Dupes.CurrentCalls;
    std::stable_sort(calls.begin(), calls.end(), CallBelow);
    std::vector<CallAndBand> kept;
    kept.reserve(calls.size());
    for (const CallAndBand &entry : calls) {
        const auto equals = std::find_if(kept.rbegin(), kept.rend(), [&](const CallAndBand &other) {
            return other == entry || other.Call != entry.Call;
        });
        if (equals == kept.rend() || *equals != entry)
            kept.push_back(entry);
    }
    calls = std::move(kept);
}

void ReplaceCall(i16 n, std::string_view call) {
    const auto row = static_cast<std::size_t>(n);
    ForgetEntryOf(Dupes.CallText[row].Trimmed(), n);
    Dupes.CallHash[row] = TextHash(call);
    Dupes.CallText[row] = call;
    std::vector<i16> &entries = Dupes.EntriesOfCall[Dupes.CallText[row].Trimmed()];
    entries.insert(std::upper_bound(entries.begin(), entries.end(), n), n);
}

void Dupecheck(std::string_view call) {
    HidePriorContacts();
    LogForm.LabelNeededOn.Visible = false;
    const std::string plain = PlainCall(call);
    const std::string other = Check(plain);
    if (!Dupes.SeenBefore)
        return;
    HideCallMatches();
    ShowPriorContacts(Dupes.SentByBand);
    if (Dupes.PortableMatch && !Entry.DupeFlag)
        AskForPortable(plain, other);
}

void FindDupe(std::string_view call) {
    Check(PlainCall(call));
}

bool IsCheckedAlready(std::string_view call) {
    return Dupes.Checked.Call == PlainCall(call) && Dupes.Checked.BandIndex == CurrentBand() &&
           Dupes.Checked.NextEntry == Log.NextEntry;
}

bool IsNextCounty(std::string_view call) {
    return Contest.ContestId == kZrt && Entry.CountyLineFlag &&
           Entry.CountyLineStart < Log.NextEntry && Log.NextEntry > 1 &&
           EntryFields(static_cast<i16>(Log.NextEntry - 1)).Callsign.Trimmed() == PlainCall(call);
}

void DupeLabelShow() {
    const i16 n = Dupes.DupeEntry;
    if (n < 1 || n >= Log.NextEntry)
        return;
    TakeIntoWorkingRecord(n);
    ShowLabel(LogForm.lblDupe, DupeText(n));
    LogForm.lblCallsign.Visible = LogForm.lblExchange.Visible = false;
}

void ShowCallMatches(std::string_view partial) {
    HideCallMatches();
    const std::string text = UpperCase(ToLatin1(Trim(partial)));
    if (text.empty()) {
        for (Label *label : MatchLabels())
            label->Caption.clear();
        return;
    }
    if (OldCalls.ShowCurrentCalls)
        ShowLogMatches(text);
    if (OldCalls.ShowOldCalls)
        ShowOldMatches(text);
}

void HideCallMatches() {
    for (Label *label : MatchLabels())
        label->Visible = false;
}

bool CallMatchesShow() {
    const auto labels = MatchLabels();
    return std::any_of(labels.begin(), labels.end(),
                       [](const Label *label) { return label->Visible; });
}

} // namespace zrt
