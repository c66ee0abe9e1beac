// Two forms with one control of each kind and plain views, for the tests of the mirror and the
// keys.
#pragma once

#include "platform/controls.h"

#include <QTimer>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class QWidget;

namespace zrt {

struct SmallWindow : Form {
    std::array<TextBox, 2> Field;
    Label lblLine, lblBelow;
    CheckBox chkBox;
    std::array<OptionButton, 2> optMode;
    ListBox lstRows;
    ScrollBar scrSpeed;
    Button cmdOK, cmdCancel;
    Frame Frame1;
    MenuItem mnuFile, mnuFileNew, mnuFileLine, mnuFileExit, mnuEmpty;
};

struct SmallDialog : Form {
    TextBox txtName;
    Button cmdOK;
};

// Runs a procedure once, later, from Qt's own event loop.
class Later : public QTimer {
  public:
    Later(int milliseconds, std::function<void()> act) : Act(std::move(act)) {
        QObject::connect(this, &QTimer::timeout, this, [this] { Act(); });
        setSingleShot(true);
        start(milliseconds);
    }

  private:
    std::function<void()> Act;
};

// Starts each test with fresh records, doors and views; the small window shows and is active.
class SmallWindowTest : public testing::Test {
  protected:
    SmallWindowTest();
    ~SmallWindowTest() override;

    // Copies the records and lets Qt act on it, until nothing is left to do.
    static void Turn();
    template <class Widget> static Widget *Find(const Form &form, const char *name) {
        return static_cast<Widget *>(FindWidget(form, name));
    }
    static QWidget *FindWidget(const Form &form, const char *name);

    // One of each for all tests: the list of forms keeps their addresses.
    static SmallWindow Window;
    static SmallDialog Dialog;
    std::vector<std::string> Heard; // what the handlers noted
};

} // namespace zrt
