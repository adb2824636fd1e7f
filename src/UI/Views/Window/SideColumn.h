#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace morlaine {

/// A column at one side of a splitter that can be hidden and shown. It slides in and out with its content at full
/// width. While it is hidden, the splitter's handle is hidden as well.
class SideColumn final : public QWidget {
    Q_OBJECT

public:
    /// Widths in points.
    struct Widths {
        int minimum;
        int ideal; // initial width
        int maximum;
    };
    enum class Side { leading, trailing };

    /// Takes ownership of `content`. Shown at first.
    SideColumn(Side side, Widths widths, QWidget* content, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] const Widths& widths() const { return m_widths; }

    /// Slides in to `width` points, or out, within 0.2 seconds. Reverses a running animation.
    void setShown(bool isShown, int width);
    [[nodiscard]] bool isSliding() const { return m_animation.state() == QAbstractAnimation::Running; }

Q_SIGNALS:
    /// The column has moved by a step, or the animation has ended.
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
    int m_width; // of the shown column
    bool m_isShown = true;
};

} // namespace morlaine
