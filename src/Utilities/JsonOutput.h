#pragma once

#include <QIODevice>

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace morlaine {

/// Collects text and writes it to a device in large pieces. After a failure it discards the rest. Can be the stream of
/// a RapidJSON writer, which prescribes some of the names. Too large for the stack of a small thread.
class BufferedOutput {
public:
    using Ch = char;

    explicit BufferedOutput(QIODevice& sink) : m_sink(sink) {}

    void Put(char c)
    {
        if (m_length == m_buffer.size()) {
            Flush();
        }
        m_buffer[m_length++] = c;
    }

    void append(std::string_view text)
    {
        while (text.size() > m_buffer.size() - m_length) {
            const std::string_view piece = text.substr(0, m_buffer.size() - m_length);
            copy(piece);
            text.remove_prefix(piece.size());
            Flush();
        }
        copy(text);
    }

    void Flush()
    {
        const auto length = static_cast<qint64>(m_length);
        m_hasFailed = m_hasFailed || m_sink.write(m_buffer.data(), length) != length;
        m_length = 0;
    }

    /// Whether a write has failed so far.
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

private:
    void copy(std::string_view text)
    {
        std::memcpy(m_buffer.data() + m_length, text.data(), text.size());
        m_length += text.size();
    }

    QIODevice& m_sink;
    std::array<char, 256 * 1024> m_buffer{};
    std::size_t m_length = 0;
    bool m_hasFailed = false;
};

} // namespace morlaine
