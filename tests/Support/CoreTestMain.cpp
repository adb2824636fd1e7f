#include "Support/BackgroundListener.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <gmock/gmock.h>

int main(int argc, char* argv[])
{
    testing::InitGoogleMock(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QCoreApplication application(argc, argv);
    morlaine::test::waitForBackgroundAfterEachTest();
    return RUN_ALL_TESTS();
}
