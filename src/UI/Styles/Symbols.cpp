#include "UI/Styles/Symbols.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>
#include <functional>
#include <map>
#include <memory>

namespace morlaine::Symbols {

namespace {

QString fileOf(SymbolName name)
{
    const std::string_view text = name.text();
    return QStringLiteral(":/symbols/%1.svg").arg(QLatin1StringView(text.data(), static_cast<qsizetype>(text.size())));
}

QSvgRenderer& rendererOf(SymbolName name)
{
    static std::map<std::string_view, std::unique_ptr<QSvgRenderer>> renderers;
    std::unique_ptr<QSvgRenderer>& renderer = renderers[name.text()];
    if (!renderer) {
        renderer = std::make_unique<QSvgRenderer>(fileOf(name));
    }
    return *renderer;
}

/// The shape of the symbol on a square of `side` pixels. Small ones are drawn larger and averaged: Qt's fast path for
/// lines of up to one pixel blurs or breaks them.
QImage shape(SymbolName name, int side)
{
    const int factor = side < 64 ? 4 : 1;
    QImage image(side * factor, side * factor, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    rendererOf(name).render(&painter, QRectF(image.rect()));
    painter.end();
    return image.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage render(SymbolName name, int side, const QBrush& fill)
{
    QImage image = shape(name, side);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), fill);
    return image;
}

QString cacheKey(SymbolName name, int side, const QColor& color)
{
    return QStringLiteral("%1/%2/%3").arg(fileOf(name)).arg(side).arg(color.rgba(), 0, 16);
}

QPixmap rendered(SymbolName name, int side, const QBrush& fill)
{
    if (fill.style() != Qt::SolidPattern) {
        return QPixmap::fromImage(render(name, side, fill));
    }
    const QString key = cacheKey(name, side, fill.color());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap::fromImage(render(name, side, fill));
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

using ColorOfMode = std::function<QColor(QIcon::Mode mode)>;

QColor systemColor(Theme::SystemColor color, QIcon::Mode mode)
{
    QPalette palette = QGuiApplication::palette();
    palette.setCurrentColorGroup(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active);
    return mode == QIcon::Selected ? palette.color(QPalette::HighlightedText) : color(palette);
}

QColor fixedColor(const QColor& color, QIcon::Mode mode)
{
    constexpr double faded = 0.4;
    return mode == QIcon::Disabled ? Theme::withOpacity(color, color.alphaF() * faded) : color;
}

class SymbolEngine final : public QIconEngine {
public:
    SymbolEngine(SymbolName name, ColorOfMode color) : m_name(name), m_color(std::move(color)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        Symbols::paint(*painter, rect, m_name, m_color(mode));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new SymbolEngine(*this); }

private:
    SymbolName m_name;
    ColorOfMode m_color;
};

} // namespace

QIcon icon(SymbolName name, Theme::SystemColor color)
{
    return QIcon(new SymbolEngine(name, [color](QIcon::Mode mode) { return systemColor(color, mode); }));
}

QIcon icon(SymbolName name, const QColor& color)
{
    return QIcon(new SymbolEngine(name, [color](QIcon::Mode mode) { return fixedColor(color, mode); }));
}

void paint(QPainter& painter, const QRectF& rect, SymbolName name, const QBrush& fill)
{
    const double ratio = painter.device()->devicePixelRatioF();
    const int side = static_cast<int>(std::floor(std::min(rect.width(), rect.height())));
    const QPointF corner = rect.center() - QPointF(side, side) / 2;
    const QPointF onPixel(std::round(corner.x() * ratio) / ratio, std::round(corner.y() * ratio) / ratio);
    painter.drawPixmap(onPixel, pixmap(name, side, ratio, fill));
}

QPixmap pixmap(SymbolName name, int side, double devicePixelRatio, const QBrush& fill)
{
    const int pixels = static_cast<int>(std::lround(side * devicePixelRatio));
    if (pixels <= 0) {
        return {};
    }
    QPixmap pixmap = rendered(name, pixels, fill);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

int sideBeside(const QFont& font)
{
    constexpr double besidePixelSize = 1.25;
    constexpr int least = 12;
    return std::max(least, 2 * static_cast<int>(std::lround(QFontInfo(font).pixelSize() * besidePixelSize / 2)));
}

int grown(int side)
{
    constexpr double usualPixelSize = 40.0 / 3; // of ten points
    const double growth = QFontInfo(QGuiApplication::font()).pixelSize() / usualPixelSize;
    return std::max(side, 2 * static_cast<int>(std::lround(side * growth / 2)));
}

QIcon applicationIcon()
{
    QSvgRenderer renderer(QStringLiteral(":/icon/com.morlaine.Morlaine.svg"));
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace morlaine::Symbols
