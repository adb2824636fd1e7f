#pragma once

#include <QString>
#include <QTextDocument>

namespace morlaine {

/// `text` such that a tool tip shows it as it stands, though it may look like markup: names of files are what anybody
/// has made them.
[[nodiscard]] inline QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped()) : text;
}

} // namespace morlaine
