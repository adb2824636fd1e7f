#include "Platform/Desktop/LivingBuses.h"

#include "Platform/MessageBuses.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include <xcb/xcb.h>

namespace morlaine {

namespace {

using namespace std::chrono_literals;

/// A window must not wait long for a bus that hangs. If Qt's variable says that somebody depends on assistive programs,
/// a busy machine gets more time: to them, a window without these is worth nothing.
std::chrono::milliseconds patience(std::chrono::milliseconds usual)
{
    return qEnvironmentVariableIntValue("QT_LINUX_ACCESSIBILITY_ALWAYS_ON") == 1 ? 1s : usual;
}

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype([](Reply* reply) { std::free(reply); })>;

constexpr const char* nowhere = "disabled:"; // an unknown transport: connecting fails at once

void leaveOutAssistivePrograms()
{
    qputenv("AT_SPI_BUS_ADDRESS", nowhere); // takes precedence over other sources
    qputenv("NO_AT_BRIDGE", "1");           // for the libraries of platform themes
}

/// The address in a property of the X server's root window; empty if there is none.
std::string busOnScreen(xcb_connection_t* connection)
{
    constexpr std::string_view name = "AT_SPI_BUS";
    constexpr std::uint32_t longest = 256; // in words of 32 bits
    const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE) {
        return {};
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const Owned<xcb_get_property_reply_t> property(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, root, atom->atom, XCB_ATOM_ANY, 0, longest), nullptr));
    if (!property) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(property.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(property.get()))};
}

} // namespace

void LivingBuses::settleBeforeApplication()
{
    const MessageBuses buses = MessageBuses::probe(patience(200ms));
    if (!buses.session) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", nowhere);
    }
    if (!buses.session || !buses.accessibility) {
        leaveOutAssistivePrograms();
    }
}

void LivingBuses::settleOnScreen()
{
    const auto* const screen = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (screen == nullptr || screen->connection() == nullptr) {
        return;
    }
    const std::string address = busOnScreen(screen->connection());
    if (!qEnvironmentVariableIsSet("AT_SPI_BUS_ADDRESS") && !address.empty() &&
        !MessageBuses::isAlive(address, patience(100ms))) {
        leaveOutAssistivePrograms();
    }
}

} // namespace morlaine
