#include "UI/Widgets/RoundedBox.h"

#include "UI/Styles/Theme.h"

#include <QPainter>

namespace morlaine {

RoundedBox::RoundedBox(double opacity, double cornerRadius, QWidget* parent)
    : QWidget(parent)
    , m_opacity(opacity)
    , m_cornerRadius(cornerRadius)
{
}

void RoundedBox::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::withOpacity(Theme::controlBackground(palette()), m_opacity));
    painter.drawRoundedRect(rect(), m_cornerRadius, m_cornerRadius);
}

} // namespace morlaine
