#include "app/rescan.h"

#include "entry/dupes.h"
#include "entry/statistics.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/log_file.h"

namespace zrt {

RescanHooks Replay;

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

void CountEntry(const OldEntry36 &entry) {
    if (Contest.ContestId == kCwOpen)
        Replay.RecordCwOpenCall(entry);
    const bool newMultiplier = Replay.ReplayMultiplier(entry);
    CountContact(entry, newMultiplier);
}

} // namespace

void RescanLog() {
    OldEntry36 before;
    for (i16 n = 1; n < Log.NextEntry; ++n) {
        RepairBandOf(n);
        const OldEntry36 entry = EntryFields(n);
        RecordCall(n, entry.Callsign.Trimmed(), entry.BandIndex, PortableTie::Right);
        if (!IsVoid(entry))
            CountEntry(entry);
        StampContact(n, entry, before, StampRule::Rescan);
        before = entry;
    }
}

} // namespace zrt
