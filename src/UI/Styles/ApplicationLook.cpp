#include "UI/Styles/ApplicationLook.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

namespace morlaine {

ApplicationLook::ApplicationLook(QObject* application) : QObject(application)
{
    application->installEventFilter(this);
}

ApplicationLook& ApplicationLook::shared()
{
    static QPointer<ApplicationLook> shared;
    if (!shared) {
        shared = new ApplicationLook(QCoreApplication::instance());
    }
    return *shared;
}

bool ApplicationLook::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent()) {
        if (event->type() == QEvent::ApplicationFontChange) {
            Q_EMIT fontChanged();
        } else if (event->type() == QEvent::ApplicationPaletteChange) {
            Q_EMIT paletteChanged();
        }
    }
    return false;
}

} // namespace morlaine
