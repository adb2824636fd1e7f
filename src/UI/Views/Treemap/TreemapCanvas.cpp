#include "UI/Views/Treemap/TreemapCanvas.h"

#include "UI/Styles/Conversions.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"
#include "UI/Views/Treemap/FolderGrounds.h"
#include "UI/Views/Treemap/TreemapMarks.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QEnterEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleHints>

#include <utility>

namespace morlaine {

TreemapCanvas::TreemapCanvas(QWidget* parent)
    : QWidget(parent)
    , m_picture([this] { return scene(); },
                [this] {
                    update();
                    Q_EMIT painted();
                })
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("Treemap"));
}

TreemapCanvas::~TreemapCanvas() = default;

void TreemapCanvas::showLayout(std::shared_ptr<const TreemapLayout> layout, const QString& text)
{
    m_layout = std::move(layout);
    ++m_layoutNumber;
    m_awaitsLayout = false;
    if (m_grounds && (m_layout->empty() || !m_grounds->isOf(m_layout->tree()))) {
        m_grounds.reset();
    }
    m_text = text;
    setAccessibleDescription(m_layout->empty() ? text : QString());
    m_selectedPosition.reset();
    repaintRects();
    Q_EMIT layoutShown();
}

void TreemapCanvas::setHighlightIDs(const NodeIDSet& ids)
{
    if (!m_highlightIDs.isSameAs(ids)) {
        m_highlightIDs = ids;
        repaintRects();
    }
}

void TreemapCanvas::setSelectedPosition(std::optional<std::size_t> position)
{
    if (m_selectedPosition == position) {
        return;
    }
    updateMark(selectionMark());
    m_selectedPosition = position;
    updateMark(selectionMark());
    Q_EMIT selectionMoved();
}

void TreemapCanvas::setHoverMark(const std::optional<Rect>& rect)
{
    if (m_hoverMark != rect) {
        updateMark(std::exchange(m_hoverMark, rect));
        updateMark(m_hoverMark);
    }
}

std::optional<Rect> TreemapCanvas::selectionMark() const
{
    return m_selectedPosition ? std::optional(m_layout->items()[*m_selectedPosition].rect) : std::nullopt;
}

void TreemapCanvas::updateMark(const std::optional<Rect>& rect)
{
    if (rect) {
        update(TreemapMarks::reachOf(*rect));
    }
}

void TreemapCanvas::repaintRects()
{
    m_picture.outdate(*m_layout);
    update();
}

TreemapScene TreemapCanvas::scene()
{
    if (m_groundsNumber != m_layoutNumber) {
        m_grounds = std::make_shared<const FolderGrounds>(*m_layout, m_grounds.get());
        m_groundsNumber = m_layoutNumber;
    }
    return {m_layout, m_highlightIDs, TreemapTiles::ground(palette()), size(), devicePixelRatioF(), m_grounds};
}

bool TreemapCanvas::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ApplicationFontChange:
    case QEvent::ApplicationPaletteChange:
    case QEvent::FontChange:
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
        repaintRects();
        break;
    case QEvent::ToolTip: {
        const auto* help = static_cast<QHelpEvent*>(event);
        Q_EMIT toolTipRequested(help->pos(), help->globalPos());
        return true;
    }
    default:
        break;
    }
    return QWidget::event(event);
}

void TreemapCanvas::resizeEvent(QResizeEvent* /*event*/)
{
    repaintRects();
    Q_EMIT resized(size());
}

void TreemapCanvas::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (m_layout->empty()) {
        paintText(painter, m_text);
    } else {
        if (!m_awaitsLayout) {
            m_picture.update(devicePixelRatioF());
        }
        paintPicture(painter);
    }
    if (hasFocus() && !m_isFocusedByMouse) {
        paintFocus(painter);
    }
}

void TreemapCanvas::paintText(QPainter& painter, const QString& text) const
{
    painter.fillRect(rect(), Theme::panelBackground(palette()));
    painter.setFont(TextStyles::font(TextStyle::headline));
    painter.setPen(Theme::textSecondary(palette()));
    painter.drawText(rect(), static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap | Qt::TextForceLeftToRight, text);
}

