#include "UI/Styles/ProminentButton.h"

#include "UI/Styles/Contrast.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int horizontalPadding = 16;
constexpr int verticalPadding = 8;
constexpr int iconSpacing = 8;
constexpr int focusWidth = 2;

} // namespace

ProminentButton::ProminentButton(const QString& text, const QColor& tint, QWidget* parent)
    : QPushButton(text, parent)
    , m_tint(tint)
{
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
    setFont(TextStyles::font(TextStyle::headline));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

int ProminentButton::textWidth() const
{
    return fontMetrics().size(Qt::TextShowMnemonic, text()).width();
}

QSize ProminentButton::sizeHint() const
{
    const int iconWidth = icon().isNull() ? 0 : iconSize().width() + iconSpacing;
    const int height = std::max(fontMetrics().height(), icon().isNull() ? 0 : iconSize().height());
    return {iconWidth + textWidth() + 2 * horizontalPadding, height + 2 * verticalPadding};
}

QColor ProminentButton::fill() const
{
    if (!isEnabled()) {
        return palette().color(QPalette::Disabled, QPalette::Highlight);
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
        const QRectF ring = QRectF(rect()).adjusted(focusWidth, focusWidth, -focusWidth, -focusWidth);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Theme::withOpacity(Qt::white, 0.85), 1.5));
        painter.drawRoundedRect(ring, Theme::cornerRadiusSmall - focusWidth, Theme::cornerRadiusSmall - focusWidth);
    }

    const int iconWidth = icon().isNull() ? 0 : iconSize().width() + iconSpacing;
    QRect content(0, 0, iconWidth + textWidth(), height());
    content.moveCenter(rect().center());
    if (!icon().isNull()) {
        icon().paint(&painter, QRect(content.topLeft(), QSize(iconSize().width(), height())), Qt::AlignCenter);
    }
    painter.setPen(Qt::white);
    painter.drawText(content.adjusted(iconWidth, 0, 0, 0), Qt::AlignVCenter | Qt::TextShowMnemonic, text());
}

} // namespace morlaine
