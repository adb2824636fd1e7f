#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace morlaine {

/// A column at one side of a splitter, which can be put away and brought back: it slides in and out with its content at
/// full width. While it is put away it is hidden, and so is the splitter's handle.
class SideColumn final : public QWidget {
    Q_OBJECT

public:
    /// Widths in points.
    struct Widths {
        int minimum;
        int ideal; // at first
        int maximum;
    };
    enum class Side { leading, trailing };

    /// Takes `content` as its child. Shown at first.
    SideColumn(Side side, Widths widths, QWidget* content, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] const Widths& widths() const { return m_widths; }

    /// Slides in to `width` points, or out, within 0.2 seconds; a movement that is under way turns round.
    void setShown(bool isShown, int width);
    [[nodiscard]] bool isSliding() const { return m_animation.state() == QAbstractAnimation::Running; }

Q_SIGNALS:
    /// The column has moved a step, or has arrived.
    void slid();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrangeContent();
    void finish();

    const Side m_side;
    const Widths m_widths;
    QWidget* const m_content;
    QVariantAnimation m_animation;
    int m_width; // when shown
    bool m_isShown = true;
};

} // namespace morlaine
