#pragma once

#include <QColor>
#include <QPushButton>

namespace morlaine {

/// The one button of a view that stands out: filled with a tint that is dark enough for a white label and symbol. A
/// symbol it is given must be white.
class ProminentButton final : public QPushButton {
    Q_OBJECT

public:
    ProminentButton(const QString& text, const QColor& tint, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int textWidth() const;
    [[nodiscard]] QColor fill() const;

    const QColor m_tint;
};

} // namespace morlaine
