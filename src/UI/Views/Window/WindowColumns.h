#pragma once

#include "UI/Views/Window/SideColumn.h"

#include <QSplitter>

namespace morlaine {

/// Widths of the columns in points, from left to right.
struct ColumnWidths {
    int leading;
    int centre;
    int trailing;

    friend bool operator==(const ColumnWidths&, const ColumnWidths&) = default;
};

/// Distributes `total`. `wished` holds the wanted widths, and the width that the centre needs; `least` holds the
/// minimum widths of the side columns. The trailing column shrinks first, then the leading one.
[[nodiscard]] ColumnWidths columnWidths(ColumnWidths wished, ColumnWidths least, int total);

/// The three columns of the window. Their widths depend only on the window's width and on where the user last dragged
/// the dividers. A hidden column keeps its wished width.
class WindowColumns final : public QSplitter {
    Q_OBJECT

public:
    enum class Side { leading, trailing };

    /// Takes ownership of the columns. The centre gets at least `comfortableCentre` points, unless the user drags a
    /// divider or both side columns have their minimum width.
    WindowColumns(SideColumn* leading, QWidget* centre, SideColumn* trailing, int comfortableCentre,
                  QWidget* parent = nullptr);

    /// Slides a column in or out.
    void setShown(Side side, bool isShown);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] ColumnWidths current() const;
    [[nodiscard]] ColumnWidths fitting(const SideColumn* arriving) const;
    void arrange();
    void noteDrag();

    SideColumn* const m_leading;
    SideColumn* const m_trailing;
    const int m_comfortableCentre;
    ColumnWidths m_wished;
    ColumnWidths m_arranged{};
};

} // namespace morlaine
