#pragma once

#include <QLayout>
#include <QScrollArea>

namespace morlaine {

/// Makes `content`, which has a layout, scroll if there is too little room. The scroll area owns it and is transparent.
inline QScrollArea* scrollable(QWidget* content)
{
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    // Otherwise content that grows while it is hidden is squeezed into the area.
    content->layout()->setSizeConstraint(QLayout::SetMinimumSize);
    area->setWidget(content);
    area->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    return area;
}

} // namespace morlaine
