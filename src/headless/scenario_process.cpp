// A scenario in a child process. The parent stays as pristine as it was; `restart` ends the child
// without any exit routine, and the next child goes on with what a crash leaves behind.
#include "headless/scenario.h"
#include "headless/scenario_run.h"
#include "platform/program.h"

#include <cerrno>
#include <cstring>
#include <new>
#include <system_error>
#include <type_traits>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zrt {

namespace {

// The first byte of a child's message.
constexpr char kStatusFollows = 'S';
constexpr char kSurvivorsFollow = 'R';

int messagePipe = -1; // of this child to its parent

// No pipe, no process: nothing can be run at all.
[[noreturn]] void SystemFails() {
    throw std::system_error(errno, std::generic_category());
}

// Writes numbers and texts one behind the other; the Reader takes them back.
struct Writer {
    std::string Bytes;

    template <class T> void operator()(T &value) {
        static_assert(std::is_trivially_copyable_v<T>);
        Bytes.append(reinterpret_cast<const char *>(&value), sizeof value);
    }
    void operator()(std::string &text) {
        std::size_t size = text.size();
        (*this)(size);
        Bytes += text;
    }
};

struct Reader {
    std::string_view Rest;

    template <class T> void operator()(T &value) {
        static_assert(std::is_trivially_copyable_v<T>);
        std::memcpy(&value, Rest.data(), sizeof value);
        Rest.remove_prefix(sizeof value);
    }
    void operator()(std::string &text) {
        std::size_t size = 0;
        (*this)(size);
        text = Rest.substr(0, size);
        Rest.remove_prefix(size);
    }
};

template <class Archive, class List, class Item> void CarryList(Archive &a, List &list, Item item) {
    std::size_t size = list.size();
    a(size);
    list.resize(size);
    for (auto &element : list)
        item(a, element);
}

template <class Archive, class Map, class Item> void CarryMap(Archive &a, Map &map, Item item) {
    std::size_t size = map.size();
    a(size);
    auto at = map.begin();
    for (std::size_t i = 0; i < size; ++i) {
        auto key = at != map.end() ? at->first : typename Map::key_type();
        a(key);
        if (at == map.end())
            item(a, map[key]);
        else
            item(a, (at++)->second);
    }
}

template <class Archive> void CarryBox(Archive &a, ShownBox &box) {
    a(box.Box.Text);
    a(box.Box.Title);
    a(box.Box.Buttons);
    a(box.Box.Icon);
    a(box.Box.DefaultButton);
    a(box.Answer);
    a(box.Expected);
}

template <class Archive> void CarryPort(Archive &a, PortState &port) {
    a(port.Mode);
    a(port.Written);
    CarryList(a, port.Replies, [](Archive &b, PortReply &reply) {
        b(reply.Request);
        b(reply.Reply);
    });
}

template <class Archive> void CarryFileAnswer(Archive &a, std::optional<std::string> &answer) {
    bool chosen = answer.has_value();
    std::string path = answer.value_or("");
    a(chosen);
    a(path);
    answer = chosen ? std::optional(path) : std::nullopt;
}

// All that survives a crash of the program: the operator's place in the script, the world around
// the machine, and what the runner has not looked at yet.
template <class Archive> void CarrySurvivors(Archive &a, ScenarioRun &run, DeviceState &devices) {
    const auto plain = [](Archive &b, auto &value) { b(value); };
    a(run.Cursor);
    a(run.FolderFilled);
    a(devices.Steady);
    a(devices.UtcAtZero);
    a(devices.ZoneMinutes);
    CarryList(a, devices.Answers, plain);
    CarryList(a, devices.FileAnswers,
              [](Archive &b, std::optional<std::string> &answer) { CarryFileAnswer(b, answer); });
    CarryList(a, devices.Boxes, [](Archive &b, ShownBox &box) { CarryBox(b, box); });
    a(devices.Disk);
    a(devices.OtherCopyRunning);
    CarryMap(a, devices.Ports, [](Archive &b, PortState &port) { CarryPort(b, port); });
    CarryList(a, devices.Lines, [](Archive &b, LineChange &change) {
        b(change.At);
        b(change.Line);
        b(change.Value);
    });
    CarryMap(a, devices.IoPorts, plain);
    CarryMap(a, devices.Relays, plain);
    CarryList(a, devices.WavesStarted, plain);
    a(devices.SoundFails);
}

[[noreturn]] void SendAndLeave(const std::string &message) {
    std::fflush(Run.Options.Output);
    std::size_t sent = 0;
    while (sent < message.size()) {
        const auto n = ::write(messagePipe, message.data() + sent, message.size() - sent);
        if (n < 0 && errno != EINTR)
            break;
        sent += n > 0 ? static_cast<std::size_t>(n) : 0;
    }
    ::_exit(0);
}

void CrashAndRestart() {
    for (auto &[name, port] : Devices.Ports) { // the system drops the lines of a dead process
        if (port.Dtr)
            Devices.Lines.push_back({Devices.Steady, name + " DTR", 0});
        if (port.Rts)
            Devices.Lines.push_back({Devices.Steady, name + " RTS", 0});
    }
    Writer writer{{kSurvivorsFollow}};
    CarrySurvivors(writer, Run, Devices);
    SendAndLeave(writer.Bytes);
}

// The start of a child behind a `restart` is itself a line of the script that may go wrong.
int RestartAndRunLines() {
    Run.Started = true;
    try {
        Run.CurrentLine = *Run.SharedLine;
        Run.Program.Start();
    } catch (const ScenarioOver &over) {
        return over.Status;
    }
    return RunLines();
}

[[noreturn]] void LiveAsChild(const std::string &folder, const std::string &survivors) {
    Run.Restart = CrashAndRestart;
    PrepareRun(folder);
    int status = kHolds;
    if (survivors.empty()) {
        status = RunLines();
    } else {
        Reader reader{survivors};
        CarrySurvivors(reader, Run, Devices);
        status = RestartAndRunLines();
    }
    SendAndLeave(std::string{kStatusFollows, static_cast<char>(status)});
}

std::string ReadToEnd(int handle) {
    std::string message;
    char bytes[4096];
    for (;;) {
        const auto n = ::read(handle, bytes, sizeof bytes);
        if (n > 0)
            message.append(bytes, static_cast<std::size_t>(n));
        else if (n == 0 || errno != EINTR)
            return message;
    }
}

// Runs a child and returns its message. `how` is what waitpid says of its end.
std::string RunChild(const std::string &folder, const std::string &survivors, int &how) {
    int ends[2] = {-1, -1};
    std::fflush(nullptr);
    if (::pipe(ends) != 0)
        SystemFails();
    const pid_t child = ::fork();
    if (child < 0)
        SystemFails();
    if (child == 0) {
        ::close(ends[0]);
        messagePipe = ends[1];
        LiveAsChild(folder, survivors);
    }
    ::close(ends[1]);
    std::string message = ReadToEnd(ends[0]);
    ::close(ends[0]);
    while (::waitpid(child, &how, 0) < 0 && errno == EINTR) {}
    return message;
}

// A child that ended without a word.
int ReportDeath(int how) {
    const std::string manner = WIFSIGNALED(how)
                                   ? "ended with signal " + std::to_string(WTERMSIG(how))
                                   : "left with status " + std::to_string(WEXITSTATUS(how));
    Print(Run.File + ":" + std::to_string(*Run.SharedLine) + ": the program " + manner + "\n");
    return kFails;
}

int RunChildren(const std::string &folder) {
    std::string survivors;
    for (;;) {
        int how = 0;
        const std::string message = RunChild(folder, survivors, how);
        if (message.size() == 2 && message[0] == kStatusFollows)
            return message[1];
        if (message.empty() || message[0] != kSurvivorsFollow)
            return ReportDeath(how);
        survivors = message.substr(1);
    }
}

} // namespace

int RunScenario(const ProgramUnderTest &program, const RunOptions &options,
                const std::string &file) {
    if (!BeginRun(program, options, file))
        return kNotUnderstood;
    void *shared =
        ::mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED)
        SystemFails();
    Run.SharedLine = new (shared) int(0);
    const std::string folder = MakeProgramFolder();
    const int status = RunChildren(folder);
    EndRun(folder);
    Run.SharedLine = nullptr;
    ::munmap(shared, sizeof(int));
    return status;
}

} // namespace zrt
