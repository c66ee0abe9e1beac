// The user profiles: the list of them, or the field for a new name in its place, above one column
// of fields, each as wide as what it may hold.
#include "app/user_info.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace zrt {

namespace {

constexpr int kProfiles = 4;
constexpr int kRoom = 3; // columns for the caret, and for widths that are no whole pixels
constexpr LabelLook kCaptionLook = {.Sample = "User Profile:", .Grows = false};

EntryField *NewWholeField(TextBox &field) {
    return NewField(UserInfo, field, field.Columns + kRoom, 1.0);
}

QListWidget *BuildProfiles() {
    QListWidget *list = NewList(UserInfo, UserInfo.lstProfiles);
    const QFontMetrics metrics(list->font());
    list->setFixedSize(metrics.averageCharWidth() * UserInfo.TextName.Columns + Lines(3),
                       metrics.lineSpacing() * kProfiles + Lines(0.3) + 2 * list->frameWidth());
    return list;
}

QLayout *BuildNewName() {
    auto *row = new QHBoxLayout;
    row->setSpacing(Lines(0.5));
    row->addWidget(NewWholeField(UserInfo.TextName));
    row->addWidget(NewButton(UserInfo, UserInfo.cmdNameOK));
    row->addWidget(NewButton(UserInfo, UserInfo.cmdNameCancel));
    row->addStretch(1);
    return row;
}

QLayout *BuildFields() {
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(Lines(0.8));
    grid->setVerticalSpacing(Lines(0.3));
    int row = 0;
    grid->addWidget(NewLabel(UserInfo, UserInfo.lblProfile, kCaptionLook), row, 0, Qt::AlignTop);
    grid->addWidget(BuildProfiles(), row, 1, Qt::AlignLeft);
    grid->addLayout(BuildNewName(), row, 1, Qt::AlignTop);
    grid->setRowMinimumHeight(++row, Lines(0.4));
    for (std::size_t i = 0; i < UserInfo.Textinfo.size(); ++i) {
        grid->addWidget(NewLabel(UserInfo, UserInfo.lblInfo[i], kCaptionLook), ++row, 0);
        grid->addWidget(NewWholeField(UserInfo.Textinfo[i]), row, 1, Qt::AlignLeft);
    }
    return grid;
}

} // namespace

void BuildUserInfoView() {
    auto *window = new QMainWindow; // a dialog to the operator; this kind has a menu bar
    window->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint);
    BindWindow(UserInfo, window);
    BindMenus(UserInfo, window->menuBar());
    window->layout()->setSizeConstraint(QLayout::SetFixedSize);
    auto *page = new QWidget;
    auto *rows = new QVBoxLayout(page);
    rows->setSpacing(Lines(0.6));
    rows->addLayout(BuildFields());
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(NewButton(UserInfo, UserInfo.cmdOK));
    buttons->addWidget(NewButton(UserInfo, UserInfo.cmdCancel));
    rows->addLayout(buttons);
    window->setCentralWidget(page);
}

} // namespace zrt
