#pragma once

#include "Platform/Desktop/FolderChooser.h"

#include <QDBusAbstractInterface>
#include <QDBusConnection>
#include <QDialog>
#include <QVariantMap>

#include <optional>

class QDBusPendingCallWatcher;

namespace morlaine {

/// A request to the portal, an object on the bus. `Response` is the portal's signal.
class PortalRequest final : public QDBusAbstractInterface {
    Q_OBJECT

public:
    PortalRequest(const QString& portal, const QString& path, const QDBusConnection& bus, QObject* parent);

    /// Cancels the request.
    void close();

Q_SIGNALS:
    void Response(uint response, const QVariantMap& results);
};

/// Represents the dialog of the portal. It is invisible, but makes its window modal, and is accepted or rejected with
/// the portal's dialog. Main thread only.
class PortalFolderChooser final : public QDialog {
    Q_OBJECT

public:
    /// Sends the request. `portal` is the portal's unique bus name.
    PortalFolderChooser(const QDBusConnection& bus, const QString& portal, const FolderChooser::Texts& texts,
                        QWidget& window);

    /// Closes the portal's dialog if it is still open.
    ~PortalFolderChooser() override;
    PortalFolderChooser(const PortalFolderChooser&) = delete;
    PortalFolderChooser& operator=(const PortalFolderChooser&) = delete;

    /// The chosen folder, once accepted.
    [[nodiscard]] const std::optional<FileUrl>& folder() const { return m_folder; }

Q_SIGNALS:
    /// The portal could not show a dialog. Emitted after `rejected`.
    void failed();

private:
    void finishCall(QDBusPendingCallWatcher* call);
    void finish(uint response, const QVariantMap& results);

    PortalRequest* m_request = nullptr; // child of this dialog
    bool m_isAnswered = false;
    std::optional<FileUrl> m_folder;
};

} // namespace morlaine
