#pragma once

#include "UI/Styles/Symbols.h"

#include <QPushButton>

namespace morlaine {

/// A push button in a column of actions. Icon and label are aligned to the leading edge. A label that is too wide is
/// elided and shown as the tooltip.
class ActionButton final : public QPushButton {
    Q_OBJECT

public:
    ActionButton(SymbolName symbol, const QString& label, QWidget* parent = nullptr);

    [[nodiscard]] SymbolName symbol() const { return m_symbol; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QSize sizeFor(const QString& label) const;
    [[nodiscard]] QString elidedLabel() const;

    const SymbolName m_symbol;
};

} // namespace morlaine
