#pragma once

#include <condition_variable>
#include <mutex>

namespace morlaine::test {

/// Holds a walk at a place of the test's choice.
class Gate {
public:
    void open()
    {
        const std::lock_guard lock(m_mutex);
        m_isOpen = true;
        m_changed.notify_all();
    }
    void pass()
    {
        std::unique_lock lock(m_mutex);
        m_hasArrived = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_isOpen; });
    }
    void waitForArrival()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_hasArrived; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isOpen = false;
    bool m_hasArrived = false;
};

} // namespace morlaine::test
