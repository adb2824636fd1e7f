#pragma once

#include <QTimer>
#include <QWidget>

namespace morlaine {

/// Tells assistive programs something that others see by themselves: as a notification, which appears and goes by
/// itself. Takes neither room nor the mouse.
class Announcer final : public QWidget {
    Q_OBJECT

public:
    explicit Announcer(QWidget* parent);

    void announce(const QString& text);

private:
    QTimer m_timer;
};

} // namespace morlaine
