#include "UI/Styles/Symbols.h"

#include "UI/Styles/Palettes.h"

#include <QApplication>
#include <QDir>

#include <gmock/gmock.h>

namespace morlaine {

namespace {

constexpr QColor ink(200, 10, 20);

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
    QStringList names;
    for (const std::string_view name : SymbolName::all) {
        names.append(QString::fromStdString(std::string(name) + ".svg"));
        EXPECT_GT(inkOf(Symbols::pixmap(SymbolName::named(name), 24, 4, ink)).alpha(), 200) << name;
    }
    names.sort();
    EXPECT_EQ(names, QDir(QStringLiteral(":/symbols")).entryList({}, QDir::Files, QDir::Name));
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

    // A straight line of a symbol at 16 points is exactly one row of pixels, and two rows at a ratio of 2.
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

} // namespace morlaine
