#include "UI/Views/Sidebar/PlaceRow.h"

#include "UI/Styles/TextStyles.h"
#include "UI/Views/Sidebar/SidebarMetrics.h"
#include "UI/Views/Sidebar/SidebarText.h"
#include "UI/Widgets/ElidingLabel.h"
#include "UI/Widgets/PlainToolTip.h"
#include "UI/Widgets/RowPainting.h"
#include "Utilities/ShownText.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace morlaine {

namespace {

constexpr int verticalPadding = 5;
constexpr int widestSymbol = 18;
constexpr int mostCaptionLines = 5;
constexpr int gap = 8;
constexpr int cueSide = 16;
constexpr int favoriteCueSide = 15;
constexpr int volumeSymbolSide = 16;
constexpr int favoriteSymbolSide = 14;
constexpr int barHeight = 4;
constexpr int barSpacing = 3; // above and below
constexpr double fadedOpacity = 0.4;
constexpr double pressedOpacity = 0.08;

QFont captionFont()
{
    return TextStyles::font(TextStyle::caption);
}

int symbolColumn()
{
    return Symbols::grown(widestSymbol);
}

/// Where the texts begin and end.
int leadingOfTexts()
{
    return SidebarMetrics::margin + symbolColumn() + gap;
}

int trailingOfTexts()
{
    return SidebarMetrics::margin + Symbols::grown(cueSide) + gap;
}

void paintBar(QPainter& painter, const QRectF& rect, double fraction, const QColor& track, const QColor& fill)
{
    const double radius = rect.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(track);
    painter.drawRoundedRect(rect, radius, radius);
    const double width = rect.width() * std::clamp(fraction, 0.0, 1.0);
    if (width > 0) {
        painter.setBrush(fill);
        QRectF filled(rect.topLeft(), QSizeF(std::max(width, rect.height()), rect.height()));
        if (painter.layoutDirection() == Qt::RightToLeft) {
            filled.moveRight(rect.right());
        }
        painter.drawRoundedRect(filled, radius, radius);
    }
}

} // namespace

PlaceRow::PlaceRow(const Uuid& id, const std::string& name, SymbolName symbol, QWidget* parent)
    : QPushButton(parent)
    , m_id(id)
    , m_name(shownText(name))
    , m_symbol(symbol)
{
    setFocusPolicy(Qt::TabFocus);
    // Fixed would limit the height to that of the width before a scroll bar appeared.
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAccessibleName(m_name);
    setToolTip(plainToolTip(scanHelp(m_name)));
}

PlaceRow::PlaceRow(const VolumeInfo& volume, QWidget* parent)
    : PlaceRow(volume.id, volume.name, "internaldrive", parent)
{
    m_usage = {volume.percentUsed(), volumeCaption(volume)};
    setAccessibleDescription(m_usage->caption);
}

PlaceRow::PlaceRow(const FavoriteFolder& folder, QWidget* parent)
    : PlaceRow(folder.id, folder.name, SymbolName::named(folder.iconName), parent)
{
}

void PlaceRow::setCueShown(bool isShown)
{
    if (std::exchange(m_isCueShown, isShown) != isShown) {
        update();
    }
}

QFont PlaceRow::nameFont() const
{
    return m_usage ? TextStyles::font(TextStyle::body, QFont::Medium) : TextStyles::font(TextStyle::body);
}

QSize PlaceRow::sizeHint() const
{
    return {0, heightForWidth(width())};
}

int PlaceRow::heightForWidth(int width) const
{
    int height = 2 * verticalPadding + QFontMetrics(nameFont()).height();
    if (m_usage) {
        const auto lines = static_cast<int>(captionLines(width).size());
        height += 2 * barSpacing + barHeight + lines * QFontMetrics(captionFont()).height();
    }
    return height;
}

/// The caption reaches below the cue.
QStringList PlaceRow::captionLines(int rowWidth) const
{
    const int room = rowWidth - leadingOfTexts() - SidebarMetrics::margin;
    return elidedLines(m_usage->caption, captionFont(), room, mostCaptionLines);
}

