#include "UI/Views/Sidebar/RecentScansList.h"

#include "UI/Views/Sidebar/RecentScanDelegate.h"
#include "UI/Views/Sidebar/RecentScansModel.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QToolTip>

#include <algorithm>
#include <chrono>
#include <utility>

namespace morlaine {

namespace {

constexpr std::chrono::seconds clockInterval{10};

} // namespace

RecentScansList::RecentScansList(QWidget* parent)
    : UniformListView(parent)
    , m_scans(new RecentScansModel(this))
    , m_painter(new RecentScanDelegate(*m_scans, this))
{
    setItemDelegate(m_painter);
    setModel(m_scans);
    setAccessibleName(QStringLiteral("Recent Scans")); // may make the accessible object, which reads the model
    setFocusPolicy(Qt::TabFocus);
    setSelectionMode(NoSelection);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    viewport()->setMouseTracking(true);
    m_clock.setTimerType(Qt::VeryCoarseTimer);
    m_clock.setInterval(clockInterval);
    connect(&m_clock, &QTimer::timeout, m_scans, [this] { m_scans->updateDates(Date::now()); });
    connect(this, &UniformListView::rowMenuRequested, this, &RecentScansList::showRowMenu);
}

void RecentScansList::setHistory(const std::vector<HistoricalScan>& history)
{
    const QModelIndex current = currentIndex();
    const int formerRow = current.row();
    const std::optional<Uuid> id = current.isValid() ? std::optional(m_scans->row(formerRow).scan.id) : std::nullopt;
    if (!m_scans->setHistory(history, Date::now())) {
        return;
    }
    doItemsLayout();
    if (id && !history.empty()) {
        const int row = m_scans->rowOf(*id).value_or(std::min(formerRow, m_scans->rowCount() - 1));
        setCurrentIndex(m_scans->index(row));
    }
}

void RecentScansList::doItemsLayout()
{
    UniformListView::doItemsLayout();
    setFixedHeight(contentHeight());
}

QString RecentScansList::removeText()
{
    return QStringLiteral("Remove scan cache");
}

QString RecentScansList::spokenText(int row) const
{
    return m_scans->index(row).data(Qt::AccessibleTextRole).toString();
}

QRect RecentScansList::rectOf(int row) const
{
    return visualRect(m_scans->index(row));
}

/// With a copy, since acting on it may change the rows.
void RecentScansList::open(int row)
{
    Q_EMIT openRequested(HistoricalScan(m_scans->row(row).scan));
}

void RecentScansList::remove(int row)
{
    Q_EMIT removeRequested(Uuid(m_scans->row(row).scan.id));
}

RecentScansList::Part RecentScansList::partAt(const QPoint& point) const
{
    const QModelIndex index = indexAt(point);
    if (!index.isValid() || !viewport()->rect().contains(point)) {
        return {};
    }
    return {index.row(), RecentScanDelegate::trashRect(visualRect(index), layoutDirection()).contains(point)};
}

void RecentScansList::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    UniformListView::currentChanged(current, previous);
    announceRow();
}

/// Queued: the scroll area first scrolls to the whole list, then to the row.
void RecentScansList::focusInEvent(QFocusEvent* event)
{
    UniformListView::focusInEvent(event);
    QMetaObject::invokeMethod(this, &RecentScansList::announceRow, Qt::QueuedConnection);
}

void RecentScansList::announceRow()
{
    if (hasFocus() && currentIndex().isValid()) {
        Q_EMIT rowEntered(visualRect(currentIndex()));
    }
}

void RecentScansList::showEvent(QShowEvent* event)
{
    UniformListView::showEvent(event);
    m_scans->updateDates(Date::now());
    m_clock.start();
}

void RecentScansList::hideEvent(QHideEvent* event)
{
    UniformListView::hideEvent(event);
    m_clock.stop();
}

void RecentScansList::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && event->isAutoRepeat()) {
        return;
    }
    if (isReturn && currentIndex().isValid()) {
        open(currentIndex().row());
    } else {
        UniformListView::keyPressEvent(event);
    }
}

void RecentScansList::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->button() == Qt::LeftButton ? std::optional(partAt(event->pos())) : std::nullopt;
}

void RecentScansList::mouseReleaseEvent(QMouseEvent* event)
{
    const std::optional<Part> pressed = std::exchange(m_pressed, std::nullopt);
    const Part part = partAt(event->pos());
    if (event->button() != Qt::LeftButton || part.row < 0 || pressed != part) {
        return;
    }
    if (part.isTrash) {
        remove(part.row);
    } else {
        open(part.row);
    }
}

void RecentScansList::mouseDoubleClickEvent(QMouseEvent* /*event*/)
{
    m_pressed.reset();
}

void RecentScansList::mouseMoveEvent(QMouseEvent* event)
{
    const Part part = partAt(event->pos());
    setHotTrash(part.isTrash ? part.row : -1);
}

void RecentScansList::setHotTrash(int row)
{
    const int former = std::exchange(m_rowWithHotTrash, row);
    if (former != row) {
        m_painter->setRowWithHotTrash(row);
        update(m_scans->index(former));
        update(m_scans->index(row));
    }
}

bool RecentScansList::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<const QHelpEvent*>(event);
        showToolTip(help->pos(), help->globalPos());
        return true;
    }
    if (event->type() == QEvent::Leave) {
        setHotTrash(-1);
    }
    return UniformListView::viewportEvent(event);
}

void RecentScansList::showToolTip(const QPoint& point, const QPoint& globalPosition)
{
    const Part part = partAt(point);
    if (part.row < 0) {
        QToolTip::hideText();
        return;
    }
    const QModelIndex index = m_scans->index(part.row);
    const QRect row = visualRect(index);
    QToolTip::showText(globalPosition, part.isTrash ? removeText() : index.data(Qt::ToolTipRole).toString(), viewport(),
                       part.isTrash ? RecentScanDelegate::trashRect(row, layoutDirection()) : row);
}

void RecentScansList::showRowMenu(const QModelIndex& index, const QPoint& globalPosition)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(removeText(), this, [this, id = m_scans->row(index.row()).scan.id] { Q_EMIT removeRequested(id); });
    menu->popup(globalPosition);
}

/// Leaves scrolling to the sidebar.
void RecentScansList::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

} // namespace morlaine
