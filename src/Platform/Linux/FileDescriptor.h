#pragma once

#include <utility>

#include <unistd.h>

namespace morlaine {

/// Owns an open file descriptor, or none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) noexcept : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        FileDescriptor moved(std::move(other));
        std::swap(m_descriptor, moved.m_descriptor);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor()
    {
        if (isOpen()) {
            ::close(m_descriptor);
        }
    }

    [[nodiscard]] bool isOpen() const noexcept { return m_descriptor >= 0; }
    [[nodiscard]] int get() const noexcept { return m_descriptor; }

    /// Transfers ownership to the caller.
    [[nodiscard]] int release() noexcept { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor = -1;
};

} // namespace morlaine
