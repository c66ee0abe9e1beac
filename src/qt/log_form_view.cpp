// The entry window. Everything has its fixed place: what appears or vanishes moves nothing else.
#include "entry/log_form.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace zrt {

namespace {

constexpr int kMinimumWidth = 760;
constexpr int kMargin = 14;
constexpr int kCallColumns = 11; // ten of a call, and room for the caret and a "?"
// Of the exchange, between the short ones and the notes of a Generic log.
constexpr int kLeastExchangeColumns = 8;
constexpr int kMostExchangeColumns = 24;
constexpr double kFieldScale = 2.3;
constexpr std::size_t kModeLabelWidth = 6; // characters beside the table; more goes above it

constexpr LabelLook kLogLook = {.Sample = "Log: - - Contest:", .Scale = 0.95};
constexpr LabelLook kClockLook = {.Sample = "GMT: 0000",
                                  .Bold = true,
                                  .Align = Qt::AlignRight | Qt::AlignVCenter,
                                  .Grows = false};
constexpr LabelLook kLocalLook = {.Sample = "Sending Msg 10 of 10 [Pause]",
                                  .Align = Qt::AlignRight | Qt::AlignVCenter,
                                  .Grows = false};
constexpr LabelLook kNumberLook = {
    .Sample = "QSO Nr 9000    (160m SSB)", .Scale = 1.5, .Bold = true, .Grows = false};
constexpr LabelLook kRadioLook = {.Sample = "Log R2", .Scale = 1.1, .Bold = true, .Grows = false};
constexpr LabelLook kScoreLook = {.Sample = "Score: 9,999,999",
                                  .Scale = 1.1,
                                  .FixedPitch = true,
                                  .Align = Qt::AlignRight | Qt::AlignVCenter,
                                  .Grows = false};
constexpr LabelLook kMultsLook = {.Sample = "SSB Cties: 999",
                                  .Scale = 1.1,
                                  .FixedPitch = true,
                                  .Align = Qt::AlignRight | Qt::AlignVCenter,
                                  .Grows = false};
constexpr LabelLook kCaptionLook = {.Sample = "Exchange", .Scale = 1.1, .TrimBlanks = true};
constexpr LabelLook kDupeLook = {
    .Sample = "DUPE - 10/29/25  2359Z  His # 9999  My # 9999", .Scale = 1.3, .Bold = true};
constexpr LabelLook kNeedLook = {.Sample = "VP8/h  CW NEEDED  SSB NEEDED",
                                 .Scale = 1.2,
                                 .Bold = true,
                                 .TrimBlanks = true,
                                 .Grows = false};
constexpr LabelLook kCountryLook = {
    .Sample = "Fed. Rep. of Germany", .Scale = 1.35, .TrimBlanks = true};
constexpr LabelLook kHeadingLook = {.Sample = "360\xC2\xB0",
                                    .Scale = 1.35,
                                    .Align = Qt::AlignRight | Qt::AlignVCenter,
                                    .Grows = false};
constexpr LabelLook kNeededOnLook = {.Sample = "NY needed on  10 15 20 40 80 160",
                                     .Scale = 1.1,
                                     .FixedPitch = true,
                                     .TrimBlanks = true};
constexpr LabelLook kModeLook = {.Sample = "SSB:",
                                 .Scale = 1.15,
                                 .FixedPitch = true,
                                 .Lines = 3,
                                 .Align = Qt::AlignLeft | Qt::AlignBottom,
                                 .TrimBlanks = true,
                                 .Grows = false,
                                 .MarkColored = true};
constexpr LabelLook kPriorLook = {.Sample = "160m 9",
                                  .Scale = 1.15,
                                  .FixedPitch = true,
                                  .Lines = 3,
                                  .Align = Qt::AlignLeft | Qt::AlignBottom,
                                  .TrimBlanks = true,
                                  .MarkColored = true};
constexpr LabelLook kMatchLook = {
    .Sample = "Other bd/mds: DL1ABC", .Scale = 1.1, .FixedPitch = true};
constexpr LabelLook kLastLook = {.Sample = "Last: 160 SSB", .Scale = 1.05, .FixedPitch = true};
constexpr LabelLook kWarningLook = {
    .Sample = "NOT ON DISK: QSO Nr 1000 to 1009", .Bold = true, .Lines = 2, .Warning = true};

// Log label, clocks.
QLayout *BuildHeader() {
    auto *row = new QHBoxLayout;
    row->setSpacing(Lines(1));
    row->addWidget(NewLabel(LogForm, LogForm.lblLog, kLogLook), 1);
    row->addWidget(NewLabel(LogForm, LogForm.TimeGMTLabel, kClockLook));
    auto *place = new QGridLayout; // the message being sent takes the place of the local time
    place->addWidget(NewLabel(LogForm, LogForm.TimeLocalLabel, kLocalLook), 0, 0);
    place->addWidget(NewLabel(LogForm, LogForm.LabelSendingMsg, kLocalLook), 0, 0);
    row->addLayout(place);
    return row;
}

QLayout *BuildNumbers() {
    auto *row = new QHBoxLayout;
    row->setSpacing(Lines(1.2));
    row->addWidget(NewLabel(LogForm, LogForm.QSONrLabel, kNumberLook));
    row->addWidget(NewLabel(LogForm, LogForm.ActiveLogLabel, kRadioLook));
    row->addStretch(1);
    row->addWidget(NewLabel(LogForm, LogForm.ScoreLabel, kScoreLook));
    row->addWidget(NewLabel(LogForm, LogForm.MultsLabel, kMultsLook));
    return row;
}

// Captions, or the DUPE line in their place; the two fields; the buttons.
QGridLayout *BuildFields() {
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(Lines(0.8));
    grid->setVerticalSpacing(2);
    grid->addWidget(NewLabel(LogForm, LogForm.lblCallsign, kCaptionLook), 0, 0);
    grid->addWidget(NewLabel(LogForm, LogForm.lblExchange, kCaptionLook), 0, 1);
    grid->addWidget(NewLabel(LogForm, LogForm.lblDupe, kDupeLook), 0, 0, 1, 4);
    grid->addWidget(NewField(LogForm, LogForm.InData[0], kCallColumns, kFieldScale), 1, 0);
    grid->addWidget(NewField(LogForm, LogForm.InData[1], kLeastExchangeColumns, kFieldScale), 1, 1);
    auto *buttons = new QVBoxLayout;
    buttons->setSpacing(2);
    buttons->addWidget(NewButton(LogForm, LogForm.AddButton));
    buttons->addWidget(NewButton(LogForm, LogForm.CancelButton));
    grid->addLayout(buttons, 1, 3, Qt::AlignVCenter);
    grid->setColumnStretch(0, kCallColumns);
    return grid;
}

// The exchange field is as wide as the contest's exchange asks, and never narrower; the rest of its
// place stays empty.
void LayOutExchange(QGridLayout &grid) {
    const int columns = LogForm.InData[1].Columns;
    const int shown = columns > 0 ? std::min(columns, kMostExchangeColumns) : kMostExchangeColumns;
    if (grid.columnStretch(1) == shown)
        return;
    const QWidget *field = grid.itemAtPosition(1, 1)->widget();
    grid.setColumnMinimumWidth(1, static_cast<const EntryField *>(field)->SizeFor(shown).width());
    grid.setColumnStretch(1, shown);
    grid.setColumnStretch(2, kMostExchangeColumns - shown);
}

// Needed or worked, the country; below it the bands. `modeLine` shows what is too long to stand
// beside the prior contacts.
QLayout *BuildNeeds(PlaceLabel *modeLine) {
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(Lines(1));
    grid->setVerticalSpacing(2);
    grid->addWidget(NewLabel(LogForm, LogForm.NeedPfxLabel, kNeedLook), 0, 0);
    grid->addWidget(NewLabel(LogForm, LogForm.lblHeading, kHeadingLook), 0, 1);
    grid->addWidget(NewLabel(LogForm, LogForm.LblWpxCountry, kCountryLook), 0, 2);
    // No contest uses both of these.
    grid->addWidget(NewLabel(LogForm, LogForm.LabelNeededOn, kNeededOnLook), 1, 0, 1, 3);
    grid->addWidget(modeLine, 1, 0, 1, 3);
    grid->setColumnStretch(2, 1);
    return grid;
}

QLayout *BuildPriorContacts() {
    auto *row = new QHBoxLayout;
    row->setSpacing(Lines(0.6));
    row->addWidget(NewLabel(LogForm, LogForm.Modelabel, kModeLook));
    for (Label &label : LogForm.PrevQSO)
        row->addWidget(NewLabel(LogForm, label, kPriorLook), 1);
    return row;
}

QLayout *BuildMatches() {
    auto *column = new QVBoxLayout;
    column->setSpacing(2);
    for (Label *label :
         {&LogForm.CallMatchLabel1, &LogForm.CallMatchLabel2, &LogForm.OldCallMatchLabel})
        column->addWidget(NewLabel(LogForm, *label, kMatchLook));
    return column;
}

QLayout *BuildFooter() {
    auto *row = new QHBoxLayout;
    row->setSpacing(Lines(0.6));
    row->addWidget(NewLabel(LogForm, LogForm.lblLast, kLastLook), 1);
    row->addWidget(NewCheckBox(LogForm, LogForm.CheckCall));
    row->addWidget(NewCheckBox(LogForm, LogForm.CheckExchange));
    return row;
}

QWidget *BuildLogPage(PlaceLabel *modeLine, QLayout *fields) {
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(kMargin, Lines(0.4), kMargin, Lines(0.4));
    column->setSpacing(Lines(0.4));
    column->addLayout(BuildHeader());
    column->addWidget(new RuleLine(nullptr));
    column->addLayout(BuildNumbers());
    column->addSpacing(Lines(0.2));
    column->addLayout(fields);
    column->addLayout(BuildNeeds(modeLine));
    column->addWidget(new RuleLine(nullptr));
    column->addLayout(BuildPriorContacts());
    column->addLayout(BuildMatches());
    column->addStretch(1);
    column->addWidget(NewLabel(LogForm, LogForm.lblNotOnDisk, kWarningLook));
    column->addWidget(new RuleLine(nullptr));
    column->addLayout(BuildFooter());
    return page;
}

// What stands in the window while no log is open.
QWidget *BuildEmptyPage() {
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    auto *hint = new QLabel(QStringLiteral("File, New starts a log; File, Open opens one."));
    hint->setObjectName(QStringLiteral("EmptyHint"));
    hint->setFont(FontOf(1.5, false, false));
    hint->setAlignment(Qt::AlignCenter);
    hint->setForegroundRole(QPalette::WindowText);
    column->addWidget(hint);
    return page;
}

bool AnythingShows() {
    const auto &controls = RegistrationOf(LogForm).Controls;
    return std::any_of(controls.begin(), controls.end(), [](const NamedControl &control) {
        const ControlKind kind = control.Record->Kind;
        return kind != ControlKind::MenuItem && kind != ControlKind::Timer &&
               control.Record->Visible;
    });
}

// The mode label stands before the prior contacts; a line about a multiplier, which it can hold
// too, has no room there and stands below the fields.
void PlaceModeLabel(QWidget &beside, PlaceLabel &line) {
    const Label &record = LogForm.Modelabel;
    const bool isLine = record.Visible && record.Caption.find('\n') == std::string::npos &&
                        record.Caption.size() > kModeLabelWidth;
    if (isLine) {
        line.ShowText(QString::fromStdString(record.Caption));
        line.SetInk(record.ForeColor);
    }
    if (line.isHidden() == isLine)
        line.setVisible(isLine);
    if (isLine)
        beside.setVisible(false);
}

} // namespace

void BuildLogFormView() {
    auto *window = new QMainWindow;
    BindWindow(LogForm, window);
    BindMenus(LogForm, window->menuBar());
    auto *pages = new QStackedWidget;
    auto *modeLine = new PlaceLabel(kNeededOnLook, nullptr);
    modeLine->setObjectName(QStringLiteral("ModeLine"));
    auto *fields = BuildFields();
    auto *logPage = BuildLogPage(modeLine, fields);
    auto *emptyPage = BuildEmptyPage();
    pages->addWidget(emptyPage);
    pages->addWidget(logPage);
    window->setCentralWidget(pages);
    window->setMinimumWidth(kMinimumWidth);
    SizeWindow(LogForm, {kMinimumWidth + 60, window->minimumSizeHint().height()});
    auto *beside = logPage->findChild<QWidget *>(QStringLiteral("Modelabel"));
    WhenMirrored(LogForm, [=] {
        QWidget *page = AnythingShows() ? logPage : emptyPage;
        if (pages->currentWidget() != page)
            pages->setCurrentWidget(page);
        PlaceModeLabel(*beside, *modeLine);
        LayOutExchange(*fields);
    });
}

} // namespace zrt
