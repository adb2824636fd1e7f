#include "UI/Styles/Theme.h"

#include "UI/Styles/Contrast.h"

namespace morlaine::Theme {

QColor panelBackground(const QPalette& palette)
{
    return palette.color(QPalette::Window);
}

QColor controlBackground(const QPalette& palette)
{
    return palette.color(QPalette::Base);
}

QColor textPrimary(const QPalette& palette)
{
    return palette.color(QPalette::WindowText);
}

QColor textSecondary(const QPalette& palette)
{
    return receded(textPrimary(palette), panelBackground(palette), 0.62, 4.5);
}

QColor textTertiary(const QPalette& palette)
{
    return receded(textPrimary(palette), panelBackground(palette), 0.46, 3);
}

QColor buttonText(const QPalette& palette)
{
    return palette.color(QPalette::ButtonText);
}

QColor separator(const QPalette& palette)
{
    return mixed(textPrimary(palette), panelBackground(palette), 0.14);
}

QLinearGradient scanGradient()
{
    QLinearGradient gradient(0, 0, 1, 1);
    gradient.setCoordinateMode(QGradient::ObjectMode);
    gradient.setStops({{0, blue}, {0.5, purple}, {1, pink}});
    return gradient;
}

QColor withOpacity(const QColor& color, double opacity)
{
    QColor result = color;
    result.setAlphaF(static_cast<float>(opacity));
    return result;
}

} // namespace morlaine::Theme
