#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QProgressBar>

namespace morlaine {

/// A circle that turns while something of unknown duration is going on. It is animated only while it is visible.
/// Assistive technology sees a busy progress bar; its name should say what is going on.
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
    QElapsedTimer m_clock; // a late tick does not disturb the movement, since the picture depends on the time only
};

} // namespace morlaine
