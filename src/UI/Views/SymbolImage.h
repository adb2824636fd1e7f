#pragma once

#include "UI/Styles/Symbols.h"

#include <QWidget>

namespace morlaine {

/// A symbol as a picture of a fixed size among other widgets; decoration, which screen readers pass over.
class SymbolImage final : public QWidget {
    Q_OBJECT

public:
    /// `side` in points.
    SymbolImage(SymbolName name, int side, Theme::SystemColor color, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SymbolName m_name;
    Theme::SystemColor m_color;
};

} // namespace morlaine
