#pragma once

#include <cstddef>
#include <memory>

class QIODevice;

namespace morlaine {

/// A sliding window over the text of a device. While the caller works on one part of a long text, a helper thread reads
/// the next part. Until the window is destroyed, nobody else may use the device. For one thread.
class TextWindow {
public:
    /// What the window holds after `fill`, unless the text ends earlier.
    static constexpr std::size_t least = std::size_t{128} * 1024; // bytes

    /// Zero bytes behind the end of the window. Comparisons may read into them and then fail.
    static constexpr std::size_t padding = 64;

    /// The device must outlive the window. Throws std::bad_alloc.
    explicit TextWindow(QIODevice& source);
    ~TextWindow();
    TextWindow(const TextWindow&) = delete;
    TextWindow& operator=(const TextWindow&) = delete;

    /// The text from the current place on.
    [[nodiscard]] const char* next() const noexcept { return m_next; }
    [[nodiscard]] const char* end() const noexcept { return m_end; }

    /// Makes `place`, which lies in the window, the current place.
    void passTo(const char* place) noexcept { m_next = place; }

    /// Makes sure that the window holds `least` bytes or all that is left; other text moves. False when the device
    /// cannot be read.
    [[nodiscard]] bool fill();

private:
    struct Part;
    class Reader;

    [[nodiscard]] const Part& nextPart();

    const std::shared_ptr<Reader> m_reader;
    const char* m_next = nullptr;
    const char* m_end = nullptr;
    bool m_isAtEnd = false;
};

} // namespace morlaine
