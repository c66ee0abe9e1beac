#include "headless/keyboard.h"

#include "headless/devices.h"

#include <gtest/gtest.h>

namespace zrt {
namespace {

struct KeyRow {
    const char *Name;
    int KeyCode, Shift, CharCode;
};

TEST(Keyboard, KeysHaveTheirCodes) {
    const KeyRow rows[] = {
        {"Enter", 13, 0, 0},    {"Esc", 27, 0, 0},          {"Space", 32, 0, ' '},
        {"F1", 112, 0, 0},      {"Shift+F12", 123, 1, 0},   {"Ctrl+Up", 38, 2, 0},
        {"Alt+Left", 37, 4, 0}, {"Ctrl+Shift+A", 65, 3, 0}, {"A", 65, 0, 'a'},
        {"a", 65, 0, 'a'},      {"Shift+A", 65, 1, 'A'},    {"5", 53, 0, '5'},
        {"Num+", 107, 0, '+'},  {"Num-", 109, 0, '-'},      {"Num7", 103, 0, '7'},
        {"PageDown", 34, 0, 0}, {"CapsLock", 20, 0, 0},     {"Insert", 45, 0, 0},
        {"Ctrl+A", 65, 2, 0},   {"'", 222, 0, '\''},        {"]", 221, 0, ']'},
    };
    for (const KeyRow &row : rows) {
        const auto stroke = KeyNamed(row.Name);
        ASSERT_TRUE(stroke) << row.Name;
        EXPECT_EQ(stroke->KeyCode, row.KeyCode) << row.Name;
        EXPECT_EQ(stroke->Shift, row.Shift) << row.Name;
        EXPECT_EQ(stroke->CharCode, row.CharCode) << row.Name;
    }
}

TEST(Keyboard, UnknownKeysAreRefused) {
    for (const char *name : {"", "F0", "F13", "F1x", "Entr", "Shift+", "NumX", "AB"})
        EXPECT_FALSE(KeyNamed(name)) << name;
}

TEST(Keyboard, TextsBecomeTheStrokesOfAKeyboard) {
    const auto strokes = StrokesOf("Ab/.,' ?9");
    const KeyRow rows[] = {{"", 65, 1, 'A'},  {"", 66, 0, 'b'},  {"", 191, 0, '/'},
                           {"", 190, 0, '.'}, {"", 188, 0, ','}, {"", 222, 0, '\''},
                           {"", 32, 0, ' '},  {"", 191, 1, '?'}, {"", 57, 0, '9'}};
    ASSERT_EQ(strokes.size(), std::size(rows));
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        EXPECT_EQ(strokes[i].KeyCode, rows[i].KeyCode) << i;
        EXPECT_EQ(strokes[i].Shift, rows[i].Shift) << i;
        EXPECT_EQ(strokes[i].CharCode, rows[i].CharCode) << i;
    }
}

// On a US keyboard the two share a key; the apostrophe is known by its character all the same.
TEST(Keyboard, AQuotationMarkHasNotTheCodeOfTheApostrophe) {
    const KeyStroke apostrophe = StrokesOf("'").at(0);
    EXPECT_EQ(apostrophe.KeyCode, kKeyApostrophe);
    EXPECT_EQ(apostrophe.Shift, 0);
    const KeyStroke quotation = StrokesOf("\"").at(0);
    EXPECT_EQ(quotation.KeyCode, 231);
    EXPECT_EQ(quotation.Shift, kShift);
    EXPECT_EQ(quotation.CharCode, '"');
    EXPECT_EQ(KeyNamed("\"").value().KeyCode, 231);
}

TEST(Keyboard, EveryCharacterHasAKeyCodeSoThatAHandlerSeesIt) {
    for (int c = 32; c < 127; ++c)
        EXPECT_NE(StrokesOf(std::string(1, static_cast<char>(c))).at(0).KeyCode, 0) << c;
}

// Windows are registered for as long as the process lives.
struct TestWindows {
    Form FieldWindow, ListWindow;
    TextBox Text;
    Button Go;
    ListBox List;
    ScrollBar Bar;
};
TestWindows Windows;

class Field : public testing::Test {
  protected:
    void SetUp() override {
        InstallHeadlessDoors();
        Windows = {};
        RegisterForm(Window, "FieldWindow", "a test", {{"txt", &Text, ""}, {"cmd", &Go, ""}});
        ShowForm(Window);
        SetFocus(Text);
        Text.Change = [this] { ++Changes; };
    }
    void Press(const std::vector<const char *> &keys) {
        for (const char *key : keys)
            PressKey(Window, KeyNamed(key).value());
    }
    void Type(const std::string &text) {
        for (const KeyStroke &stroke : StrokesOf(text))
            PressKey(Window, stroke);
    }

