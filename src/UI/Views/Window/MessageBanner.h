#pragma once

#include "UI/Views/Window/Notification.h"

namespace morlaine {

class ElidingLabel;

/// A notification that is seen, too: a message at the bottom of its parent, over the other content.
class MessageBanner final : public Notification {
    Q_OBJECT

public:
    explicit MessageBanner(QWidget* parent);

    /// Shows the message, and announces it again if it is already shown.
    void showMessage(const QString& message);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void place();

    ElidingLabel* m_label;
};

} // namespace morlaine
