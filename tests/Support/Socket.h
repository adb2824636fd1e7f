#pragma once

#include <cstddef>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>

namespace morlaine::test {

/// A socket that listens at a path, or under an abstract name, which begins with a zero byte; -1 if it cannot.
inline int listeningSocket(std::string_view name)
{
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    name.copy(address.sun_path, sizeof address.sun_path);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isBound = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), length) == 0;
    return isBound && ::listen(socket, 4) == 0 ? socket : -1;
}

} // namespace morlaine::test
