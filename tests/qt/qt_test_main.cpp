// main() of the window tests: an application object before the first test.
#include "qt/quiet_style.h"

#include <QApplication>
#include <QFont>

#include <gtest/gtest.h>

int main(int argc, char *argv[]) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    zrt::InstallQuietStyle();
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    return RUN_ALL_TESTS();
}
