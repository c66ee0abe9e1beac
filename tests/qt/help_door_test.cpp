// The help door of the windows: which address it hands to the desktop.
#include "platform/files.h"
#include "platform/help.h"
#include "qt/desktop.h"
#include "qt/doors.h"

#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

namespace zrt {

namespace {

class HelpDoorTest : public testing::Test {
  protected:
    void SetUp() override {
        Files = DiskFiles();
        InstallQtDoors([] {});
    }
    QString PathOf(const char *name) const { return Folder.filePath(QString::fromUtf8(name)); }
    void Make(const char *name) {
        QFile file(PathOf(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    bool Open(int topic) const { return Help.Open(PathOf("my help.chm").toStdString(), topic); }

    QTemporaryDir Folder;
    Desktop Here;
};

TEST_F(HelpDoorTest, HandsThePageOfTheTopicToTheDesktop) {
    Make("my help.html");
    Make("my help-101.html");
    EXPECT_TRUE(Open(101));
    EXPECT_TRUE(Open(0));
    EXPECT_EQ(Here.Shown, (QList<QUrl>{QUrl::fromLocalFile(PathOf("my help-101.html")),
                                       QUrl::fromLocalFile(PathOf("my help.html"))}));
}

TEST_F(HelpDoorTest, OpensNothingInPlaceOfAPageThatIsMissing) {
    EXPECT_FALSE(Open(0));
    Make("my help.html");
    Make("my help.chm");
    EXPECT_FALSE(Open(100));
    EXPECT_TRUE(Here.Shown.isEmpty());
}

TEST_F(HelpDoorTest, HandsOverTheHelpFileWhereItStandsAlone) {
    Make("my help.chm");
    EXPECT_TRUE(Open(100));
    EXPECT_EQ(Here.Shown, QList<QUrl>{QUrl::fromLocalFile(PathOf("my help.chm"))});
}

} // namespace
} // namespace zrt
