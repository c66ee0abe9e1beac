#include "postcontest/cabrillo_input.h"

#include <algorithm>
#include <array>
#include <string>

namespace zrt {

namespace {

constexpr int kHeadLines = 20;

struct SponsorName {
    std::string_view Text; // in the CONTEST line
    i16 ContestId;
    const char *Name;
};
constexpr std::array<SponsorName, 3> kSponsorNames = {
    {{"CQ-WW", kCqWw, "CQWW"}, {"CQ-WPX", kWpx, "WPX"}, {"ARRL-DX", kArrlDx, "ARRL DX"}}};

// The letter behind the contest's name and its hyphen.
const char *ModeWord(std::string_view behind) {
    const char letter = behind.size() > 1 ? behind[1] : ' ';
    return letter == 'C' ? "CW" : letter == 'S' ? "SSB" : "";
}

void TakeContestName(std::string_view line, CabrilloHead &head) {
    for (const SponsorName &row : kSponsorNames) {
        const auto place = line.find(row.Text);
        if (place == std::string_view::npos)
            continue;
        const char *mode = ModeWord(line.substr(place + row.Text.size()));
        // A line of prose that only names the contest takes nothing back.
        if (head.ContestId != row.ContestId || *mode != '\0')
            head.Mode = mode;
        head.ContestId = row.ContestId;
        head.ContestName = row.Name;
        return;
    }
}

} // namespace

CabrilloHead RecogniseCabrillo(std::string_view text) {
    CabrilloHead head;
    for (int i = 0; i < kHeadLines && !text.empty(); ++i) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string line = UpperCase(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        head.IsCabrillo = head.IsCabrillo || line.find("START-OF-LOG") != std::string::npos;
        TakeContestName(line, head);
        if (line.find("END-OF-LOG") != std::string::npos)
            break;
    }
    return head;
}

} // namespace zrt
