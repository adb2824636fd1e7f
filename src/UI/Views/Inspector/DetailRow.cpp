#include "UI/Views/Inspector/DetailRow.h"

#include "UI/Styles/StyledLabel.h"
#include "UI/Widgets/ElidingLabel.h"

#include <QHBoxLayout>

namespace morlaine {

DetailRow::DetailRow(const QString& label, int maxValueLines, TextStyle valueStyle, QWidget* parent)
    : QWidget(parent)
    , m_label(new StyledLabel(TextStyle::subheadline, Theme::textSecondary))
    , m_value(new ElidingLabel(valueStyle, Theme::textPrimary, maxValueLines))
{
    QSizePolicy policy = m_value->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored);
    m_value->setSizePolicy(policy);
    m_label->setWordWrap(true);
    m_value->setAlignment(Qt::AlignRight | Qt::AlignTop);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(static_cast<int>(Theme::paddingSmall));
    layout->addWidget(m_label, 0, Qt::AlignTop);
    layout->addWidget(m_value, 1);
    setLabel(label);
}

void DetailRow::setLabel(const QString& label)
{
    m_label->setText(label);
    m_value->setAccessibleDescription(label);
}

void DetailRow::setValue(const QString& value)
{
    constexpr int leastDigits = 8;
    m_value->setMinimumWidth(m_value->fontMetrics().averageCharWidth() * leastDigits);
    m_value->setText(value);
}

QString DetailRow::label() const
{
    return m_label->text();
}

QString DetailRow::value() const
{
    return m_value->text();
}

} // namespace morlaine
