#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace morlaine {

/// Whether the user wants programs to be light or dark, as far as the desktop tells. Main thread only.
class Appearance {
public:
    enum class Preference { none, dark, light };
    using Observer = std::function<void(Preference preference)>;

    Appearance() = default;
    virtual ~Appearance() = default;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;

    /// The running desktop's, which has been asked but need not have answered yet.
    [[nodiscard]] static std::unique_ptr<Appearance> native();

    /// What is known now: none until the desktop has answered, and where it has no answer.
    [[nodiscard]] virtual Preference preference() const = 0;

    /// Waits until the desktop has answered, at most for `patience`, while other events than the user's input run.
    /// Returns at once where there is nobody to ask.
    virtual void waitForAnswer(std::chrono::milliseconds patience) = 0;

    /// Calls `observer` from the event loop after each change, the first answer included if it is not none. One
    /// observer, which replaces the one before.
    virtual void observe(Observer observer) = 0;
};

} // namespace morlaine
