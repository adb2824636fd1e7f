#include "UI/Widgets/ProminentButton.h"

#include "UI/Styles/Contrast.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"
#include "UI/Widgets/ElidingLabel.h"
#include "UI/Widgets/RowPainting.h"

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
constexpr int mostLines = 3;
constexpr int leastLetters = 8;

} // namespace

ProminentButton::ProminentButton(const QString& text, const QColor& tint, QWidget* parent)
    : QPushButton(text, parent)
    , m_tint(tint)
{
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
    setFont(TextStyles::font(TextStyle::headline));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred); // Fixed would limit it to one line
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QStringList ProminentButton::linesIn(int width) const
{
    return elidedLines(text(), font(), width - widthAroundText(), mostLines);
}

int ProminentButton::iconWidth() const
{
    return icon().isNull() ? 0 : iconSize().width() + iconSpacing;
}

int ProminentButton::widthAroundText() const
{
    return iconWidth() + 2 * horizontalPadding;
}

QSize ProminentButton::sizeHint() const
{
    const int width = widthAroundText() + lineWidth(text(), font());
    return {width, heightForWidth(width)};
}

QSize ProminentButton::minimumSizeHint() const
{
    const int width = widthAroundText() + fontMetrics().averageCharWidth() * leastLetters;
    return {std::min(width, sizeHint().width()), sizeHint().height()};
}

int ProminentButton::heightForWidth(int width) const
{
    const int text = static_cast<int>(linesIn(width).size()) * fontMetrics().height();
    return std::max(text, icon().isNull() ? 0 : iconSize().height()) + 2 * verticalPadding;
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

    const QStringList lines = linesIn(width());
    int textWidth = 0;
    for (const QString& line : lines) {
        textWidth = std::max(textWidth, lineWidth(line.trimmed(), font()));
    }
    QRect content(0, 0, iconWidth() + textWidth, static_cast<int>(lines.size()) * fontMetrics().height());
    content.moveCenter(rect().center());
    const auto mirrored = [&](const QRect& place) { return QStyle::visualRect(layoutDirection(), content, place); };
    if (!icon().isNull()) {
        icon().paint(&painter, mirrored({content.topLeft(), QSize(iconSize().width(), content.height())}));
    }
    QRect place(content.left() + iconWidth(), content.top(), textWidth, fontMetrics().height());
    for (const QString& line : lines) {
        paintLine(painter, mirrored(place), line.trimmed(), font(), Qt::white, Qt::ElideNone, Qt::AlignHCenter);
        place.translate(0, place.height());
    }
}

} // namespace morlaine
