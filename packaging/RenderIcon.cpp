// Renders the application icon at one size: morlaine_render_icon ICON.svg PIXELS ICON.png

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char* argv[])
{
    const int side = argc == 4 ? QByteArray(argv[2]).toInt() : 0;
    if (side <= 0) {
        std::fputs("usage: morlaine_render_icon ICON.svg PIXELS ICON.png\n", stderr);
        return 2;
    }
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(QString::fromLocal8Bit(argv[1]));
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    if (!renderer.isValid() || !image.save(QString::fromLocal8Bit(argv[3]))) {
        std::fprintf(stderr, "%s cannot be rendered to %s\n", argv[1], argv[3]);
        return 1;
    }
    return 0;
}
