#include "UI/Views/SymbolImage.h"

#include <QPainter>

namespace morlaine {

SymbolImage::SymbolImage(SymbolName name, int side, Theme::SystemColor color, QWidget* parent)
    : QWidget(parent)
    , m_name(name)
    , m_color(color)
{
    setFixedSize(side, side);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SymbolImage::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    Symbols::paint(painter, rect(), m_name, m_color(palette()));
}

} // namespace morlaine
