#include "qt/boxes.h"

#include "platform/events.h"
#include "qt/box_keys.h"
#include "qt/mirror.h"
#include "qt/widgets.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>

#include <algorithm>
#include <cassert>
#include <iterator>
#include <span>

namespace zrt {

namespace {

struct ButtonSet {
    BoxButtons Buttons;
    int Count;
    BoxAnswer Answers[3];
};

constexpr ButtonSet kButtonSets[] = {
    {BoxButtons::Ok, 1, {BoxAnswer::Ok}},
    {BoxButtons::OkCancel, 2, {BoxAnswer::Ok, BoxAnswer::Cancel}},
    {BoxButtons::AbortRetryIgnore, 3, {BoxAnswer::Abort, BoxAnswer::Retry, BoxAnswer::Ignore}},
    {BoxButtons::YesNoCancel, 3, {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel}},
    {BoxButtons::YesNo, 2, {BoxAnswer::Yes, BoxAnswer::No}},
    {BoxButtons::RetryCancel, 2, {BoxAnswer::Retry, BoxAnswer::Cancel}},
};

struct AnswerButton {
    BoxAnswer Answer;
    QMessageBox::StandardButton Button;
    const char *Name; // of the button, for those who look it up
};

constexpr AnswerButton kAnswerButtons[] = {
    {BoxAnswer::Ok, QMessageBox::Ok, "Ok"},
    {BoxAnswer::Cancel, QMessageBox::Cancel, "Cancel"},
    {BoxAnswer::Abort, QMessageBox::Abort, "Abort"},
    {BoxAnswer::Retry, QMessageBox::Retry, "Retry"},
    {BoxAnswer::Ignore, QMessageBox::Ignore, "Ignore"},
    {BoxAnswer::Yes, QMessageBox::Yes, "Yes"},
    {BoxAnswer::No, QMessageBox::No, "No"},
};

const ButtonSet &SetOf(BoxButtons buttons) {
    const auto *found =
        std::find_if(std::begin(kButtonSets), std::end(kButtonSets),
                     [buttons](const ButtonSet &set) { return set.Buttons == buttons; });
    assert(found != std::end(kButtonSets));
    return *found;
}

QMessageBox::Icon IconOf(BoxIcon icon) {
    switch (icon) {
    case BoxIcon::None: return QMessageBox::NoIcon;
    case BoxIcon::Critical: return QMessageBox::Critical;
    case BoxIcon::Question: return QMessageBox::Question;
    case BoxIcon::Exclamation: return QMessageBox::Warning;
    case BoxIcon::Information: return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

// The window that a dialog stands on. What the logic has shown since the last event comes first, or
// it would open over the dialog.
QWidget *WindowBelow() {
    MirrorRecords();
    if (QWidget *dialog = QApplication::activeModalWidget())
        return dialog;
    const Form *form = ActiveForm();
    if (form == nullptr)
        return nullptr;
    QWidget *window = ViewOf(*form);
    return window->isVisible() ? window : nullptr;
}

// A box that must be answered by one of its buttons has no way out by Esc or the close box.
class MustBeAnswered : public QObject {
  public:
    using QObject::QObject;

    bool eventFilter(QObject *object, QEvent *event) override {
        if (event->type() == QEvent::Close && event->spontaneous()) {
            event->ignore();
            return true;
        }
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
            return true;
        return QObject::eventFilter(object, event);
    }
};

// A message box takes its width from its layout alone, and a title bar cuts what is longer.
void MakeRoomForTitle(const QDialog &dialog) {
    if (auto *grid = qobject_cast<QGridLayout *>(dialog.layout()))
        grid->addItem(new QSpacerItem(TitleWidth(dialog.windowTitle()), 0), grid->rowCount(), 0, 1,
                      grid->columnCount());
}

// Opens the dialog and waits until it is closed, or the program ends. Not by Qt's own exec: the
// timers of the program go on only in its own waits.
void WaitFor(QDialog &dialog) {
    const BoxOpen open;
    bool closed = false;
    QObject::connect(&dialog, &QDialog::finished, &dialog, [&closed] { closed = true; });
    dialog.setWindowModality(Qt::ApplicationModal);
    MakeRoomForTitle(dialog);
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
    PumpUntil(kNoDeadline, [&closed] { return closed; });
    dialog.hide();
}

// "A (*.ZRT)|*.ZRT|B (*.*)|*.*" as Qt's name filters, whose patterns mind no case.
QStringList NameFilters(const std::string &filter) {
    const QStringList parts =
        QString::fromStdString(filter).split(QLatin1Char('|'), Qt::SkipEmptyParts);
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString &pattern : patterns) {
            QString blind;
            const QString trimmed = pattern.trimmed();
            for (const QChar c : trimmed)
                blind += c.isLetter() ? QStringLiteral("[%1%2]").arg(c.toUpper()).arg(c.toLower())
                                      : QString(c);
            pattern = blind == QStringLiteral("*.*") ? QStringLiteral("*") : blind;
        }
        filters << parts[i] + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) +
                       QLatin1Char(')');
    }
    return filters;
}

// Qt's own dialog, on every desktop.
class PathDialog : public QFileDialog {
  public:
    PathDialog(const char *name, const std::string &title, const std::string &folder)
        : QFileDialog(KeepNoSettings(), QString::fromStdString(title),
                      QString::fromStdString(folder)) {
        setObjectName(QLatin1String(name));
        setOption(QFileDialog::DontUseNativeDialog);
    }

