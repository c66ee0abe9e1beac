#include "qt/session_end.h"

#include "platform/program.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace zrt {

namespace {

struct SessionEndState {
    SessionEnd End;
    int Pipe[2] = {-1, -1}; // a handler writes a byte, the event loop reads it
};
SessionEndState Ends;

void WakeEventLoop(int) {
    const int error = errno;
    const char byte = 0;
    // A full pipe is as good: the event loop has not come to its bytes yet.
    (void)!::write(Ends.Pipe[1], &byte, 1);
    errno = error;
}

void DoNothing(int) {}

// System calls go on when the handler returns: a second signal does not break into a write.
void Handle(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    (void)::sigaction(signal, &action, nullptr);
}

// nohup and a shell in the background start programs that are not to end by these.
bool IsIgnored(int signal) {
    struct sigaction action {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void SignalCame() {
    char bytes[16];
    while (::read(Ends.Pipe[0], bytes, sizeof bytes) > 0) {}
    Ends.End.Leave();
    QCoreApplication::exit(Program.ExitStatus); // the loops that Qt runs for a menu of its own
}

void ProcessExits() {
    if (Program.Ending)
        return; // by main()
    Ends.End.Leave();
    // Qt's objects, whose server is gone, are not taken down.
    std::_Exit(EXIT_FAILURE);
}

} // namespace

void WatchSessionEnd(SessionEnd end) {
    Ends.End = std::move(end);
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, qApp, [](QSessionManager &) { Ends.End.Keep(); },
        Qt::DirectConnection);
    // Handlers and not SIG_IGN, which the programs that we start would inherit.
    Handle(SIGPIPE, DoNothing);
    Handle(SIGXFSZ, DoNothing);
    if (::pipe2(Ends.Pipe, O_NONBLOCK | O_CLOEXEC) != 0)
        return; // without it the signals end the process, as they always do
    auto *notifier = new QSocketNotifier(Ends.Pipe[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, SignalCame);
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        if (!IsIgnored(signal))
            Handle(signal, WakeEventLoop);
}

void LeaveAtExit() {
    (void)std::atexit(ProcessExits);
}

} // namespace zrt
