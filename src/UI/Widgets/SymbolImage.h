#pragma once

#include "UI/Styles/Symbols.h"

#include <QWidget>

namespace morlaine {

/// A symbol of `side` by `side` points, more with large fonts, in a system colour or a fixed one. It is invisible to
/// assistive technology: the text beside it is read.
class SymbolImage final : public QWidget {
    Q_OBJECT

public:
    SymbolImage(SymbolName name, int side, Theme::SystemColor color, QWidget* parent = nullptr);

    void setSymbol(SymbolName name, const QColor& color);

    [[nodiscard]] SymbolName name() const { return m_name; }
    [[nodiscard]] QSize sizeHint() const override { return {Symbols::grown(m_side), Symbols::grown(m_side)}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void grow();

    SymbolName m_name;
    const int m_side;
    const Theme::SystemColor m_systemColor;
    QColor m_color; // invalid if a system colour is used
};

} // namespace morlaine
