#include "UI/Views/Inspector/DetailRow.h"

#include "UI/Widgets/ElidingLabel.h"

namespace morlaine {

namespace {

constexpr int mostLabelLines = 2;

} // namespace

DetailRow::DetailRow(const QString& label, int maxValueLines, TextStyle valueStyle, QWidget* parent)
    : DetailRow(new ElidingLabel(TextStyle::subheadline, Theme::textSecondary, mostLabelLines),
                new ElidingLabel(valueStyle, Theme::textPrimary, maxValueLines), parent)
{
    setLabel(label);
}

DetailRow::DetailRow(ElidingLabel* label, ElidingLabel* value, QWidget* parent)
    : LabelledValue(Kind::changing, label, value, parent)
    , m_label(label)
    , m_value(value)
{
}

void DetailRow::setLabel(const QString& label)
{
    m_label->setText(label);
    m_value->setAccessibleDescription(label);
    arrange();
}

void DetailRow::setValue(const QString& value)
{
    m_value->setText(value);
    if (m_value->wordWrap()) {
        arrange();
    }
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
