#pragma once

#include <QAccessibleWidget>

#include <unordered_map>

namespace morlaine {

/// Something inside a widget that assistive programs meet though it is no widget of its own, such as a row that a list
/// paints. Main thread only.
class AccessibleItem : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleItem(QWidget& widget, QAccessible::Role role) : m_widget(widget), m_role(role) {}

    [[nodiscard]] bool isValid() const override { return true; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return m_role; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::State state() const override;
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QStringList actionNames() const override { return {}; }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }
    void doAction(const QString& name) final;

protected:
    // Only while it is valid.
    [[nodiscard]] virtual QString name() const = 0;
    [[nodiscard]] virtual QString value() const { return {}; } // told as the description, too
    [[nodiscard]] virtual QRect place() const = 0;             // in the widget
    virtual void act(const QString& /*action*/) {}             // one of `actionNames()`

private:
    QWidget& m_widget;
    const QAccessible::Role m_role;
};

/// A widget that assistive programs meet as a container of such items. Each is made when somebody first asks for it.
class AccessibleItems : public QAccessibleWidget {
public:
    AccessibleItems(QWidget& widget, QAccessible::Role role) : QAccessibleWidget(&widget, role) {}
    ~AccessibleItems() override;
    AccessibleItems(const AccessibleItems&) = delete;
    AccessibleItems& operator=(const AccessibleItems&) = delete;

    [[nodiscard]] int childCount() const override = 0;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;

protected:
    /// The item with that number, less than `childCount()`.
    [[nodiscard]] virtual QAccessibleInterface* makeItem(int index) const = 0;

    /// Those of before are gone: the numbers stand for others.
    void forgetItems() const;

private:
    mutable std::unordered_map<int, QAccessible::Id> m_items;
};

} // namespace morlaine
