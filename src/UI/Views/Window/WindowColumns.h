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

/// The widths within `total`, where `wished` is what the side columns want and the centre needs, and `least` how narrow
/// the side columns may get. The trailing column gives way first, then the leading one.
[[nodiscard]] ColumnWidths columnWidths(ColumnWidths wished, ColumnWidths least, int total);

/// The three columns of the window. The widths depend on the window's width and on where the user last dragged the
/// dividers, not on how the window came to be as wide as it is. A column that is put away keeps its wish.
class WindowColumns final : public QSplitter {
    Q_OBJECT

public:
    enum class Side { leading, trailing };

    /// Takes the columns. The centre should have `comfortableCentre` points; it gets less where the user drags a
    /// divider so, or where both side columns are as narrow as they may be.
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
