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
    return receded(textPrimary(palette), panelBackground(palette), 0.72, textContrast);
}

QColor textTertiary(const QPalette& palette)
{
    return receded(textPrimary(palette), panelBackground(palette), 0.46, textContrast);
}

QColor quietPicture(const QPalette& palette)
{
    constexpr double leastContrast = 1.9;
    return receded(textPrimary(palette), panelBackground(palette), 0.3, leastContrast);
}

QColor textOfCancelling(const QPalette& palette)
{
    const QColor text = textPrimary(palette);
    return strengthened(red, text, mixed(text, panelBackground(palette), pressedOpacity), textContrast);
}

QColor mutedSelection(const QPalette& palette)
{
    return mixed(palette.color(QPalette::Highlight), controlBackground(palette), 0.2);
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
