#pragma once

#include <QWidget>

namespace morlaine {

/// A backing with round corners that sets a group of controls off from its panel: the background of controls at an
/// opacity (0...1), which follows the appearance.
class RoundedBox : public QWidget {
    Q_OBJECT

public:
    explicit RoundedBox(double opacity, double cornerRadius, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const double m_opacity;
    const double m_cornerRadius;
};

} // namespace morlaine
