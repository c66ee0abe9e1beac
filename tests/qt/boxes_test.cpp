#include "qt/small_window.h"

#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/program.h"
#include "qt/box_keys.h"
#include "qt/mirror.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFontMetrics>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <functional>
#include <memory>

#include <gmock/gmock.h>

namespace zrt {
namespace {

class Boxes : public SmallWindowTest {
  protected:
    // Before the first dialog: Qt looks once where the settings of the user are.
    static void SetUpTestSuite() {
        Home = std::make_unique<QTemporaryDir>();
        HomeBefore = qgetenv("HOME");
        qputenv("HOME", Home->path().toUtf8());
        qputenv("XDG_CONFIG_HOME", Home->filePath(QStringLiteral("config")).toUtf8());
    }
    static void TearDownTestSuite() {
        qputenv("HOME", HomeBefore);
        qunsetenv("XDG_CONFIG_HOME");
        Home.reset();
    }
    static inline std::unique_ptr<QTemporaryDir> Home;
    static inline QByteArray HomeBefore;

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

// The desktop's own close, by the title bar or the task bar.
void CloseByDesktop(QWidget &window) {
    QCloseEvent close;
    QSpontaneKeyEvent::setSpontaneous(&close);
    qApp->notify(&window, &close); // sendEvent makes an event of the program's own
}

TEST_F(Boxes, TheDesktopMayCloseABoxThatCanBeCancelled) {
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        CloseByDesktop(box);
        EXPECT_FALSE(box.isVisible());
    });
    EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::RetryCancel}), BoxAnswer::Cancel);
    EXPECT_TRUE(Opened);
}

TEST_F(Boxes, ABoxThatMustBeAnsweredHasNoOtherWayOut) {
    const std::function<void(QMessageBox &)> ways[] = {
        [](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); },
        [](QMessageBox &box) { QTest::keyClick(box.windowHandle(), Qt::Key_Escape); },
        [](QMessageBox &box) { CloseByDesktop(box); },
    };
    for (const auto &way : ways) {
        bool survived = false;
        WhenOpen<QMessageBox>([&](QMessageBox &box) {
            way(box);
            survived = box.isVisible();
            box.findChild<QPushButton *>(QStringLiteral("Ignore"))->click();
        });
        EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::AbortRetryIgnore}),
                  BoxAnswer::Ignore);
        EXPECT_TRUE(survived);
    }
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

// What the operator types as a name, with Enter behind it.
void TypeName(QFileDialog &dialog, const QString &name) {
    auto *field = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(field, nullptr);
    field->setText(name);
    QTest::keyClick(field, Qt::Key_Return);
}

TEST_F(Boxes, ANameWithQuotesOrABackslashIsTakenAsTyped) {
    const QTemporaryDir folder;
    const char *const names[] = {R"(my "best" log)", R"("all quotes")", R"(half "quote)", R"(a\b)"};
    for (const char *name : names) {
        const QString path = folder.filePath(QLatin1String(name) + QStringLiteral(".ZRT"));
        WhenOpen<QFileDialog>([&](QFileDialog &dialog) { TypeName(dialog, QLatin1String(name)); });
        EXPECT_EQ(
            ShowFileDialog({"Save", folder.path().toStdString(), "ZRT logs|*.ZRT", "ZRT", true}),
            path.toStdString());
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.close();
        WhenOpen<QFileDialog>([&](QFileDialog &dialog) {
            TypeName(dialog, QLatin1String(name) + QStringLiteral(".ZRT"));
        });
        EXPECT_EQ(ShowFileDialog({"Open", folder.path().toStdString(), "ZRT logs|*.ZRT", "ZRT"}),
                  path.toStdString());
    }
}

