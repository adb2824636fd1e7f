#include "Platform/MainThreadQueue.h"

#include <QSocketNotifier>

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace morlaine {

struct MainThreadQueue::Channel {
    Channel() : wakeUp(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE))
    {
        if (wakeUp < 0) {
            std::abort(); // out of descriptors
        }
    }
    ~Channel() { ::close(wakeUp); }
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    const int wakeUp;
    std::mutex mutex;
    std::deque<Task> tasks;
    bool isOpen = true;
};

void MainThreadQueue::Poster::post(Task task) const
{
    const std::lock_guard lock(m_channel->mutex);
    if (!m_channel->isOpen) {
        return;
    }
    m_channel->tasks.push_back(std::move(task));
    const std::uint64_t one = 1;
    // The counter holds the number of waiting tasks and cannot overflow.
    [[maybe_unused]] const auto written = ::write(m_channel->wakeUp, &one, sizeof one);
}

MainThreadQueue::MainThreadQueue()
    : m_channel(std::make_shared<Channel>())
    , m_notifier(std::make_unique<QSocketNotifier>(m_channel->wakeUp, QSocketNotifier::Read))
{
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [channel = m_channel] { runWaiting(std::shared_ptr(channel)); });
}

MainThreadQueue::~MainThreadQueue()
{
    // Destroyed after the lock is released: a task may own an object that posts in its destructor.
    std::deque<Task> abandoned;
    const std::lock_guard lock(m_channel->mutex);
    m_channel->isOpen = false;
    abandoned.swap(m_channel->tasks);
}

bool MainThreadQueue::runNext(const std::shared_ptr<Channel>& channel)
{
    Task task;
    {
        const std::lock_guard lock(channel->mutex);
        std::uint64_t one = 0;
        if (::read(channel->wakeUp, &one, sizeof one) < 0 || channel->tasks.empty()) {
            return false;
        }
        task = std::move(channel->tasks.front());
        channel->tasks.pop_front();
    }
    task(); // may run a nested event loop, or destroy the queue
    return true;
}

/// Runs the tasks that wait now. Tasks posted meanwhile run after the event loop's other events.
void MainThreadQueue::runWaiting(const std::shared_ptr<Channel>& channel)
{
    std::size_t waiting = 0;
    {
        const std::lock_guard lock(channel->mutex);
        waiting = channel->tasks.size();
    }
    while (waiting-- > 0 && runNext(channel)) {
    }
}

} // namespace morlaine
