// The sent exchange of each contest: its text, its pieces, and what is wrong with them.
#include "postcontest/sent_exchange.h"

#include "entry/multipliers.h"
#include "postcontest/post_contest.h"
#include "session/contests.h"
#include "session/reference_data.h"
#include "support/program.h"

namespace zrt {
namespace {

using Text = std::string SettingsRecord::*;

// Every setting with a text of its own, so that a wrong one shows.
constexpr std::array<std::pair<Text, const char *>, 16> kTexts = {{
    {&SettingsRecord::ExchangeARRLMult, "arrl"},
    {&SettingsRecord::ExchangeAAMult, "aa"},
    {&SettingsRecord::ExchangeZRTMult, "zrt"},
    {&SettingsRecord::ExchangePAQPMult, "paqp"},
    {&SettingsRecord::ExchangeNEQPMult, "neqp"},
    {&SettingsRecord::ExchangeCQWWMult, "cqww"},
    {&SettingsRecord::ExchangeSSPrec, "prec"},
    {&SettingsRecord::ExchangeSSCall, "call"},
    {&SettingsRecord::ExchangeSSCheck, "check"},
    {&SettingsRecord::ExchangeSSSection, "section"},
    {&SettingsRecord::ExchangeSprintName, "spname"},
    {&SettingsRecord::ExchangeSprintMult, "spmult"},
    {&SettingsRecord::ExchangeNAQPName, "naname"},
    {&SettingsRecord::ExchangeNAQPMult, "namult"},
    {&SettingsRecord::ExchangeGeneric, "generic"},
    {&SettingsRecord::ExchangeCWOName, "cwo"},
}};

struct Row {
    i16 ContestId;
    const char *Cw, *Phone; // the text in a log of the mode
    const char *Label;
    std::vector<Text> Fields;
    std::vector<Text> Needed; // in a file for the sponsor
};

std::vector<Row> Rows() {
    using S = SettingsRecord;
    const std::vector<Text> arrl = {&S::ExchangeARRLMult}, zrt = {&S::ExchangeZRTMult},
                            zone = {&S::ExchangeCQWWMult}, age = {&S::ExchangeAAMult},
                            paqp = {&S::ExchangePAQPMult}, neqp = {&S::ExchangeNEQPMult},
                            generic = {&S::ExchangeGeneric}, cwo = {&S::ExchangeCWOName},
                            sprint = {&S::ExchangeSprintName, &S::ExchangeSprintMult},
                            naqp = {&S::ExchangeNAQPName, &S::ExchangeNAQPMult},
                            ss = {&S::ExchangeSSPrec, &S::ExchangeSSCall, &S::ExchangeSSCheck,
                                  &S::ExchangeSSSection},
                            ssNeeded = {&S::ExchangeSSPrec, &S::ExchangeSSCheck,
                                        &S::ExchangeSSSection};
    const char *const names = "Name          Mult";
    const char *const ssText = "# prec call check section";
    const char *const ssLabel = "Prec    Call        Ck      Section";
    return {{kArrlDx, "599 arrl", "59 arrl", "Multiplier", arrl, arrl},
            {kZrt, "# zrt", "# zrt", "Multiplier", zrt, zrt},
            {kCqWw, "599 cqww", "59 cqww", "Zone", zone, zone},
            {kSprint, "# spname spmult", "# spname spmult", names, sprint, sprint},
            {kSs, ssText, ssText, ssLabel, ss, ssNeeded},
            {kWpx, "599 #", "59 #", "", {}, {}},
            {kAa, "599 aa", "59 aa", "Age", age, age},
            {kPaqp, "# paqp", "# paqp", "Multiplier", paqp, paqp},
            {kNaqp, "naname namult", "naname namult", names, naqp, naqp},
            {kTenMeter, "59(9) arrl", "59(9) arrl", "Multiplier", arrl, arrl},
            {kNeqp, "59(9) neqp", "59(9) neqp", "Multiplier", neqp, neqp},
            {kGeneric, "generic", "generic", "Exchange", generic, {}},
            {kCwOpen, "# cwo", "# cwo", "Name", cwo, cwo}};
}

class SentExchange : public ProgramTest {
  protected:
    SentExchange() {
        for (const auto &[text, value] : kTexts)
            Settings.*text = value;
        ReadStartupData();
    }

