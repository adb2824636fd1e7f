#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace morlaine {

/// Carries tasks from any thread to the thread that made the queue. Its event loop runs them in the order of posting.
/// Make the queue a member of an object of that thread: after the queue is destroyed, no posted task runs.
///
/// Posting uses neither Qt nor the owner, so that a thread may keep posting while the owner is destroyed and while the
/// program exits.
class MainThreadQueue {
    struct Channel;

public:
    using Task = std::function<void()>;

    /// The posting end. Any thread may keep and use copies for any time.
    class Poster {
    public:
        void post(Task task) const;

    private:
        friend class MainThreadQueue;
        explicit Poster(std::shared_ptr<Channel> channel) : m_channel(std::move(channel)) {}

        std::shared_ptr<Channel> m_channel;
    };

    MainThreadQueue();
    ~MainThreadQueue();
    MainThreadQueue(const MainThreadQueue&) = delete;
    MainThreadQueue& operator=(const MainThreadQueue&) = delete;

    [[nodiscard]] Poster poster() const { return Poster(m_channel); }
    void post(Task task) { poster().post(std::move(task)); }

private:
    static bool runNext(const std::shared_ptr<Channel>& channel);
    static void runWaiting(const std::shared_ptr<Channel>& channel);

    std::shared_ptr<Channel> m_channel;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace morlaine
