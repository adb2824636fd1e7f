#include "UI/Widgets/ElidingLabel.h"

#include "UI/Widgets/PlainToolTip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace morlaine {

namespace {

constexpr char16_t ellipsis = u'\u2026';
constexpr char16_t noBreakSpace = u'\u00A0';

/// `text` with the same length, in which no line ends inside a quantity such as "1.2 GB", "3 folders" or "Zero KB",
/// unless it is wider than a line.
QString withWholeQuantities(QString text, const QFontMetrics& metrics, int width)
{
    qsizetype start = 0;
    for (qsizetype space = text.indexOf(u' '); space > 0; space = text.indexOf(u' ', start)) {
        qsizetype end = text.indexOf(u' ', space + 1);
        end = end < 0 ? text.size() : end;
        const QStringView next = QStringView(text).sliced(space + 1, end - space - 1);
        const bool isQuantity = next == u"KB" || (text[space - 1].isDigit() && !next.isEmpty() && next[0].isLetter());
        if (isQuantity && metrics.horizontalAdvance(text.sliced(start, end - start)) <= width) {
            text[space] = noBreakSpace;
        }
        start = space + 1;
    }
    return text;
}

} // namespace

QStringList elidedLines(const QString& text, const QFont& font, int width, int maxLines)
{
    const QFontMetrics metrics(font);
    if (maxLines == 1) {
        return {metrics.elidedText(text, Qt::ElideMiddle, width)};
    }
    QTextLayout layout(withWholeQuantities(text, metrics, width), font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);

    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const bool isLast = lines.size() == maxLines - 1;
        const QString part = text.mid(line.textStart(), isLast ? -1 : line.textLength());
        lines.append(isLast ? metrics.elidedText(part, Qt::ElideMiddle, width) : part);
        if (isLast) {
            break;
        }
    }
    layout.endLayout();
    return lines;
}

ElidingLabel::ElidingLabel(TextStyle style, Theme::SystemColor color, int maxLines, QWidget* parent)
    : QLabel(parent)
    , m_style(style)
    , m_color(color)
    , m_maxLines(maxLines)
{
    setTextFormat(Qt::PlainText);
    applyFont();
    setWordWrap(maxLines > 1);
}

void ElidingLabel::applyFont()
{
    setFont(m_weight ? TextStyles::font(m_style, *m_weight) : TextStyles::font(m_style));
}

void ElidingLabel::setWeight(QFont::Weight weight)
{
    m_weight = weight;
    applyFont();
}

ElidingLabel::Measured& ElidingLabel::measured() const
{
    if (!m_measured || m_measured->text != text() || m_measured->font != font()) {
        m_measured = {text(), font(), fontMetrics().horizontalAdvance(text()), std::nullopt, {}};
    }
    return *m_measured;
}

const QStringList& ElidingLabel::linesIn(int width) const
{
    Measured& known = measured();
    if (known.width != width) {
        known.lines = elidedLines(known.text, known.font, width, m_maxLines);
        known.width = width;
    }
    return known.lines;
}

QSize ElidingLabel::sizeHint() const
{
    return {measured().textWidth + 1, heightOf(1)};
}

QSize ElidingLabel::minimumSizeHint() const
{
    const int letters = fontMetrics().averageCharWidth() * 3;
    return {letters + fontMetrics().horizontalAdvance(QChar(ellipsis)), heightOf(1)};
}

int ElidingLabel::heightForWidth(int width) const
{
    return m_maxLines == 1 ? -1 : heightOf(linesIn(width).size());
}

bool ElidingLabel::isElided() const
{
    return linesIn(width()).join(QString()) != text();
}

bool ElidingLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        showWholeText(static_cast<QHelpEvent*>(event)->globalPos());
        return true;
    }
    switch (event->type()) {
    case QEvent::ApplicationFontChange:
        m_measured.reset();
        applyFont();
        break;
    case QEvent::FontChange:
    case QEvent::ScreenChangeInternal:
    case QEvent::StyleChange:
        m_measured.reset();
        break;
    default:
        break;
    }
    return QLabel::event(event);
}

void ElidingLabel::showWholeText(const QPoint& position)
{
    QToolTip::showText(position, isElided() ? plainToolTip(text()) : QString(), this);
}

void ElidingLabel::paintEvent(QPaintEvent* /*event*/)
{
    const QStringList lines = linesIn(width());
    const QSize block(width(), heightOf(lines.size()));
    QRect area(QPoint(0, 0), block);
    if (alignment().testFlag(Qt::AlignVCenter)) {
        area.moveTop((height() - block.height()) / 2);
    }
    const auto horizontal = QStyle::visualAlignment(layoutDirection(), alignment()) & Qt::AlignHorizontal_Mask;
    const int direction = text().isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;

    QPainter painter(this);
    painter.setPen(m_color(palette()));
    for (const QString& line : lines) {
        painter.drawText(area, static_cast<int>(horizontal | Qt::AlignTop) | Qt::TextSingleLine | direction,
                         line.trimmed());
        area.setTop(area.top() + lineSpacing());
    }
}

int ElidingLabel::heightOf(qsizetype lineCount) const
{
    return lineHeight() + static_cast<int>(std::max<qsizetype>(lineCount, 1) - 1) * lineSpacing();
}

/// Lines are painted at whole points. Qt rounds the height to the nearest point, which may cut descenders.
int ElidingLabel::lineHeight() const
{
    const QFontMetricsF metrics(font());
    return static_cast<int>(std::ceil(metrics.ascent()) + std::ceil(metrics.descent()));
}

int ElidingLabel::lineSpacing() const
{
    return std::max(lineHeight(), fontMetrics().lineSpacing());
}

} // namespace morlaine
