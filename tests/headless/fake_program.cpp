#include "headless/fake_program.h"

#include "headless/devices.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/program.h"
#include "platform/serial_port.h"
#include "platform/sound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include <unistd.h>

namespace zrt::test {

namespace {

namespace fs = std::filesystem;

struct MainWindow : Form {
    std::array<TextBox, 2> InData;
    CheckBox chkOne;
    std::array<OptionButton, 2> optSide;
    OptionButton optOther;
    ListBox lstRows;
    ScrollBar hsbScale;
    Button cmdGo, cmdOff;
    Label lblResult, lblReceived, lblHidden;
    Timer tmrTick;
    Picture picOut;
    MenuItem mnuFile, mnuOpen, mnuSave, mnuAsk, mnuPlay, mnuCrash, mnuLeave, mnuLoop, mnuOther,
        mnuHidden, mnuDisabled, mnuOff, mnuOffChild, mnuStill;
};

struct DialogWindow : Form {
    TextBox txtName;
    Button cmdOK, cmdCancel, cmdMore;
};

struct NestedWindow : Form {
    Button cmdDone;
};

struct OtherWindow : Form {
    Button cmdOther;
};

struct FakeState {
    MainWindow Main;
    DialogWindow Dialog;
    NestedWindow Nested;
    OtherWindow Other;
    int Ticks = 0, Changes = 0, Focuses = 0, DepthOfTick = -1;
    bool Locked = false;
    SerialPort Radio;
    WavePlayer Player;
};
FakeState Fake;

void ShowText(Label &label, const std::string &text) {
    label.Caption = text;
}

void ShowResult(const std::string &text) {
    ShowText(Fake.Main.lblResult, text);
}

// Half a second on the air, unless Esc is pressed.
void SendMessage() {
    (void)Serial.Write(Fake.Radio, "TX;");
    bool stopped = false;
    PumpUntil(Clock.Steady() + 500 * kMillisecond, [&] {
        stopped = stopped || KeyState.Pressed(kKeyEsc);
        return stopped;
    });
    ShowResult(stopped ? "stopped" : "sent");
}

void OpenDialog() {
    Fake.Dialog.txtName.Text.clear();
    ShowModal(Fake.Dialog);
    ShowResult("name " + Fake.Dialog.txtName.Text);
}

void Ask() {
    const BoxAnswer answer =
        ShowMessageBox({"Really\ndo it?", "Question", BoxButtons::YesNo, BoxIcon::Question, 1});
    ShowResult(answer == BoxAnswer::Yes ? "yes" : "no");
}

void OpenFile() {
    const auto path = ShowFileDialog({"Open", "", "", "txt", false});
    ShowResult(path ? "opened " + NameOf(*path) : "cancelled");
}

void Save() {
    const std::string text = Fake.Main.InData[0].Text + "\r\n";
    const int error =
        ReplaceFile(ProgramFolders.UserFolder() + "saved.txt", std::as_bytes(std::span(text)));
    ShowResult(error == 0 ? "saved" : "error " + std::to_string(error));
}

void PlayWave() {
    Fake.Player.FileName = ProgramFolders.ExecutableFolder() + "A.wav";
    Fake.Player.Notify = [] {
        if (Fake.Player.State == WaveState::Stopped)
            ShowResult("played " + std::to_string(Fake.Player.LengthMs));
    };
    const int error = Sound.Open(Fake.Player);
    if (error != 0)
        ShowResult("sound error " + std::to_string(error));
    else if (Sound.Play(Fake.Player) == 0)
        ShowResult("playing");
}

void FieldKey(int &keyCode, int shift) {
    if (keyCode == kKeyF1)
        SendMessage();
    else if (keyCode == kKeyF1 + 1)
        OpenDialog();
    else if (keyCode == kKeyUp && shift == kCtrl)
        ShowResult("up");
    else
        return;
    keyCode = kKeyNone;
}

void FieldCharacter(int &charCode) {
    charCode = charCode == '!' ? 0 : std::toupper(charCode);
}

void PrepareFields() {
    for (TextBox &field : Fake.Main.InData) {
        field.KeyDown = FieldKey;
        field.KeyPress = FieldCharacter;
        field.Change = [] { ++Fake.Changes; };
        field.GotFocus = [] { ++Fake.Focuses; };
    }
}

void PrepareMenu() {
    MainWindow &main = Fake.Main;
    for (MenuItem *item : {&main.mnuOpen, &main.mnuSave, &main.mnuAsk, &main.mnuPlay,
                           &main.mnuCrash, &main.mnuHidden, &main.mnuDisabled})
        item->Parent = "mnuFile";
    main.mnuOpen.Click = OpenFile;
    main.mnuSave.Click = Save;
    main.mnuAsk.Click = Ask;
    main.mnuPlay.Click = PlayWave;
    main.mnuCrash.Click = [] { std::raise(SIGKILL); };
    main.mnuLeave.Click = [] { ::_exit(0); };
    main.mnuLoop.Click = [] { PumpUntil(kNoDeadline, [] { return Fake.Ticks >= 3; }); };
    main.mnuOther.Click = [] { ShowForm(Fake.Other); };
    main.mnuHidden.Click = main.mnuDisabled.Click =
        main.mnuOffChild.Click = [] { ShowResult("!"); };
    main.mnuHidden.Visible = false;
    main.mnuDisabled.Enabled = false;
    main.mnuOff.Enabled = false;
    main.mnuOffChild.Parent = "mnuOff";
}

void PrepareControls() {
    MainWindow &main = Fake.Main;
    main.Caption = "Main window";
    main.lstRows.Rows = {"one", "two", "three"};
    main.lstRows.Click = [] { ShowResult("row " + std::to_string(Fake.Main.lstRows.ListIndex)); };
    main.lstRows.DoubleClick = [] { ShowResult("double"); };
    main.chkOne.Click = [] { ShowResult(Fake.Main.chkOne.Checked ? "checked" : "unchecked"); };
    main.hsbScale.Min = 5;
    main.hsbScale.Max = 50;
    main.hsbScale.Value = 20;
    main.hsbScale.Change = [] { ShowResult("scale " + std::to_string(Fake.Main.hsbScale.Value)); };
    main.optOther.Group = 1;
    main.optOther.Value = true;
    main.cmdGo.Click = OpenDialog;
    main.cmdOff.Enabled = false;
    main.lblHidden.Visible = false;
    main.lblResult.ForeColor = Color::LightRed;
    main.lblResult.Click = [] { ShowResult("label"); };
    main.picOut.Painted = {{0, 0, "a", Color::Red}, {0, 9, "b", Color::Black}};
    main.tmrTick.Tick = [] {
        ++Fake.Ticks;
        Fake.DepthOfTick = PumpDepth();
    };
    Fake.Dialog.cmdOK.Default = true;
    Fake.Dialog.cmdOK.Click = [] { HideForm(Fake.Dialog); };
    Fake.Dialog.cmdCancel.Cancel = true;
    Fake.Dialog.cmdCancel.Click = [] {
        Fake.Dialog.txtName.Text = "(none)";
        HideForm(Fake.Dialog);
    };
    Fake.Dialog.cmdMore.Click = [] { ShowModal(Fake.Nested); };
    Fake.Nested.HasCloseBox = false;
    Fake.Nested.cmdDone.Click = [] { HideForm(Fake.Nested); };
    Fake.Other.cmdOther.Click = [] { ShowResult("other"); };
}

void Register() {
    MainWindow &m = Fake.Main;
    RegisterForm(m, "Main", "the main window",
                 {{"InData(0)", &m.InData[0], "the first field"},
                  {"InData(1)", &m.InData[1], "the second field"},
                  {"chkOne", &m.chkOne, "a box"},
                  {"optSide(0)", &m.optSide[0], "left"},
                  {"optSide(1)", &m.optSide[1], "right"},
                  {"optOther", &m.optOther, "of another group"},
                  {"lstRows", &m.lstRows, "rows"},
                  {"hsbScale", &m.hsbScale, "scale"},
                  {"cmdGo", &m.cmdGo, "go"},
                  {"cmdOff", &m.cmdOff, "never"},
                  {"lblResult", &m.lblResult, "what came of it"},
                  {"lblReceived", &m.lblReceived, "what the radio said"},
                  {"lblHidden", &m.lblHidden, "nothing"},
                  {"tmrTick", &m.tmrTick, "once a second"},
                  {"picOut", &m.picOut, "a picture"},
                  {"mnuFile", &m.mnuFile, "File"},
                  {"mnuOpen", &m.mnuOpen, "opens"},
                  {"mnuSave", &m.mnuSave, "saves"},
                  {"mnuAsk", &m.mnuAsk, "asks"},
                  {"mnuPlay", &m.mnuPlay, "plays"},
                  {"mnuCrash", &m.mnuCrash, "dies"},
                  {"mnuLeave", &m.mnuLeave, "leaves at once"},
                  {"mnuLoop", &m.mnuLoop, "waits for three ticks"},
                  {"mnuOther", &m.mnuOther, "another window"},
                  {"mnuHidden", &m.mnuHidden, "hidden"},
                  {"mnuDisabled", &m.mnuDisabled, "disabled"},
                  {"mnuOff", &m.mnuOff, "a disabled menu"},
                  {"mnuOffChild", &m.mnuOffChild, "in a disabled menu"},
                  {"mnuStill", &m.mnuStill, "does nothing"}});
    RegisterForm(Fake.Dialog, "Dialog", "a dialog",
                 {{"txtName", &Fake.Dialog.txtName, "a name"},
                  {"cmdOK", &Fake.Dialog.cmdOK, "OK"},
                  {"cmdCancel", &Fake.Dialog.cmdCancel, "Cancel"},
                  {"cmdMore", &Fake.Dialog.cmdMore, "more"}});
    RegisterForm(Fake.Nested, "Nested", "a dialog's dialog",
                 {{"cmdDone", &Fake.Nested.cmdDone, "done"}});
    RegisterForm(Fake.Other, "Other", "a window beside",
                 {{"cmdOther", &Fake.Other.cmdOther, "other"}});
}

void Start() {
    PrepareFields();
    PrepareMenu();
    PrepareControls();
    Fake.Locked = Files.Lock(ProgramFolders.UserFolder() + "lock").Result == LockResult::Taken;
    if (!Fake.Locked) {
        ShowMessageBox({"It runs already.", "Fake", BoxButtons::Ok, BoxIcon::Critical, 1});
        EndProgram(1);
        return;
    }
    std::string first;
    if (ReadTextFile(ProgramFolders.UserFolder() + "saved.txt", first) == 0)
        ShowResult("recovered " + first.substr(0, first.find('\r')));
    Fake.Radio.PortName = "Com3";
    Fake.Radio.DtrAtOpen = true;
    Fake.Radio.Received = [] { Fake.Main.lblReceived.Caption += Serial.Read(Fake.Radio) + "|"; };
    if (Serial.Open(Fake.Radio) != 0)
        ShowResult("no radio");
    ShowForm(Fake.Main);
    StartTimer(Fake.Main.tmrTick, 1000);
}

void Exit() {
    if (ShowMessageBox({"Leave?", "Fake", BoxButtons::OkCancel}) == BoxAnswer::Ok) {
        const std::string text = "bye";
        (void)ReplaceFile(ProgramFolders.UserFolder() + "bye.txt", std::as_bytes(std::span(text)));
        EndProgram(0);
    }
}

std::string Calendar(const MachineTime &t) {
    std::ostringstream text;
    text << t.Year << '-' << t.Month << '-' << t.Day << ' ' << t.Hour << ':' << t.Minute << ':'
         << t.Second;
    return text.str();
}

std::optional<std::string> StateValue(const std::string &name) {
    if (name == "Ticks")
        return std::to_string(Fake.Ticks);
    if (name == "Changes")
        return std::to_string(Fake.Changes);
    if (name == "Focuses")
        return std::to_string(Fake.Focuses);
    if (name == "DepthOfTick")
        return std::to_string(Fake.DepthOfTick);
    if (name == "Utc")
        return Calendar(Clock.Utc());
    if (name == "Local")
        return Calendar(Clock.Local());
    return std::nullopt;
}

// A folder with the script and the two data folders, removed at the end of the test.
struct TestFolder {
    fs::path Path;

