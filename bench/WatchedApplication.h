#pragma once

#include "Measurements.h"

#include <QApplication>

namespace morlaine::bench {

/// Notes how long the main thread is away from its event loop at a time.
class WatchedApplication final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;

    /// The longest that one event took since the last call, with all that it set off at once. Seconds.
    [[nodiscard]] double takeLongestStall();

private:
    bool m_isBusy = false;
    double m_longestStall = 0;
};

} // namespace morlaine::bench
