// Any bytes as a file of earlier calls and as a log that calls are taken from; what was taken,
// written and read again is the same list.
#include "app/instamatch.h"
#include "entry/old_calls.h"
#include "fuzz/expect.h"
#include "fuzz/memory_files.h"
#include "platform/dialogs.h"

#include <algorithm>

namespace {

bool Below(const zrt::OldCallRow &a, const zrt::OldCallRow &b) {
    return a.Call < b.Call;
}

bool Same(const zrt::OldCallRow &a, const zrt::OldCallRow &b) {
    return a.Call == b.Call && a.Exchange == b.Exchange;
}

void TakeAndWrite(const char *path) {
    using namespace zrt;
    OldCalls = {};
    TakeOldCallsFile(path);
    const std::vector<OldCallRow> taken = OldCalls.Rows;
    Expect(taken.size() <= kFullOldCalls + 1);
    Expect(std::adjacent_find(taken.begin(), taken.end(), [](const auto &a, const auto &b) {
               return !Below(a, b);
           }) == taken.end());
    Expect(WriteOldCallsFile("/calls/written.zr2"));
    OldCalls = {};
    Expect(TakeOldCallsFile("/calls/written.zr2"));
    Expect(
        std::equal(taken.begin(), taken.end(), OldCalls.Rows.begin(), OldCalls.Rows.end(), Same));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    zrt::Dialogs.Box = [](const zrt::MessageBox &) { return zrt::BoxAnswer::Ok; };
    zrt::InstallMemoryFiles();
    for (const char *path : {"/calls/any.zr2", "/calls/any.ZRT"}) {
        zrt::PutMemoryFile(path, data, size);
        TakeAndWrite(path);
    }
    return 0;
}
