#pragma once

#include <QObject>

#include <utility>

namespace morlaine {

/// An object that announces each change of its published properties before it happens. Belongs to the main thread.
class ObservableObject : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// A published property is about to change. Do not read properties in the slot; use a ChangeObserver.
    void objectWillChange();

protected:
    template <typename Property, typename Value>
    void publish(Property& property, Value&& value)
    {
        Q_EMIT objectWillChange();
        property = std::forward<Value>(value);
    }
};

} // namespace morlaine
