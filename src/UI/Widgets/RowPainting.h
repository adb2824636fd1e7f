#pragma once

#include "UI/Styles/Theme.h"

#include <QRect>
#include <QString>
#include <QStyleOptionViewItem>

class QFont;
class QPainter;

namespace morlaine {

/// Paints one line of plain text, centred vertically and elided to fit `rect`.
void paintLine(QPainter& painter, const QRect& rect, const QString& text, const QFont& font, const QColor& color,
               Qt::TextElideMode elide, Qt::Alignment alignment = Qt::AlignLeading);

/// Paints a ring in the highlight colour inside the edge of `rect`, which marks the keyboard focus.
void paintFocusRing(QPainter& painter, const QRect& rect, const QPalette& palette);

/// The width that paintLine needs for the whole text.
[[nodiscard]] int lineWidth(const QString& text, const QFont& font);

/// The option's palette with the current group that matches the row's state.
[[nodiscard]] QPalette rowPalette(const QStyleOptionViewItem& option);

} // namespace morlaine
