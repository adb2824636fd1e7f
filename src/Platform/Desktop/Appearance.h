#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace morlaine {

/// Whether the user prefers light or dark programs, according to the desktop. Main thread only.
class Appearance {
public:
    enum class Preference { none, dark, light };
    using Observer = std::function<void(Preference preference)>;

    Appearance() = default;
    virtual ~Appearance() = default;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;

    /// The implementation for this system. It has asked the desktop, which need not have answered yet.
    [[nodiscard]] static std::unique_ptr<Appearance> native();

    /// The current preference; `none` until the desktop has answered, or if it has no preference.
    [[nodiscard]] virtual Preference preference() const = 0;

    /// Waits for the desktop's answer, at most for `patience`; meanwhile handles events other than user input. Returns
    /// at once if there is nobody to ask.
    virtual void waitForAnswer(std::chrono::milliseconds patience) = 0;

    /// Calls `observer` from the event loop after each change, also after a first answer other than `none`. There is
    /// one observer; it replaces the previous one.
    virtual void observe(Observer observer) = 0;
};

} // namespace morlaine
