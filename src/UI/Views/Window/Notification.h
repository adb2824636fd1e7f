#pragma once

#include <QTimer>
#include <QWidget>

namespace morlaine {

/// Tells assistive technology something that others see by themselves, and disappears after some seconds. Takes neither
/// focus nor mouse, and hardly any room unless a subclass paints it.
class Notification : public QWidget {
    Q_OBJECT

public:
    /// Hidden at first.
    explicit Notification(QWidget* parent);

    /// Announces the text, again if it is already shown.
    void announce(const QString& text);

private:
    QTimer m_timer;
};

} // namespace morlaine
