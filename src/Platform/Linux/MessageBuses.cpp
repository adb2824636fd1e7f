#include "Platform/MessageBuses.h"

#include "Platform/Linux/BusClient.h"

#include <cstdlib>
#include <optional>
#include <string>

#include <unistd.h>

namespace morlaine {

namespace {

using Clock = BusClient::Clock;

constexpr BusClient::Call accessibilityAddress{"org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"};

std::string variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

/// Where Qt looks for the session bus; empty if Qt would ask for one to be started.
std::string sessionAddress()
{
    const std::string address = variable("DBUS_SESSION_BUS_ADDRESS");
    const std::string runtime = variable("XDG_RUNTIME_DIR");
    const bool isInRuntime = address.empty() && !runtime.empty() && ::access((runtime + "/bus").c_str(), F_OK) == 0;
    return isInRuntime ? "unix:runtime=yes" : address;
}

bool isAliveUntil(std::string_view address, Clock::time_point deadline)
{
    return BusClient(address, deadline).state() != BusClient::State::dead;
}

/// If the session bus names an accessibility bus, that one has to be alive.
bool isAccessibilityAlive(BusClient& session, Clock::time_point deadline)
{
    const std::optional<BusClient::Reply> reply = session.call(accessibilityAddress);
    if (!reply) {
        return false;
    }
    const std::optional<std::string> address = textIn(*reply);
    return !address || address->empty() || isAliveUntil(*address, deadline);
}

} // namespace

MessageBuses MessageBuses::probe(std::chrono::milliseconds patience)
{
    const Clock::time_point deadline = Clock::now() + patience;
    MessageBuses buses;
    BusClient session(sessionAddress(), deadline);
    buses.session = session.state() != BusClient::State::dead;
    const std::string preset = variable("AT_SPI_BUS_ADDRESS"); // takes precedence over the address from the session bus
    if (!preset.empty()) {
        buses.accessibility = isAliveUntil(preset, deadline);
    } else if (session.state() == BusClient::State::connected) {
        buses.accessibility = isAccessibilityAlive(session, deadline);
    }
    return buses;
}

bool MessageBuses::isAlive(std::string_view address, std::chrono::milliseconds patience)
{
    return isAliveUntil(address, Clock::now() + patience);
}

} // namespace morlaine
