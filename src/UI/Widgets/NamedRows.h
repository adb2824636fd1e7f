#pragma once

#include <QWidget>

#include <utility>
#include <vector>

class QLabel;

namespace morlaine {

/// A widget that holds rows of a name and its value, each a label. Assistive programs meet it as a list of rows instead
/// of the labels.
class NamedRows : public QWidget {
    Q_OBJECT

public:
    explicit NamedRows(const QString& accessibleName, QWidget* parent = nullptr);

    /// The labels lie somewhere in this widget, and stay until `forgetRows`.
    void addRow(const QLabel& name, const QLabel& value) { m_rows.emplace_back(&name, &value); }
    void forgetRows();

    [[nodiscard]] const std::vector<std::pair<const QLabel*, const QLabel*>>& rows() const { return m_rows; }

Q_SIGNALS:
    void rowsForgotten();

private:
    std::vector<std::pair<const QLabel*, const QLabel*>> m_rows;
};

} // namespace morlaine
