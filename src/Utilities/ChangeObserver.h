#pragma once

#include "Utilities/ObservableObject.h"

#include <functional>
#include <utility>

namespace morlaine {

/// Calls `update` once after control has returned to the event loop, however many changes the observed object has
/// announced by then. Does not call it at construction. Stops when this object or the observed object is destroyed;
/// make it a member of the object that `update` belongs to. Main thread only.
class ChangeObserver : public QObject {
public:
    ChangeObserver(const ObservableObject& observed, std::function<void()> update) : m_update(std::move(update))
    {
        connect(&observed, &ObservableObject::objectWillChange, this, &ChangeObserver::schedule);
    }

private:
    void schedule()
    {
        if (!std::exchange(m_isScheduled, true)) {
            QMetaObject::invokeMethod(this, &ChangeObserver::run, Qt::QueuedConnection);
        }
    }

    void run()
    {
        m_isScheduled = false;
        m_update();
    }

    std::function<void()> m_update;
    bool m_isScheduled = false;
};

} // namespace morlaine
