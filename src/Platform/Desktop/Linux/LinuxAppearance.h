#pragma once

#include "Platform/Desktop/Appearance.h"
#include "Platform/Desktop/Linux/SessionBus.h"

#include <QDBusAbstractInterface>
#include <QDBusConnection>
#include <QDBusVariant>

#include <memory>

namespace morlaine {

/// The desktop's settings as sandboxes and desktops of all kinds offer them on the session bus.
class SettingsPortal final : public QDBusAbstractInterface {
    Q_OBJECT

public:
    explicit SettingsPortal(const QDBusConnection& bus);

Q_SIGNALS:
    // NOLINTNEXTLINE(readability-identifier-naming): the name on the bus
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);
};

/// Asks the settings portal and follows it.
class LinuxAppearance final : public QObject, public Appearance {
    Q_OBJECT

public:
    /// Connects and sends the question without waiting for either. Without a bus the answer is none.
    explicit LinuxAppearance(SessionBus::Connect connect);

    [[nodiscard]] Preference preference() const override { return m_preference; }
    void waitForAnswer(std::chrono::milliseconds patience) override;
    void observe(Observer observer) override { m_observer = std::move(observer); }

    /// The preference in a reply or a change, wrapped in as many variants as the portal's version wraps it in. None for
    /// anything that is not understood.
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
    std::unique_ptr<SettingsPortal> m_portal; // once there is a bus
    Observer m_observer;
    Preference m_preference = Preference::none;
    bool m_isAnswered = false;
};

} // namespace morlaine
