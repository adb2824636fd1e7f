#include "UI/Widgets/SymbolImage.h"

#include <QEvent>
#include <QPainter>

namespace morlaine {

SymbolImage::SymbolImage(SymbolName name, int side, Theme::SystemColor color, QWidget* parent)
    : QWidget(parent)
    , m_name(name)
    , m_side(side)
    , m_systemColor(color)
{
    grow();
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

bool SymbolImage::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) {
        grow();
    }
    return QWidget::event(event);
}

void SymbolImage::grow()
{
    setFixedSize(sizeHint());
}

void SymbolImage::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    Symbols::paint(painter, rect(), m_name, m_color.isValid() ? m_color : m_systemColor(palette()));
}

} // namespace morlaine
