#include "qt/small_window.h"

#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/program.h"
#include "qt/mirror.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

#include <gmock/gmock.h>

namespace zrt {
namespace {

class Boxes : public SmallWindowTest {
  protected:
    // Runs `act` with the dialog as soon as one is open.
    template <class Dialog> void WhenOpen(std::function<void(Dialog &)> act) {
        Post([this, act] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                WhenOpen<Dialog>(act);
                return;
            }
            Opened = true;
            act(*dialog);
        });
    }
    bool Opened = false;
};

struct BoxCase {
    std::vector<std::string> Names;
    std::vector<BoxAnswer> Answers;
    BoxButtons Buttons;
    BoxAnswer Closed;
};

const BoxCase kCases[] = {
    {{"Ok"}, {BoxAnswer::Ok}, BoxButtons::Ok, BoxAnswer::Ok},
    {{"Ok", "Cancel"}, {BoxAnswer::Ok, BoxAnswer::Cancel}, BoxButtons::OkCancel, BoxAnswer::Cancel},
    {{"Yes", "No", "Cancel"},
     {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel},
     BoxButtons::YesNoCancel,
     BoxAnswer::Cancel},
    {{"Yes", "No"}, {BoxAnswer::Yes, BoxAnswer::No}, BoxButtons::YesNo, BoxAnswer::No},
    {{"Retry", "Cancel"},
     {BoxAnswer::Retry, BoxAnswer::Cancel},
     BoxButtons::RetryCancel,
     BoxAnswer::Cancel},
    {{"Abort", "Retry", "Ignore"},
     {BoxAnswer::Abort, BoxAnswer::Retry, BoxAnswer::Ignore},
     BoxButtons::AbortRetryIgnore,
     BoxAnswer::Abort},
};

TEST_F(Boxes, EachButtonGivesItsAnswer) {
    for (const BoxCase &c : kCases) {
        for (std::size_t i = 0; i < c.Names.size(); ++i) {
            WhenOpen<QMessageBox>([&](QMessageBox &box) {
                EXPECT_EQ(box.buttons().size(), static_cast<qsizetype>(c.Names.size()));
                auto *button = box.findChild<QPushButton *>(QLatin1String(c.Names[i].c_str()));
                ASSERT_NE(button, nullptr);
                button->click();
            });
            EXPECT_EQ(ShowMessageBox({"Text", "Title", c.Buttons}), c.Answers[i]);
        }
    }
}

TEST_F(Boxes, EscAndTheCloseBoxAnswerAsTheyShould) {
    for (const BoxCase &c : kCases) {
        if (c.Buttons == BoxButtons::AbortRetryIgnore)
            continue;
        WhenOpen<QMessageBox>([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
        EXPECT_EQ(ShowMessageBox({"Text", "Title", c.Buttons}), c.Closed);
        WhenOpen<QMessageBox>([](QMessageBox &box) { box.close(); });
        EXPECT_EQ(ShowMessageBox({"Text", "Title", c.Buttons}), c.Closed);
    }
}

TEST_F(Boxes, ABoxThatMustBeAnsweredHasNoOtherWayOut) {
    bool survived = false;
    WhenOpen<QMessageBox>([&](QMessageBox &box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        survived = box.isVisible();
        box.findChild<QPushButton *>(QStringLiteral("Ignore"))->click();
    });
    EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::AbortRetryIgnore}), BoxAnswer::Ignore);
    EXPECT_TRUE(survived);
}

TEST_F(Boxes, ShowsPlainTextTitleIconAndDefaultButton) {
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        EXPECT_EQ(box.text(), QStringLiteral("<b>a & b</b>"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Title"));
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(
        ShowMessageBox({"<b>a & b</b>", "Title", BoxButtons::YesNoCancel, BoxIcon::Exclamation, 2}),
        BoxAnswer::No);
}

TEST_F(Boxes, TimersGoOnAndTheFieldBelowGetsNoKeys) {
    Timer timer;
    timer.Tick = [this] { Heard.emplace_back("tick"); };
    StartTimer(timer, 5);
    const Later later(60, [] {
        QTest::keyClick(QApplication::activeModalWidget(), 'a');
        static_cast<QDialog *>(QApplication::activeModalWidget())->reject();
    });
    ShowMessageBox({"Text", "Title"});
    StopTimer(timer);
    EXPECT_GE(Heard.size(), 3U);
    EXPECT_EQ(Window.Field[0].Text, "");
}

TEST_F(Boxes, TheWindowBelowIsActiveAgainAfterwards) {
    WhenOpen<QMessageBox>([](QMessageBox &box) { box.accept(); });
    ShowMessageBox({"Text", "Title"});
    Turn();
    EXPECT_EQ(QApplication::activeWindow(), ViewOf(Window));
    QTest::keyClick(ViewOf(Window)->windowHandle(), 'b');
    EXPECT_EQ(Window.Field[0].Text, "b");
}

TEST_F(Boxes, AnOpenBoxEndsWithTheProgram) {
    WhenOpen<QMessageBox>([](QMessageBox &) { EndProgram(0); });
    EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::YesNoCancel}), BoxAnswer::Cancel);
}

TEST_F(Boxes, AFileFilterMindsNoCase) {
    WhenOpen<QFileDialog>([](QFileDialog &dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Open Log"));
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(dialog.nameFilters().size(), 2);
        EXPECT_EQ(dialog.nameFilters().at(0), QStringLiteral("ZRT logs (*.ZRT) (*.[Zz][Rr][Tt])"));
        EXPECT_EQ(dialog.nameFilters().at(1), QStringLiteral("All files (*.*) (*)"));
        dialog.reject();
    });
    EXPECT_EQ(ShowFileDialog(
                  {"Open Log", "/", "ZRT logs (*.ZRT)|*.ZRT|All files (*.*)|*.*", "ZRT", false}),
              std::nullopt);
    EXPECT_TRUE(Opened);
}

TEST_F(Boxes, ASaveDialogAddsTheExtensionAndLeavesOverwritingToTheProgram) {
    const QTemporaryDir folder;
    QFile taken(folder.filePath(QStringLiteral("mine.ZRT")));
    ASSERT_TRUE(taken.open(QFile::WriteOnly));
    taken.close();
    WhenOpen<QFileDialog>([](QFileDialog &dialog) {
        dialog.selectFile(QStringLiteral("mine"));
        static_cast<QDialog &>(dialog).findChild<QPushButton *>()->click();
    });
    const auto path = ShowFileDialog(
        {"Save", folder.path().toStdString(), "ZRT logs (*.ZRT)|*.ZRT", "ZRT", true});
    ASSERT_TRUE(path.has_value());
    EXPECT_EQ(*path, taken.fileName().toStdString());
}

TEST_F(Boxes, AFolderIsChosen) {
    const QTemporaryDir folder;
    WhenOpen<QFileDialog>([](QFileDialog &dialog) {
        EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
        static_cast<QDialog &>(dialog).findChild<QPushButton *>()->click();
    });
    EXPECT_EQ(ShowFolderDialog("Folder", folder.path().toStdString()), folder.path().toStdString());
}

} // namespace
} // namespace zrt
