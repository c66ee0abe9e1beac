#include "qt/small_window.h"

#include "platform/events.h"
#include "platform/program.h"
#include "qt/doors.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"
#include "qt/views.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

namespace zrt {

namespace {

void RegisterSmallWindow(SmallWindow &w) {
    RegisterForm(w, "Small", "A window for tests",
                 {{"Field(0)", &w.Field[0], "First field"},
                  {"Field(1)", &w.Field[1], "Second field"},
                  {"lblLine", &w.lblLine, "A line"},
                  {"lblBelow", &w.lblBelow, "The line below"},
                  {"chkBox", &w.chkBox, "A box"},
                  {"optMode(0)", &w.optMode[0], "First option"},
                  {"optMode(1)", &w.optMode[1], "Second option"},
                  {"lstRows", &w.lstRows, "Rows"},
                  {"scrSpeed", &w.scrSpeed, "Speed"},
                  {"cmdOK", &w.cmdOK, "Accepts"},
                  {"cmdCancel", &w.cmdCancel, "Refuses"},
                  {"Frame1", &w.Frame1, "A frame"},
                  {"mnuFile", &w.mnuFile, "File menu"},
                  {"mnuFileNew", &w.mnuFileNew, "New"},
                  {"mnuFileLine", &w.mnuFileLine, "A line"},
                  {"mnuFileExit", &w.mnuFileExit, "Exit"},
                  {"mnuEmpty", &w.mnuEmpty, "A menu with nothing in it"}});
}

void BuildSmallWindow(SmallWindow &w) {
    auto *window = new QMainWindow;
    BindWindow(w, window);
    BindMenus(w, window->menuBar());
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    for (TextBox &field : w.Field)
        column->addWidget(NewField(w, field, 12, 1));
    column->addWidget(NewLabel(w, w.lblLine, {.Sample = "a sample"}));
    column->addWidget(NewLabel(w, w.lblBelow, {.Sample = "a sample"}));
    column->addWidget(NewCheckBox(w, w.chkBox));
    auto *frame = NewFrame(w, w.Frame1);
    auto *options = new QVBoxLayout;
    for (OptionButton &option : w.optMode)
        options->addWidget(NewOption(w, option));
    frame->setLayout(options);
    column->addWidget(frame);
    column->addWidget(NewList(w, w.lstRows));
    auto *bar = new QScrollBar(Qt::Horizontal);
    BindWidget(w, w.scrSpeed, bar);
    column->addWidget(bar);
    column->addWidget(NewButton(w, w.cmdOK));
    column->addWidget(NewButton(w, w.cmdCancel));
    window->setCentralWidget(page);
    FinishBinding(w);
}

void BuildSmallDialog(SmallDialog &d) {
    QWidget *window = NewDialogWindow(d);
    auto *column = new QVBoxLayout(window);
    column->addWidget(NewField(d, d.txtName, 12, 1));
    column->addWidget(NewButton(d, d.cmdOK));
    FinishBinding(d);
}

} // namespace

SmallWindow SmallWindowTest::Window;
SmallDialog SmallWindowTest::Dialog;

SmallWindowTest::SmallWindowTest() {
    Program = {};
    Window = {};
    Dialog = {};
    Screen = {};
    ForgetEvents();
    InstallQtDoors([] { EndProgram(7); });
    RegisterSmallWindow(Window);
    RegisterForm(Dialog, "Dialog", "A dialog for tests",
                 {{"txtName", &Dialog.txtName, "Name"}, {"cmdOK", &Dialog.cmdOK, "Accepts"}});
    Window.Caption = "Small window";
    Window.mnuFile.Caption = "File";
    Window.mnuFile.AltLetter = 'F';
    Window.mnuFileNew.Caption = "New";
    Window.mnuFileLine.Caption = "-";
    Window.mnuFileExit.Caption = "Exit";
    Window.mnuEmpty.Caption = "Empty";
    for (MenuItem *entry : {&Window.mnuFileNew, &Window.mnuFileLine, &Window.mnuFileExit})
        entry->Parent = "mnuFile";
    for (MenuItem *entry : {&Window.mnuFileNew, &Window.mnuFileExit})
        entry->Click = [this] { Heard.emplace_back("menu"); };
    Window.cmdOK.Default = true;
    Window.cmdCancel.Cancel = true;
    Window.optMode[0].Value = true;
    Window.lstRows.Rows = {"one", "two", "three"};
    Window.scrSpeed.Max = 50;
    Window.ActiveControl = &Window.Field[0];
    Dialog.Caption = "Small dialog";
    Dialog.ActiveControl = &Dialog.txtName;
    BuildSmallWindow(Window);
    BuildSmallDialog(Dialog);
    ShowForm(Window);
    Turn();
    EXPECT_TRUE(QTest::qWaitForWindowActive(ViewOf(Window)));
    Turn();
}

SmallWindowTest::~SmallWindowTest() {
    DestroyViews();
    Screen = {};
    ForgetEvents();
}

void SmallWindowTest::Turn() {
    for (int i = 0; i < 3; ++i) {
        MirrorRecords();
        QCoreApplication::processEvents();
        while (ServeNextEvent(Clock.Steady())) {}
    }
    MirrorRecords();
}

QWidget *SmallWindowTest::FindWidget(const Form &form, const char *name) {
    auto *widget = ViewOf(form)->findChild<QWidget *>(QLatin1String(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
}

} // namespace zrt
