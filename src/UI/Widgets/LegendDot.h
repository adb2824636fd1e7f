#pragma once

#include <QColor>
#include <QPainter>
#include <QWidget>

namespace morlaine {

/// The colour of a legend's row: a circle of 8 by 8 points.
class LegendDot final : public QWidget {
public:
    explicit LegendDot(const QColor& color, QWidget* parent = nullptr) : QWidget(parent), m_color(color)
    {
        constexpr int side = 8;
        setFixedSize(side, side);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_color);
        painter.drawEllipse(rect());
    }

private:
    const QColor m_color;
};

} // namespace morlaine
