#include "support/program.h"

#include "app/about_box.h"
#include "app/background.h"
#include "app/band_mode.h"
#include "app/contest_chooser.h"
#include "app/edit_menu.h"
#include "app/exit.h"
#include "app/log_loader.h"
#include "app/partial_window.h"
#include "app/rescan.h"
#include "app/start_up.h"
#include "entry/band_change.h"
#include "entry/callsign.h"
#include "entry/dupes.h"
#include "entry/exchange_parsers.h"
#include "entry/keyboard.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "entry/multipliers.h"
#include "entry/old_calls.h"
#include "entry/points.h"
#include "entry/prefill.h"
#include "entry/station_hooks.h"
#include "entry/statistics.h"
#include "entry/typing.h"
#include "platform/files.h"
#include "platform/keys.h"
#include "platform/program.h"
#include "postcontest/driver.h"
#include "postcontest/post_contest.h"
#include "postcontest/recount.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/reference_data.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "session/user_profiles.h"

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace zrt {

namespace {

BoxAnswer (*headlessBox)(const MessageBox &box) = nullptr;
std::deque<std::function<void()>> deeds;

BoxAnswer BoxWithDeed(const MessageBox &box) {
    const BoxAnswer answer = headlessBox(box);
    if (!deeds.empty()) {
        const auto deed = deeds.front();
        deeds.pop_front();
        deed();
    }
    return answer;
}

// The lock of a real file would outlive a process that only the test ends.
FileLock VirtualLock(const std::string &) {
    return {Devices.OtherCopyRunning ? LockResult::Held : LockResult::Taken, 0, {}, -1};
}

void ForgetModules() {
    UnlockLog(); // as the end of its process does
    Log = {};
    Contest = {};
    Radios = {};
    Session = {};
    Settings = {};
    Extensions = {};
    Profiles = {};
    LogForm = {};
    Entry = {};
    Dupes = {};
    Statistics = {};
    QsoHooks = {};
    BandHooks = {};
    LoaderHooks = {};
    Typing = {};
    Station = {};
    Requests = {};
    Keyboard = {};
    EditMenu = {};
    CloseWinkeyer = [] {};
    Reference = {};
    CallAnalysis = {};
    Prefill = {};
    Parsers = {};
    OldCalls = {};
    Partials = {};
    Partial = {};
    Multipliers = {};
    Points = {};
    Aboutzrt = {};
    BkgdForm = {};
    BandMode = {};
    ChCoForm = {};
    PostData = {};
    Recount = {};
    Outputs = {};
}

std::string NewFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "zrtlog-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    return name;
}

} // namespace

void BeginProcess(std::string programFolder) {
    InstallHeadlessDoors();
    Devices.ProgramFolder = std::move(programFolder);
    Devices.Fail = [](const std::string &text) { throw std::runtime_error(text); };
    headlessBox = Dialogs.Box;
    Dialogs.Box = BoxWithDeed;
    deeds.clear();
    Files.Lock = VirtualLock;
    ForgetModules();
    Session.AppPath =
        WithSeparator(Devices.ProgramFolder); // for tests that don't start the program
    RegisterWindows();
}

ProgramTest::ProgramTest() {
    const std::string folder = NewFolder();
    for (const auto &file : std::filesystem::directory_iterator(ZRT_MINIMAL_DATA))
        std::filesystem::copy(file.path(), folder);
    BeginProcess(folder);
    SetTime(2015, 1, 15, 14, 37);
}

ProgramTest::~ProgramTest() {
    std::error_code error;
    std::filesystem::remove_all(Devices.ProgramFolder, error);
}

void ProgramTest::TearDown() {
    EXPECT_TRUE(Devices.Answers.empty()) << Devices.Answers.size() << " answers were not needed";
    EXPECT_TRUE(Devices.FileAnswers.empty()) << "a file name was not needed";
    EXPECT_TRUE(deeds.empty()) << "fewer boxes than expected";
}

void CrashAndStart() {
    const Microseconds utc = Devices.UtcAtZero + Devices.Steady;
    const auto answers = Devices.Answers;
    BeginProcess(Devices.ProgramFolder);
    SetUtc(CalendarOf(utc));
    Devices.Answers = answers;
    StartProgram();
}

std::string PathOf(std::string_view name) {
    return WithSeparator(Devices.ProgramFolder) + std::string(name);
}

bool FileExists(std::string_view name) {
    return std::filesystem::exists(PathOf(name));
}

bool HasSideFile(std::string_view folder) {
    for (const auto &file : std::filesystem::directory_iterator(PathOf(folder)))
        if (file.path().extension() == ".new")
            return true;
    return false;
}