TEST_F(Boxes, ANameWithQuotesThatIsNotThereIsRefusedWithAWord) {
    const QTemporaryDir folder;
    WhenOpen<QFileDialog>([&](QFileDialog &dialog) {
        WhenOpen<QMessageBox>([&](QMessageBox &box) {
            Heard.push_back(box.text().toStdString());
            EXPECT_EQ(box.parentWidget(), &dialog); // stands over the dialog
            box.accept();
        });
        TypeName(dialog, QStringLiteral("no \"such\" log"));
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    EXPECT_EQ(ShowFileDialog({"Open", folder.path().toStdString(), "ZRT logs|*.ZRT", "ZRT"}),
              std::nullopt);
    EXPECT_THAT(Heard,
                testing::ElementsAre("no \"such\" log\nThere is nothing of this name here."));
}

TEST_F(Boxes, AFolderWithQuotesIsEnteredAndChosen) {
    const QTemporaryDir folder;
    const QString name = QStringLiteral("the \"old\" ones");
    ASSERT_TRUE(QDir(folder.path()).mkdir(name));
    WhenOpen<QFileDialog>([&](QFileDialog &dialog) {
        TypeName(dialog, name);
        EXPECT_EQ(dialog.directory().absolutePath(), folder.filePath(name));
        dialog.reject();
    });
    EXPECT_EQ(ShowFileDialog({"Open", folder.path().toStdString(), "ZRT logs|*.ZRT", "ZRT"}),
              std::nullopt);
    WhenOpen<QFileDialog>([&](QFileDialog &dialog) { TypeName(dialog, name); });
    EXPECT_EQ(ShowFolderDialog("Folder", folder.path().toStdString()),
              folder.filePath(name).toStdString());
}

TEST_F(Boxes, FileDialogsLeaveNothingInTheHomeFolder) {
    WhenOpen<QFileDialog>([](QFileDialog &dialog) { dialog.reject(); });
    ShowFileDialog({"Open", "/", "ZRT logs|*.ZRT", "ZRT"});
    WhenOpen<QFileDialog>([](QFileDialog &dialog) { dialog.reject(); });
    ShowFolderDialog("Folder", "/");
    EXPECT_TRUE(Opened);
    EXPECT_THAT(
        QDir(Home->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        testing::IsEmpty());
}

TEST_F(Boxes, AShortTextUnderALongTitleShowsTheWholeTitle) {
    const std::string title = "Pre-1997 SS Log.  How Many Sections?  And some more";
    WhenOpen<QMessageBox>([&](QMessageBox &box) {
        QFont bold = QApplication::font(); // as title bars have it
        bold.setBold(true);
        const int shown = QFontMetrics(bold).horizontalAdvance(box.windowTitle());
        EXPECT_GT(box.width(), shown + 60); // an icon and three buttons beside it
        box.accept();
    });
    ShowMessageBox({"Yes?", title, BoxButtons::Ok});
}

TEST_F(Boxes, AFolderIsChosen) {
    const QTemporaryDir folder;
    WhenOpen<QFileDialog>([](QFileDialog &dialog) {
        EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
        static_cast<QDialog &>(dialog).findChild<QPushButton *>()->click();
    });
    EXPECT_EQ(ShowFolderDialog("Folder", folder.path().toStdString()), folder.path().toStdString());
}

// The operator's keys on a clock of their own.
class BoxUnderTheFingers : public Boxes {
  protected:
    BoxUnderTheFingers() {
        now = 100 * kSecond;
        Clock.Steady = [] { return now; };
    }

    static void Pass(Microseconds time) { now += time; }
    static void TypeIntoTheWindow(Qt::Key key) {
        Turn(); // the window is in front again after a box
        QTest::keyClick(ViewOf(Window)->windowHandle(), key);
    }
    // Whether the box does nothing about the key. Some keys close it, some press a button that
    // closes it a moment later.
    static bool Outlives(const QMessageBox &box, Qt::Key key,
                         Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(box.windowHandle(), key, modifiers);
        const auto buttons = box.buttons();
        return box.isVisible() && std::none_of(buttons.begin(), buttons.end(),
                                               [](auto *button) { return button->isDown(); });
    }

    static Microseconds now;
};
Microseconds BoxUnderTheFingers::now = 0;

TEST_F(BoxUnderTheFingers, TakesALetterWithAltOnly) {
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        for (const Qt::Key key : {Qt::Key_N, Qt::Key_Y, Qt::Key_C, Qt::Key_5}) {
            EXPECT_TRUE(Outlives(box, key));
            EXPECT_TRUE(Outlives(box, key, Qt::ShiftModifier));
            Pass(kSecond);
        }
        EXPECT_FALSE(Outlives(box, Qt::Key_N, Qt::AltModifier));
    });
    EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::YesNoCancel}), BoxAnswer::No);
    EXPECT_TRUE(Opened);
}

