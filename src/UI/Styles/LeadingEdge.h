#pragma once

#include <QGuiApplication>

namespace morlaine {

/// Where the lines of a window begin, whatever the direction of a text is. Qt aligns some texts by their own direction.
[[nodiscard]] inline Qt::Alignment leadingEdge()
{
    return Qt::AlignAbsolute | (QGuiApplication::isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
}

} // namespace morlaine
