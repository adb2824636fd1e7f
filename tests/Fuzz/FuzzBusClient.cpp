#include "Platform/Linux/BusClient.h"

#include <cstddef>
#include <cstdlib>
#include <string>
#include <thread>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Listens under the name.
int listeningSocket(const std::string& name)
{
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    name.copy(&address.sun_path[1], sizeof address.sun_path - 1);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isBound = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), length) == 0;
    return isBound && ::listen(socket, 1) == 0 ? socket : -1;
}

} // namespace

/// Whatever answers on the bus's socket, the client comes to an end, and long before its deadline.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    using morlaine::BusClient;
    static const std::string name = "morlaine-fuzz-" + std::to_string(::getpid());
    static const int socket = listeningSocket(name);
    const auto deadline = BusClient::Clock::now() + std::chrono::seconds(30);
    const std::jthread server([&] {
        const int connection = ::accept(socket, nullptr, nullptr);
        (void)!::send(connection, data, size, MSG_NOSIGNAL);
        ::close(connection);
    });
    BusClient client("unix:abstract=" + name, deadline);
    if (const auto reply = client.call({"org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"})) {
        (void)morlaine::textIn(*reply);
    }
    if (client.state() == BusClient::State::untried || BusClient::Clock::now() > deadline) {
        std::abort();
    }
    return 0;
}