struct AnsweringKey {
    Qt::Key Key;
    Qt::KeyboardModifiers Modifiers;
    BoxAnswer Answer;
};

constexpr AnsweringKey kAnsweringKeys[] = {
    {Qt::Key_Return, Qt::NoModifier, BoxAnswer::Yes},
    {Qt::Key_Enter, Qt::KeypadModifier, BoxAnswer::Yes},
    {Qt::Key_Escape, Qt::NoModifier, BoxAnswer::Cancel},
    {Qt::Key_N, Qt::AltModifier, BoxAnswer::No},
};

TEST_F(BoxUnderTheFingers, TakesNoKeyForAWhileAfterOneThatWasTyped) {
    for (const AnsweringKey &answering : kAnsweringKeys) {
        SCOPED_TRACE(answering.Key);
        TypeIntoTheWindow(Qt::Key_W);
        Pass(kTypingPause - 1); // a slow typist
        WhenOpen<QMessageBox>([&](QMessageBox &box) {
            EXPECT_TRUE(Outlives(box, answering.Key, answering.Modifiers));
            Pass(kTypingPause - 1);
            EXPECT_TRUE(Outlives(box, answering.Key, answering.Modifiers));
            Pass(1);
            EXPECT_FALSE(Outlives(box, answering.Key, answering.Modifiers));
        });
        EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::YesNoCancel}), answering.Answer);
    }
}

TEST_F(BoxUnderTheFingers, ReactsAtOnceInAQuietMoment) {
    for (const AnsweringKey &answering : kAnsweringKeys) {
        TypeIntoTheWindow(Qt::Key_W);
        Pass(kTypingPause);
        WhenOpen<QMessageBox>([&](QMessageBox &box) {
            EXPECT_FALSE(Outlives(box, answering.Key, answering.Modifiers));
        });
        EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::YesNoCancel}), answering.Answer);
    }
}

TEST_F(BoxUnderTheFingers, IsNotAnsweredByAnOperatorWhoTypesOn) {
    TypeIntoTheWindow(Qt::Key_W);
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        const Qt::Key call[] = {Qt::Key_D,     Qt::Key_L, Qt::Key_1, Qt::Key_N,
                                Qt::Key_Space, Qt::Key_5, Qt::Key_9, Qt::Key_Return};
        for (const Qt::Key key : call) {
            Pass(kTypingPause / 2);
            EXPECT_TRUE(Outlives(box, key));
        }
        // The Enter was no text: who stops to look can answer.
        Pass(kTypingPause / 2);
        EXPECT_FALSE(Outlives(box, Qt::Key_Return));
    });
    EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::YesNoCancel}), BoxAnswer::Yes);
}

TEST_F(BoxUnderTheFingers, IsNotAnsweredByAKeyThatIsHeldDown) {
    WhenOpen<QMessageBox>([](QMessageBox &box) {
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(box.windowHandle(), &repeat);
        EXPECT_TRUE(box.isVisible());
        EXPECT_FALSE(Outlives(box, Qt::Key_Return));
    });
    EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::YesNoCancel}), BoxAnswer::Yes);
}

TEST_F(BoxUnderTheFingers, ABlankPressesTheButtonOfAQuietBox) {
    WhenOpen<QMessageBox>([](QMessageBox &box) { EXPECT_FALSE(Outlives(box, Qt::Key_Space)); });
    EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::YesNo}), BoxAnswer::Yes);
}

TEST_F(BoxUnderTheFingers, TheAnswerToOneBoxKeepsNoOtherWaiting) {
    for (int i = 0; i < 2; ++i) {
        WhenOpen<QMessageBox>(
            [](QMessageBox &box) { EXPECT_FALSE(Outlives(box, Qt::Key_Return)); });
        EXPECT_EQ(ShowMessageBox({"Text", "Title", BoxButtons::YesNo}), BoxAnswer::Yes);
    }
}

} // namespace
} // namespace zrt
