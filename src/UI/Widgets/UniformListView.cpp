#include "UI/Widgets/UniformListView.h"

#include <QContextMenuEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <limits>

namespace morlaine {

UniformListView::UniformListView(QWidget* parent) : QListView(parent)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

/// Limited to what a scroll bar can reach, tens of millions of rows.
int UniformListView::rowCount() const
{
    return model() == nullptr ? 0 : std::min(model()->rowCount(), std::numeric_limits<int>::max() / m_rowHeight);
}

int UniformListView::rowAt(int y) const
{
    const int fromTop = y + verticalOffset();
    return fromTop < 0 ? -1 : fromTop / m_rowHeight;
}

int UniformListView::contentHeight() const
{
    return rowCount() * m_rowHeight;
}

QRect UniformListView::visualRect(const QModelIndex& index) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    return {0, index.row() * m_rowHeight - verticalOffset(), viewport()->width(), m_rowHeight};
}

QModelIndex UniformListView::indexAt(const QPoint& point) const
{
    const int row = rowAt(point.y());
    return row < 0 || row >= rowCount() ? QModelIndex() : model()->index(row, 0);
}

QSize UniformListView::minimumSizeHint() const
{
    return {0, m_rowHeight};
}

void UniformListView::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    const QRect rect = visualRect(index);
    if (!rect.isValid()) {
        return;
    }
    const int room = viewport()->height() - m_rowHeight;
    int top = rect.top();
    if (hint == PositionAtTop || (hint == EnsureVisible && top < 0)) {
        top = 0;
    } else if (hint == PositionAtBottom || (hint == EnsureVisible && top > room)) {
        top = std::max(room, 0);
    } else if (hint == PositionAtCenter) {
        top = room / 2;
    }
    verticalScrollBar()->setValue(verticalOffset() + rect.top() - top);
}

void UniformListView::keyboardSearch(const QString& /*search*/)
{
}

void UniformListView::doItemsLayout()
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    m_rowHeight = std::max(1, itemDelegate()->sizeHint(option, {}).height());
    QAbstractItemView::doItemsLayout(); // NOLINT(bugprone-parent-virtual-call): skips QListView's layout
}

void UniformListView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles)
{
    QAbstractItemView::dataChanged(topLeft, bottomRight, roles); // NOLINT(bugprone-parent-virtual-call): as above
}

QModelIndex UniformListView::moveCursor(CursorAction action, Qt::KeyboardModifiers /*modifiers*/)
{
    const int last = rowCount() - 1;
    if (last < 0) {
        return {};
    }
    const int current = currentIndex().isValid() ? currentIndex().row() : -1;
    const int page = std::max(1, viewport()->height() / m_rowHeight - 1);
    int row = std::max(current, 0);
    switch (action) {
    case MoveUp:
    case MovePrevious:
        row = current - 1;
        break;
    case MoveDown:
    case MoveNext:
        row = current + 1;
        break;
    case MovePageUp:
        row -= page;
        break;
    case MovePageDown:
        row = std::min(row, last - page) + page;
        break;
    case MoveHome:
        row = 0;
        break;
    case MoveEnd:
        row = last;
        break;
    case MoveLeft:
    case MoveRight:
        break;
    }
    return model()->index(std::clamp(row, 0, last), 0);
}

int UniformListView::horizontalOffset() const
{
    return 0;
}

/// A row at the top is never seen in part.
int UniformListView::verticalOffset() const
{
    return verticalScrollBar()->value() / m_rowHeight * m_rowHeight;
}

bool UniformListView::isIndexHidden(const QModelIndex& /*index*/) const
{
    return false;
}

void UniformListView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command)
{
    const QModelIndex index = indexAt(rect.topLeft());
    selectionModel()->select(index.isValid() ? QItemSelection(index, index) : QItemSelection(), command);
}

QRegion UniformListView::visualRegionForSelection(const QItemSelection& selection) const
{
    QRegion region;
    for (const QItemSelectionRange& range : selection) {
        region += visualRect(range.topLeft()).united(visualRect(range.bottomRight()));
    }
    return region & viewport()->rect();
}

QItemSelectionModel::SelectionFlags UniformListView::selectionCommand(const QModelIndex& index,
                                                                      const QEvent* event) const
{
    const auto* mouse = dynamic_cast<const QMouseEvent*>(event);
    if (mouse != nullptr && mouse->button() != Qt::LeftButton && mouse->buttons() != Qt::LeftButton) {
        return QItemSelectionModel::NoUpdate;
    }
    return QAbstractItemView::selectionCommand(index, event);
}

/// At the bottom, where rows follow.
void UniformListView::leaveOutHalfRow()
{
    const bool isCut = contentHeight() > height() && height() >= m_rowHeight;
    const QMargins margins(0, 0, 0, isCut ? height() % m_rowHeight : 0);
    if (viewportMargins() != margins) {
        setViewportMargins(margins);
    }
}

void UniformListView::updateGeometries()
{
    leaveOutHalfRow();
    QScrollBar& bar = *verticalScrollBar();
    bar.setSingleStep(m_rowHeight);
    bar.setPageStep(viewport()->height());
    bar.setRange(0, std::max(0, contentHeight() - viewport()->height()));
    QAbstractItemView::updateGeometries(); // NOLINT(bugprone-parent-virtual-call): as above
}

void UniformListView::scrollContentsBy(int dx, int dy)
{
    QAbstractItemView::scrollContentsBy(dx, dy); // NOLINT(bugprone-parent-virtual-call): as above
}

void UniformListView::resizeEvent(QResizeEvent* event)
{
    QAbstractItemView::resizeEvent(event); // NOLINT(bugprone-parent-virtual-call): as above
}

QStyleOptionViewItem UniformListView::optionFor(const QModelIndex& index, const QStyleOptionViewItem& base) const
{
    QStyleOptionViewItem option = base;
    option.rect = visualRect(index);
    option.index = index;
    option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
    option.state.setFlag(QStyle::State_HasFocus, hasFocus() && index == currentIndex());
    return option;
}

void UniformListView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    QStyleOptionViewItem base;
    initViewItemOption(&base);
    const int last = std::min(rowAt(event->rect().bottom()), rowCount() - 1);
    for (int row = std::max(0, rowAt(event->rect().top())); row <= last; ++row) {
        const QModelIndex index = model()->index(row, 0);
        itemDelegate()->paint(&painter, optionFor(index, base), index);
    }
}

void UniformListView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Up && currentIndex().row() <= 0) {
        Q_EMIT leftUpwards();
        return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat()) {
        Q_EMIT returnPressed();
    }
    QAbstractItemView::keyPressEvent(event);
}

void UniformListView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = isByMouse ? indexAt(event->pos()) : currentIndex();
    if (index.isValid()) {
        scrollTo(index);
        Q_EMIT rowMenuRequested(index,
                                isByMouse ? event->globalPos() : viewport()->mapToGlobal(visualRect(index).center()));
    }
}

} // namespace morlaine
