#include "qt/real_program.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zrt {

namespace {

constexpr int kAnswerMs = 60000; // a machine under load is slow, not dead

[[noreturn]] void RunChild(const std::string &home, const std::string &platform,
                           const std::string &in, const std::string &out) {
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        std::signal(signal, SIG_DFL); // a test in the background of a shell ignores some
    setenv("XDG_DATA_HOME", home.c_str(), 1);
    setenv("QT_QPA_PLATFORM", platform.c_str(), 1);
    setenv("QT_PLUGIN_PATH", ZRT_TEST_PLUGINS, 1);
    setenv("QT_QPA_GENERIC_PLUGINS", ("testkeys:" + in + ":" + out).c_str(), 1);
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1); // of Qt's, which is not killed in good order
    execl(ZRT_PROGRAM, ZRT_PROGRAM, static_cast<char *>(nullptr));
    _exit(127);
}

} // namespace

RealProgram::RealProgram(std::string home, std::string platform)
    : Home(std::move(home)), Platform(std::move(platform)) {
    std::filesystem::create_directories(Folder());
    for (const auto &file : std::filesystem::directory_iterator(ZRT_SHIPPED_DATA))
        if (file.is_regular_file())
            std::filesystem::copy_file(file.path(), Folder() + file.path().filename().string(),
                                       std::filesystem::copy_options::skip_existing);
    for (const char *pipe : {"/in", "/out"})
        if (mkfifo((Home + pipe).c_str(), 0600) != 0)
            throw std::runtime_error("no pipe");
}

RealProgram::~RealProgram() {
    if (Pid > 0)
        Kill();
}

void RealProgram::Start() {
    // Both ends are opened for reading and writing: nobody waits for the other to come.
    In = open((Home + "/in").c_str(), O_RDWR | O_CLOEXEC);
    Out = open((Home + "/out").c_str(), O_RDWR | O_CLOEXEC);
    Buffer.clear();
    Pid = fork();
    if (Pid == 0)
        RunChild(Home, Platform, Home + "/in", Home + "/out");
}

bool RealProgram::Send(const std::string &line) {
    const std::string whole = line + "\n";
    return write(In, whole.data(), whole.size()) == static_cast<ssize_t>(whole.size());
}

std::string RealProgram::Ask(const std::string &line, bool &gone) {
    gone = false;
    Send(line);
    return ReadLine(gone);
}

std::string RealProgram::ReadLine(bool &gone) {
    for (int waited = 0; waited < kAnswerMs;) {
        const auto end = Buffer.find('\n');
        if (end != std::string::npos) {
            std::string line = Buffer.substr(0, end);
            Buffer.erase(0, end + 1);
            return line;
        }
        pollfd watched{Out, POLLIN, 0};
        constexpr int kTurnMs = 20;
        if (poll(&watched, 1, kTurnMs) > 0) {
            char bytes[512];
            const auto got = read(Out, bytes, sizeof bytes);
            Buffer.append(bytes, static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
            continue;
        }
        waited += kTurnMs;
        siginfo_t state{};
        waitid(P_PID, static_cast<id_t>(Pid), &state, WEXITED | WNOHANG | WNOWAIT);
        if (state.si_pid == Pid)
            break;
    }
    gone = true;
    return {};
}

void RealProgram::Kill() {
    kill(Pid, SIGKILL);
    (void)Wait();
}

int RealProgram::Wait() {
    int status = 0;
    waitpid(Pid, &status, 0);
    Pid = -1;
    close(In);
    close(Out);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace zrt
