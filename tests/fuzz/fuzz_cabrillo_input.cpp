// Any bytes as a file that may be a Cabrillo log. What is recognised must be what a plain look at
// its first 20 lines finds.
#include "fuzz/expect.h"
#include "postcontest/cabrillo_input.h"

#include <array>
#include <cctype>
#include <cstdint>
#include <sstream>
#include <string>

namespace {

using namespace zrt;

struct PlainHead {
    bool IsCabrillo = false;
    i16 ContestId = kNoContest;
    std::string Mode;
};

PlainHead LookAt(const std::string &text) {
    const std::array<std::pair<const char *, i16>, 3> sponsors = {
        {{"CQ-WW", kCqWw}, {"CQ-WPX", kWpx}, {"ARRL-DX", kArrlDx}}};
    PlainHead head;
    std::istringstream lines(text);
    std::string line;
    for (int i = 0; i < 20 && std::getline(lines, line); ++i) {
        for (char &c : line)
            c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        if (line.find("START-OF-LOG") != line.npos)
            head.IsCabrillo = true;
        for (const auto &[name, contest] : sponsors) {
            const auto place = line.find(name);
            if (place == line.npos)
                continue;
            const std::string behind = line.substr(place + std::string(name).size()) + "  ";
            if (behind[1] == 'C' || behind[1] == 'S')
                head.Mode = behind[1] == 'C' ? "CW" : "SSB";
            else if (head.ContestId != contest)
                head.Mode.clear();
            head.ContestId = contest;
            break;
        }
        if (line.find("END-OF-LOG") != line.npos)
            break;
    }
    return head;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string text(data, data + size);
    const CabrilloHead head = RecogniseCabrillo(text);
    const PlainHead plain = LookAt(text);
    Expect(head.IsCabrillo == plain.IsCabrillo && head.ContestId == plain.ContestId &&
           head.Mode == plain.Mode);
    return 0;
}
