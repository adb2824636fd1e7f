#include "Support/BackgroundListener.h"

#include <QApplication>
#include <QStandardPaths>

#include <gmock/gmock.h>

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleMock(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    morlaine::test::waitForBackgroundAfterEachTest();
    return RUN_ALL_TESTS();
}
