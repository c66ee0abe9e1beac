// Any bytes as the start-up data file.
#include "fuzz/expect.h"
#include "platform/dialogs.h"
#include "platform/program.h"
#include "session/reference_data.h"
#include "support/file_in_memory.h"

namespace {

int boxes = 0;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace zrt;
    Program = {};
    boxes = 0;
    Dialogs.Box = [](const MessageBox &) {
        ++boxes;
        return BoxAnswer::Ok;
    };
    PutFileInMemory("ZRTLOG126.DAT", {data, data + size});
    ReadStartupData();
    Expect(Program.Ending == (boxes == 1) && boxes <= 1);
    for (const i16 count : {Reference.SsExtraMultCount, Reference.SsExtraShortFormCount})
        Expect(count >= 0 && count <= kMostSsExtra);
    return 0;
}
