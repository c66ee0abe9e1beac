#include "headless/devices.h"

#include "headless/device_doors.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/help.h"
#include "platform/program.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace zrt {

DeviceState Devices;

namespace {

// A timer of no interval is due again at once. So many ticks make a turn; then time goes on.
constexpr int kTicksAtOneInstant = 16;
constexpr int kEventsAtOneInstant = 1'000'000; // more is a program that posts without end
constexpr Microseconds kLongestWait = 48LL * 3600 * kSecond; // of a test without an operator
constexpr MachineTime kFirstTime{2015, 1, 1, 0, 0, 0};

// ---- the clock

Microseconds SteadyNow() {
    return Devices.Steady;
}

Microseconds UtcNow() {
    return Devices.UtcAtZero + Devices.Steady;
}

MachineTime UtcTime() {
    return CalendarOf(UtcNow());
}

MachineTime LocalTime() {
    return CalendarOf(UtcNow() + Devices.ZoneMinutes * (60 * kSecond));
}

// ---- the event loop

std::vector<ScheduledEvent>::iterator FirstScheduled() {
    return std::min_element(
        Devices.Scheduled.begin(), Devices.Scheduled.end(),
        [](const ScheduledEvent &a, const ScheduledEvent &b) { return a.Due < b.Due; });
}

Microseconds ScheduledDue() {
    const auto first = FirstScheduled();
    return first == Devices.Scheduled.end() ? kNoDeadline : first->Due;
}

// Counts what is served while the clock stands still.
struct Turn {
    Microseconds Instant = Devices.Steady;
    int Ticks = 0;
    int Served = 0;
};

// Serves one event that is due. False if none is, or if the turn's share of ticks is used up.
bool ServeOne(Turn &turn) {
    if (turn.Instant != Devices.Steady)
        turn = {};
    if (++turn.Served > kEventsAtOneInstant)
        FailDevices("the program posts events without end");
    const bool posted = NextEventDue() == 0;
    const Microseconds timerDue = NextEventDue();
    if (!posted && ScheduledDue() <= std::min(timerDue, Devices.Steady)) {
        const auto first = FirstScheduled();
        const auto event = std::move(first->Run);
        Devices.Scheduled.erase(first);
        event();
        return true;
    }
    if (!posted && ++turn.Ticks > kTicksAtOneInstant)
        return false;
    return ServeNextEvent(Devices.Steady);
}

// Moves the clock to what comes next, at most to `latest`.
void PassTime(Microseconds latest) {
    Microseconds next = std::min(NextEventDue(), ScheduledDue());
    if (next <= Devices.Steady)
        next = Devices.Steady + kMillisecond;
    Devices.Steady = std::min(next, latest);
}

// A wait for the operator, when all that is due has been served.
void AskOperator(Microseconds began) {
    if (Devices.Operator) {
        if (!Devices.Operator())
            Program.Ending = true;
        return;
    }
    const bool nothing = std::min(NextEventDue(), ScheduledDue()) == kNoDeadline;
    if (nothing || Devices.Steady > began + kLongestWait)
        FailDevices("the program waits for an operator, and there is none");
    PassTime(kNoDeadline);
}

void HeadlessPumpUntil(Microseconds deadline, const std::function<bool()> &done) {
    const Microseconds began = Devices.Steady;
    Turn turn;
    while (!Program.Ending && !done()) {
        if (ServeOne(turn))
            continue;
        if (deadline == kNoDeadline) {
            AskOperator(began);
            turn = {};
        } else if (Devices.Steady >= deadline) {
            return;
        } else {
            PassTime(deadline);
        }
    }
}

// ---- keyboard, folders, help

bool KeyPressed(int keyCode) {
    const bool hit = Devices.KeysHit.erase(keyCode) > 0;
    return hit || Devices.KeysDown.contains(keyCode);
}

std::string FolderWithSeparator() {
    return WithSeparator(Devices.ProgramFolder);
}

std::string DocumentsFolder() {
    return FolderWithSeparator() + "Documents/";
}

bool OpenHelp(const std::string &helpFile, int topic) {
    const std::string page = HelpPage(helpFile, topic);
    if (page.empty())
        return false;
    Devices.HelpPage = page;
    Devices.HelpTopic = topic;
    return true;
}

// ---- the disk, with its faults

int WriteError() {
    switch (Devices.Disk) {
    case DiskMode::Full: return ENOSPC;
    case DiskMode::Broken: return EIO;
    case DiskMode::Ok: break;
    }
    return 0;
}

int FaultyWriteAt(int handle, std::uint64_t offset, std::span<const std::byte> bytes) {
    const int error = WriteError();
    return error != 0 ? error : DiskFiles().WriteAt(handle, offset, bytes);
}

int FaultySync(int handle) {
    return Devices.Disk == DiskMode::Broken ? EIO : DiskFiles().Sync(handle);
}

FileLock HeldByOtherCopy() {
    return {LockResult::Held, 0, "process 4711 of anna", -1};
}

FileLock SharedLock(const std::string &path) {
    return Devices.OtherCopyRunning ? HeldByOtherCopy() : DiskFiles().Lock(path);
}

void SharedLockOpenFile(const std::string &path, FileLock &lock) {
    if (!Devices.OtherCopyRunning) {
        DiskFiles().LockOpenFile(path, lock);
        return;
    }
    const int handle = lock.Handle;
    lock = HeldByOtherCopy();
    lock.Handle = handle;
}

} // namespace

bool NoCaseLess::operator()(const std::string &a, const std::string &b) const {
    return std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(),
        [](unsigned char x, unsigned char y) { return std::toupper(x) < std::toupper(y); });
}

void InstallHeadlessDoors() {
    Devices = {};
    Program = {};
    Screen = {};
    ForgetEvents();
    SetUtc(kFirstTime);

    Clock = {SteadyNow, LocalTime, UtcTime};
    Events = {HeadlessPumpUntil};
    KeyState = {KeyPressed};
    ProgramFolders = {FolderWithSeparator, FolderWithSeparator, [] { return false; },
                      FolderWithSeparator, DocumentsFolder};
    Help = {OpenHelp};
    Files = DiskFiles();
    Files.WriteAt = FaultyWriteAt;
    Files.Sync = FaultySync;
    Files.Lock = SharedLock;
    Files.LockOpenFile = SharedLockOpenFile;
    InstallDialogDoor();
    InstallSerialDoor();
    InstallSoundDoor();
    InstallStationLinesDoor();
}

void SetUtc(const MachineTime &utc) {
    using namespace std::chrono;
    const sys_days day = year{utc.Year} / month{static_cast<unsigned>(utc.Month)} /
                         std::chrono::day{static_cast<unsigned>(utc.Day)};
    const auto time =
        sys_seconds(day) + hours(utc.Hour) + minutes(utc.Minute) + std::chrono::seconds(utc.Second);
    Devices.UtcAtZero = time.time_since_epoch().count() * kSecond - Devices.Steady;
}

MachineTime CalendarOf(Microseconds sinceEpoch) {
    using namespace std::chrono;
    const auto time = floor<seconds>(sys_time<microseconds>(microseconds(sinceEpoch)));
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count())};
}

void Schedule(Microseconds due, std::function<void()> event) {
    Devices.Scheduled.push_back({due, std::move(event)});
}

void ServeDueEvents() {
    Turn turn;
    while (!Program.Ending && ServeOne(turn)) {}
}

void FailDevices(const std::string &text) {
    if (const auto fail = Devices.Fail)
        fail(text);
    std::fprintf(stderr, "%s\n", text.c_str());
    std::abort();
}

} // namespace zrt
