#pragma once

#include <QScrollArea>

namespace morlaine {

/// Makes `content` scroll if there is too little room. The scroll area owns it and is transparent.
inline QScrollArea* scrollable(QWidget* content)
{
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(content);
    area->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    return area;
}

} // namespace morlaine
