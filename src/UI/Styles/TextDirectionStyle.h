#pragma once

#include <QProxyStyle>

namespace morlaine {

/// Another style whose texts keep their own direction in a window that is read from right to left: a full stop stays at
/// the end.
class TextDirectionStyle : public QProxyStyle {
    Q_OBJECT

public:
    using QProxyStyle::QProxyStyle;

    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool isEnabled,
                      const QString& text, QPalette::ColorRole role) const override;
};

} // namespace morlaine
