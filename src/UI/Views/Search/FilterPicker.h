#pragma once

#include <QComboBox>

namespace morlaine {

/// A picker of one search criterion. It may be narrower than its entries: the current one is then elided and shown as
/// the tooltip. Screen readers read the current entry as its name and a hidden label as its title. Escape closes the
/// open list and does nothing else.
class FilterPicker final : public QComboBox {
    Q_OBJECT

public:
    explicit FilterPicker(const QString& title, QWidget* parent);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QString elidedText(const QStyleOptionComboBox& option) const;
};

} // namespace morlaine
