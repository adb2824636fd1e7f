#pragma once

#include <QFont>
#include <QWidget>

namespace morlaine {

class ElidingLabel;

/// A label and its value on one line, the value at the trailing edge. In a narrow widget the value is below the label.
class LabelledValue : public QWidget {
    Q_OBJECT

public:
    enum class Kind {
        changing, ///< The places do not depend on a value of one line, so that nothing moves when it changes.
        lasting,  ///< The value gets the width that it needs, and a long label beside it is elided.
    };

    /// Owns both labels.
    LabelledValue(Kind kind, ElidingLabel* label, ElidingLabel* value, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    /// To be called when the label or a value of several lines has changed.
    void arrange();

private:
    /// The places of both texts in a widget that is read from left to right.
    struct Places {
        QRect label;
        QRect value;
    };

    [[nodiscard]] Places placesIn(int width) const;
    [[nodiscard]] int leastLabelWidth() const;
    [[nodiscard]] int leastValueWidth() const;
    [[nodiscard]] int usualValueWidth() const;

    const Kind m_kind;
    ElidingLabel* const m_label;
    ElidingLabel* const m_value;
    mutable QFont m_usualFont;
    mutable int m_usualValueWidth = 0; // in that font; 0 until it is measured
};

} // namespace morlaine
