#include "app/rescan.h"

#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/multipliers.h"
#include "entry/points.h"
#include "entry/statistics.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/log_file.h"

namespace zrt {

namespace {

void RepairBand(i16 &bandIndex) {
    if (!IsBandCode(bandIndex))
        bandIndex = kBandOfBadCode;
}

void RepairBandOf(i16 n) {
    switch (RecordLength(Log.CurrentFormat, Contest.ContestId)) {
    case kEntryLength: RepairBand(Log.LogEntries[n].BandIndex); break;
    case kOld26Length: RepairBand(Log.OldEntries26[n].BandIndex); break;
    default: break;
    }
}

// PointsFor counts the contacts of the own continent in WPX; it did so for all but the dupes, which
// have no points. The points themselves stay as they are stored.
void CountOwnContinent(const OldEntry36 &entry) {
    if (Contest.ContestId == kWpx && NumericPoints(entry.Points.Whole().front()) > 0)
        (void)PointsFor(entry);
}

void CountEntry(const OldEntry36 &entry) {
    CountOwnContinent(entry);
    CountContact(entry, ReplayMultiplier(entry));
}

} // namespace

void RescanLog() {
    OldEntry36 before;
    for (i16 n = 1; n < Log.NextEntry; ++n) {
        RepairBandOf(n);
        const OldEntry36 entry = EntryFields(n);
        AppendCall(n, entry.Callsign.Trimmed(), entry.BandIndex, PortableTie::Right);
        if (!IsVoid(entry))
            CountEntry(entry);
        StampContact(n, entry, before, StampRule::Rescan);
        before = entry;
    }
    SortCurrentCalls();
    Entry.NewMultFlag = false; // of the last entry that was read
}

} // namespace zrt
