// Any bytes as the country file; its last line is then looked up as a call. The answers must be
// those of the plain loop.
#include "entry/callsign.h"
#include "fuzz/expect.h"
#include "platform/dialogs.h"
#include "session/contests.h"
#include "session/reference_data.h"
#include "support/file_in_memory.h"
#include "support/plain_countries.h"

namespace {

int boxes = 0;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace zrt;
    const std::string text(data, data + size);
    boxes = 0;
    Dialogs.Box = [](const MessageBox &) {
        ++boxes;
        return BoxAnswer::Ok;
    };
    PutFileInMemory("cty.dat", text);
    ReadCountries();
    const PlainCountries plain(text);
    if (boxes == 0) {
        Expect(Reference.CountryCount == static_cast<int>(plain.Countries.size()));
        Expect(Reference.PrefixCount == static_cast<int>(plain.Entries.size()));
    }
    const std::string call = text.substr(text.find_last_of("\r\n") + 1).substr(0, 40);
    for (const i16 contest : {kCqWw, kArrlDx}) {
        Contest.ContestId = contest;
        const i16 row = CountryLookup(call);
        Expect(row >= 0 && row <= Reference.CountryCount);
        const i16 heading = HeadingTo(row);
        Expect(heading >= 0 && heading <= 360);
        if (boxes == 0)
            Expect(plain.Lookup(call, contest == kArrlDx) ==
                   PlainCountries::Answer{row, CallAnalysis.LastZone});
    }
    (void)ClassifyNorthAmerica(WpxPrefix(call));
    const i16 zone = DefaultZone(call);
    Expect(zone >= 0 && zone <= 5);
    return 0;
}
