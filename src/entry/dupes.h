// The calls of the log, and the duplicate check that asks them: is this call a dupe, and where else
// was it worked. LogQso and the re-scan fill the lists; the keys and the entry fields ask.
#pragma once

#include "entry/prior_contacts.h"
#include "session/log_file.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zrt {

inline constexpr std::size_t kMostPortables = 80;

struct CallAndBand {
    FixedText<10> Call;
    i16 BandIndex = 0;
    friend bool operator==(const CallAndBand &, const CallAndBand &) = default;
};

struct PortableRow {
    FixedText<10> FullCall;
    FixedText<10> BaseCall;
};

struct DupeState {
    // By entry number; the row 0 stays unused.
    std::vector<i16> CallHash = std::vector<i16>(kMostEntries + 1); // see TextHash
    std::vector<FixedText<10>> CallText = std::vector<FixedText<10>>(kMostEntries + 1);
    // The entries of each CallText, ascending; entries that were killed may still be among them.
    std::unordered_map<std::string, std::vector<i16>> EntriesOfCall;
    std::vector<CallAndBand> CurrentCalls; // sorted by call
    std::vector<PortableRow> PortableTable;

    // What the last check found; Entry.DupeFlag is its verdict.
    bool SeenBefore = false;    // on any band
    bool DupeOnBand = false;    // on the band and mode that is being logged
    bool PortableMatch = false; // in its other form: with the "/", or without
    i16 LastMatch = 0;          // the last entry found
    i16 DupeEntry = 0;          // the entry that DupeLabelShow shows
    SentNumbers SentByBand{};
    struct { // what the check was of; another call, band or entry needs another check
        std::string Call;
        i16 BandIndex = 0, NextEntry = 0;
    } Checked;
};
extern DupeState Dupes;

// The side of the first "/" that counts when both are equally long. Live logging takes the left
// one, the re-scan of a log the right one; both have always done so.
enum class PortableTie { Left, Right };

// The longer side of the first "/"; the right side is everything behind it.
std::string_view BaseCall(std::string_view call, PortableTie tie);

// The place of a call in CurrentCalls. Equal calls on other bands stand behind their equals; the
// identical text is not inserted again. With findOnly nothing is inserted and the place is that of
// the first call that is not below.
std::size_t InsertCall(std::string_view call, i16 bandIndex, bool findOnly);

// Takes the trimmed call of entry n into all lists.
void RecordCall(i16 n, std::string_view call, i16 bandIndex, PortableTie tie);
// The same for a log that is read, entry by entry: CurrentCalls is in order again after
// SortCurrentCalls.
void AppendCall(i16 n, std::string_view call, i16 bandIndex, PortableTie tie);
void SortCurrentCalls();
// Entry n has another call now. The sorted calls and the portable forms stay until a re-scan.
void ReplaceCall(i16 n, std::string_view call);

// Looks the call up, as it stands in the field, in the log and shows the prior contacts; sets the
// state above and Entry.DupeFlag. A station that is known in its other form only brings a box and
// moves the focus to the exchange field; may pump.
void Dupecheck(std::string_view call);
// The same without a word: nothing is shown, hidden or focused.
void FindDupe(std::string_view call);
// Whether the last check was of this call, on this band and for this entry.
bool IsCheckedAlready(std::string_view call);
// Whether this call has given a county of its line and another one is yet to come. Those that are
// in the log already make no dupe of the others.
bool IsNextCounty(std::string_view call);
// Shows DupeEntry in the DUPE line, in place of the captions; it is in the working record then.
void DupeLabelShow();
// The calls that begin as typed, below the fields. An empty text clears the lines.
void ShowCallMatches(std::string_view partial);
void HideCallMatches();
bool CallMatchesShow();

} // namespace zrt
