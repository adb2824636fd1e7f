#include "UI/Widgets/NamedRows.h"

#include "UI/Widgets/AccessibleItems.h"
#include "UI/Widgets/InstallAccessible.h"

#include <QLabel>

namespace morlaine {

namespace {

class Row final : public AccessibleItem {
public:
    Row(NamedRows& widget, const QLabel& nameLabel, const QLabel& valueLabel)
        : AccessibleItem(widget, QAccessible::ListItem)
        , m_widget(widget)
        , m_name(nameLabel)
        , m_value(valueLabel)
    {
    }

protected:
    QString name() const override { return m_name.text(); }
    QString value() const override { return m_value.text(); }
    QRect place() const override { return placeOf(m_name) | placeOf(m_value); }

private:
    QRect placeOf(const QLabel& label) const { return {label.mapTo(&m_widget, QPoint()), label.size()}; }

    NamedRows& m_widget;
    const QLabel& m_name;
    const QLabel& m_value;
};

class Rows final : public AccessibleItems {
public:
    explicit Rows(NamedRows& widget) : AccessibleItems(widget, QAccessible::List), m_widget(widget)
    {
        m_forgotten = QObject::connect(&widget, &NamedRows::rowsForgotten, &widget, [this] { forgetItems(); });
    }
    ~Rows() override { QObject::disconnect(m_forgotten); }
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;

    int childCount() const override { return static_cast<int>(m_widget.rows().size()); }

protected:
    QAccessibleInterface* makeItem(int index) const override
    {
        const auto& [name, value] = m_widget.rows()[static_cast<std::size_t>(index)];
        return new Row(m_widget, *name, *value);
    }

private:
    NamedRows& m_widget;
    QMetaObject::Connection m_forgotten;
};

} // namespace

NamedRows::NamedRows(const QString& accessibleName, QWidget* parent) : QWidget(parent)
{
    installAccessible<Rows, NamedRows>();
    setAccessibleName(accessibleName);
}

void NamedRows::forgetRows()
{
    m_rows.clear();
    Q_EMIT rowsForgotten();
}

} // namespace morlaine
