#include "Platform/Desktop/Linux/PortalFolderChooser.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QUuid>

namespace morlaine {

namespace {

enum class Answer : uint { chosen = 0 };

/// A name for a request that nobody can guess. The portal allows letters, digits and underscores.
QString freshToken()
{
    return QStringLiteral("morlaine_") + QUuid::createUuid().toString(QUuid::Id128);
}

/// The object that the portal will make for a request. It is known in advance, so that no answer is missed.
QString requestPath(const QDBusConnection& bus, const QString& token)
{
    QString sender = bus.baseService().mid(1);
    sender.replace(u'.', u'_');
    return QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token);
}

/// The portal's notation for the parent window of its dialog; known on X11 only.
QString identifierOf(const QWidget& window)
{
    if (QGuiApplication::platformName() != QStringLiteral("xcb")) {
        return {};
    }
    return QStringLiteral("x11:") + QString::number(window.window()->winId(), 16);
}

QDBusMessage openFile(const QString& portal, const FolderChooser::Texts& texts, const QString& window,
                      const QString& token)
{
    QDBusMessage message = QDBusMessage::createMethodCall(portal, QStringLiteral("/org/freedesktop/portal/desktop"),
                                                          QStringLiteral("org.freedesktop.portal.FileChooser"),
                                                          QStringLiteral("OpenFile"));
    message << window << QString::fromStdString(texts.title.value_or(std::string()))
            << QVariantMap{{QStringLiteral("handle_token"), token},
                           {QStringLiteral("accept_label"), QString::fromStdString(texts.prompt)},
                           {QStringLiteral("modal"), true},
                           {QStringLiteral("directory"), true}};
    return message;
}

} // namespace

PortalRequest::PortalRequest(const QString& portal, const QString& path, const QDBusConnection& bus, QObject* parent)
    : QDBusAbstractInterface(portal, path, "org.freedesktop.portal.Request", bus, parent)
{
}

void PortalRequest::close()
{
    asyncCall(QStringLiteral("Close"));
}

PortalFolderChooser::PortalFolderChooser(const QDBusConnection& bus, const QString& portal,
                                         const FolderChooser::Texts& texts, QWidget& window)
    : QDialog(&window)
{
    setAttribute(Qt::WA_DontShowOnScreen);
    const QString token = freshToken();
    m_request = new PortalRequest(portal, requestPath(bus, token), bus, this);
    connect(m_request, &PortalRequest::Response, this, &PortalFolderChooser::finish);
    // If the portal ends, its dialog is gone.
    const auto* portalWatcher = new QDBusServiceWatcher(portal, bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(portalWatcher, &QDBusServiceWatcher::serviceUnregistered, this, &QDialog::reject);
    const auto* call =
        new QDBusPendingCallWatcher(bus.asyncCall(openFile(portal, texts, identifierOf(window), token)), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &PortalFolderChooser::finishCall);
}

PortalFolderChooser::~PortalFolderChooser()
{
    if (!m_isAnswered) {
        m_request->close();
    }
}

void PortalFolderChooser::finishCall(QDBusPendingCallWatcher* call)
{
    call->deleteLater();
    if (call->isError() && !m_isAnswered) {
        m_isAnswered = true;
        m_request->close(); // the portal may still show the dialog
        reject();
        Q_EMIT failed();
    }
}

void PortalFolderChooser::finish(uint response, const QVariantMap& results)
{
    m_isAnswered = true;
    const QStringList urls = results.value(QStringLiteral("uris")).toStringList();
    if (response == static_cast<uint>(Answer::chosen) && !urls.empty()) {
        m_folder = FileUrl::parse(urls.front().toStdString());
    }
    done(m_folder ? Accepted : Rejected);
}

} // namespace morlaine
