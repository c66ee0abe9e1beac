// zrtlog: the logger as an operator runs it.
#include "app/exit.h"
#include "app/start_up.h"
#include "platform/events.h"
#include "platform/program.h"
#include "qt/doors.h"
#include "qt/quiet_style.h"
#include "qt/session_end.h"
#include "qt/views.h"

#include <QApplication>
#include <QIcon>

#include <clocale>

namespace {

// The contest's keys reach a window of X11 whole; a compositor keeps some of them to itself.
void PreferX11() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

} // namespace

int main(int argc, char *argv[]) {
    PreferX11();
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // numbers in files have a point, whatever the desktop says
    QApplication::setApplicationName(QStringLiteral("zrtlog"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.zrtlog.zrtlog"));
    // From the desktop's theme where the program is installed, else from the program itself.
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("org.zrtlog.zrtlog"),
                                                 QIcon(QStringLiteral(":/org.zrtlog.zrtlog.svg"))));
    QApplication::setQuitOnLastWindowClosed(false);
    zrt::InstallQuietStyle();

    zrt::InstallQtDoors(zrt::LeaveProgram);
    zrt::WatchSessionEnd({zrt::KeepSession, zrt::LeaveProgram});
    zrt::RegisterWindows();
    zrt::BuildViews();
    zrt::StartProgram();
    zrt::LeaveAtExit();
    zrt::PumpUntil(zrt::kNoDeadline, [] { return false; });
    zrt::DestroyViews();
    return zrt::Program.ExitStatus;
}
