#pragma once

#include "Platform/Desktop/FolderChooser.h"

#include <QDBusAbstractInterface>
#include <QDBusConnection>
#include <QDialog>
#include <QVariantMap>

#include <optional>

class QDBusPendingCallWatcher;

namespace morlaine {

/// A request that the portal works on, as an object on the bus. Its signal is the portal's own.
class PortalRequest final : public QDBusAbstractInterface {
    Q_OBJECT

public:
    PortalRequest(const QString& portal, const QString& path, const QDBusConnection& bus, QObject* parent);

    /// Takes the request back.
    void close();

Q_SIGNALS:
    void Response(uint response, const QVariantMap& results);
};

/// Stands for the dialog that the portal shows: nothing is seen of it, but its window takes no input while it is open,
/// and it is accepted or rejected when the portal's dialog is. Main thread only.
class PortalFolderChooser final : public QDialog {
    Q_OBJECT

public:
    /// Asks the portal, whose unique name on the bus is `portal`, for its dialog at once.
    PortalFolderChooser(const QDBusConnection& bus, const QString& portal, const FolderChooser::Texts& texts,
                        QWidget& window);

    /// Closes the portal's dialog if it is still open.
    ~PortalFolderChooser() override;
    PortalFolderChooser(const PortalFolderChooser&) = delete;
    PortalFolderChooser& operator=(const PortalFolderChooser&) = delete;

    /// The folder that was chosen, once accepted.
    [[nodiscard]] const std::optional<FileUrl>& folder() const { return m_folder; }

Q_SIGNALS:
    /// The portal has no dialog to offer; this one has just been rejected.
    void failed();

private:
    void finishCall(QDBusPendingCallWatcher* call);
    void finish(uint response, const QVariantMap& results);

    PortalRequest* m_request = nullptr; // this dialog's child
    bool m_isAnswered = false;
    std::optional<FileUrl> m_folder;
};

} // namespace morlaine
