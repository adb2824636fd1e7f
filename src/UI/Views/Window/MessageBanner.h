#pragma once

#include <QTimer>
#include <QWidget>

namespace morlaine {

class ElidingLabel;

/// A message at the bottom of its parent that disappears after some seconds. It lies over the other content and takes
/// neither focus nor mouse. Assistive technology sees a notification.
class MessageBanner final : public QWidget {
    Q_OBJECT

public:
    /// Hidden at first.
    explicit MessageBanner(QWidget* parent);

    /// Shows the message, and announces it again if it is already shown.
    void showMessage(const QString& message);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void place();

    ElidingLabel* m_label;
    QTimer m_timer;
};

} // namespace morlaine
