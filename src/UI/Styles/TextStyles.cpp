#include "UI/Styles/TextStyles.h"

#include <QApplication>
#include <QFontInfo>

#include <algorithm>
#include <array>

namespace morlaine::TextStyles {

namespace {

constexpr double bodySize = 13;
constexpr double smallest = 7; // points on the screen
constexpr double shrinking = 2.0 / 3;

struct Row {
    TextStyle style;
    double size;
    QFont::Weight weight;
};

constexpr std::array rows{
    Row{TextStyle::largeTitle, 26, QFont::Normal},  Row{TextStyle::title, 22, QFont::Normal},
    Row{TextStyle::title3, 16, QFont::DemiBold},    Row{TextStyle::headline, 13, QFont::DemiBold},
    Row{TextStyle::subheadline, 11, QFont::Normal}, Row{TextStyle::body, bodySize, QFont::Normal},
    Row{TextStyle::caption, 10, QFont::Normal},     Row{TextStyle::caption2, 9.5, QFont::Normal},
};

const Row& rowOf(TextStyle style)
{
    return *std::ranges::find(rows, style, &Row::style);
}

/// Also for fonts whose size is given in pixels.
double pointSizeOf(const QFont& font)
{
    return font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
}

double scaled(double size, double applicationSize)
{
    const double proportion = size / bodySize;
    if (proportion >= 1) {
        return applicationSize * proportion;
    }
    return std::max(applicationSize * (1 - (1 - proportion) * shrinking), std::min(applicationSize, smallest));
}

} // namespace

QFont font(TextStyle style)
{
    return font(style, rowOf(style).weight);
}

QFont font(TextStyle style, QFont::Weight weight)
{
    return systemFont(rowOf(style).size, weight);
}

QFont systemFont(double size, QFont::Weight weight)
{
    QFont font = QApplication::font();
    font.setPointSizeF(scaled(size, pointSizeOf(font)));
    font.setWeight(weight);
    return font;
}

QFont drawingFont(int size, QFont::Weight weight)
{
    QFont font = QApplication::font();
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

} // namespace morlaine::TextStyles
