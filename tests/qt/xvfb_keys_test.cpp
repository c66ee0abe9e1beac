// The real program on an X server with a window manager: xdotool presses every key of the entry
// fields, and the program tells what came to the field. Needs DISPLAY; see under_xvfb.sh.
#include "qt/key_cases.h"
#include "qt/real_session.h"

#include <QProcess>

#include <algorithm>
#include <chrono>

namespace zrt {
namespace {

void Xdotool(const QStringList &arguments) {
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), arguments), 0);
}

void PressChord(const std::string &chord) {
    Xdotool({QStringLiteral("key"), QString::fromStdString(chord)});
}

std::string Ask(RealProgram &program, const std::string &question) {
    bool gone = false;
    std::string answer = program.Ask(question, gone);
    EXPECT_FALSE(gone) << question;
    return answer;
}

class RealKeyboard : public testing::Test {
  protected:
    RealKeyboard() : Program(Home.Path, "xcb") {}

    void Start() {
        ASSERT_NO_FATAL_FAILURE(StartGenericLog(Program));
        Xdotool({QStringLiteral("search"), QStringLiteral("--sync"),
                 QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                 QStringLiteral("^ZRTLOG$"), QStringLiteral("windowactivate"),
                 QStringLiteral("--sync")});
        ASSERT_TRUE(Comes(Program, "focus", "InData(0)"));
    }

    // Whatever the last key has opened or typed is gone: Esc, until the call field is empty and has
    // the keyboard.
    void ToAnEmptyCallField() {
        constexpr int kMostTurns = 50;
        for (int i = 0; i < kMostTurns; ++i) {
            PressChord("Escape");
            if (Ask(Program, "sync") == "ok" && Ask(Program, "window") == "ZRTLOG" &&
                Ask(Program, "focus") == "InData(0)" && Ask(Program, "text InData(0)").empty()) {
                Ask(Program, "keys"); // forgets them
                return;
            }
        }
        FAIL() << "no way back to the call field";
    }

    std::string ArrivedKeys() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        std::string keys;
        while (keys.empty() && std::chrono::steady_clock::now() < end)
            keys = Ask(Program, "keys");
        return keys;
    }

    TemporaryHome Home;
    RealProgram Program;
};

TEST_F(RealKeyboard, BringsEveryKeyToTheEntryField) {
    ASSERT_NO_FATAL_FAILURE(Start());
    Ask(Program, "keys");
    bool numLock = false;
    int rows = 0;
    for (const KeyCase &row : KeyCases()) {
        if (row.KeptByManager)
            continue;
        SCOPED_TRACE(row.Chord + (row.NumLock ? " with Num Lock" : ""));
        if (numLock != row.NumLock)
            PressChord("77");
        numLock = row.NumLock;
        ASSERT_NO_FATAL_FAILURE(ToAnEmptyCallField());
        PressChord(row.Chord);
        EXPECT_EQ(ArrivedKeys(), "InData(0) " + StrokeText(row.Expected));
        ++rows;
    }
    EXPECT_GT(rows, 250);
}

