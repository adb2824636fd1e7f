#pragma once

#include <QTimer>
#include <QWidget>

namespace morlaine {

class ElidingLabel;

/// A message that lies over the bottom of its parent for some seconds and then goes by itself. It takes neither room,
/// nor the focus, nor the mouse. Assistive technology is told of it as a notification.
class MessageBanner final : public QWidget {
    Q_OBJECT

public:
    /// Hidden at first.
    explicit MessageBanner(QWidget* parent);

    /// Shows the message afresh, also where it is shown already.
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
