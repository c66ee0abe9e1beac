// zrtlog-demo: plays a scenario on the headless doors with the windows of the real program on Qt's
// offscreen platform; tells each step, and leaves the log and pictures of the windows.
//   zrtlog-demo SCENARIO FOLDER
#include "app/start_up.h"
#include "headless/devices.h"
#include "headless/scenario.h"
#include "headless/state_names.h"
#include "qt/mirror.h"
#include "qt/quiet_style.h"
#include "qt/views.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QWidget>

#include <clocale>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

QString Folder; // where the log and the pictures go

void RegisterAndShow() {
    zrt::RegisterWindows();
    zrt::BuildViews();
}

void Repaint() {
    zrt::MirrorRecords();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void SaveWindow(const zrt::Form &form) {
    const QString name = QString::fromStdString(zrt::RegistrationOf(form).Name);
    zrt::ViewOf(form)->grab().save(Folder + "/" + name + ".png");
}

// The windows at the end; each dialog as it was seen last.
void SaveWindows() {
    for (const zrt::NamedForm &form : zrt::RegisteredForms())
        if (form.Record->Visible)
            SaveWindow(*form.Record);
}
void SaveDialog() {
    if (!zrt::Screen.Modal.empty())
        SaveWindow(*zrt::Screen.Modal.back());
}

// What the program has written: the logs of the scenario, not the files that it began with.
void KeepLogs() {
    for (const auto &file : fs::directory_iterator(zrt::Devices.ProgramFolder)) {
        const std::string extension = file.path().extension().string();
        if (extension == ".ZRT" || extension == ".LOG")
            fs::copy_file(file.path(), fs::path(Folder.toStdString()) / file.path().filename(),
                          fs::copy_options::overwrite_existing);
    }
}

} // namespace

int main(int argc, char *argv[]) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The platform without a screen says of each window what it can't do.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    zrt::InstallQuietStyle();
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("zrtlog-demo SCENARIO FOLDER\n", stderr);
        return 2;
    }
    Folder = arguments[2];
    if (!QDir().mkpath(Folder)) {
        std::fputs("The folder can't be made.\n", stderr);
        return 2;
    }

    zrt::ProgramUnderTest program;
    program.RegisterWindows = RegisterAndShow;
    program.Start = zrt::StartProgram;
    program.Exit = zrt::ExitProgram;
    program.StateValue = zrt::StateValue;
    program.ShippedData = ZRT_SHIPPED_DATA;
    zrt::RunOptions options;
    options.Narrate = true;
    options.AfterLine = [] {
        Repaint();
        SaveDialog();
    };
    options.AtEnd = [] {
        Repaint();
        SaveWindows();
        KeepLogs();
    };
    const int status = zrt::RunScenarioHere(program, options, arguments[1].toStdString());
    zrt::DestroyViews();
    return status;
}
