#pragma once

#include <QColor>
#include <QPushButton>

namespace morlaine {

/// The main button of a view, filled with a tint that is dark enough for a white label and symbol. Its symbol must be
/// white. A label that is too wide continues in further lines.
class ProminentButton final : public QPushButton {
    Q_OBJECT

public:
    ProminentButton(const QString& text, const QColor& tint, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QStringList linesIn(int width) const;
    [[nodiscard]] int widthAroundText() const;
    [[nodiscard]] int iconWidth() const;
    [[nodiscard]] QColor fill() const;

    const QColor m_tint;
};

} // namespace morlaine