std::string BytesOf(std::string_view name) {
    std::ifstream file(PathOf(name), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << "no file " << name;
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

void MakeFile(std::string_view name, std::string_view bytes) {
    std::ofstream file(PathOf(name), std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.good());
}

std::string Hex(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string hex;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (!hex.empty())
            hex += ' ';
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 0x0F];
    }
    return hex;
}

std::string FromHex(std::string_view hex) {
    std::string digits;
    for (const char c : hex)
        if (c != ' ')
            digits += c;
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    return bytes;
}

std::string HeaderBytes(std::string_view tag, char qthOption) {
    return std::string("\0\0\0\0\1\0", 6) + "          " + std::string(4, '\0') + std::string(tag) +
           qthOption;
}

ContestState CwContest(i16 contestId) {
    ContestState contest;
    contest.ContestId = contestId;
    contest.ModeCW = true;
    contest.ModePhone = ContestTable(contestId).BothModes;
    contest.QthUSA = contestId == kCqWw || contestId == kWpx; // whose headers tell it
    return contest;
}

void OpenNewLog(const ContestState &contest) {
    Contest = contest;
    Log.LogFileName = PathOf(kTempLog);
    Log.Header = Log.KeptHeader = BuildHeader(Contest);
    Log.LogState = kTemporaryName;
    ASSERT_EQ(CreateLogFile(), 0);
    LoadLog(0);
}

void OpenNewLog(i16 contestId) {
    OpenNewLog(CwContest(contestId));
}

void ChooseInDialog(int row, std::function<void()> more) {
    Devices.Operator = [row, more = std::move(more)] {
        if (ActiveForm() != &ChCoForm)
            return false;
        ChCoForm.lstContest.ListIndex = row;
        ChCoForm.lstContest.Click();
        more();
        if (ChCoForm.Visible)
            ClickControl(ChCoForm.cmdOK);
        return true;
    };
}

std::string EntryBytes(const LogEntry &entry) {
    const auto bytes = Encode(entry);
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

LogEntry MakeEntry(std::string_view call, i16 date, i16 time, i16 bandIndex, char points) {
    LogEntry entry;
    entry.Callsign = call;
    entry.Date = date;
    entry.Time = time;
    entry.BandIndex = bandIndex;
    entry.Points = std::string(1, points);
    entry.SentNumber = 1;
    entry.Frequency = "0";
    entry.RadioNumber = "1";
    return entry;
}

void LoadTemporary(std::string_view bytes) {
    MakeFile(kTempLog, bytes);
    Log.LogFileName = PathOf(kTempLog);
    Log.LogState = kTemporaryName;
    LoadLog(0);
}

void Answer(std::initializer_list<BoxAnswer> answers) {
    Devices.Answers.insert(Devices.Answers.end(), answers.begin(), answers.end());
}

MessageBox LastBox() {
    EXPECT_FALSE(Devices.Boxes.empty()) << "no box was shown";
    return Devices.Boxes.empty() ? MessageBox{} : Devices.Boxes.back().Box;
}

void WhileBoxShows(std::function<void()> deed) {
    deeds.push_back(std::move(deed));
}

void Press(int keyCode, int shift, int charCode) {
    Form *form = ActiveForm();
    ASSERT_NE(form, nullptr) << "no window to take the key";
    const KeyOutcome outcome = OfferKey(*form, {keyCode, shift, charCode});
    if (outcome.Used || outcome.CharCode == 0)
        return;
    Control *active = form->ActiveControl;
    if (active == nullptr || active->Kind != ControlKind::TextBox)
        return;
    auto &field = static_cast<TextBox &>(*active);
    field.Text.replace(static_cast<std::size_t>(field.SelStart),
                       static_cast<std::size_t>(field.SelLength), 1,
                       static_cast<char>(outcome.CharCode));
    ++field.SelStart;
    field.SelLength = 0;
}

void TypeText(std::string_view text) {
    for (const char c : text) {
        const bool small = c >= 'a' && c <= 'z';
        Press(c == '\'' ? kKeyApostrophe : small ? c - 'a' + 'A' : c, 0, c);
    }
}

void Fill(std::string_view call, std::string_view exchange) {
    SetFieldText(LogForm.InData[0], std::string(call));
    SetFieldText(LogForm.InData[1], std::string(exchange));
    SetFocus(LogForm.InData[0]);
}

void LogContact(std::string_view call, std::string_view exchange) {
    Fill(call, exchange);
    Press(kKeyEnter);
}

void SetTime(int year, int month, int day, int hour, int minute) {
    SetUtc({year, month, day, hour, minute, 0});
}

void PassMinutes(int minutes) {
    Devices.UtcAtZero += Microseconds{60} * minutes * kSecond;
}

} // namespace zrt
