#include "UI/Widgets/ElidingLabel.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace morlaine {
namespace {

/// The number of non-white pixels of the painted text, in a label of its natural height or a higher one.
qsizetype inkedPixels(ElidingLabel& label, double scale, int extraHeight)
{
    label.resize(label.sizeHint() + QSize(0, extraHeight));
    QImage image(label.size() * scale, QImage::Format_Grayscale8);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    label.render(&image, {}, {}, {});
    qsizetype inked = 0;
    for (int y = 0; y < image.height(); ++y) {
        inked += std::count_if(image.constScanLine(y), image.constScanLine(y) + image.width(),
                               [](uchar grey) { return grey < 255; });
    }
    return inked;
}

TEST(ElidingLabelTest, CutsNoDescenders)
{
    const QFont before = QApplication::font();
    for (const double points : {9.0, 10.0, 11.0, 12.0, 13.0, 20.0}) {
        QFont font = before;
        font.setPointSizeF(points);
        QApplication::setFont(font);
        for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
            ElidingLabel label(TextStyle::caption);
            label.setText(QStringLiteral("Tgjpqy"));
            label.setAlignment(Qt::AlignTop);
            EXPECT_EQ(inkedPixels(label, scale, 0), inkedPixels(label, scale, 20)) << points << " points x " << scale;
        }
    }
    QApplication::setFont(before);
}

} // namespace
} // namespace morlaine
