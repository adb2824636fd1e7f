#include "UI/Widgets/SymbolImage.h"

#include <QPainter>

namespace morlaine {

SymbolImage::SymbolImage(SymbolName name, int side, Theme::SystemColor color, QWidget* parent)
    : QWidget(parent)
    , m_name(name)
    , m_side(side)
    , m_systemColor(color)
{
    setFixedSize(side, side);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SymbolImage::setSymbol(SymbolName name, const QColor& color)
{
    if (m_name.text() != name.text() || m_color != color) {
        m_name = name;
        m_color = color;
        update();
    }
}

void SymbolImage::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    Symbols::paint(painter, rect(), m_name, m_color.isValid() ? m_color : m_systemColor(palette()));
}

} // namespace morlaine
