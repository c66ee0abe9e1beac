#include "qt/doors.h"

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/help.h"
#include "platform/keys.h"
#include "platform/program.h"
#include "platform/user_folder.h"
#include "qt/boxes.h"
#include "qt/operator_filter.h"
#include "qt/pump.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

#include <chrono>
#include <ctime>

namespace zrt {

namespace {

Microseconds SteadyNow() {
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

MachineTime FromCalendar(const std::tm &calendar) {
    return {calendar.tm_year + 1900, calendar.tm_mon + 1, calendar.tm_mday,
            calendar.tm_hour,        calendar.tm_min,     calendar.tm_sec};
}

MachineTime LocalNow() {
    const std::time_t now = std::time(nullptr);
    std::tm calendar{};
    localtime_r(&now, &calendar);
    return FromCalendar(calendar);
}

MachineTime UtcNow() {
    const std::time_t now = std::time(nullptr);
    std::tm calendar{};
    gmtime_r(&now, &calendar);
    return FromCalendar(calendar);
}

std::string ExecutableFolder() {
    return WithSeparator(QCoreApplication::applicationDirPath().toStdString());
}

std::string UserFolder() {
    const std::string base = DataHomeOf(ReadUserEnvironment());
    return base.empty() ? "" : WithSeparator(base) + "zrtlog/";
}

bool RootWithoutHome() {
    return IsRootWithoutHome(ReadUserEnvironment());
}

// Beside an installed program its data lies in share; a build finds it in the source tree.
std::string DefaultsFolder() {
    const QFileInfo installed(QCoreApplication::applicationDirPath() +
                              QStringLiteral("/../share/zrtlog"));
    return WithSeparator(installed.isDir() ? installed.canonicalFilePath().toStdString()
                                           : std::string(ZRT_SHIPPED_DATA));
}

std::string DocumentsFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return folder.isEmpty() ? std::string() : WithSeparator(folder.toStdString());
}

bool OpenHelp(const std::string &helpFile, int topic) {
    const QFileInfo page(QString::fromStdString(HelpPage(helpFile, topic)));
    return page.isFile() && QDesktopServices::openUrl(QUrl::fromLocalFile(page.absoluteFilePath()));
}

} // namespace

void InstallQtDoors(std::function<void()> quitAsked) {
    Clock = {SteadyNow, LocalNow, UtcNow};
    Events.PumpUntil = PumpInQt;
    Dialogs = {AskInBox, AskForFile, AskForFolder};
    KeyState.Pressed = KeyPressed;
    ProgramFolders = {ExecutableFolder, UserFolder, RootWithoutHome, DefaultsFolder,
                      DocumentsFolder};
    Help.Open = OpenHelp;
    Files = DiskFiles();
    InstallOperatorFilter(std::move(quitAsked));
}

} // namespace zrt
