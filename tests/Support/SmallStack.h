#pragma once

#include <QThread>

#include <functional>
#include <memory>

namespace morlaine::test {

/// Runs `work` in a thread with a stack of 256 kB, which recursion over a deep tree would overflow.
inline void runWithSmallStack(std::function<void()> work)
{
    const std::unique_ptr<QThread> thread(QThread::create(std::move(work)));
    thread->setStackSize(256 * 1024);
    thread->start();
    thread->wait();
}

} // namespace morlaine::test
