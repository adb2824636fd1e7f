#include "UI/Styles/Symbols.h"

#include "UI/Styles/Palettes.h"

#include <QApplication>
#include <QDir>
#include <QPainter>

#include <gmock/gmock.h>

#include <set>

namespace morlaine {

namespace {

constexpr QColor ink(200, 10, 20);

/// The rectangle of all pixels that are not transparent.
QRect inked(const QImage& image)
{
    QRect rect;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > 0) {
                rect |= QRect(x, y, 1, 1);
            }
        }
    }
    return rect;
}

/// The colour of the symbol's most opaque pixel.
QColor inkOf(const QPixmap& pixmap)
{
    const QImage image = pixmap.toImage();
    QColor strongest(Qt::transparent);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            strongest = color.alpha() > strongest.alpha() ? color : strongest;
        }
    }
    return strongest;
}

QColor inkOf(const QIcon& icon, QIcon::Mode mode = QIcon::Normal)
{
    return inkOf(icon.pixmap(QSize(16, 16), 1, mode));
}

} // namespace

TEST(SymbolsTest, EveryNameHasAPictureAndEveryPictureAName)
{
    std::set<std::string> names;
    for (const std::string_view name : SymbolName::all) {
        names.insert(std::string(name) + ".svg");
    }
    std::set<std::string> files;
    for (const QString& file : QDir(QStringLiteral(":/symbols")).entryList()) {
        files.insert(file.toStdString());
    }
    EXPECT_EQ(names, files);
}

TEST(SymbolsTest, PicturesAreDistinctAndFillTheirSquareWithoutTouchingItsEdge)
{
    std::set<QByteArray> seen;
    for (const std::string_view name : SymbolName::all) {
        SCOPED_TRACE(name);
        const QImage image = Symbols::pixmap(SymbolName::named(name), 24, 4, ink).toImage();
        const QRect rect = inked(image);
        EXPECT_EQ(image.size(), QSize(96, 96));
        EXPECT_GE(std::max(rect.width(), rect.height()), 56);
        EXPECT_TRUE(image.rect().adjusted(4, 4, -4, -4).contains(rect));
        EXPECT_LE((rect.center() - image.rect().center()).manhattanLength(), 8) << "off centre";
        seen.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
    }
    EXPECT_EQ(seen.size(), SymbolName::all.size());
}

TEST(SymbolsTest, AnUnknownNameEndsTheProgram)
{
    EXPECT_DEATH(static_cast<void>(SymbolName::named("folder.badge.minus")), "");
    EXPECT_EQ(SymbolName::named(std::string("house")).text(), "house");
}

TEST(SymbolsTest, PicturesHaveThePixelsOfTheScreen)
{
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const int pixels = qRound(16 * ratio);
        const QPixmap pixmap = Symbols::pixmap("house", 16, ratio, ink);
        EXPECT_EQ(pixmap.size(), QSize(pixels, pixels));
        EXPECT_EQ(pixmap.devicePixelRatio(), ratio);
        EXPECT_EQ(Symbols::icon("house").pixmap(QSize(16, 16), ratio).size(), QSize(pixels, pixels));
    }

    // A straight line of a symbol at 16 points is exactly one row of pixels, and two on a screen with twice as many.
    for (const int ratio : {1, 2}) {
        const QImage image = Symbols::pixmap("desktopcomputer", 16, ratio, ink).toImage();
        std::vector<int> column;
        for (int y = 2 * ratio; y < 4 * ratio; ++y) {
            column.push_back(image.pixelColor(image.width() / 2, y).alpha());
        }
        EXPECT_EQ(column, ratio == 1 ? (std::vector{255, 0}) : (std::vector{255, 255, 0, 0}));
    }
}

TEST(SymbolsTest, IconsTakeTheirColorFromThePaletteOfTheMoment)
{
    const QIcon icon = Symbols::icon("folder.fill");
    const QIcon secondary = Symbols::icon("folder.fill", Theme::textSecondary);
    const QIcon blue = Symbols::icon("folder.fill", Theme::blue);
    for (const QPalette& palette : {Palettes::light(), Palettes::dark()}) {
        QApplication::setPalette(palette);
        EXPECT_EQ(inkOf(icon), palette.color(QPalette::Active, QPalette::ButtonText));
        EXPECT_EQ(inkOf(icon, QIcon::Disabled), palette.color(QPalette::Disabled, QPalette::ButtonText));
        EXPECT_EQ(inkOf(icon, QIcon::Selected), palette.color(QPalette::Active, QPalette::HighlightedText));
        EXPECT_EQ(inkOf(secondary), Theme::textSecondary(palette));
        EXPECT_EQ(inkOf(blue), Theme::blue);
        EXPECT_LT(inkOf(blue, QIcon::Disabled).alphaF(), 0.5F);
    }
    QApplication::setPalette(QPalette());
}

TEST(SymbolsTest, AGradientRunsOverTheWholeSquare)
{
    const QImage image = Symbols::pixmap("folder.fill", 64, 1, Theme::scanGradient()).toImage();
    EXPECT_GT(image.pixelColor(8, 14).blue(), image.pixelColor(8, 14).red());
    EXPECT_GT(image.pixelColor(55, 50).red(), image.pixelColor(55, 50).blue());
}

TEST(SymbolsTest, PaintingCentresTheSymbolOnWholePixels)
{
    QImage canvas(60, 40, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    Symbols::paint(painter, QRectF(10.3, 5.4, 41, 17), "sidebar.leading", ink);
    painter.end();
    const QRect alone = inked(Symbols::pixmap("sidebar.leading", 17, 1, ink).toImage());
    EXPECT_EQ(inked(canvas), alone.translated(22, 5));
}

} // namespace morlaine
