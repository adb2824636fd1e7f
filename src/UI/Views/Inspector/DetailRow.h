#pragma once

#include "UI/Styles/TextStyles.h"

#include <QWidget>

class QLabel;

namespace morlaine {

class ElidingLabel;

/// A label and its value on one line, the value at the trailing edge. The layout does not depend on the value, so that
/// nothing moves when it changes. A long value continues in further lines if these are allowed.
class DetailRow final : public QWidget {
    Q_OBJECT

public:
    explicit DetailRow(const QString& label, int maxValueLines = 1, TextStyle valueStyle = TextStyle::subheadline,
                       QWidget* parent = nullptr);

    void setLabel(const QString& label);
    void setValue(const QString& value);

    [[nodiscard]] QString label() const;
    [[nodiscard]] QString value() const;

private:
    QLabel* m_label;
    ElidingLabel* m_value;
};

} // namespace morlaine
