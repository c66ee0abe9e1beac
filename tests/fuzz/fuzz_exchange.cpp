// Any two texts in the entry fields of any contest: the first byte chooses the contest, the first
// line is the call, the rest the exchange.
#include "support/exchange_promises.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace zrt;
    static const bool started = [] {
        RegisterLogForm();
        FillExchangeLists();
        return true;
    }();
    (void)started;
    if (size == 0)
        return 0;
    OpenExchanges(static_cast<i16>(data[0] % (kContests + 1)), data[0] >= 128);
    const std::string text(data + 1, data + size);
    const auto line = text.find('\n');
    const std::string call = line == std::string::npos ? "K1ZZ" : text.substr(0, line);
    Parsers = {7, ""};
    const std::string broken =
        BrokenPromise(RunParser(call, line == std::string::npos ? text : text.substr(line + 1)));
    if (broken.empty())
        return 0;
    std::fprintf(stderr, "broken: %s\n", broken.c_str());
    std::abort();
}