// What the operator sees of a few of them: none is an editing key, a menu or a paste.
TEST_F(RealKeyboard, DoesWhatTheContestWants) {
    ASSERT_NO_FATAL_FAILURE(Start());
    const struct {
        const char *Typed, *Chord, *Question, *Answer;
    } rows[] = {
        {"w1aw", "ctrl+z", "text InData(0)", ""},
        {"w1aw", "alt+x", "text InData(0)", ""},
        {"w1aw", "ctrl+x", "text InData(0)", ""},
        {"w1aw", "alt+m", "text InData(0)", ""},
        {"", "alt+Left", "text InData(0)", "W1AW"},
        {"dl1a", "alt+Down", "focus", "InData(0)"},
        {"w1aw", "space", "focus", "InData(1)"},
        {"w1aw", "Tab", "focus", "InData(1)"},
        {"w1aw", "shift+Insert", "text InData(0)", "W1AW"},
        {"w1aw", "plus", "text InData(0)", "W1AW"},
        {"w1aw", "KP_Add", "text InData(0)", "W1AW"},
        {"w1aw", "KP_Subtract", "text InData(0)", "W1AW"},
        {"w1aw", "exclam", "text InData(0)", "W1AW"},
        {"w1aw", "quotedbl", "text InData(0)", "W1AW"},
        {"w1aw", "backslash", "text InData(0)", "W1AW"},
        {"w1aw", "bracketright", "text InData(0)", "W1AW"},
        {"w1aw", "alt+w", "text InData(0)", "W1AW"},
        {"w1aw", "Next", "text InData(0)", "W1AW"},
        {"w1aw", "BackSpace", "text InData(0)", "W1A"},
        {"w1aw", "slash", "text InData(0)", "W1AW/"},
        {"w1aw", "F10", "text ActiveLogLabel", "Log R2"},
        {"w1aw", "shift+F10", "text ActiveLogLabel", "Log R1"}, // and opens no menu of the desktop
        {"w1aw", "F10", "focus", "InData(0)"},
        {"w1aw", "shift+F10", "focus", "InData(0)"},
        {"w1aw", "Alt_L", "focus", "InData(0)"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.Chord + std::string(" ") + row.Question);
        ASSERT_NO_FATAL_FAILURE(ToAnEmptyCallField());
        if (*row.Typed != 0)
            Xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("5"),
                     QString::fromLatin1(row.Typed)});
        for (std::size_t arrived = 0; arrived < std::string(row.Typed).size();) {
            const std::string keys = ArrivedKeys();
            ASSERT_FALSE(keys.empty());
            arrived += 1 + static_cast<std::size_t>(std::count(keys.begin(), keys.end(), ';'));
        }
        PressChord(row.Chord);
        if (std::string(row.Chord) != "Alt_L") { // a modifier alone is not told
            EXPECT_FALSE(ArrivedKeys().empty());
        }
        Ask(Program, "sync");
        EXPECT_TRUE(Comes(Program, row.Question, row.Answer));
    }
}

void ClickOn(RealProgram &program, const std::string &object) {
    const QStringList place =
        QString::fromStdString(Ask(program, "place " + object)).split(QLatin1Char(' '));
    ASSERT_EQ(place.size(), 2) << object;
    Xdotool({QStringLiteral("mousemove"), place[0], place[1], QStringLiteral("click"),
             QStringLiteral("1")});
}

void TypeText(const char *text) {
    Xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("5"),
             QString::fromLatin1(text)});
}

TEST_F(RealKeyboard, LosesNoLetterToClicksBetweenThem) {
    ASSERT_NO_FATAL_FAILURE(Start());
    std::string typed;
    for (const char *object :
         {"CheckCall", "lblLast", "CheckExchange", "CallMatchLabel1", "PrevQSO(4)", "QSONrLabel"}) {
        ASSERT_NO_FATAL_FAILURE(TypeText("k"));
        ASSERT_NO_FATAL_FAILURE(ClickOn(Program, object));
        ASSERT_NO_FATAL_FAILURE(TypeText("1"));
        typed += "K1";
    }
    EXPECT_TRUE(Comes(Program, "text InData(0)", typed));
    EXPECT_EQ(Ask(Program, "focus"), "InData(0)");
}

TEST_F(RealKeyboard, OpensTheMenusByAltAndTheirLetters) {
    ASSERT_NO_FATAL_FAILURE(Start());
    for (const char *chord : {"alt+f", "alt+e", "alt+o", "alt+h"}) {
        SCOPED_TRACE(chord);
        ASSERT_NO_FATAL_FAILURE(ToAnEmptyCallField());
        PressChord(chord);
        EXPECT_TRUE(Comes(Program, "menus", "open"));
        PressChord("Escape");
        EXPECT_TRUE(Comes(Program, "menus", "-"));
    }
    ASSERT_NO_FATAL_FAILURE(ToAnEmptyCallField());
    PressChord("alt+o"); // Mode: CW, Phone
    ASSERT_TRUE(Comes(Program, "menus", "open"));
    PressChord("Down");
    PressChord("Down");
    PressChord("Return");
    EXPECT_TRUE(Comes(Program, "text QSONrLabel", "QSO Nr 1    (20m SSB)"));
}

// The call that an operator types while a question comes up does not answer it.
TEST_F(RealKeyboard, TypesThroughABoxWithoutAnsweringIt) {
    ASSERT_NO_FATAL_FAILURE(Start());
    TypeText("dl1");
    Program.Send("menu mnuFileExit");
    TypeText("nny n yn");
    ASSERT_TRUE(Comes(Program, "window", "Save Log?"));
    TypeText("nny n yn");
    PressChord("n");
    EXPECT_EQ(Ask(Program, "sync"), "ok");
    EXPECT_EQ(Ask(Program, "window"), "Save Log?");
    Program.Send("click Cancel");
    EXPECT_TRUE(Comes(Program, "focus", "InData(0)"));
}

} // namespace
} // namespace zrt