void TreemapCanvas::paintPicture(QPainter& painter) const
{
    if (m_picture.hasFailed()) {
        paintText(painter, QStringLiteral("There is not enough memory for this."));
    } else if (m_picture.isUpToDate()) {
        painter.drawPixmap(QPointF(), m_picture.pixmap());
        paintMarks(painter);
    } else if (m_picture.pixmap().isNull()) {
        painter.fillRect(rect(), TreemapTiles::ground(palette()));
    } else {
        painter.drawPixmap(rect(), m_picture.pixmap());
    }
}

void TreemapCanvas::paintMarks(QPainter& painter) const
{
    if (const std::optional<Rect> mark = selectionMark()) {
        TreemapMarks::paintSelection(painter, *mark, palette().color(QPalette::Active, QPalette::Highlight));
    }
    if (m_hoverMark) {
        TreemapMarks::paintHover(painter, *m_hoverMark);
    }
}

/// Two lines, visible on any background.
void TreemapCanvas::paintFocus(QPainter& painter) const
{
    painter.setPen(
        QPen(palette().color(QPalette::Active, QPalette::Highlight), 2, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
    painter.setPen(QPen(Theme::panelBackground(palette()), 1));
    painter.drawRect(rect().adjusted(2, 2, -3, -3));
}

/// A click does not show the focus frame. Reactivating the window or closing a menu keeps the previous state.
void TreemapCanvas::focusInEvent(QFocusEvent* event)
{
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
        m_isFocusedByMouse = reason == Qt::MouseFocusReason;
    }
    updateFocusFrame();
}

void TreemapCanvas::focusOutEvent(QFocusEvent* /*event*/)
{
    updateFocusFrame();
}

void TreemapCanvas::updateFocusFrame()
{
    constexpr int frame = 3;
    update(QRegion(rect()) - QRegion(rect().adjusted(frame, frame, -frame, -frame)));
}

void TreemapCanvas::enterEvent(QEnterEvent* event)
{
    Q_EMIT hovered(event->position());
}

void TreemapCanvas::leaveEvent(QEvent* /*event*/)
{
    Q_EMIT hoverEnded();
}

void TreemapCanvas::mouseMoveEvent(QMouseEvent* event)
{
    Q_EMIT hovered(event->position());
}

void TreemapCanvas::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        m_pressedAt = event->position();
    }
}

/// A press that was dragged away is not a click.
void TreemapCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_pressedAt) {
        return;
    }
    const QPointF moved = event->position() - *std::exchange(m_pressedAt, std::nullopt);
    if (moved.manhattanLength() < QGuiApplication::styleHints()->startDragDistance()) {
        Q_EMIT clicked(event->position());
    }
}

/// The first click of the two was reported; the second is not a click of its own.
void TreemapCanvas::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        m_pressedAt.reset();
        Q_EMIT doubleClicked(event->position());
    }
}

void TreemapCanvas::keyPressEvent(QKeyEvent* event)
{
    using TreemapDecisions::Move;
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    switch (isPlain ? event->key() : 0) {
    case Qt::Key_Left:
        return Q_EMIT moveRequested(Move::left);
    case Qt::Key_Right:
        return Q_EMIT moveRequested(Move::right);
    case Qt::Key_Up:
        return Q_EMIT moveRequested(Move::up);
    case Qt::Key_Down:
        return Q_EMIT moveRequested(Move::down);
    case Qt::Key_Home:
        return Q_EMIT moveRequested(Move::largest);
    case Qt::Key_End:
        return Q_EMIT moveRequested(Move::smallest);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return event->isAutoRepeat() ? void() : Q_EMIT zoomRequested();
    case Qt::Key_Backspace:
        return event->isAutoRepeat() ? void() : Q_EMIT leaveRequested();
    default:
        QWidget::keyPressEvent(event);
    }
}

void TreemapCanvas::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT menuRequested(event->reason() == QContextMenuEvent::Keyboard ? mapToGlobal(menuPoint())
                                                                        : event->globalPos());
}

/// Where a menu opens that was requested by keyboard: at the marked rectangle.
QPoint TreemapCanvas::menuPoint() const
{
    const std::optional<Rect> mark = m_hoverMark ? m_hoverMark : selectionMark();
    return mark ? toQRectF(*mark).center().toPoint() : rect().center();
}

} // namespace morlaine
