#pragma once

#include <QTest>

#include <chrono>

namespace morlaine::test {

/// How long tests wait for what must happen. Only a failure takes this long, also on a busy machine.
inline constexpr std::chrono::seconds longEnough(300);
inline constexpr int longEnoughInMilliseconds = std::chrono::milliseconds(longEnough).count();

/// Runs the event loop until the condition is true. Returns false if it is not true in time.
template <typename Condition>
[[nodiscard]] bool waitUntil(const Condition& condition)
{
    return QTest::qWaitFor(condition, longEnoughInMilliseconds);
}

} // namespace morlaine::test
