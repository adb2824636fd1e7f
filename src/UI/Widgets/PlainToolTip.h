#pragma once

#include <QString>
#include <QTextDocument>

namespace morlaine {

/// Escapes `text` for a tool tip: a file name may look like markup. Also prevents line breaks.
[[nodiscard]] inline QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text.toHtmlEscaped())
                                     : text;
}

} // namespace morlaine
