#include "entry/points.h"

#include "entry/log_form.h"
#include "session/bands.h"
#include "session/contests.h"

namespace zrt {

char (*PointsByCountry)(const OldEntry36 &entry) = [](const OldEntry36 &) { return '0'; };

namespace {

// ZRT, NEQP and ARRL 10 m take the codes below 9 for CW, so CW on 12, 17 and 30 m (21 to 23)
// scores as SSB there. It has always done so.
bool LowCode(i16 bandIndex) {
    return bandIndex < 9;
}

char PaqpPoints(i16 bandIndex) {
    switch (bandIndex) {
    case 1:
    case 2:
    case 3:
    case 4:
    case 7:
    case 8: return '3'; // 1.5
    case 5:
    case 6: return '2';
    default: return '1';
    }
}

// Novices and technicians, who sign /N and /T, count double on CW.
char TenMeterPoints(const OldEntry36 &entry) {
    if (!LowCode(entry.BandIndex))
        return '2';
    const std::string call = entry.Callsign.Trimmed();
    return call.ends_with("/T") || call.ends_with("/N") ? '8' : '4';
}

char ZrtPoints(i16 bandIndex) {
    if (Entry.CountyLineFlag)
        return '0';
    return LowCode(bandIndex) ? '3' : '2';
}

} // namespace

char PointsFor(const OldEntry36 &entry) {
    switch (Contest.ContestId) {
    case kArrlDx: return '3';
    case kZrt: return ZrtPoints(entry.BandIndex);
    case kSprint:
    case kNaqp:
    case kCwOpen: return '1';
    case kSs: return '2';
    case kPaqp: return PaqpPoints(entry.BandIndex);
    case kTenMeter: return TenMeterPoints(entry);
    case kNeqp: return LowCode(entry.BandIndex) ? '2' : '1';
    case kGeneric: return IsPhone(entry.BandIndex) ? '1' : '2';
    default: return PointsByCountry(entry); // CQ WW, WPX and AA
    }
}

i32 NumericPoints(char points) {
    const i32 value = points >= '0' && points <= '9' ? points - '0' : 0;
    if (Contest.ContestId != kPaqp)
        return value;
    return value == 3 ? 15 : value * 10;
}

} // namespace zrt
