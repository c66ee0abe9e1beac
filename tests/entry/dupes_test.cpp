#include "entry/dupes.h"

#include "support/program.h"

namespace zrt {
namespace {

class CallLists : public ProgramTest {
  protected:
    static std::string Sorted() {
        std::string text;
        for (const CallAndBand &row : Dupes.CurrentCalls)
            text += row.Call.Trimmed() + ":" + std::to_string(row.BandIndex) + " ";
        return text;
    }
};

TEST_F(CallLists, AreSortedByCallInByteOrder) {
    for (const char *call : {"W1AW", "K1ZZ", "K1ZZ/4", "K1ZZA", "3A2MW", "K1Z"})
        InsertCall(call, 3, false);
    EXPECT_EQ(Sorted(), "3A2MW:3 K1Z:3 K1ZZ:3 K1ZZ/4:3 K1ZZA:3 W1AW:3 ");
}

TEST_F(CallLists, HoldACallOnAnotherBandBehindItsEquals) {
    InsertCall("K1ZZ", 12, false);
    InsertCall("W1AW", 3, false);
    EXPECT_EQ(InsertCall("K1ZZ", 3, false), 1U);
    EXPECT_EQ(InsertCall("K1ZZ", 1, false), 2U);
    EXPECT_EQ(Sorted(), "K1ZZ:12 K1ZZ:3 K1ZZ:1 W1AW:3 ");
}

TEST_F(CallLists, TakeTheIdenticalTextOnce) {
    InsertCall("K1ZZ", 12, false);
    InsertCall("K1ZZ", 3, false);
    EXPECT_EQ(InsertCall("K1ZZ", 12, false), 0U);
    EXPECT_EQ(Sorted(), "K1ZZ:12 K1ZZ:3 ");
}

TEST_F(CallLists, FindTheFirstPlaceThatIsNotBelow) {
    for (const char *call : {"A1A", "C1C", "E1E"})
        InsertCall(call, 3, false);
    InsertCall("C1C", 5, false);
    EXPECT_EQ(InsertCall("A", 3, true), 0U);
    EXPECT_EQ(InsertCall("C1C", 9, true), 1U);
    EXPECT_EQ(InsertCall("D1D", 3, true), 3U);
    EXPECT_EQ(InsertCall("Z", 3, true), 4U);
    EXPECT_EQ(Dupes.CurrentCalls.size(), 4U);
}

TEST(BaseCall, IsTheLongerSideOfTheFirstSlash) {
    EXPECT_EQ(BaseCall("W1AW/4", PortableTie::Left), "W1AW");
    EXPECT_EQ(BaseCall("4/W1AW", PortableTie::Left), "W1AW");
    EXPECT_EQ(BaseCall("W1AW", PortableTie::Left), "W1AW");
    EXPECT_EQ(BaseCall("F/W1AW/P", PortableTie::Left), "W1AW/P"); // everything behind the first
    EXPECT_EQ(BaseCall("/", PortableTie::Left), "");
    EXPECT_EQ(BaseCall("K1ZZ/", PortableTie::Right), "K1ZZ");
}

TEST(BaseCall, OfATieIsTheLeftOneLiveAndTheRightOneInTheRescan) {
    EXPECT_EQ(BaseCall("AB1/CD2", PortableTie::Left), "AB1");
    EXPECT_EQ(BaseCall("AB1/CD2", PortableTie::Right), "CD2");
}

TEST_F(CallLists, HoldAtMost80PortableCalls) {
    for (i16 n = 1; n <= 100; ++n)
        RecordCall(n, "K" + std::to_string(n) + "/P", 3, PortableTie::Left);
    EXPECT_EQ(Dupes.PortableTable.size(), 80U);
    EXPECT_EQ(Dupes.CurrentCalls.size(), 100U);
}

TEST_F(CallLists, KeepTextAndHashUnderTheEntrysNumber) {
    RecordCall(1, "W1AW", 3, PortableTie::Left);
    RecordCall(9000, "K1ZZ", 3, PortableTie::Left);
    EXPECT_EQ(Dupes.CallText[1].Trimmed(), "W1AW");
    EXPECT_EQ(Dupes.CallHash[1], 'W' + '1' + 'A' + 'W');
    EXPECT_EQ(Dupes.CallText[9000].Trimmed(), "K1ZZ");
    EXPECT_EQ(Dupes.CallText[2].Trimmed(), "");
}

} // namespace
} // namespace zrt