    Form &Window = Windows.FieldWindow;
    TextBox &Text = Windows.Text;
    Button &Go = Windows.Go;
    int Changes = 0;
};

TEST_F(Field, TypingInsertsAtTheCaret) {
    Type("K1C");
    Press({"Left"});
    Type("AB");
    EXPECT_EQ(Text.Text, "K1ABC");
    EXPECT_EQ(Text.SelStart, 4);
    EXPECT_EQ(Changes, 5);
}

TEST_F(Field, BackspaceAndDeleteRemoveAroundTheCaret) {
    Type("ABCD");
    Press({"Left", "Left", "Backspace", "Delete"});
    EXPECT_EQ(Text.Text, "AD");
    EXPECT_EQ(Text.SelStart, 1);
}

TEST_F(Field, AtTheEndsNothingIsRemovedAndNothingIsTold) {
    Type("A");
    Press({"Delete", "Home", "Backspace"});
    EXPECT_EQ(Text.Text, "A");
    EXPECT_EQ(Changes, 1);
}

TEST_F(Field, ShiftAndArrowsSelectAndTypingReplaces) {
    Type("ABCD");
    Press({"Shift+Left", "Shift+Left"});
    EXPECT_EQ(Text.SelStart, 2);
    EXPECT_EQ(Text.SelLength, 2);
    Press({"Shift+Right"});
    EXPECT_EQ(Text.SelStart, 3);
    EXPECT_EQ(Text.SelLength, 1);
    Type("x");
    EXPECT_EQ(Text.Text, "ABCx");
    EXPECT_EQ(Text.SelLength, 0);
}

TEST_F(Field, ShiftHomeAndShiftEndSelectToTheEnds) {
    Type("ABCD");
    Press({"Left", "Shift+Home"});
    EXPECT_EQ(Text.SelStart, 0);
    EXPECT_EQ(Text.SelLength, 3);
    Press({"Shift+End"});
    EXPECT_EQ(Text.SelStart, 3);
    EXPECT_EQ(Text.SelLength, 1);
    Press({"Delete"});
    EXPECT_EQ(Text.Text, "ABC");
}

TEST_F(Field, AnArrowWithoutShiftLeavesTheSelectionAtItsEnd) {
    Type("ABCD");
    Press({"Shift+Left", "Shift+Left", "Left"});
    EXPECT_EQ(Text.SelStart, 2);
    EXPECT_EQ(Text.SelLength, 0);
    Press({"Shift+Home", "Right"});
    EXPECT_EQ(Text.SelStart, 2);
    EXPECT_EQ(Text.SelLength, 0);
}

TEST_F(Field, ASelectionMadeByTheProgramIsReplaced) {
    Text.Text = "599 14";
    Text.SelStart = 4;
    Text.SelLength = 2;
    Type("5");
    EXPECT_EQ(Text.Text, "599 5");
}

TEST_F(Field, ASelectionOutsideTheTextIsNoHarm) {
    Text.Text = "AB";
    Text.SelStart = 7;
    Text.SelLength = 9;
    Type("C");
    EXPECT_EQ(Text.Text, "ABC");
}

TEST_F(Field, KeysThatTheHandlerUsesUpNeverReachTheField) {
    Text.KeyDown = [](int &keyCode, int) { keyCode = keyCode == kKeyLeft ? 0 : keyCode; };
    Text.KeyPress = [](int &c) { c = c == '!' ? 0 : c == 'a' ? 'Z' : c; };
    Type("a!b");
    Press({"Left"});
    EXPECT_EQ(Text.Text, "Zb");
    EXPECT_EQ(Text.SelStart, 2);
}

TEST_F(Field, TabGoesAroundTheStops) {
    Press({"Tab"});
    EXPECT_EQ(Window.ActiveControl, &Go);
    Press({"Tab"});
    EXPECT_EQ(Window.ActiveControl, &Text);
    Press({"Shift+Tab"});
    EXPECT_EQ(Window.ActiveControl, &Go);
}

TEST_F(Field, SpaceAndEnterPressTheFocusedButton) {
    int clicks = 0;
    Go.Click = [&] { ++clicks; };
    SetFocus(Go);
    Press({"Space", "Enter", "A"});
    EXPECT_EQ(clicks, 2);
}

TEST_F(Field, TheFirstKeyGivesTheFocusWhereNobodyHasIt) {
    Window.ActiveControl = nullptr;
    Type("A");
    EXPECT_EQ(Text.Text, "A");
}

TEST_F(Field, EveryKeyIsRememberedUntilTheProgramAsks) {
    Press({"Esc"});
    EXPECT_TRUE(KeyState.Pressed(kKeyEsc));
    EXPECT_FALSE(KeyState.Pressed(kKeyEsc));
    Devices.KeysDown.insert(kKeyEsc);
    EXPECT_TRUE(KeyState.Pressed(kKeyEsc));
    EXPECT_TRUE(KeyState.Pressed(kKeyEsc));
}

TEST_F(Field, OtherCharactersGoInAsUtf8) {
    Type("\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(Text.Text, "\xC3\xA4\xE2\x82\xAC");
}

TEST_F(Field, ADisabledFieldKeepsItsText) {
    Text.Enabled = false;
    Type("A");
    EXPECT_EQ(Text.Text, "");
}

class Lists : public testing::Test {
  protected:
    void SetUp() override {
        InstallHeadlessDoors();
        Windows = {};
        RegisterForm(Window, "ListWindow", "a test", {{"lst", &List, ""}, {"hsb", &Bar, ""}});
        ShowForm(Window);
    }
    void Press(const char *key) { PressKey(Window, KeyNamed(key).value()); }

    Form &Window = Windows.ListWindow;
    ListBox &List = Windows.List;
    ScrollBar &Bar = Windows.Bar;
};

TEST_F(Lists, ArrowsMoveInAListAndClickIt) {
    int clicks = 0;
    List.Rows = {"a", "b", "c"};
    List.Click = [&] { ++clicks; };
    SetFocus(List);
    Press("Down");
    EXPECT_EQ(List.ListIndex, 0);
    Press("End");
    EXPECT_EQ(List.ListIndex, 2);
    Press("Down");
    EXPECT_EQ(List.ListIndex, 2);
    EXPECT_EQ(clicks, 2);
    Press("Up");
    Press("Home");
    EXPECT_EQ(List.ListIndex, 0);
}

TEST_F(Lists, AnEmptyListStaysAsItIs) {
    SetFocus(List);
    Press("Down");
    EXPECT_EQ(List.ListIndex, -1);
}

TEST_F(Lists, ArrowsMoveAScrollBarInsideItsLimits) {
    int changes = 0;
    Bar.Min = 0;
    Bar.Max = 15;
    Bar.Change = [&] { ++changes; };
    SetFocus(Bar);
    Press("Right");
    Press("PageDown");
    EXPECT_EQ(Bar.Value, 11);
    Press("PageDown");
    EXPECT_EQ(Bar.Value, 15);
    Press("Right");
    EXPECT_EQ(changes, 3);
    Press("Home");
    EXPECT_EQ(Bar.Value, 0);
}

} // namespace
} // namespace zrt
