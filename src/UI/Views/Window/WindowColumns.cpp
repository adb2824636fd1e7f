#include "UI/Views/Window/WindowColumns.h"

#include "UI/Widgets/SplitterAccessibility.h"

#include <algorithm>

namespace morlaine {

ColumnWidths columnWidths(ColumnWidths wished, ColumnWidths least, int total)
{
    int lack = wished.leading + wished.centre + wished.trailing - total;
    const auto narrowed = [&lack](int width, int narrowest) {
        const int given = std::clamp(lack, 0, std::max(width - narrowest, 0));
        lack -= given;
        return width - given;
    };
    const int trailing = narrowed(wished.trailing, least.trailing);
    const int leading = narrowed(wished.leading, least.leading);
    return {leading, std::max(total - leading - trailing, 0), trailing};
}

WindowColumns::WindowColumns(SideColumn* leading, QWidget* centre, SideColumn* trailing, int comfortableCentre,
                             QWidget* parent)
    : QSplitter(Qt::Horizontal, parent)
    , m_leading(leading)
    , m_trailing(trailing)
    , m_comfortableCentre(comfortableCentre)
    , m_wished{leading->widths().ideal, comfortableCentre, trailing->widths().ideal}
{
    setChildrenCollapsible(false);
    addWidget(m_leading);
    addWidget(centre);
    addWidget(m_trailing);
    SplitterAccessibility::install();
    handle(1)->setAccessibleName(QStringLiteral("Divider beside the sidebar"));
    handle(2)->setAccessibleName(QStringLiteral("Divider beside the inspector"));
    for (int index = 0; index < count(); ++index) {
        setStretchFactor(index, widget(index) == centre ? 1 : 0);
    }
    connect(this, &QSplitter::splitterMoved, this, &WindowColumns::noteDrag);
    for (const SideColumn* column : {m_leading, m_trailing}) {
        connect(column, &SideColumn::slid, this, &WindowColumns::arrange);
    }
}

/// The column slides in to its final width.
void WindowColumns::setShown(Side side, bool isShown)
{
    const bool isLeading = side == Side::leading;
    SideColumn& column = isLeading ? *m_leading : *m_trailing;
    const ColumnWidths then = fitting(&column);
    column.setShown(isShown, isLeading ? then.leading : then.trailing);
    arrange();
}

void WindowColumns::resizeEvent(QResizeEvent* event)
{
    QSplitter::resizeEvent(event);
    arrange();
}

ColumnWidths WindowColumns::current() const
{
    const QList<int> widths = sizes();
    return {widths[0], widths[1], widths[2]};
}

/// A sliding column keeps its current width, unless it is `arriving`.
ColumnWidths WindowColumns::fitting(const SideColumn* arriving) const
{
    ColumnWidths wished = m_wished;
    ColumnWidths least{m_leading->widths().minimum, 0, m_trailing->widths().minimum};
    const auto fix = [arriving](const SideColumn* column, int& wish, int& narrowest) {
        if (column != arriving && (column->isSliding() || column->isHidden())) {
            wish = narrowest = column->isHidden() ? 0 : column->width();
        }
    };
    fix(m_leading, wished.leading, least.leading);
    fix(m_trailing, wished.trailing, least.trailing);
    const ColumnWidths now = current();
    return columnWidths(wished, least, now.leading + now.centre + now.trailing);
}

void WindowColumns::arrange()
{
    const ColumnWidths widths = fitting(nullptr);
    setSizes({widths.leading, widths.centre, widths.trailing});
    m_arranged = current();
}

/// Only a dragged width becomes the wish; a column that has shrunk still wants its old width back.
void WindowColumns::noteDrag()
{
    const ColumnWidths now = current();
    if (now.leading != m_arranged.leading) {
        m_wished.leading = now.leading;
    }
    if (now.trailing != m_arranged.trailing) {
        m_wished.trailing = now.trailing;
    }
    m_wished.centre = std::min(m_comfortableCentre, now.centre);
    m_arranged = now;
}

} // namespace morlaine
