// The commands that do what an operator, a radio or the time does.
#include "headless/keyboard.h"
#include "headless/scenario_run.h"
#include "headless/window_probe.h"
#include "platform/events.h"
#include "platform/program.h"

#include <algorithm>

namespace zrt {

namespace {

const std::string &Word(const ScriptLine &line, std::size_t index) {
    return line.Words[index].Text;
}

// ---- what the operator can reach

Form &FormWithKeyboard() {
    Form *form = ActiveForm();
    if (form == nullptr)
        CannotDo("no window shows");
    return *form;
}

// The operator turns to a window: it must show, and no modal one may stand before it.
void TurnTo(const NamedForm &form) {
    if (!form.Record->Visible)
        CannotDo(form.Name + " does not show");
    if (ActiveForm() == form.Record)
        return;
    if (!Screen.Modal.empty())
        CannotDo(form.Name + " waits for " + RegistrationOf(*Screen.Modal.back()).Name);
    ShowForm(*form.Record);
}

Target ControlNamed(const std::string &name) {
    Target target = FindTarget(name, false);
    if (target.Control == nullptr)
        CannotDo("no such control: " + name);
    TurnTo(*target.Form);
    return target;
}

// A control that the operator sees and can use. Takes the focus if it is of a kind that does.
Control &UsableControl(const std::string &name) {
    const Target target = ControlNamed(name);
    Control &control = *target.Control->Record;
    if (!control.Visible)
        CannotDo(NameOfTarget(target) + " is hidden");
    if (!control.Enabled)
        CannotDo(NameOfTarget(target) + " is disabled");
    if (TakesFocus(control))
        SetFocus(control);
    return control;
}

template <class Record>
Record &UsableRecord(const std::string &name, ControlKind kind, const char *what) {
    const Target target = ControlNamed(name);
    if (target.Control->Record->Kind != kind)
        CannotDo(NameOfTarget(target) + " is no " + what);
    return static_cast<Record &>(UsableControl(name));
}

// ---- keyboard and mouse

void DoKey(const ScriptLine &line) {
    const auto stroke = KeyNamed(Word(line, 1));
    if (!stroke)
        CannotDo("no such key: " + Word(line, 1));
    PressKey(FormWithKeyboard(), *stroke);
}

void DoType(const ScriptLine &line) {
    for (const KeyStroke &stroke : StrokesOf(Word(line, 1))) {
        if (Program.Ending)
            return;
        PressKey(FormWithKeyboard(), stroke);
    }
}

void DoFocus(const ScriptLine &line) {
    if (!TakesFocus(UsableControl(Word(line, 1))))
        CannotDo(Word(line, 1) + " takes no focus");
}

void DoClick(const ScriptLine &line) {
    const Target target = ControlNamed(Word(line, 1));
    const ControlKind kind = target.Control->Record->Kind;
    if (kind == ControlKind::MenuItem || kind == ControlKind::Timer)
        CannotDo(NameOfTarget(target) + " can't be clicked");
    ClickControl(UsableControl(Word(line, 1)));
}

void DoDoubleClick(const ScriptLine &line) {
    auto &list = UsableRecord<ListBox>(Word(line, 1), ControlKind::ListBox, "list");
    if (const auto doubleClick = list.DoubleClick)
        doubleClick();
}

// A menu entry can be chosen if it and all the menus above it show and are enabled.
void CheckMenuEntry(const Target &target) {
    const NamedControl *item = target.Control;
    for (std::size_t depth = 0; item != nullptr && depth < target.Form->Controls.size(); ++depth) {
        if (!item->Record->Visible)
            CannotDo("the menu entry " + item->Name + " is hidden");
        if (!item->Record->Enabled)
            CannotDo("the menu entry " + item->Name + " is disabled");
        if (item->Record->Kind != ControlKind::MenuItem)
            CannotDo(item->Name + " is no menu entry");
        item = FindControl(*target.Form, static_cast<const MenuItem *>(item->Record)->Parent);
    }
}

void DoMenu(const ScriptLine &line) {
    const Target target = ControlNamed(Word(line, 1));
    CheckMenuEntry(target);
    auto &item = static_cast<MenuItem &>(*target.Control->Record);
    if (!item.Click)
        CannotDo(NameOfTarget(target) + " does nothing");
    ClickControl(item);
}

void DoChoose(const ScriptLine &line) {
    auto &list = UsableRecord<ListBox>(Word(line, 1), ControlKind::ListBox, "list");
    const ScriptWord &wanted = line.Words[2];
    const int rows = static_cast<int>(list.Rows.size());
    const auto number = wanted.Quoted ? std::nullopt : WholeNumber(wanted.Text);
    const auto found = std::find(list.Rows.begin(), list.Rows.end(), wanted.Text);
    const long long row = number.value_or(found - list.Rows.begin());
    if (row < 0 || row >= rows)
        CannotDo("no such row: " + wanted.Text);
    list.ListIndex = static_cast<int>(row);
    if (const auto click = list.Click)
        click();
}

void SetScrollBar(ScrollBar &bar, const std::string &text) {
    const auto value = WholeNumber(text);
    if (!value || *value < std::min(bar.Min, bar.Max) || *value > std::max(bar.Min, bar.Max))
        CannotDo("not a position of the scroll bar: " + text);
    const int before = bar.Value;
    bar.Value = static_cast<int>(*value);
    const auto change = bar.Change;
    if (bar.Value != before && change)
        change();
}

void DoSet(const ScriptLine &line) {
    const Target target = ControlNamed(Word(line, 1));
    const ControlKind kind = target.Control->Record->Kind;
    if (kind != ControlKind::TextBox && kind != ControlKind::ScrollBar)
        CannotDo(NameOfTarget(target) + " is neither a field nor a scroll bar");
    Control &control = UsableControl(Word(line, 1));
    if (kind == ControlKind::TextBox)
        EnterText(static_cast<TextBox &>(control), Word(line, 2));
    else
        SetScrollBar(static_cast<ScrollBar &>(control), Word(line, 2));
}

void DoCheck(const ScriptLine &line) {
    const std::string &state = Word(line, 2);
    if (state != "on" && state != "off")
        CannotDo("a check box is on or off");
    auto &box = UsableRecord<CheckBox>(Word(line, 1), ControlKind::CheckBox, "check box");
    if (box.Checked != (state == "on"))
        ClickControl(box);
}

void DoClose(const ScriptLine &line) {
    const NamedForm *form = FindForm(Word(line, 1));
    if (form == nullptr)
        CannotDo("no such form: " + Word(line, 1));
    TurnTo(*form);
    if (!form->Record->HasCloseBox)
        CannotDo(form->Name + " has no close box");
    CloseForm(*form->Record);
}

void DoExit(const ScriptLine & /*line*/) {
    Run.Program.Exit();
}

// ---- answers

void DoAnswer(const ScriptLine &line) {
    constexpr BoxAnswer answers[] = {BoxAnswer::Ok,    BoxAnswer::Cancel, BoxAnswer::Abort,
                                     BoxAnswer::Retry, BoxAnswer::Ignore, BoxAnswer::Yes,
                                     BoxAnswer::No};
    const std::string word = Word(line, 1) == "OK" ? "Ok" : Word(line, 1);
    for (const BoxAnswer answer : answers) {
        if (word == NameOfAnswer(answer)) {
            Devices.Answers.push_back(answer);
            return;
        }
    }
    CannotDo("no box has a button " + Word(line, 1));
}

void DoAnswerFile(const ScriptLine &line) {
    const ScriptWord &word = line.Words[1];
    if (word.Text == "cancel" && !word.Quoted)
        Devices.FileAnswers.emplace_back(std::nullopt);
    else
        Devices.FileAnswers.emplace_back(InProgramFolder(word.Text));
}

// ---- time

// Milliseconds of a word, as microseconds of the clock.
Microseconds TimeOf(const std::string &text) {
    constexpr long long longest = 1000LL * 24 * 3600 * 1000;
    const auto number = WholeNumber(text);
    if (!number || *number < 0 || *number > longest)
        CannotDo("not a time in milliseconds: " + text);
    return *number * kMillisecond;
}

void DoWait(const ScriptLine &line) {
    // Not PumpUntil of platform/: its depth tells the program that it is inside a wait of its own.
    Events.PumpUntil(Devices.Steady + TimeOf(Word(line, 1)), [] { return false; });
}

void DoAt(const ScriptLine &line) {
    const Microseconds due = Devices.Steady + TimeOf(Word(line, 1));
    ScriptLine later = line;
    later.Words.erase(later.Words.begin(), later.Words.begin() + 2);
    if (FindCommand(later.Words[0].Text) == nullptr)
        CannotDo("not known: " + later.Words[0].Text);
    Schedule(due, [later] { RunLine(later); });
}

// ---- ports

std::string BytesFrom(const ScriptLine &line, std::size_t first) {
    const auto bytes = BytesOf(line.Words, first);
    if (!bytes)
        CannotDo("neither a text in quotes nor hex bytes");
    return *bytes;
}

void DoArrive(const ScriptLine &line) {
    const std::string &port = Word(line, 1);
    const bool split = Word(line, 2) == "split" && !line.Words[2].Quoted;
    const std::string bytes = BytesFrom(line, split ? 3 : 2);
    const std::size_t step = split ? 1 : std::max<std::size_t>(bytes.size(), 1);
    for (std::size_t at = 0; at < bytes.size(); at += step)
        if (!ArriveAtPort(port, std::string_view(bytes).substr(at, step)))
            CannotDo(port + " is not open");
}

// Two words, or more hex bytes with "->" between.
void DoReply(const ScriptLine &line) {
    const auto &words = line.Words;
    const auto arrow = std::find_if(words.begin() + 2, words.end(), [](const ScriptWord &word) {
        return word.Text == "->" && !word.Quoted;
    });
    const bool hasArrow = arrow != words.end();
    if (!hasArrow && words.size() != 4)
        CannotDo("reply wants what is written and what arrives, with -> between many bytes");
    const auto middle = hasArrow ? arrow : words.begin() + 3;
    const auto request = BytesOf({words.begin() + 2, middle}, 0);
    const auto reply = BytesOf({hasArrow ? middle + 1 : middle, words.end()}, 0);
    if (!request || !reply || request->empty())
        CannotDo("neither a text in quotes nor hex bytes");
    SetReply(Word(line, 1), *request, *reply);
}

using Times = CommandRow::Times;

constexpr CommandRow kCommands[] = {
    {"key", 1, 1, DoKey, Times::Running},
    {"type", 1, 1, DoType, Times::Running},
    {"focus", 1, 1, DoFocus, Times::Running},
    {"click", 1, 1, DoClick, Times::Running},
    {"doubleclick", 1, 1, DoDoubleClick, Times::Running},
    {"menu", 1, 1, DoMenu, Times::Running},
    {"choose", 2, 2, DoChoose, Times::Running},
    {"set", 2, 2, DoSet, Times::Running},
    {"check", 2, 2, DoCheck, Times::Running},
    {"close", 1, 1, DoClose, Times::Running},
    {"exit", 0, 0, DoExit, Times::Running},
    {"answer", 1, 1, DoAnswer, Times::Always},
    {"answer-file", 1, 1, DoAnswerFile, Times::Always},
    {"wait", 1, 1, DoWait, Times::Running},
    {"at", 2, kAnyNumber, DoAt, Times::Always},
    {"arrive", 2, kAnyNumber, DoArrive, Times::Running},
    {"reply", 3, kAnyNumber, DoReply, Times::Always},
};

} // namespace

std::span<const CommandRow> ActingCommands() {
    return kCommands;
}

} // namespace zrt
