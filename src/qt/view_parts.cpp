#include "qt/view_parts.h"

#include "qt/mirror.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QFontMetrics>
#include <QGroupBox>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>

#include <cmath>

namespace zrt {

namespace {

// The mouse on a label: pressed and let go over it is a click.
class LabelClicks : public QObject {
  public:
    LabelClicks(Label &record, PlaceLabel *widget)
        : QObject(widget), Record(record), Widget(*widget) {}

    bool eventFilter(QObject *object, QEvent *event) override {
        if (event->type() != QEvent::MouseButtonPress &&
            event->type() != QEvent::MouseButtonRelease)
            return QObject::eventFilter(object, event);
        const auto &mouse = static_cast<const QMouseEvent &>(*event);
        if (mouse.button() != Qt::LeftButton)
            return false;
        if (event->type() == QEvent::MouseButtonRelease &&
            Widget.rect().contains(mouse.position().toPoint())) {
            FinishFocus();
            ClickControl(Record);
            MirrorRecords();
        }
        return true;
    }

  private:
    Label &Record;
    PlaceLabel &Widget;
};

} // namespace

PlaceLabel *NewLabel(Form &form, Label &label, const LabelLook &look) {
    auto *widget = new PlaceLabel(look, nullptr);
    BindWidget(form, label, widget);
    return widget;
}

PlaceLabel *NewClickLabel(Form &form, Label &label, const LabelLook &look) {
    PlaceLabel *widget = NewLabel(form, label, look);
    widget->installEventFilter(new LabelClicks(label, widget));
    return widget;
}

EntryField *NewField(Form &form, TextBox &field, int columns, double scale) {
    auto *widget = new EntryField(columns, scale, nullptr);
    BindWidget(form, field, widget);
    return widget;
}

QCheckBox *NewCheckBox(Form &form, CheckBox &box) {
    auto *widget = new QCheckBox;
    BindWidget(form, box, widget);
    return widget;
}

QRadioButton *NewOption(Form &form, OptionButton &option) {
    auto *widget = new QRadioButton;
    BindWidget(form, option, widget);
    return widget;
}

QListWidget *NewList(Form &form, ListBox &list) {
    auto *widget = new QListWidget;
    widget->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    BindWidget(form, list, widget);
    return widget;
}

QPushButton *NewButton(Form &form, Button &button) {
    auto *widget = new QPushButton;
    widget->setAutoDefault(false);
    BindWidget(form, button, widget);
    return widget;
}

QGroupBox *NewFrame(Form &form, Frame &frame) {
    auto *widget = new QGroupBox;
    BindWidget(form, frame, widget);
    return widget;
}

QWidget *NewDialogWindow(Form &form) {
    auto *window = new QDialog;
    window->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint);
    BindWindow(form, window);
    return window;
}

int Lines(double n) {
    return static_cast<int>(std::lround(n * QFontMetrics(QApplication::font()).height()));
}

} // namespace zrt
