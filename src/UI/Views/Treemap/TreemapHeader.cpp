#include "UI/Views/Treemap/TreemapHeader.h"

#include "UI/Styles/Conversions.h"
#include "UI/Styles/Symbols.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"
#include "UI/Views/Treemap/BreadcrumbFit.h"
#include "UI/Views/Treemap/TreemapBreadcrumb.h"
#include "UI/Widgets/RowPainting.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int leadingPadding = 16;
constexpr int topPadding = 8;
constexpr int spacing = 4;
constexpr int infoSpacing = 6;
constexpr int dotDiameter = 8;

QFont nameFont()
{
    return TextStyles::font(TextStyle::subheadline, QFont::DemiBold);
}

QFont sizeFont()
{
    return TextStyles::font(TextStyle::subheadline);
}

} // namespace

TreemapInfo::TreemapInfo(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void TreemapInfo::setInfo(const std::optional<TreemapDecisions::Info>& info)
{
    if (m_info != info) {
        m_info = info;
        setText(info ? info->name + QLatin1Char(' ') + info->size : QString());
    }
}

QSize TreemapInfo::minimumSizeHint() const
{
    return {0, std::max(QFontMetrics(nameFont()).height(), QFontMetrics(sizeFont()).height())};
}

void TreemapInfo::paintEvent(QPaintEvent* /*event*/)
{
    if (!m_info) {
        return;
    }
    const auto mirrored = [this](const QRect& place) { return QStyle::visualRect(layoutDirection(), rect(), place); };
    const int sizeWidth = morlaine::lineWidth(m_info->size, sizeFont());
    const int nameRoom = std::max(width() - dotDiameter - 2 * infoSpacing - sizeWidth, 0);
    const int nameWidth = std::min(morlaine::lineWidth(m_info->name, nameFont()), nameRoom);
    const int nameLeft = width() - sizeWidth - infoSpacing - nameWidth;
    QPainter painter(this);
    paintLine(painter, mirrored({nameLeft, 0, nameWidth, height()}), m_info->name, nameFont(),
              Theme::textPrimary(palette()), Qt::ElideMiddle);
    paintLine(painter, mirrored({width() - sizeWidth, 0, sizeWidth, height()}), m_info->size, sizeFont(),
              Theme::textSecondary(palette()), Qt::ElideNone);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQColor(m_info->color));
    const QRect dot(nameLeft - infoSpacing - dotDiameter, (height() - dotDiameter) / 2, dotDiameter, dotDiameter);
    painter.drawEllipse(mirrored(dot));
}

TreemapHeader::TreemapHeader(QWidget* parent)
    : QWidget(parent)
    , m_house(new QToolButton(this))
    , m_breadcrumb(new TreemapBreadcrumb(this))
    , m_info(new TreemapInfo(this))
{
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Window);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_house->setAutoRaise(true);
    m_house->setFocusPolicy(Qt::TabFocus);
    m_house->setIcon(Symbols::icon("house"));
    growIcon();
    m_house->setAccessibleName(QStringLiteral("Zoom to root"));
    m_house->setEnabled(false);
    connect(m_house, &QToolButton::clicked, this, &TreemapHeader::houseClicked);
    connect(m_breadcrumb, &TreemapBreadcrumb::stepClicked, this, &TreemapHeader::stepClicked);
    connect(m_breadcrumb, &TreemapBreadcrumb::naturalWidthChanged, this, &TreemapHeader::arrange);
}

void TreemapHeader::setPath(std::span<const FileNode> path)
{
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    m_breadcrumb->setPath(path);
    m_house->setEnabled(!path.empty());
    if (hadFocus && !isAncestorOf(window()->focusWidget())) {
        Q_EMIT focusLost();
    }
}

void TreemapHeader::setInfo(const std::optional<TreemapDecisions::Info>& info)
{
    m_info->setInfo(info);
}

QSize TreemapHeader::sizeHint() const
{
    return minimumSizeHint();
}

QSize TreemapHeader::minimumSizeHint() const
{
    const int content = std::max(
        {m_house->sizeHint().height(), m_breadcrumb->minimumSizeHint().height(), m_info->minimumSizeHint().height()});
    return {2 * leadingPadding + m_house->sizeHint().width(), content + 2 * topPadding};
}

void TreemapHeader::resizeEvent(QResizeEvent* /*event*/)
{
    arrange();
}

void TreemapHeader::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        growIcon();
        updateGeometry();
        arrange();
    }
}

void TreemapHeader::growIcon()
{
    constexpr int side = 16;
    m_house->setIconSize({Symbols::grown(side), Symbols::grown(side)});
}

void TreemapHeader::arrange()
{
    const QSize house = m_house->sizeHint();
    // The picture in the button is what the eye takes for the edge.
    const int leading = leadingPadding - (house.width() - m_house->iconSize().width()) / 2;
    const QRect inner = rect().adjusted(leading, topPadding, -leadingPadding, -topPadding);
    const auto place = [this](QWidget& part, const QRect& where) {
        part.setGeometry(QStyle::visualRect(layoutDirection(), rect(), where));
    };
    place(*m_house, {inner.left(), inner.top() + (inner.height() - house.height()) / 2, house.width(), house.height()});
    const int left = inner.left() + house.width();
    const HeaderWidths widths = divideHeader(inner.right() + 1 - left, m_breadcrumb->naturalWidth(), 2 * spacing);
    place(*m_breadcrumb, {left, inner.top(), widths.breadcrumb, inner.height()});
    place(*m_info, {inner.right() + 1 - widths.info, inner.top(), widths.info, inner.height()});
}

} // namespace morlaine
