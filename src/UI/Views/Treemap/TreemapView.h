#pragma once

#include "Core/Models/TreemapRect.h"
#include "Core/Treemap/TreemapLayout.h"
#include "UI/Views/Treemap/TreemapCanvas.h"
#include "UI/Views/Treemap/TreemapDecisions.h"
#include "Utilities/ChangeObserver.h"

#include <QPointF>
#include <QSizeF>
#include <QTimer>
#include <QWidget>

#include <cstddef>
#include <memory>
#include <optional>

namespace morlaine {

class MainViewModel;
class TreemapHeader;

/// The main picture of the window: the shown folder as a treemap, below a bar with the path zoomed into. Keeps the last
/// layout and the hovered rectangle. Clicks become calls of the model, which must outlive the view. Main thread only.
class TreemapView final : public QWidget {
    Q_OBJECT

public:
    explicit TreemapView(MainViewModel& viewModel, QWidget* parent = nullptr);
    ~TreemapView() override;

    /// The last layout, in the engine's order and the canvas's coordinates.
    [[nodiscard]] const TreemapLayout& computedRects() const { return *m_computedRects; }

    /// The rectangle under the pointer. Kept when the layout changes, until the pointer moves.
    [[nodiscard]] const std::optional<TreemapRect>& hoveredRect() const { return m_hoveredRect; }

    /// Lays out the shown folder for a canvas of that size. Clears the layout if there is no folder; keeps it for a
    /// size of 20 or less. Called when another folder is shown or the canvas is resized; in a large folder, for the
    /// newest size only, after a turn of the event loop and once no picture is being painted.
    void recalculateLayout(const QSizeF& size);

    /// The file at a point of the canvas, else the outermost folder there.
    [[nodiscard]] std::optional<TreemapRect> rectAt(const QPointF& point) const;

    /// Updates the rectangle under the pointer.
    void updateHoveredRect();

private:
    void build();
    void connectCanvas();
    void connectHeader();

    void readModel();
    void followSize();
    void showSelection();
    void showHover();
    void showInfo();
    void followHoveredRect();
    void layOut(const FileNode& root, const QSizeF& size);
    void setHoveredRect(std::optional<TreemapRect> rect);

    void select(const QPointF& point);
    void zoomIn(const QPointF& point);
    void moveSelection(TreemapDecisions::Move move);
    void zoomIntoSelection();
    void showStep(std::size_t step);
    void openMenu(const QPoint& globalPoint);
    void showToolTip(const QPointF& point, const QPoint& globalPoint);

    MainViewModel& m_viewModel;
    TreemapHeader* const m_header;
    TreemapCanvas* const m_canvas;

    std::shared_ptr<TreemapLayout> m_computedRects = std::make_shared<TreemapLayout>();
    std::optional<TreemapRect> m_hoveredRect;
    QPointF m_hoverPoint;
    QTimer m_sizeTimer;

    // The state of the model at the last refresh.
    std::optional<Uuid> m_rootID;
    std::optional<FileNode> m_selectedNode;

    ChangeObserver m_observer;
};

} // namespace morlaine
