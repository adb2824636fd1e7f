#pragma once

#include "Platform/Linux/FileDescriptor.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morlaine {

/// A connection to a message bus with a deadline. It asks a question or two before Qt connects, which would wait for a
/// bus without limit. Any thread, one at a time.
class BusClient {
public:
    using Clock = std::chrono::steady_clock;

    enum class State {
        connected, // authenticated, and the bus has assigned a name
        dead,      // refused, silent until the deadline, or not a bus
        untried,   // the address uses a transport that this class does not support
    };

    struct Call {
        std::string_view destination;
        std::string_view path;
        std::string_view interface;
        std::string_view member;
    };

    struct Reply {
        bool isError;
        std::string body; // unparsed
    };

    /// Connects to the first of the addresses (in the notation of `DBUS_SESSION_BUS_ADDRESS`) that accepts.
    BusClient(std::string_view addresses, Clock::time_point deadline);

    [[nodiscard]] State state() const { return m_state; }

    /// Calls a method without arguments, and does not start a service for it. Nothing if no reply came in time.
    [[nodiscard]] std::optional<Reply> call(const Call& call);

private:
    void connect(std::string_view addresses);
    void authenticate();
    [[nodiscard]] std::optional<Reply> replyTo(std::uint32_t serial);
    [[nodiscard]] std::string request(const Call& call);
    [[nodiscard]] bool send(std::string_view bytes);
    [[nodiscard]] bool receiveMore();
    [[nodiscard]] bool waitFor(short events) const;

    Clock::time_point m_deadline;
    State m_state = State::untried;
    FileDescriptor m_socket;
    std::string m_received; // bytes that are not consumed yet
    std::uint32_t m_lastSerial = 0;
};

/// The text in a reply that consists of one string.
[[nodiscard]] std::optional<std::string> textIn(const BusClient::Reply& reply);

} // namespace morlaine
