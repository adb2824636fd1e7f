#include "Platform/Linux/BusClient.h"
#include "Support/Socket.h"

#include <cstdlib>
#include <string>
#include <thread>

#include <sys/socket.h>
#include <unistd.h>

/// Whatever answers on the bus's socket, the client comes to an end, and long before its deadline.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    using morlaine::BusClient;
    static const std::string name = "morlaine-fuzz-" + std::to_string(::getpid());
    static const int socket = morlaine::test::listeningSocket('\0' + name);
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
