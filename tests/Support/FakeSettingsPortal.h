#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QObject>

namespace morlaine::test {

/// The settings portal of a desktop, reduced to the preference for light or dark.
class FakeSettingsPortal final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    /// How much of its protocol the portal knows.
    enum class Version { current, withoutReadOne, withoutTheKey, silent };

    FakeSettingsPortal(const QDBusConnection& bus, Version version, uint scheme);

    void change(const QString& group, const QString& key, const QVariant& value);
    void changeScheme(uint scheme);

    /// How often the setting was asked for.
    [[nodiscard]] int questions() const { return m_questions; }

public Q_SLOTS:
    // The names on the bus. NOLINTBEGIN(readability-identifier-naming)
    QDBusVariant ReadOne(const QString& group, const QString& key);
    QDBusVariant Read(const QString& group, const QString& key);
    // NOLINTEND(readability-identifier-naming)

private:
    QDBusConnection m_bus;
    Version m_version;
    uint m_scheme;
    int m_questions = 0;
};

} // namespace morlaine::test
