#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

namespace morlaine::test {

/// Blocks a walk at a chosen place. A handle: give copies to the walk, which may outlive the test's own one.
class Gate {
public:
    void open() const
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->isOpen = true;
        m_state->changed.notify_all();
    }
    void pass() const
    {
        std::unique_lock lock(m_state->mutex);
        m_state->hasArrived = true;
        m_state->changed.notify_all();
        m_state->changed.wait(lock, [this] { return m_state->isOpen; });
    }
    void waitForArrival() const
    {
        std::unique_lock lock(m_state->mutex);
        m_state->changed.wait(lock, [this] { return m_state->hasArrived; });
    }

    /// Use as a file system's `onListing`: blocks every listing.
    void operator()(const std::string& /*path*/) const { pass(); }

private:
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        bool isOpen = false;
        bool hasArrived = false;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace morlaine::test
