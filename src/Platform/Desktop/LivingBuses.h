#pragma once

namespace morlaine {

/// Keeps Qt from using message buses that do not answer: it would wait for them without limit. Main thread only.
class LivingBuses {
public:
    /// Call before the application object is made. Disables dead buses in the environment, also for child processes.
    static void settleBeforeApplication();

    /// Call after the application object is made and before the first window. Checks the accessibility bus that only
    /// the screen names.
    static void settleOnScreen();
};

} // namespace morlaine
