#include "platform/controls.h"

#include "support/program.h"

#include <gmock/gmock.h>

namespace zrt {
namespace {

using testing::ElementsAre;

struct TestForm : Form {
    TextBox First, Second;
    CheckBox Check;
    std::array<OptionButton, 4> Options; // two groups of two
    Button Ok, Cancel;
    Label Text;
    MenuItem Menu;
};

class Controls : public ProgramTest {
  protected:
    Controls() {
        form = {};
        form.Options[2].Group = form.Options[3].Group = 1;
        form.Ok.Default = true;
        form.Cancel.Cancel = true;
        form.Ok.Click = [this] { said.emplace_back("ok"); };
        form.Cancel.Click = [this] { said.emplace_back("cancel"); };
        RegisterForm(form, "TestForm", "for the test",
                     {{"Text", &form.Text, "text"},
                      {"First", &form.First, "first"},
                      {"Check", &form.Check, "check"},
                      {"Menu", &form.Menu, "menu"},
                      {"Second", &form.Second, "second"},
                      {"Options(0)", &form.Options[0], "option"},
                      {"Options(1)", &form.Options[1], "option"},
                      {"Options(2)", &form.Options[2], "option"},
                      {"Options(3)", &form.Options[3], "option"},
                      {"Ok", &form.Ok, "ok"},
                      {"Cancel", &form.Cancel, "cancel"}});
        form.ActiveControl = &form.First;
    }
    ~Controls() override { RegisterForm(form, "", "", {}); }

