#include "App/MorlaineApp.h"

namespace morlaine {

MorlaineApp::MorlaineApp(int& argc, char** argv) : m_application(argc, argv)
{
    QApplication::setApplicationName(QStringLiteral("Morlaine"));
    QApplication::setDesktopFileName(QStringLiteral("morlaine"));
}

int MorlaineApp::run()
{
    m_mainView.show();
    return QApplication::exec();
}

} // namespace morlaine
