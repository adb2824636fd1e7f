#include "UI/Widgets/LabelledValue.h"

#include "UI/Widgets/ElidingLabel.h"
#include "UI/Widgets/RowPainting.h"

#include <QEvent>
#include <QStyle>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int gap = static_cast<int>(Theme::paddingSmall);
constexpr int leastLetters = 8; // of an elided label

int heightOf(const ElidingLabel& text, int width)
{
    return text.wordWrap() ? text.heightForWidth(width) : text.sizeHint().height();
}

} // namespace

LabelledValue::LabelledValue(Kind kind, ElidingLabel* label, ElidingLabel* value, QWidget* parent)
    : QWidget(parent)
    , m_kind(kind)
    , m_label(label)
    , m_value(value)
{
    m_label->setParent(this);
    m_value->setParent(this);
    m_value->setAlignment(Qt::AlignRight | Qt::AlignTop);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int LabelledValue::leastLabelWidth() const
{
    const int whole = m_label->sizeHint().width();
    const int least = m_label->fontMetrics().averageCharWidth() * leastLetters;
    return m_kind == Kind::changing ? whole : std::min(whole, least);
}

int LabelledValue::leastValueWidth() const
{
    return m_kind == Kind::changing ? usualValueWidth() : m_value->sizeHint().width();
}

/// Measured once for a font, since layouts ask many times.
int LabelledValue::usualValueWidth() const
{
    if (m_usualValueWidth == 0 || m_usualFont != m_value->font()) {
        const QString longestUsual = QStringLiteral("888.88 GB");
        m_usualFont = m_value->font();
        m_usualValueWidth = lineWidth(longestUsual, m_usualFont);
    }
    return m_usualValueWidth;
}

LabelledValue::Places LabelledValue::placesIn(int width) const
{
    const int roomBeside = width - gap - leastValueWidth();
    if (leastLabelWidth() <= roomBeside) {
        const int labelWidth = std::min(m_label->sizeHint().width(), roomBeside);
        const int valueLeft = labelWidth + gap;
        return {{0, 0, labelWidth, heightOf(*m_label, labelWidth)},
                {valueLeft, 0, width - valueLeft, heightOf(*m_value, width - valueLeft)}};
    }
    const int labelHeight = heightOf(*m_label, width);
    return {{0, 0, width, labelHeight}, {0, labelHeight, width, heightOf(*m_value, width)}};
}

QSize LabelledValue::sizeHint() const
{
    const int width = m_label->sizeHint().width() + gap + leastValueWidth();
    return {width, heightForWidth(width)};
}

QSize LabelledValue::minimumSizeHint() const
{
    return {std::max(m_label->minimumSizeHint().width(), m_value->minimumSizeHint().width()),
            m_value->minimumSizeHint().height()};
}

int LabelledValue::heightForWidth(int width) const
{
    const auto [label, value] = placesIn(width);
    return label.united(value).height();
}

void LabelledValue::arrange()
{
    const auto [label, value] = placesIn(width());
    m_label->setGeometry(QStyle::visualRect(layoutDirection(), rect(), label));
    m_value->setGeometry(QStyle::visualRect(layoutDirection(), rect(), value));
    updateGeometry();
}

/// The labels ask for another layout when their font changes.
bool LabelledValue::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest) {
        arrange();
    }
    return QWidget::event(event);
}

void LabelledValue::resizeEvent(QResizeEvent* /*event*/)
{
    arrange();
}

} // namespace morlaine