    TestFolder() {
        std::string name = (fs::temp_directory_path() / "runner-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no folder for the test");
        Path = name;
        Write("shipped/zrtlog125.ini", "[One]\r\nColour = red\r\nSize = 3\r\n\r\n[Two]\r\n"
                                       "Colour = blue\r\n\r\n");
        Write("shipped/data.txt", "shipped\r\n");
        Write("shipped/help/page.txt", "help");
        Write("minimal/data.txt", "minimal\r\n");
        Write("own/data.txt", "own\r\n");
        Write("golden.txt", "shipped\r\n");
        Write("other.txt", "shopped\r\n");
    }
    ~TestFolder() {
        std::error_code error;
        fs::remove_all(Path, error);
    }
    TestFolder(const TestFolder &) = delete;
    TestFolder &operator=(const TestFolder &) = delete;

    std::string Write(const std::string &name, const std::string &text) const {
        fs::create_directories((Path / name).parent_path());
        std::ofstream(Path / name, std::ios::binary) << text;
        return (Path / name).string();
    }
};

template <class RunIt> Result PlayWith(const std::string &script, RunIt run) {
    const TestFolder folder;
    ProgramUnderTest program = FakeProgram();
    program.ShippedData = (folder.Path / "shipped").string();
    program.MinimalData = (folder.Path / "minimal").string();
    const std::string file = folder.Write("test.scn", script);
    std::FILE *output = std::tmpfile();
    Result result;
    result.Status = run(program, file, output);
    std::rewind(output);
    for (int c = std::fgetc(output); c != EOF; c = std::fgetc(output))
        result.Output += static_cast<char>(c);
    std::fclose(output);
    return result;
}

void Ends(const std::string &script, int status, const std::string &text) {
    const Result result = Play("start\n" + script);
    EXPECT_EQ(result.Status, status) << script << "\n" << result.Output;
    const auto lines = std::count(script.begin(), script.end(), '\n') + 2;
    const std::string expected = "test.scn:" + std::to_string(lines) + ": " + text + "\n";
    EXPECT_TRUE(result.Output.ends_with(expected))
        << script << "\nexpected at the end: " << expected << "got: " << result.Output;
}

} // namespace

ProgramUnderTest FakeProgram() {
    ProgramUnderTest program;
    program.RegisterWindows = Register;
    program.Start = Start;
    program.Exit = Exit;
    program.StateValue = StateValue;
    return program;
}

Result Play(const std::string &script, const std::string &argument) {
    return PlayWith(
        script, [&](const ProgramUnderTest &program, const std::string &file, std::FILE *output) {
            std::vector<std::string> arguments{file};
            if (!argument.empty())
                arguments.insert(arguments.begin(), argument);
            return RunCommandLine(program, arguments, output);
        });
}

Result PlayHere(const std::string &script, const std::function<void()> &afterLine) {
    return PlayWith(
        script, [&](const ProgramUnderTest &program, const std::string &file, std::FILE *output) {
            RunOptions options;
            options.Output = output;
            options.AfterLine = afterLine;
            const int status = RunScenarioHere(program, options, file);
            InstallHeadlessDoors(); // forgets the timers of the windows that go now
            std::destroy_at(&Fake);
            std::construct_at(&Fake);
            return status;
        });
}

void Holds(const std::string &script) {
    const Result result = Play("start\n" + script);
    EXPECT_EQ(result.Status, kHolds) << script << "\n" << result.Output;
}

void Fails(const std::string &script, const std::string &text) {
    Ends(script, kFails, text);
}

void Refused(const std::string &script, const std::string &text) {
    Ends(script, kNotUnderstood, text);
}

} // namespace zrt::test
