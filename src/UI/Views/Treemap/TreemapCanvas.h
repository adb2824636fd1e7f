#pragma once

#include "Core/Treemap/TreemapLayout.h"
#include "Services/Search/SearchResults.h"
#include "UI/Views/Treemap/TreemapDecisions.h"
#include "UI/Views/Treemap/TreemapPicture.h"

#include <QString>
#include <QWidget>

#include <cstddef>
#include <memory>
#include <optional>

namespace morlaine {

class FolderGrounds;

/// Shows a layout with a selected rectangle and one under the pointer, and reports user input; it decides nothing. The
/// rectangles are painted once into a cached picture. Moving a mark repaints only its old and its new place. While a
/// large picture is being painted, the former one is shown, without marks.
///
/// Assistive technology sees a list of the rectangles, see TreemapAccessibility.
class TreemapCanvas : public QWidget {
    Q_OBJECT

public:
    explicit TreemapCanvas(QWidget* parent = nullptr);
    ~TreemapCanvas() override;

    /// `text` is shown while the layout is empty.
    void showLayout(std::shared_ptr<const TreemapLayout> layout, const QString& text);
    [[nodiscard]] const TreemapLayout& layout() const { return *m_layout; }

    /// Another layout will be shown soon: no picture is begun for the current one.
    void awaitLayout() { m_awaitsLayout = true; }
    [[nodiscard]] bool awaitsLayout() const { return m_awaitsLayout; }

    /// The text that is shown if there are no rectangles.
    [[nodiscard]] const QString& text() const { return m_text; }

    /// Changes with each layout.
    [[nodiscard]] int layoutNumber() const { return m_layoutNumber; }

    /// If the set is not empty, files outside it are dimmed.
    void setHighlightIDs(const NodeIDSet& ids);

    /// The position of the selected rectangle in the layout.
    void setSelectedPosition(std::optional<std::size_t> position);
    [[nodiscard]] std::optional<std::size_t> selectedPosition() const { return m_selectedPosition; }

    /// The rectangle under the pointer. It need not belong to this layout.
    void setHoverMark(const std::optional<Rect>& rect);

    /// Whether a large picture is being painted, so that another layout should wait for `painted`.
    [[nodiscard]] bool isPainting() const { return m_picture.isBeingPainted(); }

    /// The number of times that the picture of all rectangles was painted.
    [[nodiscard]] int basePaintCount() const { return m_picture.paintCount(); }

    [[nodiscard]] QSize sizeHint() const override { return {640, 400}; }

Q_SIGNALS:
    void resized(const QSizeF& size);

    /// The large picture is finished, or memory ran out.
    void painted();

    void hovered(const QPointF& point);
    void hoverEnded();
    void clicked(const QPointF& point);
    void doubleClicked(const QPointF& point);
    void menuRequested(const QPoint& globalPoint);

    /// The pointer has rested at a point.
    void toolTipRequested(const QPointF& point, const QPoint& globalPoint);

    /// Keyboard: move the selection, zoom into it, leave the shown folder.
    void moveRequested(morlaine::TreemapDecisions::Move move);
    void zoomRequested();
    void leaveRequested();

    /// A new layout is shown. It has no selected rectangle yet.
    void layoutShown();

    /// The selected rectangle has changed.
    void selectionMoved();

    /// An assistive program has pressed the rectangle at that position.
    void rectPressed(std::size_t position);

    /// The same for a folder that is to be zoomed into.
    void rectZoomed(std::size_t position);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    [[nodiscard]] std::optional<Rect> selectionMark() const;
    [[nodiscard]] QPoint menuPoint() const;
    [[nodiscard]] TreemapScene scene();
    void repaintRects();
    void updateMark(const std::optional<Rect>& rect);
    void updateFocusFrame();
    void paintText(QPainter& painter, const QString& text) const;
    void paintPicture(QPainter& painter) const;
    void paintMarks(QPainter& painter) const;
    void paintFocus(QPainter& painter) const;

    std::shared_ptr<const TreemapLayout> m_layout = std::make_shared<const TreemapLayout>();
    int m_layoutNumber = 0;
    bool m_awaitsLayout = false;
    QString m_text;
    NodeIDSet m_highlightIDs;
    std::optional<std::size_t> m_selectedPosition;
    std::optional<Rect> m_hoverMark;
    std::optional<QPointF> m_pressedAt;
    bool m_isFocusedByMouse = false;

    std::shared_ptr<const FolderGrounds> m_grounds; // of layout `m_groundsNumber`, possibly a previous one
    int m_groundsNumber = 0;
    TreemapPicture m_picture;
};

} // namespace morlaine
