#include "UI/Views/Sidebar/SidebarAccessibility.h"

#include "UI/Views/Sidebar/PlaceRow.h"
#include "UI/Views/Sidebar/RecentScanDelegate.h"
#include "UI/Views/Sidebar/RecentScansList.h"
#include "UI/Widgets/AccessibleItems.h"
#include "UI/Widgets/InstallAccessible.h"

namespace morlaine::SidebarAccessibility {

namespace {

class Place final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit Place(PlaceRow& row) : QAccessibleWidget(&row, QAccessible::Button), m_row(row) {}

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.pressed = m_row.isDown();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface) {
            return m_row.percentUsed() ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
        }
        return QAccessibleWidget::interface_cast(type);
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_row.isEnabled()) {
            names.prepend(pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction()) {
            m_row.click();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

    QVariant currentValue() const override { return m_row.percentUsed().value_or(0); }
    QVariant minimumValue() const override { return 0.0; }
    QVariant maximumValue() const override { return 100.0; }
    QVariant minimumStepSize() const override { return 0.0; }
    void setCurrentValue(const QVariant& /*value*/) override {}

private:
    PlaceRow& m_row;
};

/// The trash can in a row.
class Trash final : public AccessibleItem {
public:
    Trash(RecentScansList& list, int row, AccessibleItem& parent)
        : AccessibleItem(list, QAccessible::Button)
        , m_list(list)
        , m_row(row)
        , m_parent(parent)
    {
    }

    QAccessibleInterface* parent() const override { return &m_parent; }
    QStringList actionNames() const override { return {pressAction()}; }

protected:
    QString name() const override { return RecentScansList::removeText(); }
    QRect place() const override
    {
        return RecentScanDelegate::trashRect(m_list.rectOf(m_row), m_list.layoutDirection());
    }
    void act(const QString& /*action*/) override { m_list.remove(m_row); }

private:
    RecentScansList& m_list;
    const int m_row;
    AccessibleItem& m_parent;
};

class Scan final : public AccessibleItem {
public:
    Scan(RecentScansList& list, int row) : AccessibleItem(list, QAccessible::ListItem), m_list(list), m_row(row) {}
    ~Scan() override
    {
        if (m_trash != 0) {
            QAccessible::deleteAccessibleInterface(m_trash);
        }
    }
    Scan(const Scan&) = delete;
    Scan& operator=(const Scan&) = delete;

    int childCount() const override { return 1; }

    QAccessibleInterface* child(int index) const override
    {
        if (index != 0) {
            return nullptr;
        }
        if (m_trash == 0) {
            m_trash = QAccessible::registerAccessibleInterface(new Trash(m_list, m_row, const_cast<Scan&>(*this)));
        }
        return QAccessible::accessibleInterface(m_trash);
    }

    int indexOfChild(const QAccessibleInterface* item) const override { return item == child(0) ? 0 : -1; }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        return child(0)->rect().contains(x, y) ? child(0) : nullptr;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = AccessibleItem::state();
        state.focusable = true;
        state.focused = m_list.hasFocus() && m_list.currentIndex().row() == m_row;
        return state;
    }

    QStringList actionNames() const override { return {pressAction()}; }

protected:
    QString name() const override { return m_list.spokenText(m_row); }
    QRect place() const override { return m_list.rectOf(m_row); }
    void act(const QString& /*action*/) override { m_list.open(m_row); }

private:
    RecentScansList& m_list;
    const int m_row;
    mutable QAccessible::Id m_trash = 0;
};

class Scans final : public AccessibleItems {
public:
    explicit Scans(RecentScansList& list) : AccessibleItems(list, QAccessible::List), m_list(list)
    {
        m_reset = QObject::connect(list.model(), &QAbstractItemModel::modelReset, &list, [this] { announceOthers(); });
    }
    ~Scans() override { QObject::disconnect(m_reset); }
    Scans(const Scans&) = delete;
    Scans& operator=(const Scans&) = delete;

    int childCount() const override { return m_list.model()->rowCount(); }

    QAccessibleInterface* focusChild() const override
    {
        return m_list.hasFocus() ? child(m_list.currentIndex().row()) : nullptr;
    }

protected:
    QAccessibleInterface* makeItem(int index) const override { return new Scan(m_list, index); }

private:
    void announceOthers() const
    {
        forgetItems();
        QAccessibleEvent event(&m_list, QAccessible::ObjectReorder);
        QAccessible::updateAccessibility(&event);
    }

    RecentScansList& m_list;
    QMetaObject::Connection m_reset;
};

} // namespace

void install()
{
    installAccessible<Place, PlaceRow>();
    installAccessible<Scans, RecentScansList>();
}

} // namespace morlaine::SidebarAccessibility
