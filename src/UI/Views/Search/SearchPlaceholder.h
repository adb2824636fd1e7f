#pragma once

#include "UI/Styles/Symbols.h"

#include <QScrollArea>

namespace morlaine {

class SymbolImage;

/// A symbol, a headline and an optional caption, centred in an area without a list. If the area is too low, the symbol
/// is hidden and, if this does not suffice, the texts scroll.
class SearchPlaceholder final : public QScrollArea {
    Q_OBJECT

public:
    /// `captionOrNone` may be empty.
    SearchPlaceholder(SymbolName symbol, const QString& headline, const QString& captionOrNone,
                      QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    SymbolImage* m_symbol;
};

} // namespace morlaine
