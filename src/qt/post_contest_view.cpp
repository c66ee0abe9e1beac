// The post-contest dialog: three frames under each other, the log file below them. While it is open
// nothing in it moves: the boxes of the exchange stand in the place of its line.
#include "app/post_contest.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPalette>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace zrt {

namespace {

constexpr int kMostRows = 7;
constexpr int kLastFieldColumns = 12;                // of the last text box
constexpr int kOnlyFieldColumns = 20;                // of one that is alone
constexpr int kMostColumns = 28 + kLastFieldColumns; // of all: those of Sweepstakes
constexpr double kIndent = 1.4;                      // of a box that belongs to the one above it

constexpr LabelLook kContestLook = {
    .Sample = "Contest: ARRL 10 Meter", .Scale = 1.2, .Bold = true, .TrimBlanks = true};
constexpr LabelLook kListLook = {.Sample = "Overlay:", .Grows = false};
constexpr LabelLook kExchangeLook = {.Sample = "Exchange Sent:", .Grows = false};
constexpr LabelLook kSentLook = {
    .Sample = "# B WWWWWWWWWW 99 WWW WWWWWWWW", .FixedPitch = true, .Grows = false};
// Its blanks set the words above the text boxes, so all characters are equally wide.
constexpr LabelLook kFieldsLook = {.Sample = "Prec    Call        Ck      Section",
                                   .FixedPitch = true};
constexpr LabelLook kNormalLook = {.Sample = "Normal Summary, Log and Dupe Files", .Grows = false};
constexpr LabelLook kLogFileLook = {
    .Sample = "Log File: /home/operator/contests/.../2015-02-21 ARRL DX CW DL0ZRT.ZRT",
    .TrimBlanks = true};

struct LabelledList {
    Label &Name;
    ListBox &List;
};

// A list that the contest has no use for leaves no gap.
void GiveUpPlace(QWidget &widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(false);
    widget.setSizePolicy(policy);
}

// As high as its rows and as wide as the widest of them.
void FitToRows(QListWidget &list) {
    const int rows = std::clamp(list.count(), 1, kMostRows);
    const int frame = 2 * list.frameWidth();
    const QSize size(std::max(list.sizeHintForColumn(0) + frame + Lines(0.5), Lines(4.5)),
                     std::max(list.sizeHintForRow(0), Lines(1)) * rows + frame);
    if (list.size() != size || list.minimumSize() != size)
        list.setFixedSize(size);
}

// The chosen row of the list that has the keyboard is the strong one: there are six.
void ShowKeyboard(QListWidget &list, bool here) {
    QPalette palette; // the application's
    if (!here) {
        const QColor paper = palette.color(QPalette::Base);
        const QColor strong = palette.color(QPalette::Highlight);
        const auto mixed = [](int a, int b) { return (2 * a + b) / 3; };
        palette.setColor(QPalette::Highlight, QColor(mixed(paper.red(), strong.red()),
                                                     mixed(paper.green(), strong.green()),
                                                     mixed(paper.blue(), strong.blue())));
        palette.setColor(QPalette::HighlightedText, palette.color(QPalette::Text));
    }
    if (list.palette().color(QPalette::Highlight) != palette.color(QPalette::Highlight))
        list.setPalette(palette);
}

using CategoryLists = std::array<QListWidget *, 6>;

std::array<LabelledList, 6> LabelledLists() {
    return {{
        {PostContest.lblClass, PostContest.lstClass},
        {PostContest.lblOverlay, PostContest.lstOverlay},
        {PostContest.lblBand, PostContest.lstBand},
        {PostContest.lblMode, PostContest.lstMode},
        {PostContest.lblPower, PostContest.lstPower},
        {PostContest.lblStation, PostContest.lstStation},
    }};
}

QLayout *BuildLists(CategoryLists &lists) {
    const auto labelled = LabelledLists();
    auto *row = new QHBoxLayout;
    row->setSpacing(Lines(0.8));
    for (std::size_t i = 0; i < labelled.size(); ++i) {
        auto *column = new QVBoxLayout;
        column->setSpacing(2);
        PlaceLabel *label = NewLabel(PostContest, labelled[i].Name, kListLook);
        lists[i] = NewList(PostContest, labelled[i].List);
        GiveUpPlace(*label);
        GiveUpPlace(*lists[i]);
        column->addWidget(label);
        column->addWidget(lists[i]);
        column->addStretch(1);
        row->addLayout(column);
    }
    row->addStretch(1);
    return row;
}

int Advance(const EntryField &field) {
    return QFontMetrics(field.font()).horizontalAdvance(QLatin1Char('W'));
}

int FieldGap() {
    return Lines(0.3);
}

int ButtonWidth() {
    return Lines(6);
}

using FieldBoxes = std::array<EntryField *, 4>;

// Two rows: the label of the text boxes; and the exchange with its button, or in their place the
// text boxes with theirs.
QLayout *BuildExchange(FieldBoxes &fields) {
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(Lines(0.8));
    grid->setVerticalSpacing(2);
    grid->addWidget(NewLabel(PostContest, PostContest.lblFields, kFieldsLook), 0, 1);
    grid->addWidget(NewLabel(PostContest, PostContest.lblExchange, kExchangeLook), 1, 0);

    auto *sent = new QHBoxLayout;
    sent->addWidget(NewLabel(PostContest, PostContest.lblExchangeSent, kSentLook));
    sent->addWidget(NewButton(PostContest, PostContest.cmdEdit));
    sent->addStretch(1);
    grid->addLayout(sent, 1, 1);

    auto *editing = new QHBoxLayout;
    editing->setSpacing(FieldGap());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        fields[i] = NewField(PostContest, PostContest.TextExch[i], kOnlyFieldColumns, 1.0);
        GiveUpPlace(*fields[i]); // a contest has as many as its exchange has pieces
        editing->addWidget(fields[i]);
    }
    auto *accept = NewButton(PostContest, PostContest.cmdExchOK);
    auto *leave = NewButton(PostContest, PostContest.cmdExchCancel);
    editing->addSpacing(FieldGap());
    editing->addWidget(accept);
    editing->addWidget(leave);
    editing->addStretch(1);
    grid->addLayout(editing, 1, 1);

