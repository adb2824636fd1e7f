#pragma once

#include <mutex>
#include <thread>

namespace morlaine {

/// A mutex for critical sections that are shorter than putting a thread to sleep and waking it. A thread that finds it
/// locked retries for some microseconds before it sleeps.
class BriefMutex {
public:
    void lock()
    {
        constexpr int tries = 8;
        constexpr int pauses = 32;
        for (int i = 0; i < tries; ++i) {
            if (m_mutex.try_lock()) {
                return;
            }
            for (int j = 0; j < pauses; ++j) {
                pause();
            }
        }
        m_mutex.lock();
    }
    [[nodiscard]] bool try_lock() { return m_mutex.try_lock(); }
    void unlock() { m_mutex.unlock(); }

private:
    /// Lets some cycles pass without asking the system for anything.
    static void pause() noexcept
    {
#if defined(__x86_64__) || defined(__i386__)
        __builtin_ia32_pause();
#else
        std::this_thread::yield();
#endif
    }

    std::mutex m_mutex;
};

} // namespace morlaine
