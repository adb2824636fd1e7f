#pragma once

#include "UI/Styles/Symbols.h"

#include <QWidget>

namespace morlaine {

class SymbolImage;

/// A symbol, a headline and perhaps a caption in the middle of an area that has no list to show. Fits into any height:
/// where room is short the symbol goes first.
class SearchPlaceholder final : public QWidget {
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
