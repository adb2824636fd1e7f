#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace morlaine {

/// Carries work from any thread to the thread that made the queue, which runs it from its event loop in the order
/// of posting. Belongs to an object of that thread as a member: once the queue is gone,
/// nothing that was or will be posted runs.
///
/// The posting side touches nothing of Qt and nothing of the owner, so that a thread may go on posting while
/// the owner is destroyed and while the program ends.
class MainThreadQueue {
    struct Channel;

public:
    using Task = std::function<void()>;

    /// The posting end. Copies may be kept and used by any thread for as long as it likes.
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
