#pragma once

namespace morlaine {

/// Has Qt do without the message buses that do not answer, for which it would wait without limit. Main thread
/// only.
class LivingBuses {
public:
    /// To be called before the application object is made. What it finds dead is left out of the environment, also
    /// for programs that are started later.
    static void settleBeforeApplication();

    /// To be called once the application object is made and before the first window: only the screen tells of the
    /// bus that may be meant for assistive programs there.
    static void settleOnScreen();
};

} // namespace morlaine
