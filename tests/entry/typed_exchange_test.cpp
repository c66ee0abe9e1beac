// A fill goes only where the operator has typed nothing, and nothing is logged that did not show
// before the key that logs. The station is in the log in its other form, on another band: the box
// about it gives the focus to the exchange field in the middle of LogQso.
#include "entry/log_form.h"
#include "entry/prefill.h"
#include "headless/keyboard.h"
#include "platform/dialogs.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"
#include "support/exchange_promises.h"
#include "support/program.h"

namespace zrt {
namespace {

constexpr i16 k20Cw = 3, k40Cw = 4;

struct ContestRow {
    i16 ContestId;
    bool AtHome;
    const char *Earlier, *Typed; // two good exchanges
    const char *Part;            // what may stand there when the operator turns back to the call
};
constexpr auto kRows = std::to_array<ContestRow>({
    {kArrlDx, false, "CT", "ON", "O"},
    {kArrlDx, true, "100", "500", "5"},
    {kZrt, false, "6 ALD", "7 AMB", "7"},
    {kZrt, true, "6 ALD", "7 AMB", "7 "},
    {kCqWw, false, "4", "5", "3"},
    {kSprint, false, "6 JOE CT", "7 BOB ON", "7"},
    {kSs, false, "6A72CT", "7B80EMA", "7"},
    {kWpx, false, "12", "13", "1"},
    {kAa, false, "45", "50", "5"},
    {kPaqp, false, "6 ADA", "7 YOR", "7"},
    {kNaqp, false, "JOE CT", "BOB ON", "B"},
    {kTenMeter, false, "NH", "PR", "P"},
    {kNeqp, false, "FAICT", "HAR", "H"},
    {kGeneric, false, "FIRST TEXT", "SECOND", "5"},
    {kCwOpen, false, "6 JOE", "7 BOB", "7"},
});

enum class Way { Add, EnterInCall, ApostropheInCall, EnterInExchange };

class TypedExchange : public ProgramTest {
  protected:
    TypedExchange() {
        FillExchangeLists();
        Dialogs.Box = [](const MessageBox &box) {
            titles.push_back(box.Title);
            return BoxAnswer::Ok;
        };
        titles.clear();
    }

