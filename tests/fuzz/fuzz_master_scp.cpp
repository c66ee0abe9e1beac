// Any bytes as the file of known calls.
#include "fuzz/expect.h"
#include "platform/dialogs.h"
#include "session/reference_data.h"
#include "session/settings.h"
#include "support/file_in_memory.h"

#include <cstdlib>

namespace {

void ExpectRows() {
    using namespace zrt;
    std::size_t place = 0;
    for (i32 n = 1; n <= Reference.SCPCount; ++n) {
        const std::string_view row = SCPRow(n);
        Expect(row.size() <= 11 && row.find_first_of("\r\n") == row.npos);
        Expect(SCPRowAt(place) == n && SCPRowAt(place + row.size()) == n);
        place += row.size() + 1;
    }
    Expect(place == Reference.SCPTable.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace zrt;
    Dialogs.Box = [](const MessageBox &) -> BoxAnswer { std::abort(); };
    PutFileInMemory("master.scp", {data, data + size});
    for (const i32 limit : {0, 3}) {
        Extensions.ScpLimit = limit;
        ReadMasterScp();
        Expect(Reference.SCPLoaded && (limit == 0 || Reference.SCPCount <= limit));
        ExpectRows();
    }
    return 0;
}
