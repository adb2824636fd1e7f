#include "UI/Views/Treemap/TreemapMarks.h"

#include "UI/Styles/Conversions.h"
#include "UI/Styles/Theme.h"
#include "UI/Views/Treemap/TreemapDecisions.h"

#include <QPainter>

#include <cmath>

namespace morlaine::TreemapMarks {

namespace {

namespace Decide = TreemapDecisions;

void paintMark(QPainter& painter, const Rect& rect, const QColor& color, double fillOpacity,
               const Decide::Outline& outline)
{
    QPen pen(Theme::withOpacity(color, outline.opacity), outline.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(10);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(toQRectF(rect), Theme::withOpacity(color, fillOpacity));
    painter.setPen(pen);
    painter.drawRect(toQRectF(rect));
    painter.restore();
}

} // namespace

void paintSelection(QPainter& painter, const Rect& rect, const QColor& accent)
{
    paintMark(painter, rect, accent, Decide::selectionFillOpacity, Decide::selectionOutline);
}

void paintHover(QPainter& painter, const Rect& rect)
{
    paintMark(painter, rect, Qt::white, Decide::hoverFillOpacity, Decide::hoverOutline);
}

QRect reachOf(const Rect& rect)
{
    const int beyond = static_cast<int>(std::ceil(Decide::selectionOutline.width / 2)) + 1;
    return toQRectF(rect).toAlignedRect().adjusted(-beyond, -beyond, beyond, beyond);
}

} // namespace morlaine::TreemapMarks
