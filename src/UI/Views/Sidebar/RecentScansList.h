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

/// The recent scans. As high as all of its rows, since the whole sidebar scrolls. Updates the dates while it is
/// visible.
///
/// A click opens a scan; a click on the trash can deletes it. The second click of a double click does nothing, since
/// another row may have moved there. The arrow keys move between rows, Return opens a scan, and the context menu
/// deletes it.
class RecentScansList final : public UniformListView {
    Q_OBJECT

public:
    explicit RecentScansList(QWidget* parent = nullptr);

    /// Keeps the current row if its scan still exists.
    void setHistory(const std::vector<HistoricalScan>& history);

    void doItemsLayout() override;

    /// What the trash can does.
    [[nodiscard]] static QString removeText();

    // Of a row that there is.
    [[nodiscard]] QString spokenText(int row) const;
    [[nodiscard]] QRect rectOf(int row) const;
    void open(int row);
    void remove(int row);

Q_SIGNALS:
    void openRequested(const HistoricalScan& scan);
    void removeRequested(const Uuid& id);

    /// The keyboard focus has moved to the row at `rect` (in coordinates of this widget).
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
    /// What lies at a point.
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
