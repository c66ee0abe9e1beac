#include "qt/view_parts.h"

#include "qt/mirror.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QFontMetrics>
#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include <cmath>

namespace zrt {

PlaceLabel *NewLabel(Form &form, Label &label, const LabelLook &look) {
    auto *widget = new PlaceLabel(look, nullptr);
    BindWidget(form, label, widget);
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
