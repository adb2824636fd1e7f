#include "UI/Styles/VisualEffectWidget.h"

#include "UI/Styles/Theme.h"

#include <QPaintEvent>
#include <QPainter>

namespace morlaine::Theme {

VisualEffectWidget* VisualEffectView::make(QWidget* parent) const
{
    return new VisualEffectWidget(*this, parent);
}

void VisualEffectView::update(VisualEffectWidget& widget) const
{
    widget.setEffect(*this);
}

VisualEffectWidget::VisualEffectWidget(VisualEffectView effect, QWidget* parent) : QWidget(parent), m_effect(effect)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void VisualEffectWidget::setEffect(VisualEffectView effect)
{
    m_effect = effect;
    update();
}

void VisualEffectWidget::paintEvent(QPaintEvent* event)
{
    QPalette active = palette();
    active.setCurrentColorGroup(QPalette::Active);
    QPainter(this).fillRect(event->rect(), panelBackground(active));
}

} // namespace morlaine::Theme
