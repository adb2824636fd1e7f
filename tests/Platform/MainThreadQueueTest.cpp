#include "Platform/MainThreadQueue.h"

#include "Support/Wait.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace morlaine {
namespace {

TEST(MainThreadQueue, RunsTasksOfEveryThreadInOrder)
{
    constexpr int each = 500;
    MainThreadQueue queue;
    std::vector<int> lastOf(4, -1);
    bool isOrdered = true;
    int ran = 0;
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < lastOf.size(); ++thread) {
        threads.emplace_back([&, thread, poster = queue.poster()] {
            for (int i = 0; i < each; ++i) {
                poster.post([&, thread, i] {
                    isOrdered = isOrdered && lastOf[thread] == i - 1;
                    lastOf[thread] = i;
                    ++ran;
                });
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(ran, 0) << "nothing runs before control is back in the event loop";
    EXPECT_TRUE(test::waitUntil([&] { return ran == 4 * each; }));
    EXPECT_TRUE(isOrdered);
}

TEST(MainThreadQueue, DropsWhatItsOwnerNoLongerWants)
{
    auto owned = std::make_shared<int>(1);
    auto queue = std::make_unique<MainThreadQueue>();
    const MainThreadQueue::Poster poster = queue->poster();
    int ran = 0;
    poster.post([&ran, owned] { ++ran; });
    queue.reset();
    EXPECT_EQ(owned.use_count(), 1) << "abandoned tasks are destroyed with the queue";
    poster.post([&ran, owned] { ++ran; });
    QCoreApplication::processEvents();
    EXPECT_EQ(ran, 0);
    EXPECT_EQ(owned.use_count(), 1);
}

TEST(MainThreadQueue, SurvivesATaskThatDestroysIt)
{
    auto queue = std::make_unique<MainThreadQueue>();
    bool ranBehind = false;
    queue->post([&queue] { queue.reset(); });
    queue->post([&ranBehind] { ranBehind = true; });
    EXPECT_TRUE(test::waitUntil([&] { return queue == nullptr; }));
    QCoreApplication::processEvents();
    EXPECT_FALSE(ranBehind);
}

TEST(MainThreadQueue, GoesOnInsideAnEventLoopThatATaskRuns)
{
    MainThreadQueue queue;
    std::vector<int> order;
    QEventLoop nested;
    queue.post([&] {
        order.push_back(1);
        nested.exec();
        order.push_back(3);
    });
    queue.post([&] {
        order.push_back(2);
        nested.quit();
    });
    EXPECT_TRUE(test::waitUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TEST(MainThreadQueue, ReturnsToTheEventLoopWhileTasksPostMore)
{
    MainThreadQueue queue;
    int ran = 0;
    const std::function<void()> postAgain = [&] { ++ran < 100 ? queue.post(postAgain) : void(); };
    queue.post(postAgain);
    QCoreApplication::processEvents();
    EXPECT_LT(ran, 10);
}

TEST(MainThreadQueue, MayBeDestroyedWhileAThreadPosts)
{
    for (int round = 0; round < 20; ++round) {
        const auto heldByTasks = std::make_shared<int>(round);
        std::optional<MainThreadQueue> queue(std::in_place);
        std::atomic<bool> isStopping = false;
        std::thread thread([&isStopping, &heldByTasks, poster = queue->poster()] {
            while (!isStopping) {
                poster.post([heldByTasks] {});
            }
        });
        QCoreApplication::processEvents();
        queue.reset();
        isStopping = true;
        thread.join();
        EXPECT_EQ(heldByTasks.use_count(), 1) << "no task outlives the queue";
    }
}

} // namespace
} // namespace morlaine