    // Waits for the operator. Nothing after Cancel.
    std::optional<std::string> Ask() {
        WaitFor(*this);
        if (result() != QDialog::Accepted)
            return std::nullopt;
        if (!Quoted.isEmpty())
            return Quoted.toStdString();
        const QStringList files = selectedFiles();
        return files.isEmpty() ? std::nullopt : std::optional(files.first().toStdString());
    }

    // Qt would take a name with quotes for a list of names.
    void accept() override {
        const QString typed = findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
        const QFileInfo file(directory(), typed);
        if (!typed.contains(QLatin1Char('"')))
            QFileDialog::accept();
        else if (file.isDir() && fileMode() != QFileDialog::Directory)
            setDirectory(file.absoluteFilePath());
        else if (!file.exists() && acceptMode() == QFileDialog::AcceptOpen)
            AskInBox({typed.toStdString() + "\nThere is nothing of this name here.", "Not Found",
                      BoxButtons::Ok, BoxIcon::Exclamation});
        else
            TakeQuoted(file);
    }

  private:
    // The window below. Qt keeps the state of its dialogs in a file of the user's; nothing can be
    // written where it is sent to.
    static QWidget *KeepNoSettings() {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral(":/none"));
        return WindowBelow();
    }

    void TakeQuoted(const QFileInfo &file) {
        Quoted = file.absoluteFilePath();
        if (!file.fileName().contains(QLatin1Char('.')) && !defaultSuffix().isEmpty())
            Quoted += QLatin1Char('.') + defaultSuffix();
        QDialog::accept();
    }

    QString Quoted;
};

} // namespace

BoxAnswer AskInBox(const MessageBox &box) {
    const ButtonSet &set = SetOf(box.Buttons);
    const BoxAnswer closed = AnswerOfClosing(box.Buttons); // by its close box or by Esc
    QMessageBox window(WindowBelow());
    window.setObjectName(QStringLiteral("MessageBox"));
    window.setWindowTitle(QString::fromStdString(box.Title));
    window.setTextFormat(Qt::PlainText);
    window.setText(QString::fromStdString(box.Text));
    window.setIcon(IconOf(box.Icon));
    const std::span<const BoxAnswer> answers(set.Answers, static_cast<std::size_t>(set.Count));
    QAbstractButton *closing = nullptr;
    for (std::size_t i = 0; i < answers.size(); ++i) {
        const auto &row =
            *std::find_if(std::begin(kAnswerButtons), std::end(kAnswerButtons),
                          [&](const AnswerButton &b) { return b.Answer == answers[i]; });
        QPushButton *button = window.addButton(row.Button);
        button->setObjectName(QLatin1String(row.Name));
        if (static_cast<int>(i) + 1 == box.DefaultButton)
            window.setDefaultButton(button);
        if (row.Answer == closed)
            closing = button;
    }
    MustBeAnswered refusal;
    if (closed == BoxAnswer::Abort)
        window.installEventFilter(&refusal);
    else
        window.setEscapeButton(closing);
    BoxComesUp();
    WaitFor(window);
    for (const AnswerButton &row : kAnswerButtons)
        if (window.clickedButton() != nullptr &&
            window.standardButton(window.clickedButton()) == row.Button)
            return row.Answer;
    return closed; // or the program ends
}

std::optional<std::string> AskForFile(const FileDialog &dialog) {
    PathDialog window("FileDialog", dialog.Title, dialog.Folder);
    window.setAcceptMode(dialog.Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    window.setFileMode(dialog.Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // The program asks by itself before it writes over a file.
    window.setOption(QFileDialog::DontConfirmOverwrite);
    window.setOption(QFileDialog::HideNameFilterDetails);
    window.setNameFilters(NameFilters(dialog.Filter));
    window.setDefaultSuffix(QString::fromStdString(dialog.DefaultExtension));
    return window.Ask();
}

std::optional<std::string> AskForFolder(const std::string &title, const std::string &start) {
    PathDialog window("FolderDialog", title, start);
    window.setFileMode(QFileDialog::Directory);
    window.setOption(QFileDialog::ShowDirsOnly);
    return window.Ask();
}

} // namespace zrt
