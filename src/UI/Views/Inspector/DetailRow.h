#pragma once

#include "UI/Styles/TextStyles.h"
#include "UI/Widgets/LabelledValue.h"

namespace morlaine {

/// A row of the inspector. A long value continues in further lines if these are allowed.
class DetailRow final : public LabelledValue {
    Q_OBJECT

public:
    explicit DetailRow(const QString& label, int maxValueLines = 1, TextStyle valueStyle = TextStyle::subheadline,
                       QWidget* parent = nullptr);

    void setLabel(const QString& label);
    void setValue(const QString& value);

    [[nodiscard]] QString label() const;
    [[nodiscard]] QString value() const;

private:
    DetailRow(ElidingLabel* label, ElidingLabel* value, QWidget* parent);

    ElidingLabel* const m_label;
    ElidingLabel* const m_value;
};

} // namespace morlaine
