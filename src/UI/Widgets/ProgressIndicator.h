#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QProgressBar>

namespace morlaine {

/// A circle that turns calmly while something of unknown length is going on. It turns while it can be seen, and costs
/// nothing otherwise. Assistive technology knows it as a busy progress bar; give it a name that says what is going on.
class ProgressIndicator final : public QProgressBar {
    Q_OBJECT

public:
    enum class Size { small, regular };

    ProgressIndicator(Size size, const QString& accessibleName, QWidget* parent = nullptr);

    [[nodiscard]] bool isAnimating() const { return m_timer.isActive(); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Size m_size;
    QBasicTimer m_timer;
    QElapsedTimer m_clock; // the picture depends on the time alone, so that a late tick is no jerk
};

} // namespace morlaine
