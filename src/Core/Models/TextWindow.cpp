#include "Core/Models/TextWindow.h"

#include "Platform/Background.h"

#include <QIODevice>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <new>
#include <utility>

namespace morlaine {

/// A piece of the text, with room in front of it for what is left of the one before.
struct TextWindow::Part {
    static constexpr std::size_t size = std::size_t{1024} * 1024;

    std::unique_ptr<char[]> buffer; // not filled with zeros: only what is read takes memory
    std::size_t length = 0;         // less than `size` only at the end of the text
    bool isLast = false;
    bool isReadable = true;

    [[nodiscard]] char* text() const { return buffer.get() + least; }

    void readFrom(QIODevice& source)
    {
        if (!buffer) {
            buffer = std::make_unique_for_overwrite<char[]>(least + size + padding);
        }
        length = 0;
        while (length < size && !isLast && isReadable) {
            const qint64 count = source.read(text() + length, static_cast<qint64>(size - length));
            isLast = count == 0;
            isReadable = count >= 0;
            length += static_cast<std::size_t>(std::max<qint64>(count, 0));
        }
        std::memset(text() + length, 0, padding);
    }
};

/// Reads one part after another into two buffers in turns: the helper thread does it ahead, else the caller's thread.
class TextWindow::Reader : public std::enable_shared_from_this<Reader> {
public:
    explicit Reader(QIODevice& source) : m_source(source) {}

    /// The next part. The one before is kept until `readAhead`.
    [[nodiscard]] Part& next()
    {
        const bool isRead = stopReading(State::idle) == State::finished;
        Part& part = m_parts[m_next];
        if (!isRead) {
            part.readFrom(m_source);
        }
        m_next = 1 - m_next;
        return part;
    }

    /// Has the part after that read into the buffer of the one before.
    void readAhead()
    {
        if (!m_hasHelper) {
            m_hasHelper = !Background::start("read ahead", Background::Priority::helping,
                                             [reader = shared_from_this()] { reader->help(); });
        }
        const std::lock_guard lock(m_mutex);
        m_state = State::ordered;
        m_changed.notify_all();
    }

    /// From now on, the helper does not use the device.
    void end() { stopReading(State::ended); }

private:
    enum class State { idle, ordered, reading, finished, ended };

    /// Waits for a helper that reads, not for one that has yet to begin. Returns the state before.
    State stopReading(State state)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_state != State::reading; });
        m_changed.notify_all();
        return std::exchange(m_state, state);
    }

    void help()
    {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return m_state == State::ordered || m_state == State::ended; });
            if (m_state == State::ended) {
                return;
            }
            m_state = State::reading;
            Part& part = m_parts[m_next];
            lock.unlock();
            try {
                part.readFrom(m_source);
            } catch (const std::bad_alloc&) {
                part.isReadable = false;
            }
            lock.lock();
            m_state = State::finished;
            m_changed.notify_all();
        }
    }

    QIODevice& m_source;
    std::array<Part, 2> m_parts;
    std::size_t m_next = 0; // of the parts
    bool m_hasHelper = false;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    State m_state = State::idle;
};

TextWindow::TextWindow(QIODevice& source) : m_reader(std::make_shared<Reader>(source))
{
}

TextWindow::~TextWindow()
{
    m_reader->end();
}

bool TextWindow::fill()
{
    const auto rest = static_cast<std::size_t>(m_end - m_next);
    if (m_isAtEnd || rest >= least) {
        return true;
    }
    Part& part = m_reader->next();
    if (!part.isReadable) {
        return false;
    }
    char* const begin = part.text() - rest;
    if (rest > 0) {
        std::memcpy(begin, m_next, rest);
    }
    m_next = begin;
    m_end = part.text() + part.length;
    m_isAtEnd = part.isLast;
    if (!m_isAtEnd) {
        m_reader->readAhead();
    }
    return true;
}

} // namespace morlaine