/// A place in the row as it is read from left to right, where it is read the other way.
QRect PlaceRow::mirrored(const QRect& place) const
{
    return QStyle::visualRect(layoutDirection(), rect(), place);
}

QSize PlaceRow::minimumSizeHint() const
{
    return sizeHint();
}

void PlaceRow::enterEvent(QEnterEvent* event)
{
    QPushButton::enterEvent(event);
    Q_EMIT hoverChanged(true);
}

void PlaceRow::leaveEvent(QEvent* event)
{
    QPushButton::leaveEvent(event);
    Q_EMIT hoverChanged(false);
}

void PlaceRow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QPushButton::keyPressEvent(event);
    }
}

QPalette PlaceRow::currentPalette() const
{
    QPalette current = palette();
    if (!isEnabled()) {
        current.setCurrentColorGroup(QPalette::Disabled);
    }
    return current;
}

void PlaceRow::paintSymbol(QPainter& painter) const
{
    const int side = Symbols::grown(m_usage ? volumeSymbolSide : favoriteSymbolSide);
    const QColor color = m_usage ? Theme::blue : Theme::textSecondary(palette());
    const QRect place = mirrored(QRect(SidebarMetrics::margin, 0, symbolColumn(), height()));
    const QRect square(place.center().x() - side / 2, place.center().y() - side / 2, side, side);
    Symbols::paint(painter, square, m_symbol, isEnabled() ? color : Theme::withOpacity(color, fadedOpacity));
}

void PlaceRow::paintCue(QPainter& painter) const
{
    const int side = Symbols::grown(m_usage ? cueSide : favoriteCueSide);
    const QRect place(width() - SidebarMetrics::margin - side, (height() - side) / 2, side, side);
    Symbols::paint(painter, mirrored(place), "play.circle.fill", Theme::green);
}

/// Below the name: the bar, then the caption.
void PlaceRow::paintUsage(QPainter& painter, const QRect& area) const
{
    const QPalette colors = currentPalette();
    const QColor fill = usageColor(m_usage->fraction);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBar(painter, mirrored(QRect(area.left(), area.top() + barSpacing, area.width(), barHeight)), m_usage->fraction,
             Theme::separator(colors), isEnabled() ? fill : Theme::withOpacity(fill, fadedOpacity));
    const QFont font = captionFont();
    QRect line(area.left(), area.top() + 2 * barSpacing + barHeight, width() - SidebarMetrics::margin - area.left(),
               QFontMetrics(font).height());
    for (const QString& text : captionLines(width())) {
        paintLine(painter, mirrored(line), text.trimmed(), font, Theme::textSecondary(colors), Qt::ElideRight);
        line.translate(0, line.height());
    }
}

void PlaceRow::paintTexts(QPainter& painter) const
{
    const QRect area(leadingOfTexts(), verticalPadding, width() - leadingOfTexts() - trailingOfTexts(),
                     height() - 2 * verticalPadding);
    // A wide name may use the place of the cue while that is not shown.
    const int end = m_isCueShown ? trailingOfTexts() : SidebarMetrics::margin;
    const QRect nameLine(area.left(), area.top(), width() - area.left() - end, QFontMetrics(nameFont()).height());
    paintLine(painter, mirrored(nameLine), m_name, nameFont(), Theme::textPrimary(currentPalette()), Qt::ElideMiddle);
    if (m_usage) {
        paintUsage(painter, area.adjusted(0, nameLine.height(), 0, 0));
    }
}

void PlaceRow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QRect frame = rect().adjusted(SidebarMetrics::inset, 0, -SidebarMetrics::inset, 0);
    if (isDown()) {
        painter.fillRect(frame, Theme::withOpacity(Theme::textPrimary(palette()), pressedOpacity));
    }
    paintSymbol(painter);
    paintTexts(painter);
    if (m_isCueShown) {
        paintCue(painter);
    }
    if (hasFocus()) {
        paintFocusRing(painter, frame, palette());
    }
}

} // namespace morlaine