    static void Open(const ContestRow &row) {
        ContestState contest = CwContest(row.ContestId);
        contest.StationUSVE = contest.StationInState = row.AtHome;
        OpenNewLog(contest);
        Parsers = {};
        CurrentBand() = k20Cw;
    }
    static void Key(const char *name) { PressKey(LogForm, KeyNamed(name).value()); }
    static void Type(std::string_view text) {
        for (const KeyStroke &stroke : StrokesOf(text))
            PressKey(LogForm, stroke);
    }
    static void TypeIn(TextBox &field, std::string_view text) {
        SetFocus(field);
        Type(text);
    }
    // The call is typed over what stands in its field.
    static void TypeCall(std::string_view call) {
        SetFocus(CallField());
        CallField().SelStart = 0;
        CallField().SelLength = static_cast<int>(CallField().Text.size());
        Type(call);
    }
    static void LogBy(Way way) {
        switch (way) {
        case Way::Add: ClickControl(LogForm.AddButton); break;
        case Way::EnterInCall:
            SetFocus(CallField());
            Key("Enter");
            break;
        case Way::ApostropheInCall:
            SetFocus(CallField());
            Key("'");
            break;
        case Way::EnterInExchange:
            SetFocus(ExchangeField());
            Key("Enter");
            break;
        }
    }
    static const LogEntry &Last() { return Log.LogEntries[Log.NextEntry - 1]; }
    static std::string Received(const LogEntry &entry) {
        return std::to_string(entry.RcvdNumber) + "|" + entry.RcvdName.Trimmed() + "|" +
               entry.RcvdExchange.Trimmed();
    }
    // What a log that knows nothing makes of the two fields.
    static std::string ReceivedIn(const ContestRow &row, std::string_view call,
                                  std::string_view exchange) {
        Open(row);
        LogContact(call, exchange);
        EXPECT_EQ(Log.NextEntry, 2) << exchange;
        return Received(Last());
    }
    // The earlier contact, and then the fields as they are typed on another band.
    static void Begin(const ContestRow &row, const char *known, const char *call,
                      std::string_view typed) {
        Open(row);
        LogContact(known, row.Earlier);
        ASSERT_EQ(Log.NextEntry, 2);
        CurrentBand() = k40Cw;
        if (!typed.empty()) { // for a call that was not read right
            TypeIn(CallField(), "K9ZZ");
            Key("Space");
            SetFocus(ExchangeField());
            ExchangeField().SelStart = 0;
            ExchangeField().SelLength = static_cast<int>(ExchangeField().Text.size());
            Type(typed);
        }
        TypeCall(call);
    }
    static std::vector<std::string> titles;
};
std::vector<std::string> TypedExchange::titles;

std::string NameOf(const ContestRow &row, const char *call, Way way) {
    return "contest " + std::to_string(row.ContestId) + (row.AtHome ? " at home, " : ", ") + call +
           ", way " + std::to_string(static_cast<int>(way));
}

constexpr auto kForms = std::to_array<std::array<const char *, 2>>(
    {{"W1AW", "W1AW/4"}, {"W1AW/4", "W1AW"}, {"W1AW", "W1AW"}});
constexpr auto kWays = {Way::Add, Way::EnterInCall, Way::ApostropheInCall, Way::EnterInExchange};

TEST_F(TypedExchange, StaysAndIsWhatIsLogged) {
    for (const bool shipped : {false, true}) {
        for (const ContestRow &row : kRows) {
            for (const auto &[known, call] : kForms) {
                for (const Way way : kWays) {
                    SCOPED_TRACE(NameOf(row, call, way));
                    Extensions.FillCursorAtStart = Extensions.PrefillCountsAsEmpty = shipped;
                    Settings.LogandSendF6Enabled = true;
                    Begin(row, known, call, row.Typed);
                    EXPECT_EQ(ExchangeField().Text, row.Typed);
                    LogBy(way);
                    ASSERT_EQ(Log.NextEntry, 3);
                    const std::string logged = Received(Last());
                    EXPECT_EQ(Last().Callsign.Trimmed(), call);
                    EXPECT_EQ(logged, ReceivedIn(row, call, row.Typed));
                }
            }
        }
    }
}

TEST_F(TypedExchange, StaysInPart) {
    for (const ContestRow &row : kRows) {
        for (const auto &[known, call] : kForms) {
            for (const char *key : {"Space", "Insert"}) {
                SCOPED_TRACE(NameOf(row, call, Way::EnterInCall) + key);
                Extensions.FillCursorAtStart = true;
                Begin(row, known, call, row.Part);
                Key(key);
                EXPECT_EQ(ExchangeField().Text, row.Part);
            }
        }
    }
}

// Whatever is filled in, by keys that may log: what a key logs stood in the field before it.
TEST_F(TypedExchange, IsLoggedOnlyAsItShowed) {
    int secondKeys = 0;
    for (const ContestRow &row : kRows) {
        for (const auto &[known, call] : kForms) {
            for (const Way way : kWays) {
                for (const char *typed : {"", row.Part}) {
                    SCOPED_TRACE(NameOf(row, call, way) + " '" + typed + "'");
                    Settings.LogandSendF6Enabled = true;
                    Begin(row, known, call, typed);
                    std::string seen;
                    int keys = 0;
                    for (; keys < 3 && Log.NextEntry == 2; ++keys) {
                        if (way == Way::EnterInExchange) // the fill comes with the focus
                            SetFocus(ExchangeField());
                        seen = ExchangeField().Text;
                        LogBy(keys == 0 ? way : Way::EnterInExchange);
                    }
                    if (Log.NextEntry == 2) // refused: something is missing
                        continue;
                    secondKeys += keys == 2;
                    const std::string logged = Received(Last());
                    EXPECT_EQ(logged, ReceivedIn(row, call, seen)) << "seen '" << seen << "'";
                }
            }
        }
    }
    EXPECT_GT(secondKeys, 20); // else no fill has come between
}

TEST_F(TypedExchange, AsksForASecondEnterWhenAPrefilledZoneIsReplaced) {
    const ContestRow row = {kCqWw, false, "33", "", ""};
    for (const Way way : {Way::Add, Way::EnterInCall}) {
        Begin(row, "W1AW", "W1AW/4", "");
        const std::string prefilled = ExchangeField().Text;
        ASSERT_FALSE(prefilled.empty());
        ASSERT_NE(prefilled, "33 ");
        LogBy(way);
        EXPECT_EQ(titles.back(), "Portable Station?");
        EXPECT_EQ(Log.NextEntry, 2);
        EXPECT_EQ(ExchangeField().Text, "33 ");
        EXPECT_EQ(LogForm.ActiveControl, &ExchangeField());
        Key("Enter");
        EXPECT_EQ(Log.NextEntry, 3);
        EXPECT_EQ(Last().RcvdNumber, 33);
    }
}

TEST_F(TypedExchange, KeepsAZoneWhileTheCallIsCorrected) {
    const ContestRow row = {kCqWw, false, "33", "", ""};
    Begin(row, "W1AW", "K1Z", "14");
    Type("Z");
    EXPECT_EQ(ExchangeField().Text, "14");
    Key("Enter");
    EXPECT_EQ(Last().Callsign.Trimmed(), "K1ZZ");
    EXPECT_EQ(Last().RcvdNumber, 14);
}

TEST_F(TypedExchange, MayBeTheSameTextAsTheFill) {
    const ContestRow row = {kNaqp, false, "JOE CT", "", ""};
    Begin(row, "W1AW", "W1AW", "");
    Key("Space");
    ASSERT_EQ(ExchangeField().Text, "JOE CT ");
    Key("Backspace");
    Type(" ");
    ASSERT_EQ(ExchangeField().Text, "JOE CT "); // the operator's now
    Extensions.PrefillCountsAsEmpty = true;
    EXPECT_FALSE(IsPrefillOnly());
    TypeCall("K1ZZ");
    EXPECT_EQ(ExchangeField().Text, "JOE CT ");
}

TEST_F(TypedExchange, IsWhatTheRepeatCommandPutsBack) {
    const ContestRow row = {kCqWw, false, "33", "", ""};
    Open(row);
    LogContact("W1AW", "33");
    LogContact("K1ZZ", "4");
    CurrentBand() = k40Cw;
    LogContact("K1ZZ", "5");
    Type("R");
    Key("Enter");
    EXPECT_EQ(CallField().Text, "K1ZZ");
    EXPECT_EQ(ExchangeField().Text, "5");
    TypeCall("K1ZA");
    EXPECT_EQ(ExchangeField().Text, "5");
}

// ---- a fill belongs to its call

TEST_F(TypedExchange, AFillGoesWithItsCall) {
    for (const ContestRow &row : kRows) {
        SCOPED_TRACE(NameOf(row, "K1ZZ", Way::EnterInCall));
        Begin(row, "W1AW", "W1AW", "");
        Key("Space");
        const std::string filled = ExchangeField().Text;
        SetFocus(CallField());
        Type("?"); // a mark makes no other call
        EXPECT_EQ(ExchangeField().Text, filled);
        TypeCall("K1ZZ");
        const bool zone = row.ContestId == kCqWw; // that of the call comes in its place
        EXPECT_EQ(ExchangeField().Text.empty(), !zone);
        EXPECT_NE(ExchangeField().Text, "4 ");
        Key("Space");
        EXPECT_EQ(ExchangeField().Text.empty(), !zone);
    }
}

} // namespace
} // namespace zrt
