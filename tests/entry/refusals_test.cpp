// Every refusal of every contest's exchange, as the operator meets it: the box, the field that has
// the keyboard then, and what is selected there or where the caret stands. What is bad is selected;
// where something is missing the caret stands at the end.
#include "entry/log_form.h"
#include "headless/keyboard.h"
#include "session/log_file.h"
#include "support/exchange_promises.h"
#include "support/program.h"

namespace zrt {
namespace {

constexpr const char *kNumberFirst = "Exchange must begin with a number";
constexpr const char *kMult = "Multiplier is Invalid.";
constexpr const char *kArrlMult =
    "W/VE Multiplier is Invalid.  Use only the abbreviations in the Multiplier table.";
constexpr const char *kPrecedence = "Precedence Error -- Must be A, B, M, Q, S, or U";
constexpr const char *kError = "Exchange Error";

// The text of a field with its selection in brackets: "12 [XYZ]", or "12[]" for a caret.
std::string Marked(const TextBox &field) {
    std::string text = field.Text;
    text.insert(static_cast<std::size_t>(field.SelStart + field.SelLength), "]");
    return text.insert(static_cast<std::size_t>(field.SelStart), "[");
}

struct RefusalRow {
    i16 ContestId;
    bool AtHome;
    const char *Call, *Exchange;
    const char *Text, *Title;
    const char *Marked; // in the field that has the keyboard then
    bool InCall = false;
};

constexpr auto kRefusals = std::to_array<RefusalRow>({
    {kArrlDx, false, "K1ZZ", "", "No Exchange", kError, "[]"},
    {kArrlDx, false, "K1ZZ", "  ", "No Exchange", kError, "  []"},
    {kArrlDx, false, "K1ZZ", "CT1", "Enter a valid State or Province abbreviation.", kError,
     "[CT1]"},
    {kArrlDx, false, "K1ZZ", "XX", kArrlMult, kError, "[XX]"},
    {kArrlDx, false, "K1ZZ", ".", kArrlMult, kError, "[.]"},
    {kArrlDx, true, "K1ZZ", "", "No Exchange", kError, "[]"},
    {kArrlDx, true, "K1ZZ", "KW5", "Enter a power between 1 and 1500.", kError, "[KW5]"},
    {kArrlDx, true, "K1ZZ", "1501", "Power must be between 1 and 1500.", kError, "[1501]"},

    {kZrt, false, "K1ZZ", "ALD", kNumberFirst, kError, "[A]LD"},
    {kZrt, false, "K1ZZ", " ALD ", kNumberFirst, kError, " [A]LD "},
    {kZrt, false, "K1ZZ", "12 XYZ", kMult, kError, "12 [XYZ]"},
    {kZrt, false, "K1ZZ", "12", kMult, kError, "12[]"},
    {kZrt, false, "K1ZZ", "", kMult, kError, "[]"},
    {kZrt, true, "K1ZZ", "XYZ", kNumberFirst, kError, "[X]YZ"},
    {kPaqp, false, "K1ZZ", "ADA 12", kNumberFirst, kError, "[A]DA 12"},
    {kPaqp, false, "K1ZZ", "12ALD", kMult, kError, "12[ALD]"},
    {kPaqp, false, "K1ZZ", "12 ", kMult, kError, "12 []"},
    {kNeqp, false, "K1ZZ", "5 FAICT", kMult, kError, "[5 FAICT]"},
    {kNeqp, false, "K1ZZ", "", kMult, kError, "[]"},

    {kCqWw, false, "K1ZZ", "", "Enter zone between 1 and 40.", "Invalid Zone", "[]"},
    {kCqWw, false, "K1ZZ", " ", "Enter zone between 1 and 40.", "Invalid Zone", " []"},
    {kCqWw, false, "K1ZZ", "41", "Enter zone between 1 and 40.", "Invalid Zone", "[41]"},
    {kCqWw, false, "K1ZZ", "599 14", "Enter zone between 1 and 40.", "Invalid Zone", "[599 14]"},
    {kCqWw, false, "DL1ABC41", "14", "Enter zone between 1 and 40.", "Invalid Zone", "DL1ABC[41]",
     true},

    {kSprint, false, "K1ZZ", "JOE CT", kNumberFirst, kError, "[J]OE CT"},
    {kSprint, false, "K1ZZ", "12", "Incomplete Exchange", kError, "12[]"},
    {kSprint, false, "K1ZZ", "12 C", "Incomplete Exchange", kError, "12 C[]"},

    {kSs, false, "K1ZZ", "A72CT", kNumberFirst, kError, "[A]72CT"},
    {kSs, false, "K1ZZ", "123", "Incomplete Exchange", kError, "123[]"},
    {kSs, false, "K1ZZ", "", "Incomplete Exchange", kError, "[]"},
    {kSs, false, "K1ZZ", "123Z72CT", kPrecedence, kError, "123[Z]72CT"},
    {kSs, false, "K1ZZ", "123A72C", "Multiplier or Check Error", kError, "123A72C[]"},
    {kSs, false, "K1ZZ", "123A727T", "Multiplier error", kError, "123A72[7]T"},
    {kSs, false, "K1ZZ", "123A72XX", kMult, kError, "123A72[XX]"},
    {kSs, false, "K1ZZ", "123A7EMA", "Check error", kError, "123A7[EMA]"},
    {kSs, false, "K1ZZ", "123AX7CT", "Check Error", kError, "123A[X]7CT"},

    {kWpx, false, "K1ZZ", "10000", "Number must be between 1 and 9999.", "Invalid Entry",
     "[10000]"},
    {kWpx, false, "K1ZZ", "", "Number must be between 1 and 9999.", "Invalid Entry", "[]"},
    {kWpx, false, "K1ZZ000", "", "Number must be between 1 and 9999.", "Invalid Entry", "K1ZZ[000]",
     true},

    {kAa, false, "K1ZZ", "", "Enter two-digit age between 00 and 99.", "Must Enter Received Age",
     "[]"},
    {kAa, false, "K1ZZ", "100", "Enter two-digit age between 00 and 99.", "Must Enter Received Age",
     "[100]"},

    {kNaqp, false, "K1ZZ", "", "No Exchange", kError, "[]"},
    {kNaqp, false, "K1ZZ", "JOE", "Incomplete Exchange", kError, "JOE[]"},
    {kNaqp, false, "K1ZZ", "JOE ", "Incomplete Exchange", kError, "JOE []"},
    {kNaqp, false, "K1ZZ", "JOE .", "Incomplete Exchange", kError, "JOE .[]"},
    {kNaqp, false, "K1ZZ", ". CT", "Incomplete Exchange", kError, ". CT[]"},
    {kNaqp, false, "K1ZZ", "JOE  NH X ", "Exchange Error", kError, "JOE  [NH X] "},

    {kTenMeter, false, "K1ZZ", "", "No Exchange", kError, "[]"},
    {kTenMeter, false, "K1ZZ", "XX", "W/VE Multiplier is Invalid.", kError, "[XX]"},
    {kTenMeter, false, "K1ZZ", "NH1", "", kError, "[NH1]"},

    {kCwOpen, false, "K1ZZ", "JOE", kNumberFirst, kError, "[J]OE"},
    {kCwOpen, false, "K1ZZ", "12", "Incomplete Exchange", kError, "12[]"},
    {kCwOpen, false, "K1ZZ", "", "Incomplete Exchange", kError, "[]"},
});

class Refusals : public ProgramTest {
  protected:
    Refusals() { FillExchangeLists(); }

