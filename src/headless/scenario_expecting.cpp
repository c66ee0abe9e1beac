// The commands that look: at windows, boxes, the session, ports, sound and files.
#include "headless/scenario_run.h"
#include "headless/window_probe.h"
#include "platform/files.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <utility>

namespace zrt {

namespace {

const std::string &Word(const ScriptLine &line, std::size_t index) {
    return line.Words[index].Text;
}

void Expect(const std::string &what, const std::string &expected, const std::string &got) {
    if (got != expected)
        FailExpectation(what + " " + Quoted(expected), Quoted(got));
}

// ---- windows

Target TargetNamed(const std::string &name, bool withProperty) {
    Target target = FindTarget(name, withProperty);
    if (target.Form == nullptr)
        CannotDo("no such " + std::string(withProperty ? "property" : "control") + ": " + name);
    return target;
}

std::string PropertyNamed(const std::string &name) {
    const Target target = TargetNamed(name, true);
    const auto text = PropertyText(target);
    if (!text)
        CannotDo("no such property: " + NameOfTarget(target));
    return *text;
}

void DoExpect(const ScriptLine &line) {
    Expect(Word(line, 1), Word(line, 2), PropertyNamed(Word(line, 1)));
}

void DoExpectMatch(const ScriptLine &line) {
    const std::string got = PropertyNamed(Word(line, 1));
    bool matches = false;
    try {
        matches = std::regex_search(got, std::regex(Word(line, 2)));
    } catch (const std::regex_error &) {
        CannotDo("not a regular expression: " + Word(line, 2));
    }
    if (!matches)
        FailExpectation(Word(line, 1) + " to match " + Quoted(Word(line, 2)), Quoted(got));
}

std::string FocusedName() {
    const Form *form = ActiveForm();
    if (form == nullptr)
        return "no window";
    const NamedForm &named = RegistrationOf(*form);
    for (const NamedControl &control : named.Controls)
        if (control.Record == form->ActiveControl)
            return NameOfTarget({&named, &control, {}});
    return "no control of " + named.Name;
}

void DoExpectFocus(const ScriptLine &line) {
    const Target target = TargetNamed(Word(line, 1), false);
    if (target.Control == nullptr)
        CannotDo("no such control: " + Word(line, 1));
    const std::string expected = NameOfTarget(target);
    const std::string got = FocusedName();
    if (got != expected)
        FailExpectation("the focus on " + expected, got);
}

void DoExpectForm(const ScriptLine &line) {
    const NamedForm *form = FindForm(Word(line, 1));
    if (form == nullptr)
        CannotDo("no such form: " + Word(line, 1));
    const std::string &state = Word(line, 2);
    if (state != "open" && state != "hidden")
        CannotDo("a form is open or hidden");
    const std::string got = form->Record->Visible ? "open" : "hidden";
    if (got != state)
        FailExpectation(form->Name + " " + state, got);
}

std::string StateNamed(const std::string &name) {
    const auto value = Run.Program.StateValue(name);
    if (!value)
        CannotDo("no such value of the session: " + name);
    return *value;
}

void DoExpectState(const ScriptLine &line) {
    Expect(Word(line, 1), Word(line, 2), StateNamed(Word(line, 1)));
}

// ---- boxes

ShownBox *OldestUnexpected() {
    const auto found = std::find_if(Devices.Boxes.begin(), Devices.Boxes.end(),
                                    [](const ShownBox &box) { return !box.Expected; });
    return found == Devices.Boxes.end() ? nullptr : &*found;
}

bool Fits(const std::string &wanted, const std::string &text) {
    return wanted == "*" || wanted == text;
}

std::string TitleAndText(const MessageBox &box) {
    return Quoted(box.Title) + " " + Quoted(box.Text);
}

void DoExpectBox(const ScriptLine &line) {
    const std::string expected = "the box " + Quoted(Word(line, 1)) + " " + Quoted(Word(line, 2));
    ShownBox *shown = OldestUnexpected();
    if (shown == nullptr)
        FailExpectation(expected, "no box");
    if (!Fits(Word(line, 1), shown->Box.Title) || !Fits(Word(line, 2), shown->Box.Text))
        FailExpectation(expected, TitleAndText(shown->Box));
    shown->Expected = true;
}

void DoExpectNoBox(const ScriptLine & /*line*/) {
    ExpectNoBoxLeft("no box");
}

void DoSkipBoxes(const ScriptLine & /*line*/) {
    while (ShownBox *shown = OldestUnexpected())
        shown->Expected = true;
}

// ---- ports and sound

void DoExpectBytes(const ScriptLine &line) {
    const auto expected = BytesOf(line.Words, 2);
    if (!expected)
        CannotDo("neither a text in quotes nor hex bytes");
    PortState &port = Devices.Ports[Word(line, 1)];
    if (port.Written != *expected)
        FailExpectation(Word(line, 1) + " " + Quoted(*expected) + " (" + HexText(*expected) + ")",
                        Quoted(port.Written) + " (" + HexText(port.Written) + ")");
    port.Written.clear();
}

// A wave's path in the program folder, or its name alone if the script names it so.
bool IsWave(const std::string &wanted, const std::string &started) {
    if (NameOf(wanted) == wanted)
        return NameOf(started) == wanted;
    return started == wanted || started == WithSeparator(Devices.ProgramFolder) + wanted;
}

void DoExpectPlayed(const ScriptLine &line) {
    const auto &started = Devices.WavesStarted;
    bool same = started.size() + 1 == line.Words.size();
    std::string expected = "the waves";
    std::string got;
    for (std::size_t i = 1; i < line.Words.size(); ++i) {
        expected += " " + Quoted(Word(line, i));
        same = same && IsWave(Word(line, i), started[i - 1]);
    }
    for (const std::string &name : started)
        got += (got.empty() ? "" : " ") + Quoted(NameOf(name));
    if (!same)
        FailExpectation(expected, got.empty() ? "none" : got);
    Devices.WavesStarted.clear();
}

// ---- files

std::string PathOf(const ScriptLine &line) {
    FillFolder();
    return InProgramFolder(Word(line, 1));
}

std::string ExistingFile(const ScriptLine &line) {
    const std::string path = PathOf(line);
    if (!std::filesystem::is_regular_file(path))
        FailExpectation("the file " + Word(line, 1), "no such file");
    return TextOfFile(path);
}

// Takes a line with its end.
std::string_view TakeLine(std::string_view &rest) {
    const auto end = rest.find('\n');
    const std::string_view line = rest.substr(0, end == std::string_view::npos ? end : end + 1);
    rest.remove_prefix(line.size());
    return line;
}

void DoExpectFile(const ScriptLine &line) {
    if (!line.Block)
        CannotDo("expect-file wants a block");
    const std::string text = ExistingFile(line);
    std::string_view expected = *line.Block;
    std::string_view got = text;
    for (int number = 1; !expected.empty() || !got.empty(); ++number) {
        const std::string_view expectedLine = TakeLine(expected);
        const std::string_view gotLine = TakeLine(got);
        if (expectedLine != gotLine)
            FailExpectation(Word(line, 1) + " line " + std::to_string(number) + " " +
                                Quoted(expectedLine),
                            Quoted(gotLine));
    }
}

void DoExpectText(const ScriptLine &line) {
    if (ExistingFile(line).find(Word(line, 2)) == std::string::npos)
        FailExpectation(Word(line, 1) + " to hold " + Quoted(Word(line, 2)), "a file without it");
}

void DoExpectFileMatches(const ScriptLine &line) {
    const std::string got = ExistingFile(line);
    const std::string expected = TextOfFile(BesideFile(Word(line, 2)));
    if (got == expected)
        return;
    const auto [at, other] =
        std::mismatch(got.begin(), got.end(), expected.begin(), expected.end());
    const auto offset = static_cast<std::size_t>(at - got.begin());
    FailExpectation(Word(line, 1) + " (" + std::to_string(got.size()) + " bytes) to equal " +
                        Word(line, 2) + " (" + std::to_string(expected.size()) + " bytes)",
                    "a difference at offset " + std::to_string(offset) + ": expected " +
                        HexText(std::string_view(expected).substr(offset, 16)) + " got " +
                        HexText(std::string_view(got).substr(offset, 16)));
}

void DoExpectHex(const ScriptLine &line) {
    const auto offset = WholeNumber(Word(line, 2));
    const auto expected = BytesOf(line.Words, 3);
    if (!offset || *offset < 0)
        CannotDo("not an offset: " + Word(line, 2));
    if (!expected)
        CannotDo("neither a text in quotes nor hex bytes");
    const std::string file = ExistingFile(line);
    const auto at = static_cast<std::size_t>(*offset);
    const std::string got = at < file.size() ? file.substr(at, expected->size()) : std::string();
    if (got != *expected)
        FailExpectation(Word(line, 1) + " at " + Word(line, 2) + " " + HexText(*expected),
                        got.empty() ? "the end of the file" : HexText(got));
}

void DoExpectSize(const ScriptLine &line) {
    if (!WholeNumber(Word(line, 2)))
        CannotDo("not a size: " + Word(line, 2));
    const std::string got = std::to_string(ExistingFile(line).size());
    if (got != Word(line, 2))
        FailExpectation(Word(line, 1) + " of " + Word(line, 2) + " bytes", got);
}

void DoExpectNoFile(const ScriptLine &line) {
    if (std::filesystem::exists(PathOf(line)))
        FailExpectation("no file " + Word(line, 1), "one");
}

// ---- show

void ShowBoxes() {
    for (const ShownBox &shown : Devices.Boxes)
        Print(TitleAndText(shown.Box) + " answered " + NameOfAnswer(shown.Answer) + "\n");
    for (const FileDialog &dialog : Devices.FileDialogs)
        Print("file dialog " + Quoted(dialog.Title) + "\n");
}

// Each change with the milliseconds since the one before.
void ShowLines() {
    Microseconds before = Devices.Lines.empty() ? 0 : Devices.Lines.front().At;
    for (const LineChange &change : Devices.Lines) {
        const Microseconds tenths = (std::exchange(before, change.At) - change.At) / -100;
        Print(change.Line + " " + std::to_string(change.Value) + " " + std::to_string(tenths / 10) +
              "." + std::to_string(tenths % 10) + "\n");
    }
}

void ShowBytes(const std::string &name) {
    const std::string &written = Devices.Ports[name].Written;
    Print(name + " " + Quoted(written) + " (" + HexText(written) + ")\n");
}

void ShowWindow(const std::string &name) {
    const Target target = FindTarget(name, false);
    if (target.Control != nullptr)
        Print(ShowControl(*target.Control));
    else if (target.Form != nullptr)
        Print(ShowForm(*target.Form));
    else
        Print(name + " " + Quoted(PropertyNamed(name)) + "\n");
}

void DoShow(const ScriptLine &line) {
    const std::string &what = Word(line, 1);
    const bool ofSomething = line.Words.size() > 2;
    if (what == "state" && ofSomething)
        Print(Word(line, 2) + " " + Quoted(StateNamed(Word(line, 2))) + "\n");
    else if (what == "file" && ofSomething)
        Print(TextOfFile(InProgramFolder(Word(line, 2))));
    else if (what == "bytes" && ofSomething)
        ShowBytes(Word(line, 2));
    else if (ofSomething)
        CannotDo("show wants state, file or bytes before a name");
    else if (what == "boxes")
        ShowBoxes();
    else if (what == "lines")
        ShowLines();
    else
        ShowWindow(what);
}

using Times = CommandRow::Times;

constexpr CommandRow kCommands[] = {
    {"expect", 2, 2, DoExpect, Times::Always},
    {"expect-match", 2, 2, DoExpectMatch, Times::Always},
    {"expect-focus", 1, 1, DoExpectFocus, Times::Always},
    {"expect-box", 2, 2, DoExpectBox, Times::Always},
    {"expect-no-box", 0, 0, DoExpectNoBox, Times::Always},
    {"skip-boxes", 0, 0, DoSkipBoxes, Times::Always},
    {"expect-form", 2, 2, DoExpectForm, Times::Always},
    {"expect-state", 2, 2, DoExpectState, Times::Always},
    {"expect-bytes", 1, kAnyNumber, DoExpectBytes, Times::Always},
    {"expect-played", 0, kAnyNumber, DoExpectPlayed, Times::Always},
    {"expect-file", 1, 1, DoExpectFile, Times::Always},
    {"expect-text", 2, 2, DoExpectText, Times::Always},
    {"expect-file-matches", 2, 2, DoExpectFileMatches, Times::Always},
    {"expect-hex", 3, kAnyNumber, DoExpectHex, Times::Always},
    {"expect-size", 2, 2, DoExpectSize, Times::Always},
    {"expect-no-file", 1, 1, DoExpectNoFile, Times::Always},
    {"show", 1, 2, DoShow, Times::Always},
};

} // namespace

std::span<const CommandRow> ExpectingCommands() {
    return kCommands;
}

void ExpectNoBoxLeft(const std::string &expected) {
    if (const ShownBox *shown = OldestUnexpected())
        FailExpectation(expected, TitleAndText(shown->Box));
}

} // namespace zrt
