#pragma once

#include "UI/Widgets/UniformListView.h"
#include "Utilities/Date.h"
#include "Utilities/Uuid.h"

#include <QTimer>

#include <optional>
#include <vector>

namespace morlaine {

struct HistoricalScan;
class RecentScanDelegate;
class RecentScansModel;

/// The earlier scans. As high as all of its rows, so that it scrolls with whatever is around it; keeps the dates
/// current while it can be seen.
///
/// A click opens a scan, one on the trash can removes it; a second click of a double click does nothing more, since
/// another row may have moved there. The arrow keys move from row to row, Return opens, and the menu key offers to
/// remove.
class RecentScansList final : public UniformListView {
    Q_OBJECT

public:
    explicit RecentScansList(QWidget* parent = nullptr);

    /// Keeps the current row where its scan is still there.
    void setHistory(const std::vector<HistoricalScan>& history);

    void doItemsLayout() override;

Q_SIGNALS:
    void openRequested(const HistoricalScan& scan);
    void removeRequested(const Uuid& id);

    /// The keyboard has come to the row at `rect` (in this widget).
    void rowEntered(const QRect& rect);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    /// What is at one point.
    struct Part {
        int row = -1;
        bool isTrash = false;

        friend bool operator==(const Part&, const Part&) = default;
    };

    [[nodiscard]] Part partAt(const QPoint& point) const;
    void announceRow();
    void setHotTrash(int row);
    void showToolTip(const QPoint& point, const QPoint& globalPosition);
    void showRowMenu(const QModelIndex& index, const QPoint& globalPosition);

    RecentScansModel* m_scans;
    RecentScanDelegate* m_painter;
    QTimer m_clock;
    std::optional<Part> m_pressed;
    int m_rowWithHotTrash = -1;
};

} // namespace morlaine
