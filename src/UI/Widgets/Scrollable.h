#pragma once

#include <QLayout>
#include <QScrollArea>

namespace morlaine {

/// Makes `content`, which has a layout, scroll in `area` if there is too little room. The area owns it and becomes
/// transparent.
inline void makeScrollable(QScrollArea& area, QWidget* content)
{
    area.setFrameShape(QFrame::NoFrame);
    area.setFocusPolicy(Qt::NoFocus);
    area.setWidgetResizable(true);
    // Otherwise content that grows while it is hidden is squeezed into the area.
    content->layout()->setSizeConstraint(QLayout::SetMinimumSize);
    area.setWidget(content);
    area.viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

/// The same in a new area.
inline QScrollArea* scrollable(QWidget* content)
{
    auto* area = new QScrollArea;
    makeScrollable(*area, content);
    return area;
}

} // namespace morlaine
