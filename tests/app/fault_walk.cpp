#include "app/fault_walk.h"

#include "app/contest_chooser.h"
#include "app/post_contest.h"
#include "app/start_up.h"
#include "app/user_info.h"
#include "entry/log_form.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/keys.h"
#include "platform/program.h"
#include "session/log_file.h"
#include "session/settings.h"
#include "support/faulty_files.h"
#include "support/program.h"

#include <filesystem>
#include <sstream>

namespace zrt {

FaultOperatorState FaultOperator;
WalkState Walk;
std::set<std::string> SettingsShapes;

namespace {

constexpr int kCqWwRow = 4;

// ---- the operator

// What the program asks on this walk. All other boxes tell of a fault.
struct Question {
    const char *Text;
    BoxAnswer Answer;
};
constexpr Question kQuestions[] = {
    {"A log file is already open.", BoxAnswer::Yes},
    {"Kill ALL log entries?", BoxAnswer::Yes},
    {"Exit ZRTLOG?", BoxAnswer::Yes},
    {"The selected output file ", BoxAnswer::Ok},
};

// When the disk is full he tries once more, gives up, and makes room.
BoxAnswer AnswerToFault(const MessageBox &box) {
    FaultOperator.Told.push_back(DescribeBox(box));
    if (box.Buttons == BoxButtons::Ok)
        return BoxAnswer::Ok;
    const bool giveUp =
        FaultOperator.GivesUp || (FaultyFiles.Full && FaultOperator.Told.size() > 1);
    if (!giveUp)
        return BoxAnswer::Retry;
    FaultyFiles.Full = false;
    return box.Buttons == BoxButtons::RetryCancel ? BoxAnswer::Cancel : BoxAnswer::Abort;
}

BoxAnswer AnswerBox(const MessageBox &box) {
    if (FaultyFiles.Crashed)
        throw ProcessGone();
    if (box.Text.starts_with("ZRTLOG has detected a backup file"))
        return FaultOperator.Recovers ? BoxAnswer::Yes : BoxAnswer::No;
    for (const Question &question : kQuestions) {
        if (!box.Text.starts_with(question.Text))
            continue;
        FaultOperator.KillsAll |= box.Title == "Confirm kill";
        return question.Answer;
    }
    return AnswerToFault(box);
}

std::optional<std::string> AnswerFileDialog(const FileDialog &) {
    return PathOf(kLogName);
}

// The dialogs that wait for him. False ends the program.
bool UseDialog() {
    if (FaultyFiles.Crashed)
        throw ProcessGone();
    const Form *form = ActiveForm();
    if (form == &ChCoForm) {
        ChCoForm.lstContest.ListIndex = kCqWwRow;
        ChCoForm.lstContest.Click();
        ClickControl(ChCoForm.optFrame1[1]);
        ClickControl(ChCoForm.cmdOK);
        return true;
    }
    if (form == &UserInfo) {
        UserInfo.Textinfo[0].Text = "ZR1TEST";
        ClickControl(UserInfo.cmdOK);
        return true;
    }
    if (form == &PostContest) { // after a failure it stays, and he presses OK again
        ClickControl(++FaultOperator.DialogAnswers < 4 ? PostContest.CmdOK : PostContest.CmdCancel);
        return true;
    }
    return false;
}

// ---- the walk

// One thing that the operator wants; he repeats it until it is done.
template <typename Deed, typename Done> void Insist(const char *what, Deed deed, Done done) {
    constexpr int kMostTimes = 3;
    for (int i = 0; i < kMostTimes && !done(); ++i) {
        FaultOperator.DialogAnswers = 0;
        const bool before = FaultyFiles.Failed.empty();
        deed();
        if (before && !FaultyFiles.Failed.empty())
            Walk.FaultIn = what;
        if (FaultyFiles.Crashed)
            throw ProcessGone();
        if (Walk.LearnsSettings)
            LearnSettings();
    }
    EXPECT_TRUE(done()) << what;
}

void Start() {
    BeginProcessOn(Devices.ProgramFolder);
    StartProgram();
}

void PassSeconds(int seconds) {
    for (int i = 0; i < seconds; ++i) {
        Devices.Steady += kSecond;
        ServeDueEvents();
    }
}

void TypeOneContact() {
    const std::string call = CallOf(static_cast<int>(Walk.Cleared.size()));
    TypeText(call + "14");
    Press(kKeyEnter);
    if (FaultyFiles.Crashed)
        throw ProcessGone();
    ASSERT_EQ(LogForm.InData[0].Text, "") << call;
    Walk.Cleared.push_back(call);
    PassSeconds(1);
}

void TypeContacts(int upTo) {
    while (static_cast<int>(Walk.Cleared.size()) < upTo && !testing::Test::HasFatalFailure())
        TypeOneContact();
}

std::uintmax_t SizeOf(const char *name) {
    std::error_code error;
    const auto size = std::filesystem::file_size(PathOf(name), error);
    return error ? 0 : size;
}

void ChangeSettings() {
    Extensions.KeepKilledLog = true;
    Settings.ExchangeCQWWMult = "05";
    Settings.BackUpDrive = PathOf("stick");
    ShowUserInfo();
}

void OpenLogOfMenu() {
    ClickControl(LogForm.mnuFileOpen);
}

// Whether all contacts are in the log that is open, and in its file.
void ExpectAllContacts() {
    EXPECT_TRUE(Log.Unwritten.empty());
    ASSERT_EQ(Log.NextEntry, static_cast<i16>(Walk.Cleared.size()) + 1);
    for (std::size_t n = 1; n <= Walk.Cleared.size(); ++n)
        EXPECT_EQ(Log.LogEntries[n].Callsign.Trimmed(), Walk.Cleared[n - 1]);
    std::string bytes = BytesOf(NameOf(Log.LogFileName));
    ASSERT_EQ(bytes.size(), (Walk.Cleared.size() + 1) * kEntryLength);
    for (std::size_t n = 1; n <= Walk.Cleared.size(); ++n)
        EXPECT_EQ(bytes.substr(n * kEntryLength, kEntryLength), EntryBytes(Log.LogEntries[n]));
}

} // namespace

std::string CallOf(int n) {
    std::string call = "DL" + std::to_string(n % 10);
    call += static_cast<char>('A' + n / 10);
    return call + static_cast<char>('A' + n % 26);
}

std::string ShapeOf(const std::string &settings) {
    std::string shape;
    std::istringstream lines(settings);
    for (std::string line; std::getline(lines, line);)
        shape += line.substr(0, line.find('=')) + "\n";
    return shape + (settings.ends_with('\n') ? "" : "cut");
}

void LearnSettings() {
    SettingsShapes.insert(ShapeOf(BytesOf(kSettingsFile)));
}

void BeginProcessOn(const std::string &folder) {
    const Microseconds utc = Devices.UtcAtZero + Devices.Steady;
    BeginProcess(folder);
    SetUtc(CalendarOf(utc));
    Dialogs.Box = AnswerBox;
    Dialogs.File = AnswerFileDialog;
    Devices.Operator = UseDialog;
    Files = DiskFiles();
    Files.Lock = [](const std::string &) { return FileLock{LockResult::Taken, 0, {}, -1}; };
    if (Walk.OnFaultyDoor)
        InstallFaultyFiles();
}

void TakeWalk() {
    Insist("start", Start, [] { return LogForm.Visible && !Program.Ending; });
    Insist(
        "New", [] { ClickControl(LogForm.mnuFileNew); },
        [] { return Log.LogState == kTemporaryName; });
    TypeContacts(kContactsBeforeSave);
    ChangeSettings();
    Insist(
        "Save As", [] { ClickControl(LogForm.mnuFileSave); },
        [] { return Log.LogState == kUsersName; });
    Insist(
        "Backup", [] { ClickControl(LogForm.mnuFileBackup); },
        [] { return SizeOf(kBackupName) == (kContactsBeforeSave + 1) * kEntryLength; });
    Insist(
        "Post-Contest", [] { ClickControl(LogForm.mnuFilePostContest); },
        [] { return SizeOf(kCabrilloName) > kOldCabrillo.size(); });
    Insist("Open", OpenLogOfMenu, [] { return Log.LogState == kUsersName && Log.NextEntry > 1; });
    TypeContacts(kContacts);
    PassSeconds(20); // what is owed to the disk is tried again
    ExpectAllContacts();
    Insist(
        "Kill All", [] { ClickControl(LogForm.mnuEditKillAll); },
        [] { return Log.NextEntry == 1; }); // the log is closed when it can't be read again
    Insist(
        "Exit", [] { ClickControl(LogForm.mnuFileExit); }, [] { return Program.Ending; });
    Walk.Ended = true;
}

void TakeRecoveryWalk() {
    Insist("start", Start, [] { return LogForm.Visible && !Program.Ending; });
    if (Log.LogState == kNoLog)
        Insist(
            "New", [] { ClickControl(LogForm.mnuFileNew); },
            [] { return Log.LogState == kTemporaryName; });
    TypeOneContact();
    PassSeconds(20);
    Walk.Ended = true;
}

} // namespace zrt
