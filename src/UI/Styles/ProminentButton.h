#pragma once

#include <QColor>
#include <QPushButton>

namespace morlaine {

/// The main button of a view, filled with a tint that is dark enough for a white label and symbol. Its symbol must be
/// white.
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
