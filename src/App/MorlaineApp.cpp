#include "App/MorlaineApp.h"

#include "Platform/Desktop/LivingBuses.h"
#include "UI/Views/Window/MainView.h"

#include <QSettings>

#include <cstdio>
#include <cstdlib>

namespace morlaine {

namespace {

bool hasDisplay = false;

/// The program keeps no log, and neither does the toolkit on its behalf. It cannot go on without a display, though.
void discardMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*message*/)
{
    if (type == QtFatalMsg && !hasDisplay) {
        std::fputs("Morlaine cannot open its window: the display cannot be reached.\n", stderr);
        std::_Exit(EXIT_FAILURE);
    }
}

/// What the toolkit must find settled when its application object is made.
int& prepareToolkit(int& argc)
{
    qInstallMessageHandler(discardMessage);
    LivingBuses::settleBeforeApplication();
    return argc;
}

MainViewModel::Environment runningDesktop()
{
    return {FileSystem::native(), Volumes::native(), UserFolders::current(), Workspace::native(),
            PersistenceManager::shared()};
}

} // namespace

MorlaineApp::MorlaineApp(int& argc, char** argv) : m_application(prepareToolkit(argc), argv)
{
    hasDisplay = true;
    LivingBuses::settleOnScreen();
    QApplication::setApplicationName(QStringLiteral("Morlaine"));
    // The toolkit's dialogs would remember folders in a file of the toolkit's.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
    QApplication::setDesktopFileName(QStringLiteral("morlaine"));
    m_mainView = std::make_unique<MainView>(runningDesktop(), FolderChooser::native());
}

MorlaineApp::~MorlaineApp() = default;

int MorlaineApp::run()
{
    m_mainView->show();
    return QApplication::exec();
}

} // namespace morlaine
