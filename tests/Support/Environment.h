#pragma once

#include <QByteArray>

#include <optional>
#include <string>

namespace morlaine::test {

/// Sets or unsets an environment variable during its lifetime.
class Environment {
public:
    Environment(const char* name, const std::optional<std::string>& value) : m_name(name), m_before(qgetenv(name))
    {
        value ? qputenv(name, QByteArray::fromStdString(*value)) : qunsetenv(name);
    }
    ~Environment() { m_before.isNull() ? qunsetenv(m_name) : qputenv(m_name, m_before); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    const char* m_name;
    QByteArray m_before;
};

} // namespace morlaine::test
