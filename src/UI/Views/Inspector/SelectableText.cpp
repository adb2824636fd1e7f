#include "UI/Views/Inspector/SelectableText.h"

#include "UI/Styles/LeadingEdge.h"
#include "Utilities/ShownText.h"

#include <QMimeData>
#include <QTextDocument>
#include <QWheelEvent>

#include <cmath>
#include <memory>

namespace morlaine {

SelectableText::SelectableText(const QString& accessibleName, TextStyle style, QWidget* parent)
    : QTextEdit(parent)
    , m_style(style)
{
    setFont(TextStyles::font(style));
    setReadOnly(true);
    setAcceptRichText(false);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QTextOption option;
    option.setAlignment(leadingEdge());
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDefaultTextOption(option);
    setAccessibleName(accessibleName);

    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(0);

    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void SelectableText::setPath(const QString& path)
{
    if (path != m_path) {
        m_path = path;
        setPlainText(shownPath(path));
        updateGeometry();
    }
}

QMimeData* SelectableText::createMimeDataFromSelection() const
{
    const QTextCursor selection = textCursor();
    auto* copied = new QMimeData;
    copied->setText(exactPartOfPath(m_path, selection.selectionStart(), selection.selectionEnd()));
    return copied;
}

int SelectableText::heightForWidth(int width) const
{
    QTextDocument& laidOut = *document();
    if (laidOut.textWidth() == width) {
        return static_cast<int>(std::ceil(laidOut.size().height()));
    }
    const std::unique_ptr<QTextDocument> copy(laidOut.clone());
    copy->setTextWidth(width);
    return static_cast<int>(std::ceil(copy->size().height()));
}

QSize SelectableText::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 24, heightForWidth(width())};
}

QSize SelectableText::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 8, fontMetrics().height()};
}

bool SelectableText::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) {
        setFont(TextStyles::font(m_style));
        updateGeometry();
    }
    return QTextEdit::event(event);
}

void SelectableText::wheelEvent(QWheelEvent* event)
{
    event->ignore(); // leaves scrolling to the area around it
}

} // namespace morlaine
