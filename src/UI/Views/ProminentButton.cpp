#include "UI/Views/ProminentButton.h"

#include "UI/Styles/Contrast.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"

#include <QPainter>

namespace morlaine {

namespace {

constexpr int horizontalPadding = 18;
constexpr int verticalPadding = 7;
constexpr double focusRing = 2;

} // namespace

ProminentButton::ProminentButton(const QString& label, const QColor& tint, QWidget* parent)
    : QPushButton(label, parent)
    , m_tint(tint)
{
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
    setFont(TextStyles::font(TextStyle::headline));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ProminentButton::sizeHint() const
{
    const QSize label(fontMetrics().horizontalAdvance(text()), fontMetrics().height());
    return label + 2 * QSize(horizontalPadding, verticalPadding);
}

QColor ProminentButton::fill() const
{
    if (!isEnabled()) {
        return Theme::withOpacity(m_tint, 0.4);
    }
    const double shade = isDown() ? 0.24 : (underMouse() ? 0.14 : 0.06);
    return mixed(Qt::black, m_tint, shade);
}

void ProminentButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill());
    painter.drawRoundedRect(rect(), Theme::cornerRadiusSmall, Theme::cornerRadiusSmall);
    if (hasFocus()) {
        const double inset = 1.5 * focusRing;
        const QRectF ring = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
        painter.setPen(QPen(Qt::white, focusRing));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(ring, Theme::cornerRadiusSmall - inset / 2, Theme::cornerRadiusSmall - inset / 2);
    }
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
}

} // namespace morlaine
