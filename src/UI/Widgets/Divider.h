#pragma once

#include "UI/Styles/Theme.h"

#include <QPainter>
#include <QWidget>

namespace morlaine {

/// A horizontal hairline between panels.
class Divider final : public QWidget {
public:
    explicit Divider(QWidget* parent = nullptr) : QWidget(parent) { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), Theme::separator(palette())); }
};

} // namespace morlaine
