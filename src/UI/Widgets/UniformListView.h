#pragma once

#include <QListView>

namespace morlaine {

/// A list of rows of equal height, which the delegate's size hint gives without looking at a row. Time and memory
/// depend on the visible rows only, so that a list of a million rows appears at once. The model is flat, has one column
/// and changes by resets and `dataChanged`.
///
/// One row at a time is selected, by the left mouse button or by moving the current row with the keyboard. Resets and
/// focus changes do not select. Typing does not search, since that would build the text of every row.
///
/// Its base is QListView because screen readers know that class. It skips QListView's layout, which visits all rows on
/// every change, by calling QAbstractItemView directly.
class UniformListView : public QListView {
    Q_OBJECT

public:
    explicit UniformListView(QWidget* parent = nullptr);

    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void keyboardSearch(const QString& search) override;
    void doItemsLayout() override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles = {}) override;

    /// The height of all rows together, in points.
    [[nodiscard]] int contentHeight() const;

Q_SIGNALS:
    /// The up key was pressed in the first row.
    void leftUpwards();

    /// Return was pressed; not emitted for auto-repeat.
    void returnPressed();

    /// A context menu was requested for the row at `index`, by mouse or keyboard.
    void rowMenuRequested(const QModelIndex& index, const QPoint& globalPosition);

protected:
    [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] int horizontalOffset() const override;
    [[nodiscard]] int verticalOffset() const override;
    [[nodiscard]] bool isIndexHidden(const QModelIndex& index) const override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                                       const QEvent* event) const override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    [[nodiscard]] int rowCount() const;
    [[nodiscard]] int rowAt(int y) const;
    void leaveOutHalfRow();
    [[nodiscard]] QStyleOptionViewItem optionFor(const QModelIndex& index, const QStyleOptionViewItem& base) const;

    int m_rowHeight = 1; // points
};

} // namespace morlaine
