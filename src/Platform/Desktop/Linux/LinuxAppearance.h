#pragma once

#include "Platform/Desktop/Appearance.h"
#include "Platform/Desktop/Linux/SessionBus.h"

#include <QDBusAbstractInterface>
#include <QDBusConnection>
#include <QDBusVariant>

#include <memory>

namespace morlaine {

/// The settings portal on the session bus.
class SettingsPortal final : public QDBusAbstractInterface {
    Q_OBJECT

public:
    explicit SettingsPortal(const QDBusConnection& bus);

Q_SIGNALS:
    // NOLINTNEXTLINE(readability-identifier-naming): the name on the bus
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);
};

/// Reads the preference from the settings portal and follows its changes.
class LinuxAppearance final : public QObject, public Appearance {
    Q_OBJECT

public:
    /// Connects and sends the query in the background. Without a bus the preference is `none`.
    explicit LinuxAppearance(SessionBus::Connect connect);

    [[nodiscard]] Preference preference() const override { return m_preference; }
    void waitForAnswer(std::chrono::milliseconds patience) override;
    void observe(Observer observer) override { m_observer = std::move(observer); }

    /// The preference in a reply or a signal. Versions of the portal nest the value in one or two variants. `none` for
    /// any other value.
    [[nodiscard]] static Preference preferenceIn(const QVariant& value);

Q_SIGNALS:
    void answered();

private:
    void follow(const QDBusConnection& bus);
    void ask(const QString& method, const std::function<void(const QDBusMessage& reply)>& then);
    void askInTheOldWay();
    void settingChanged(const QString& changedGroup, const QString& changedKey, const QDBusVariant& value);
    void answer(Preference preference);

    SessionBus m_bus;
    std::unique_ptr<SettingsPortal> m_portal; // null until the bus is connected
    Observer m_observer;
    Preference m_preference = Preference::none;
    bool m_isAnswered = false;
};

} // namespace morlaine
