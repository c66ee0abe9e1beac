// Any bytes as the file of calls with recordings. The rows must be those of the plain loop.
#include "fuzz/expect.h"
#include "session/reference_data.h"
#include "support/file_in_memory.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace {

// The lines without blanks around them. A line ends with CR, LF or both.
std::vector<std::string> PlainRows(const std::string &text) {
    std::string lineFeeds;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\n' || i == 0 || text[i - 1] != '\r')
            lineFeeds += text[i] == '\r' ? '\n' : text[i];
    std::vector<std::string> rows;
    std::istringstream lines(lineFeeds);
    for (std::string line; std::getline(lines, line);) {
        const auto first = line.find_first_not_of(' ');
        const auto last = line.find_last_not_of(' ');
        rows.push_back(first == line.npos ? "" : line.substr(first, last - first + 1));
    }
    return rows;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace zrt;
    const std::string text(data, data + size);
    PutFileInMemory("callmtch.dat", text);
    ReadCallMatch();
    const std::vector<std::string> rows = PlainRows(text);
    Expect(std::cmp_equal(Reference.CallMatchCount, std::min<std::size_t>(rows.size(), 400)));
    for (std::size_t i = 0; i < kCallMatchRows; ++i) {
        const bool told = i < rows.size() && i + 1 < kCallMatchRows;
        Expect(Reference.CallMatchTable[i] == (told ? rows[i] : ""));
    }
    return 0;
}
