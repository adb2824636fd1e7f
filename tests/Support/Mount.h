#pragma once

#include <filesystem>
#include <utility>

#include <sys/mount.h>

namespace morlaine::test {

/// A mount on a folder or file during its lifetime, if this user may mount.
class Mount {
public:
    Mount(const char* source, std::filesystem::path target, const char* type, unsigned long flags,
          const char* options = nullptr)
        : m_target(std::move(target))
    {
        m_isMounted = ::mount(source, m_target.c_str(), type, flags, options) == 0;
    }
    ~Mount()
    {
        if (m_isMounted) {
            ::umount2(m_target.c_str(), MNT_DETACH);
        }
    }
    Mount(const Mount&) = delete;
    Mount& operator=(const Mount&) = delete;
    [[nodiscard]] bool isMounted() const { return m_isMounted; }

private:
    std::filesystem::path m_target;
    bool m_isMounted = false;
};

} // namespace morlaine::test