    static TestForm form; // the registered forms keep their addresses
    std::vector<std::string> said;
};
TestForm Controls::form;

TEST_F(Controls, AFieldIsOfferedOnlyTheCharactersThatItTakes) {
    form.First.Takes = [](int c) { return c == 'A' || c == ' '; };
    EXPECT_EQ(OfferKey(form, {'A', 0, 'A'}).CharCode, 'A');
    EXPECT_EQ(OfferKey(form, {kKeySpace, 0, 0xA0}).CharCode, ' ');
    EXPECT_FALSE(OfferKey(form, {kKeyEnd, 0, 0}).Used);
    EXPECT_TRUE(OfferKey(form, {'B', 0, 'B'}).Used);
    form.First.KeyPress = [](int &charCode) { charCode -= 1; };
    EXPECT_EQ(OfferKey(form, {'B', 0, 'B'}).CharCode, 'A'); // as the handler leaves it
}

TEST_F(Controls, FocusLeavesBeforeItArrives) {
    form.First.LostFocus = [this] { said.emplace_back("first lost"); };
    form.Second.GotFocus = [this] { said.emplace_back("second got"); };
    SetFocus(form.Second);
    EXPECT_THAT(said, ElementsAre("first lost", "second got"));
    EXPECT_EQ(form.ActiveControl, &form.Second);
}

TEST_F(Controls, FocusOnTheSameControlSaysNothing) {
    form.First.LostFocus = form.First.GotFocus = [this] { said.emplace_back("first"); };
    SetFocus(form.First);
    EXPECT_TRUE(said.empty());
}

TEST_F(Controls, FocusThatIsSentElsewhereOnLeavingDoesNotArrive) {
    form.First.LostFocus = [] { SetFocus(form.Check); };
    form.Second.GotFocus = [this] { said.emplace_back("second got"); };
    form.Check.GotFocus = [this] { said.emplace_back("check got"); };
    SetFocus(form.Second);
    EXPECT_EQ(form.ActiveControl, &form.Check);
    EXPECT_THAT(said, ElementsAre("check got"));
}

TEST_F(Controls, TabGoesAroundWhatTakesTheFocus) {
    form.Second.Enabled = false;
    form.Options[1].Visible = false;
    std::vector<Control *> round;
    for (int i = 0; i < 7; ++i) {
        form.ActiveControl = NextTabStop(form, false);
        round.push_back(form.ActiveControl);
    }
    EXPECT_THAT(round, ElementsAre(&form.Check, &form.Options[0], &form.Options[2],
                                   &form.Options[3], &form.Ok, &form.Cancel, &form.First));
    EXPECT_EQ(NextTabStop(form, true), &form.Cancel);
}

TEST_F(Controls, TabGoesPastWhatIsLeftToTheMouse) {
    form.Check.Focusable = false;
    EXPECT_FALSE(TakesFocus(form.Check));
    form.ActiveControl = &form.First;
    EXPECT_EQ(NextTabStop(form, false), &form.Second);
    EXPECT_EQ(NextTabStop(form, true), &form.Cancel);
    ClickControl(form.Check);
    EXPECT_TRUE(form.Check.Checked);
}

TEST_F(Controls, TabStaysWhereOneControlTakesTheFocus) {
    for (const NamedControl &named : RegistrationOf(form).Controls)
        named.Record->Visible = named.Record == &form.First;
    EXPECT_EQ(NextTabStop(form, false), &form.First);
    EXPECT_EQ(NextTabStop(form, true), &form.First);
    form.First.Visible = false;
    EXPECT_EQ(NextTabStop(form, false), nullptr);
}

TEST_F(Controls, TabFromAControlThatCantTakeTheFocusGoesToItsNeighbour) {
    form.ActiveControl = &form.Check;
    form.Check.Enabled = false;
    EXPECT_EQ(NextTabStop(form, false), &form.Second);
    EXPECT_EQ(NextTabStop(form, true), &form.First);
}

TEST_F(Controls, ClicksChangeTheRecordAndThenTell) {
    form.Check.Click = [this] { said.emplace_back(form.Check.Checked ? "on" : "off"); };
    ClickControl(form.Check);
    ClickControl(form.Check);
    EXPECT_THAT(said, ElementsAre("on", "off"));
    form.Check.Enabled = false;
    ClickControl(form.Check);
    EXPECT_EQ(said.size(), 2U);
    EXPECT_FALSE(form.Check.Checked);
}

TEST_F(Controls, AnOptionClearsTheOthersOfItsGroup) {
    ClickControl(form.Options[0]);
    ClickControl(form.Options[3]);
    ClickControl(form.Options[1]);
    EXPECT_FALSE(form.Options[0].Value);
    EXPECT_TRUE(form.Options[1].Value);
    EXPECT_FALSE(form.Options[2].Value);
    EXPECT_TRUE(form.Options[3].Value);
}

TEST_F(Controls, ACallbackMayReplaceItself) {
    form.Check.Click = [this] {
        form.Check.Click = nullptr;
        said.emplace_back("once");
    };
    ClickControl(form.Check);
    ClickControl(form.Check);
    EXPECT_THAT(said, ElementsAre("once"));
}

TEST_F(Controls, TheCloseBoxHidesUnlessTheFormServesIt) {
    ShowForm(form);
    CloseForm(form);
    EXPECT_FALSE(form.Visible);
    ShowForm(form);
    form.CloseBox = [this] { said.emplace_back("asked"); };
    CloseForm(form);
    EXPECT_TRUE(form.Visible);
    EXPECT_THAT(said, ElementsAre("asked"));
    HideForm(form); // the program's own way asks nobody
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(said.size(), 1U);
}

// ---- OfferKey

TEST_F(Controls, EscPressesTheCancelButton) {
    const KeyOutcome outcome = OfferKey(form, {kKeyEsc, 0, 0});
    EXPECT_TRUE(outcome.Used);
    EXPECT_THAT(said, ElementsAre("cancel"));
}

TEST_F(Controls, EnterPressesTheButtonWithTheFocusOrElseTheDefaultOne) {
    OfferKey(form, {kKeyEnter, 0, 13});
    form.ActiveControl = &form.Cancel;
    OfferKey(form, {kKeyEnter, 0, 13});
    EXPECT_THAT(said, ElementsAre("ok", "cancel"));
}

TEST_F(Controls, AButtonThatIsHiddenOrDisabledIsPressedByNoKey) {
    form.Ok.Enabled = false;
    form.Cancel.Visible = false;
    std::vector<int> keys;
    form.First.KeyDown = [&keys](int &keyCode, int) { keys.push_back(keyCode); };
    OfferKey(form, {kKeyEsc, 0, 0});
    OfferKey(form, {kKeyEnter, 0, 13});
    EXPECT_TRUE(said.empty());
    EXPECT_THAT(keys, ElementsAre(kKeyEsc, kKeyEnter)); // the field gets them
}

TEST_F(Controls, KeyDownComesBeforeKeyPress) {
    form.First.KeyDown = [this](int &keyCode, int shift) {
        said.push_back("down " + std::to_string(keyCode) + " " + std::to_string(shift));
    };
    form.First.KeyPress = [this](int &charCode) {
        said.push_back("press " + std::to_string(charCode));
    };
    const KeyOutcome outcome = OfferKey(form, {'A', kShift, 'A'});
    EXPECT_THAT(said, ElementsAre("down 65 1", "press 65"));
    EXPECT_FALSE(outcome.Used);
    EXPECT_EQ(outcome.CharCode, 'A');
    EXPECT_EQ(form.First.Text, ""); // the field edits itself later
}

TEST_F(Controls, AKeyThatIsSetToZeroIsUsedUp) {
    form.First.KeyDown = [](int &keyCode, int) { keyCode = kKeyNone; };
    form.First.KeyPress = [this](int &) { said.emplace_back("press"); };
    EXPECT_TRUE(OfferKey(form, {'A', 0, 'a'}).Used);
    EXPECT_TRUE(said.empty());
}

TEST_F(Controls, ACharacterMayBeChangedOrUsedUp) {
    form.First.KeyPress = [](int &charCode) { charCode = charCode == 'a' ? 'A' : 0; };
    EXPECT_EQ(OfferKey(form, {'A', 0, 'a'}).CharCode, 'A');
    const KeyOutcome outcome = OfferKey(form, {'B', 0, 'b'});
    EXPECT_TRUE(outcome.Used);
    EXPECT_EQ(outcome.CharCode, 0);
}

TEST_F(Controls, AKeyWithoutACharacterHasNoKeyPress) {
    form.First.KeyPress = [this](int &) { said.emplace_back("press"); };
    EXPECT_FALSE(OfferKey(form, {kKeyF1, 0, 0}).Used);
    EXPECT_TRUE(said.empty());
}

TEST_F(Controls, AKeyForAControlWithoutTextIsLeftToIt) {
    form.ActiveControl = &form.Check;
    const KeyOutcome outcome = OfferKey(form, {kKeySpace, 0, ' '});
    EXPECT_FALSE(outcome.Used);
    EXPECT_EQ(outcome.CharCode, ' ');
}

// ---- forms

TEST_F(Controls, TheActiveFormIsTheModalOneOrTheOneInFront) {
    static Form other;
    RegisterForm(other, "Other", "for the test", {});
    EXPECT_EQ(ActiveForm(), nullptr);
    ShowForm(other);
    ShowForm(form);
    EXPECT_EQ(ActiveForm(), &form);
    HideForm(form);
    EXPECT_EQ(ActiveForm(), &other);
    Screen.Modal.push_back(&form);
    EXPECT_EQ(ActiveForm(), &form);
    Screen.Modal.clear();
    RegisterForm(other, "", "", {});
    HideForm(other);
}

TEST_F(Controls, FormsAndControlsAreFoundByTheirNames) {
    const NamedForm *named = FindForm("TestForm");
    ASSERT_NE(named, nullptr);
    EXPECT_EQ(named->Record, &form);
    EXPECT_EQ(FindControl(*named, "Second")->Record, &form.Second);
    EXPECT_EQ(FindControl(*named, "Third"), nullptr);
    EXPECT_EQ(FindForm("testform"), nullptr);
}

} // namespace
} // namespace zrt
