// What is recognised in the first lines of a Cabrillo file.
#include "postcontest/cabrillo_input.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

namespace zrt {
namespace {

constexpr const char *kStart = "START-OF-LOG: 3.0\r\n";

std::string Blanks(int lines) {
    std::string text;
    for (int i = 0; i < lines; ++i)
        text += "\r\n";
    return text;
}

CabrilloHead HeadOf(const std::string &contestLine, const std::string &lineEnd = "\r\n") {
    return RecogniseCabrillo("START-OF-LOG: 3.0" + lineEnd + contestLine + lineEnd);
}

void ExpectHead(const CabrilloHead &head, bool isCabrillo, i16 contest, const std::string &name,
                const std::string &mode) {
    EXPECT_EQ(head.IsCabrillo, isCabrillo);
    EXPECT_EQ(head.ContestId, contest);
    EXPECT_EQ(head.ContestName, name);
    EXPECT_EQ(head.Mode, mode);
}

TEST(CabrilloInput, TheContestsOfARateSheetAreRecognised) {
    ExpectHead(HeadOf("CONTEST: CQ-WW-CW"), true, kCqWw, "CQWW", "CW");
    ExpectHead(HeadOf("CONTEST: CQ-WW-SSB"), true, kCqWw, "CQWW", "SSB");
    ExpectHead(HeadOf("CONTEST: CQ-WPX-CW"), true, kWpx, "WPX", "CW");
    ExpectHead(HeadOf("CONTEST: CQ-WPX-SSB"), true, kWpx, "WPX", "SSB");
    ExpectHead(HeadOf("CONTEST: ARRL-DX-CW"), true, kArrlDx, "ARRL DX", "CW");
    ExpectHead(HeadOf("CONTEST: ARRL-DX-SSB"), true, kArrlDx, "ARRL DX", "SSB");
}

TEST(CabrilloInput, AnyOtherContestIsNone) {
    for (const char *line : {"CONTEST: ARRL-SS-CW", "CONTEST: CQ-160-CW", "CONTEST: CQWW-CW",
                             "CONTEST: CQ WW CW", "CONTEST: ARRL DX CW", "CONTEST:", ""})
        ExpectHead(HeadOf(line), true, kNoContest, "", "");
}

TEST(CabrilloInput, CapitalsDoNotMatter) {
    ExpectHead(RecogniseCabrillo("start-of-log: 3.0\r\ncontest: cq-ww-cw\r\n"), true, kCqWw, "CQWW",
               "CW");
    ExpectHead(RecogniseCabrillo("Start-Of-Log: 3.0\r\nContest: Arrl-Dx-Ssb\r\n"), true, kArrlDx,
               "ARRL DX", "SSB");
    ExpectHead(RecogniseCabrillo("end-of-log:\r\nSTART-OF-LOG:\r\n"), false, kNoContest, "", "");
}

TEST(CabrilloInput, LinesEndInCrLfOrLfAndTheLastMayHaveNoEnd) {
    ExpectHead(HeadOf("CONTEST: CQ-WW-CW", "\n"), true, kCqWw, "CQWW", "CW");
    ExpectHead(RecogniseCabrillo("CONTEST: CQ-WPX-SSB\nSTART-OF-LOG: 2.0"), true, kWpx, "WPX",
               "SSB");
    ExpectHead(RecogniseCabrillo("START-OF-LOG: 2.0\r\nCONTEST: CQ-WPX-SSB"), true, kWpx, "WPX",
               "SSB");
}

TEST(CabrilloInput, TheTextsMayStandAnywhereInTheirLines) {
    ExpectHead(RecogniseCabrillo("  XSTART-OF-LOGX\r\nSOAPBOX: no CQ-WW-SSB for me\r\n"), true,
               kCqWw, "CQWW", "SSB");
}

TEST(CabrilloInput, TheMarkCountsUpToTheTwentiethLine) {
    EXPECT_TRUE(RecogniseCabrillo(Blanks(19) + kStart).IsCabrillo);
    EXPECT_FALSE(RecogniseCabrillo(Blanks(20) + kStart).IsCabrillo);
}

TEST(CabrilloInput, TheContestCountsUpToTheTwentiethLine) {
    const std::string contest = "CONTEST: CQ-WW-CW\r\n";
    EXPECT_EQ(RecogniseCabrillo(kStart + Blanks(18) + contest).ContestId, kCqWw);
    EXPECT_EQ(RecogniseCabrillo(kStart + Blanks(19) + contest).ContestId, kNoContest);
}

TEST(CabrilloInput, NothingCountsBehindTheEndOfTheLog) {
    const std::string end = "END-OF-LOG:\r\n", contest = "CONTEST: CQ-WW-CW\r\n";
    ExpectHead(RecogniseCabrillo(end + kStart + contest), false, kNoContest, "", "");
    ExpectHead(RecogniseCabrillo(kStart + end + contest), true, kNoContest, "", "");
    ExpectHead(RecogniseCabrillo(kStart + contest + end), true, kCqWw, "CQWW", "CW");
    // The line of the end itself is still looked at.
    ExpectHead(RecogniseCabrillo("START-OF-LOG: CQ-WW-CW END-OF-LOG:\r\n"), true, kCqWw, "CQWW",
               "CW");
}

TEST(CabrilloInput, OfTwoNamesInALineTheFirstOfTheListCounts) {
    ExpectHead(HeadOf("CONTEST: ARRL-DX-CW CQ-WPX-SSB CQ-WW-CW"), true, kCqWw, "CQWW", "CW");
    ExpectHead(HeadOf("CONTEST: ARRL-DX-CW CQ-WPX-SSB"), true, kWpx, "WPX", "SSB");
}

TEST(CabrilloInput, OfTwoLinesWithNamesTheLastCounts) {
    ExpectHead(HeadOf("CONTEST: CQ-WW-CW\r\nSOAPBOX: better than ARRL-DX"), true, kArrlDx,
               "ARRL DX", "");
}

TEST(CabrilloInput, TheLetterBehindTheHyphenIsTheMode) {
    const std::array<std::pair<const char *, const char *>, 8> rows = {{{"CQ-WW-C", "CW"},
                                                                        {"CQ-WW-S", "SSB"},
                                                                        {"CQ-WW-RTTY", ""},
                                                                        {"CQ-WW-PH", ""},
                                                                        {"CQ-WW-", ""},
                                                                        {"CQ-WW", ""},
                                                                        {"CQ-WW-DX-CW", ""},
                                                                        {"CQ-WWC", ""}}};
    for (const auto &[name, mode] : rows) {
        SCOPED_TRACE(name);
        ExpectHead(HeadOf(std::string("CONTEST: ") + name), true, kCqWw, "CQWW", mode);
        ExpectHead(RecogniseCabrillo(std::string(kStart) + name), true, kCqWw, "CQWW", mode);
    }
}

TEST(CabrilloInput, AnEmptyFileIsNone) {
    for (const char *text : {"", "\n", "\r\n", "\r", "START-OF-LO"})
        ExpectHead(RecogniseCabrillo(text), false, kNoContest, "", "");
}

TEST(CabrilloInput, BytesOfZeroAreBytesAsOthers) {
    const std::string zero(1, '\0');
    ExpectHead(RecogniseCabrillo(zero + kStart + zero + "CONTEST: CQ-WW-CW" + zero + "\n"), true,
               kCqWw, "CQWW", "CW");
    ExpectHead(RecogniseCabrillo("START-OF" + zero + "-LOG:\nCONTEST: CQ-WW" + zero + "-CW"), false,
               kCqWw, "CQWW", "");
    ExpectHead(RecogniseCabrillo(std::string(100000, '\0')), false, kNoContest, "", "");
}

TEST(CabrilloInput, ALineThatOnlyNamesTheContestLeavesItsMode) {
    ExpectHead(HeadOf("CONTEST: CQ-WW-CW\r\nSOAPBOX: MY FIRST CQ-WW"), true, kCqWw, "CQWW", "CW");
    ExpectHead(HeadOf("SOAPBOX: CQ-WW\r\nCONTEST: CQ-WW-SSB"), true, kCqWw, "CQWW", "SSB");
    // Another contest has a mode of its own, or none.
    ExpectHead(HeadOf("CONTEST: CQ-WW-CW\r\nSOAPBOX: CQ-WPX"), true, kWpx, "WPX", "");
}

} // namespace
} // namespace zrt
