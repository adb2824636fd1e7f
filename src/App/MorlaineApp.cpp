#include "App/MorlaineApp.h"

#include "UI/Views/Window/MainView.h"

#include <QSettings>

namespace morlaine {

namespace {

/// The program keeps no log, and neither does the toolkit on its behalf.
void discardMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*message*/)
{
}

MainViewModel::Environment runningDesktop()
{
    return {FileSystem::native(), Volumes::native(), UserFolders::current(), Workspace::native(),
            PersistenceManager::shared()};
}

} // namespace

MorlaineApp::MorlaineApp(int& argc, char** argv) : m_application((qInstallMessageHandler(discardMessage), argc), argv)
{
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
