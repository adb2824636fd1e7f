#pragma once

#include "Utilities/Color.h"
#include "Utilities/Rect.h"

#include <QColor>
#include <QRectF>

namespace morlaine {

// The only conversions from values of the lower layers to Qt's types.

[[nodiscard]] inline QColor toQColor(const Color& color)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue));
}

[[nodiscard]] inline QRectF toQRectF(const Rect& rect)
{
    return {rect.x, rect.y, rect.width, rect.height};
}

} // namespace morlaine
