#pragma once

#include <QIODevice>

#include <array>
#include <cstddef>

namespace morlaine {

/// Collects characters and writes them to a device in large pieces. After a failure it discards the rest.
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

    void Flush()
    {
        const auto length = static_cast<qint64>(m_length);
        m_hasFailed = m_hasFailed || m_sink.write(m_buffer.data(), length) != length;
        m_length = 0;
    }

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

private:
    QIODevice& m_sink;
    std::array<char, 64 * 1024> m_buffer{};
    std::size_t m_length = 0;
    bool m_hasFailed = false;
};

} // namespace morlaine
