#include "WatchedApplication.h"

#include <algorithm>
#include <utility>

namespace morlaine::bench {

bool WatchedApplication::notify(QObject* receiver, QEvent* event)
{
    if (m_isBusy) {
        return QApplication::notify(receiver, event);
    }
    m_isBusy = true;
    bool isHandled = false;
    const double seconds = secondsOf([&] { isHandled = QApplication::notify(receiver, event); });
    m_longestStall = std::max(m_longestStall, seconds);
    m_isBusy = false;
    return isHandled;
}

double WatchedApplication::takeLongestStall()
{
    return std::exchange(m_longestStall, 0);
}

} // namespace morlaine::bench