    static void TakeContestNumber(i16 contestId, bool cw = true, bool inState = false) {
        Contest = {};
        Contest.ContestId = contestId;
        Contest.StationInState = inState;
        Contest.SsSectionYear = 97;
        PostData.ContestIsCw = cw;
        PostData.ContestIsSsb = !cw;
        FillMultiplierTables();
    }
    static std::vector<Text> Fields() {
        std::vector<Text> fields;
        for (const Text text : SentExchangeFields().Texts)
            if (text != nullptr)
                fields.push_back(text);
        return fields;
    }
    static std::string FaultText(const std::vector<std::string> &texts) {
        const auto fault = FindExchangeFault(texts);
        return fault ? fault->Text : "";
    }
};

TEST_F(SentExchange, EachContestHasItsTextInBothModes) {
    const auto rows = Rows();
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(kContests));
    for (const Row &row : rows) {
        SCOPED_TRACE(row.ContestId);
        TakeContestNumber(row.ContestId, true);
        EXPECT_EQ(SentExchangeText(), row.Cw);
        TakeContestNumber(row.ContestId, false);
        EXPECT_EQ(SentExchangeText(), row.Phone);
    }
}

TEST_F(SentExchange, ALogOfBothModesHasTheReportOfCw) {
    TakeContestNumber(kWpx);
    PostData.ContestIsSsb = true;
    EXPECT_EQ(SentExchangeText(), "599 #");
}

TEST_F(SentExchange, EachContestHasItsFieldsAndTheirLabel) {
    for (const Row &row : Rows()) {
        SCOPED_TRACE(row.ContestId);
        TakeContestNumber(row.ContestId);
        EXPECT_STREQ(SentExchangeFields().Label, row.Label);
        EXPECT_EQ(Fields(), row.Fields);
        EXPECT_TRUE(
            std::equal(row.Fields.begin(), row.Fields.end(), SentExchangeFields().Texts.begin()))
            << "no gap between them";
    }
}

TEST_F(SentExchange, APieceThatIsBlankIsMissing) {
    for (const Row &row : Rows()) {
        TakeContestNumber(row.ContestId);
        EXPECT_FALSE(SentExchangeIsMissing()) << row.ContestId;
        for (const auto &[text, value] : kTexts) {
            const bool needed =
                std::find(row.Needed.begin(), row.Needed.end(), text) != row.Needed.end();
            for (const char *blank : {"", " ", "     "}) {
                Settings.*text = blank;
                EXPECT_EQ(SentExchangeIsMissing(), needed) << row.ContestId << " " << value;
            }
            Settings.*text = value;
        }
    }
}

TEST_F(SentExchange, PiecesThatAreEmptyLeaveTheirBlanks) {
    TakeContestNumber(kNaqp);
    Settings.ExchangeNAQPName = "";
    EXPECT_EQ(SentExchangeText(), " namult");
    TakeContestNumber(kSs);
    Settings.ExchangeSSCall = Settings.ExchangeSSCheck = "";
    EXPECT_EQ(SentExchangeText(), "# prec   section");
}

// ---- faults

TEST_F(SentExchange, ACountyThatIsNoneIsAQuestionOfTheStationAtHome) {
    TakeContestNumber(kZrt, true, true);
    const std::vector<std::string> county = {"QQQ"};
    const auto fault = FindExchangeFault(county);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->Text, "County Is not a standard ZRT county abbreviation.  Use it anyway?");
    EXPECT_EQ(fault->Title, "County Error");
    EXPECT_TRUE(fault->IsQuestion);
    EXPECT_EQ(fault->Field, 0);
    for (const char *known : {"ALDR", "ALD", "ALDRU", "AMBER", ""})
        EXPECT_EQ(FaultText({known}), "") << known;
    for (const char *unknown : {"AL", "ALDRUS", "5", "?"})
        EXPECT_NE(FaultText({unknown}), "") << unknown;
}

TEST_F(SentExchange, AStationElsewhereSendsWhatItLikes) {
    TakeContestNumber(kZrt, true, false);
    for (const char *text : {"CT", "QQQ", ""})
        EXPECT_EQ(FaultText({text}), "") << text;
}

constexpr const char *kBadPrecedence = "Precedence Error -- Must be A, B, M, Q, S, or U";
constexpr const char *kBadSection = "Section is Invalid.";
constexpr const char *kBadCheck = "Check Must be between 00 and 99";

TEST_F(SentExchange, SixPrecedencesAreKnown) {
    TakeContestNumber(kSs);
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const bool known = std::string("ABMQSU").find(letter) != std::string::npos;
        EXPECT_EQ(FaultText({std::string(1, letter), "K1ZZ", "72", "CT"}),
                  known ? "" : kBadPrecedence)
            << letter;
    }
    for (const char *bad : {"", "AB", "ABMQSU", "1", " "})
        EXPECT_EQ(FaultText({bad, "K1ZZ", "72", "CT"}), kBadPrecedence) << bad;
}

TEST_F(SentExchange, TheSectionIsOneOfTheList) {
    TakeContestNumber(kSs);
    for (const char *good : {"CT", "EMA"})
        EXPECT_EQ(FaultText({"A", "K1ZZ", "72", good}), "") << good;
    for (const char *bad : {"", "ZZ", "CTX", "C"})
        EXPECT_EQ(FaultText({"A", "K1ZZ", "72", bad}), kBadSection) << bad;
}

TEST_F(SentExchange, TheCheckHasTwoDigits) {
    TakeContestNumber(kSs);
    for (const char *good : {"00", "09", "50", "99"})
        EXPECT_EQ(FaultText({"A", "K1ZZ", good, "CT"}), "") << good;
    for (const char *bad : {"", "7", "100", "7X", "X7", "-1", "/0", "0:", " 7"})
        EXPECT_EQ(FaultText({"A", "K1ZZ", bad, "CT"}), kBadCheck) << bad;
}

TEST_F(SentExchange, TheFirstFaultIsToldWithItsField) {
    TakeContestNumber(kSs);
    struct Wrong {
        std::vector<std::string> Texts;
        const char *Text;
        int Field;
    };
    for (const Wrong &row :
         {Wrong{{"X", "", "X", "X"}, kBadPrecedence, 0}, Wrong{{"A", "", "X", "X"}, kBadSection, 3},
          Wrong{{"A", "", "X", "CT"}, kBadCheck, 2}}) {
        const auto fault = FindExchangeFault(row.Texts);
        ASSERT_TRUE(fault) << row.Text;
        EXPECT_EQ(fault->Text, row.Text);
        EXPECT_EQ(fault->Title, "Exchange Error");
        EXPECT_FALSE(fault->IsQuestion);
        EXPECT_EQ(fault->Field, row.Field);
    }
    EXPECT_EQ(FaultText({"A", "", "72", "CT"}), "") << "the call may be empty";
}

TEST_F(SentExchange, OtherContestsHaveNoFaults) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        if (contest == kZrt || contest == kSs)
            continue;
        TakeContestNumber(contest, true, true);
        EXPECT_EQ(FaultText({"?", "?", "?", "?"}), "") << contest;
    }
}

} // namespace
} // namespace zrt
