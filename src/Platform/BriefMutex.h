#pragma once

#include <mutex>
#include <thread>

namespace morlaine {

/// A mutex for sections that take less time than to fall asleep and to be woken: a thread that finds it taken tries
/// again for some microseconds before it sleeps.
class BriefMutex {
public:
    void lock()
    {
        constexpr int tries = 40;
        for (int i = 0; i < tries; ++i) {
            if (m_mutex.try_lock()) {
                return;
            }
            std::this_thread::yield();
        }
        m_mutex.lock();
    }
    [[nodiscard]] bool try_lock() { return m_mutex.try_lock(); }
    void unlock() { m_mutex.unlock(); }

private:
    std::mutex m_mutex;
};

} // namespace morlaine