    static void Open(const RefusalRow &row) {
        ContestState contest = CwContest(row.ContestId);
        contest.StationUSVE = contest.StationInState = row.AtHome;
        OpenNewLog(contest);
        Parsers = {};
    }
    static void Expect(const RefusalRow &row) {
        EXPECT_EQ(Log.NextEntry, 1);
        EXPECT_EQ(LastBox().Text, row.Text);
        EXPECT_EQ(LastBox().Title, row.Title);
        EXPECT_EQ(LastBox().Icon, BoxIcon::Critical);
        EXPECT_EQ(CallField().Text, row.Call);
        EXPECT_EQ(ExchangeField().Text, row.Exchange);
        const TextBox &field = row.InCall ? CallField() : ExchangeField();
        EXPECT_EQ(LogForm.ActiveControl, &field);
        EXPECT_EQ(Marked(field), row.Marked);
        EXPECT_FALSE(Entry.ParseError);
    }
};

TEST_F(Refusals, SelectWhatIsBadOrPutTheCaretAtTheEnd) {
    for (const RefusalRow &row : kRefusals) {
        for (const bool enterInExchange : {false, true}) {
            SCOPED_TRACE("contest " + std::to_string(row.ContestId) + " '" + row.Exchange + "'");
            Open(row);
            Answer({BoxAnswer::Ok});
            Fill(row.Call, row.Exchange);
            if (enterInExchange) { // with the caret in the middle of it
                SetFocus(ExchangeField());
                ASSERT_EQ(ExchangeField().Text, row.Exchange);
                ExchangeField().SelStart = ExchangeField().SelLength = 0;
            }
            Press(kKeyEnter);
            Expect(row);
        }
    }
}

TEST_F(Refusals, OfTheTableAreOfEveryContestThatRefuses) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        const auto rows = std::count_if(kRefusals.begin(), kRefusals.end(),
                                        [&](const auto &row) { return row.ContestId == contest; });
        EXPECT_EQ(rows > 0, contest != kGeneric) << contest;
    }
}

TEST_F(Refusals, OfAnIncompleteExchangeLetTheOperatorTypeOn) {
    Open({kNaqp, false, "", "", "", "", ""});
    Answer({BoxAnswer::Ok});
    LogContact("K1ZZ", "JOE");
    for (const KeyStroke &stroke : StrokesOf(" ny"))
        PressKey(LogForm, stroke);
    Press(kKeyEnter);
    ASSERT_EQ(Log.NextEntry, 2);
    EXPECT_EQ(Log.LogEntries[1].RcvdName.Trimmed(), "JOE");
    EXPECT_EQ(Log.LogEntries[1].RcvdExchange.Trimmed(), "NY");
}

} // namespace
} // namespace zrt
