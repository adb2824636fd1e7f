#pragma once

#include <QObject>

#include <utility>

namespace morlaine {

/// An object with published properties, which it announces to change before they do. Belongs to the main thread.
class ObservableObject : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// A published property is about to change. Nobody acts on this at once: see ChangeObserver.
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
