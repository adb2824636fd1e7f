#include "App/MorlaineApp.h"

#include "Platform/Desktop/FontList.h"
#include "Platform/Desktop/LivingBuses.h"
#include "UI/Styles/Symbols.h"
#include "UI/Views/Window/MainView.h"

#include <QPixmapCache>
#include <QScreen>
#include <QSettings>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace morlaine {

namespace {

/// Of pictures of symbols and controls: several times what one window shows. Qt's default of 10,240 would fill up with
/// pictures of controls in earlier widths.
constexpr int mostCachedPictures = 2048; // kilobytes

bool hasDisplay = false;

/// Qt's messages are discarded: the program keeps no log. Without a display it says so and exits.
void discardMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*message*/)
{
    if (type == QtFatalMsg && !hasDisplay) {
        std::fputs("Morlaine cannot open its window: the display cannot be reached.\n", stderr);
        std::_Exit(EXIT_FAILURE);
    }
}

/// Settings that must be in place when Qt's application object is made; then starts to read the list of fonts.
std::future<void> prepareQt()
{
    qInstallMessageHandler(discardMessage);
    LivingBuses::settleBeforeApplication();
    return readFontList();
}

MainViewModel::Environment runningDesktop()
{
    return {FileSystem::native(), Volumes::native(), UserFolders::current(), Workspace::native(),
            PersistenceManager::shared()};
}

/// Qt's text fields end the program on a screen whose pixels are indices into a colour table.
void requireTrueColor()
{
    constexpr int leastDepth = 15; // bits per pixel
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen != nullptr && screen->depth() < leastDepth) {
        std::fputs("Morlaine cannot open its window: the screen has too few colours, 15 bits a pixel are needed.\n",
                   stderr);
        std::_Exit(EXIT_FAILURE);
    }
}

} // namespace

MorlaineApp::MorlaineApp(int& argc, char** argv) : m_fontList(prepareQt()), m_application(argc, argv)
{
    hasDisplay = true;
    QPixmapCache::setCacheLimit(mostCachedPictures);
    m_fontList.wait();
    LivingBuses::settleOnScreen();
    requireTrueColor();
    QApplication::setApplicationName(QStringLiteral("Morlaine"));
    // Keeps Qt's dialogs from writing a settings file.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
    QApplication::setDesktopFileName(QStringLiteral("com.morlaine.Morlaine"));
    m_mainView = std::make_unique<MainView>(runningDesktop(), FolderChooser::native());
    m_application.onLackOfMemory = [this] { m_mainView->viewModel().reportLackOfMemory(); };
    m_service = ApplicationService::native({[this] { bringToFront(); },
                                            [this](const std::vector<FileUrl>& urls) {
                                                m_mainView->openFirstFolder(urls);
                                                bringToFront();
                                            }});
}

MorlaineApp::~MorlaineApp() = default;

bool MorlaineApp::Application::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
        if (onLackOfMemory) {
            onLackOfMemory();
        }
        return false;
    }
}

void MorlaineApp::bringToFront()
{
    m_mainView->setWindowState(m_mainView->windowState() & ~Qt::WindowMinimized);
    m_mainView->show();
    m_mainView->raise();
    m_mainView->activateWindow();
}

int MorlaineApp::run()
{
    m_mainView->show();
    // After the first paint, so that it does not delay the window.
    QTimer::singleShot(0, [] { QApplication::setWindowIcon(Symbols::applicationIcon()); });
    return QApplication::exec();
}

} // namespace morlaine
