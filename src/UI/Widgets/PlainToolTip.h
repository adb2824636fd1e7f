#pragma once

#include <QString>
#include <QTextDocument>

namespace morlaine {

/// `text` such that a tool tip shows it as it stands, though it may look like markup: names of files are what anybody
/// has made them. Nor does it break lines, which it would in markup.
[[nodiscard]] inline QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text.toHtmlEscaped())
                                     : text;
}

} // namespace morlaine
