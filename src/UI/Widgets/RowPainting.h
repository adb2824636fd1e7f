#pragma once

#include "UI/Styles/Theme.h"

#include <QRect>
#include <QString>
#include <QStyleOptionViewItem>

class QFont;
class QPainter;

namespace morlaine {

/// Paints one line of plain text into `rect`, vertically centred, shortened where it does not fit.
void paintLine(QPainter& painter, const QRect& rect, const QString& text, const QFont& font, const QColor& color,
               Qt::TextElideMode elide, Qt::Alignment alignment = Qt::AlignLeading);

/// Paints a ring in the highlight colour along the inside of `rect`: the keyboard is here.
void paintFocusRing(QPainter& painter, const QRect& rect, const QPalette& palette);

/// The width that paintLine needs for the whole text.
[[nodiscard]] int lineWidth(const QString& text, const QFont& font);

/// The option's palette with its current group set to what the row's state asks for.
[[nodiscard]] QPalette rowPalette(const QStyleOptionViewItem& option);

} // namespace morlaine
