#include "UI/Widgets/AccessibleItems.h"

#include <QWidget>
#include <QWindow>

namespace morlaine {

QWindow* AccessibleItem::window() const
{
    return m_widget.window()->windowHandle();
}

QAccessibleInterface* AccessibleItem::parent() const
{
    return QAccessible::queryAccessibleInterface(&m_widget);
}

QString AccessibleItem::text(QAccessible::Text kind) const
{
    switch (isValid() ? kind : QAccessible::UserText) {
    case QAccessible::Name:
        return name();
    case QAccessible::Description:
    case QAccessible::Value:
        return value();
    default:
        return {};
    }
}

QRect AccessibleItem::rect() const
{
    if (!isValid()) {
        return {};
    }
    const QRect shown = place() & m_widget.rect();
    return {m_widget.mapToGlobal(shown.topLeft()), shown.size()};
}

QAccessible::State AccessibleItem::state() const
{
    QAccessible::State state;
    state.invalid = !isValid();
    state.invisible = !m_widget.isVisible();
    return state;
}

void* AccessibleItem::interface_cast(QAccessible::InterfaceType type)
{
    const bool acts = type == QAccessible::ActionInterface && !actionNames().isEmpty();
    return acts ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

void AccessibleItem::doAction(const QString& name)
{
    if (isValid() && actionNames().contains(name)) {
        act(name);
    }
}

AccessibleItems::~AccessibleItems()
{
    forgetItems();
}

/// Qt owns what it is given here and hands it out by its number.
QAccessibleInterface* AccessibleItems::child(int index) const
{
    if (index < 0 || index >= childCount()) {
        return nullptr;
    }
    const auto [known, isNew] = m_items.try_emplace(index);
    if (isNew) {
        known->second = QAccessible::registerAccessibleInterface(makeItem(index));
    }
    return QAccessible::accessibleInterface(known->second);
}

int AccessibleItems::indexOfChild(const QAccessibleInterface* child) const
{
    for (const auto& [index, id] : m_items) {
        if (QAccessible::accessibleInterface(id) == child) {
            return index;
        }
    }
    return -1;
}

QAccessibleInterface* AccessibleItems::childAt(int x, int y) const
{
    for (int index = 0; index < childCount(); ++index) {
        if (QAccessibleInterface* const item = child(index); item->rect().contains(x, y)) {
            return item;
        }
    }
    return nullptr;
}

void AccessibleItems::forgetItems() const
{
    for (const auto& [index, id] : m_items) {
        QAccessible::deleteAccessibleInterface(id);
    }
    m_items.clear();
}

} // namespace morlaine