    grid->addWidget(NewCheckBox(PostContest, PostContest.chkShowRst), 1, 2);
    grid->setColumnStretch(1, 1);
    // From the beginning the window is as wide, and the row as high, as the text boxes of the
    // longest exchange ask.
    for (QPushButton *button : {accept, leave})
        button->setMinimumWidth(ButtonWidth());
    grid->setColumnMinimumWidth(1, kMostColumns * Advance(*fields[0]) + 2 * ButtonWidth() +
                                       4 * FieldGap());
    grid->setRowMinimumHeight(1, fields[0]->sizeHint().height());
    return grid;
}

// Each text box stands under its word of the label: words are parted by two blanks or more.
void PlaceFields(const FieldBoxes &fields) {
    const std::string &label = PostContest.lblFields.Caption;
    const int advance = Advance(*fields[0]);
    std::size_t start = 0;
    for (EntryField *field : fields) {
        const std::size_t gap = label.find("  ", start);
        const std::size_t next = gap == std::string::npos ? gap : label.find_first_not_of(' ', gap);
        const int last = start == 0 ? kOnlyFieldColumns : kLastFieldColumns;
        const int columns = next == std::string::npos ? last : static_cast<int>(next - start);
        const int width = columns * advance - FieldGap();
        if (field->width() != width || field->minimumWidth() != width)
            field->setFixedWidth(width);
        start = next == std::string::npos ? label.size() : next;
    }
}

QWidget *BuildContestFrame(CategoryLists &lists, FieldBoxes &fields) {
    QGroupBox *frame = NewFrame(PostContest, PostContest.Frame1);
    auto *column = new QVBoxLayout(frame);
    column->addLayout(BuildLists(lists));
    column->addLayout(BuildExchange(fields));
    return frame;
}

QWidget *BuildUserFrame() {
    QGroupBox *frame = NewFrame(PostContest, PostContest.Frame2);
    auto *row = new QHBoxLayout(frame);
    row->addWidget(NewButton(PostContest, PostContest.cmdUserInfo));
    row->addStretch(1);
    return frame;
}

QLayout *Indented(QWidget *box) {
    auto *row = new QHBoxLayout;
    row->addSpacing(Lines(kIndent));
    row->addWidget(box, 1);
    return row;
}

// What goes to the sponsor at the left, the export at the right.
QWidget *BuildFilesFrame() {
    QGroupBox *frame = NewFrame(PostContest, PostContest.Frame3);
    auto *grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(Lines(1.5));
    grid->addWidget(NewCheckBox(PostContest, PostContest.chkCabrillo), 0, 0);
    grid->addLayout(Indented(NewCheckBox(PostContest, PostContest.chkExactFrequency)), 1, 0);
    auto *normal = new QHBoxLayout;
    normal->setSpacing(Lines(0.3));
    normal->addWidget(NewCheckBox(PostContest, PostContest.chkNormal));
    normal->addWidget(NewClickLabel(PostContest, PostContest.lblNormal, kNormalLook));
    normal->addStretch(1);
    grid->addLayout(normal, 2, 0);
    grid->addWidget(NewCheckBox(PostContest, PostContest.chkExport), 0, 1);
    grid->addLayout(Indented(NewCheckBox(PostContest, PostContest.chkOmitJas)), 1, 1);
    grid->addLayout(Indented(NewCheckBox(PostContest, PostContest.chkOmitUs)), 2, 1);
    grid->setColumnStretch(1, 1);
    return frame;
}

QLayout *BuildBottom() {
    auto *column = new QVBoxLayout;
    column->setSpacing(Lines(0.6));
    column->addWidget(NewLabel(PostContest, PostContest.lblLogFile, kLogFileLook));
    auto *row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(NewButton(PostContest, PostContest.CmdOK));
    row->addWidget(NewButton(PostContest, PostContest.CmdCancel));
    column->addLayout(row);
    return column;
}

} // namespace

void BuildPostContestView() {
    QWidget *window = NewDialogWindow(PostContest);
    CategoryLists lists{};
    FieldBoxes fields{};
    auto *column = new QVBoxLayout(window);
    column->setSpacing(Lines(0.6));
    column->addWidget(NewLabel(PostContest, PostContest.lblContest, kContestLook));
    column->addWidget(BuildContestFrame(lists, fields));
    column->addWidget(BuildUserFrame());
    column->addWidget(BuildFilesFrame());
    column->addStretch(1);
    column->addLayout(BuildBottom());
    // The text of this box is a label of its own: a screen reader is told it here.
    auto *normal = window->findChild<QCheckBox *>(QStringLiteral("chkNormal"));
    WhenMirrored(PostContest, [=] {
        for (std::size_t i = 0; i < lists.size(); ++i) {
            FitToRows(*lists[i]);
            ShowKeyboard(*lists[i], PostContest.ActiveControl == &LabelledLists()[i].List);
        }
        PlaceFields(fields);
        const QString name = QString::fromStdString(PostContest.lblNormal.Caption).trimmed();
        if (normal->accessibleName() != name)
            normal->setAccessibleName(name);
    });
}

} // namespace zrt
