#pragma once

#include "UI/Styles/TextDirectionStyle.h"

namespace morlaine {

/// Qt's Fusion style without relief: flat controls with round corners, thin scroll bars and progress bars, hairlines
/// between panels. All colours come from the palette.
class CalmStyle final : public TextDirectionStyle {
    Q_OBJECT

public:
    CalmStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                                       const QWidget* widget) const override;
    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option,
                                       const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returned) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contentsSize,
                                         const QWidget* widget) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                                     const QWidget* widget) const override;
};

} // namespace morlaine
