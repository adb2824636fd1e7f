#pragma once

#include <QWidget>

namespace morlaine {

/// A background with round corners for a group of controls. Its colour is that of controls at an opacity (0...1) and
/// follows the appearance.
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
