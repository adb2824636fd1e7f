#include "Platform/MessageBuses.h"

#include "Support/Environment.h"
#include "Support/Socket.h"
#include "Support/TemporaryFolder.h"
#include "Support/Wait.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <string>
#include <thread>

#include <sys/socket.h>
#include <unistd.h>

namespace morlaine {
namespace {

using namespace std::chrono_literals;
using test::Environment;
using test::TemporaryFolder;

constexpr auto patience = 200ms;

/// A socket that sends one greeting to its first connection and then only reads.
class FakeBus {
public:
    FakeBus(const std::string& path, std::string greeting)
        : m_greeting(std::move(greeting))
        , m_socket(test::listeningSocket(path))
    {
        EXPECT_GE(m_socket, 0);
        m_thread = std::thread([this] {
            const int connection = ::accept(m_socket, nullptr, nullptr);
            (void)!::write(connection, m_greeting.data(), m_greeting.size());
            char byte = 0;
            while (::read(connection, &byte, 1) > 0) {
            }
            ::close(connection);
        });
    }
    ~FakeBus()
    {
        ::shutdown(m_socket, SHUT_RDWR);
        m_thread.join();
        ::close(m_socket);
    }

private:
    const std::string m_greeting;
    const int m_socket;
    std::thread m_thread;
};

TEST(MessageBuses, AreDeadWhereNothingSensibleIsSaidInTime)
{
    const std::string garbage(300, 'l');
    const std::string greetings[] = {
        "",
        "OK 0123456789abcdef0123456789abcdef\r\n",
        "REJECTED DBUS_COOKIE_SHA1\r\n",
        garbage,
        "OK 0123456789abcdef0123456789abcdef\r\n" + garbage,
        std::string("OK 0\r\nl\3\1\1\0\0\0\0\1\0\0\0\x8\0\0\0\5\1u\0\1\0\0\0", 30), // Hello fails
        std::string("OK 0\r\nl\2\1\1\0\0\0\0\1\0\0\0\x8\0\0\0\5\1s\0\xff\xff\xff\xff", 30),
    };
    for (const std::string& greeting : greetings) {
        const TemporaryFolder folder;
        const FakeBus bus(folder.path() / "bus", greeting);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_FALSE(MessageBuses::isAlive("unix:path=" + (folder.path() / "bus").string(), patience)) << greeting;
        EXPECT_LT(std::chrono::steady_clock::now() - begin, test::longEnough); // it returns
    }
    EXPECT_FALSE(MessageBuses::isAlive("unix:path=/nonexistent/bus", patience));
    EXPECT_TRUE(MessageBuses::isAlive("tcp:host=localhost,port=1", patience)); // cannot be tried
    EXPECT_TRUE(MessageBuses::isAlive("", patience));
}

TEST(MessageBuses, AreFoundByEveryKindOfAddress)
{
    const TemporaryFolder folder;
    const std::string path = folder.path() / "bus";
    const std::string name = "morlaine-test-" + std::to_string(::getpid());
    std::ofstream(folder.path() / "bus.conf")
        << "<busconfig><type>session</type><listen>unix:path=" << path << "</listen><listen>unix:abstract=" << name
        << R"(</listen><policy context="default"><allow send_destination="*" eavesdrop="true"/>
              <allow eavesdrop="true"/><allow own="*"/></policy></busconfig>)";
    QProcess daemon;
    daemon.start(QStringLiteral("dbus-daemon"),
                 {QStringLiteral("--config-file=") + QString::fromStdString(folder.path() / "bus.conf"),
                  QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    ASSERT_TRUE(daemon.waitForReadyRead(test::longEnoughInMilliseconds));

    const Environment runtime("XDG_RUNTIME_DIR", folder.path());
    const std::string escaped = "unix:guid=00,path=%2f" + path.substr(1);
    for (const std::string& address :
         {"unix:path=" + path, escaped, "unix:abstract=" + name, std::string("unix:runtime=yes"),
          "unix:path=/nonexistent/bus;unix:path=" + path}) {
        EXPECT_TRUE(MessageBuses::isAlive(address, test::longEnough)) << address;
    }
    {
        const Environment session("DBUS_SESSION_BUS_ADDRESS", "");
        EXPECT_TRUE(MessageBuses::probe(test::longEnough).session);
    }
    {
        const Environment session("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);
        const Environment preset("AT_SPI_BUS_ADDRESS", "unix:path=/nonexistent/bus");
        const MessageBuses buses = MessageBuses::probe(test::longEnough);
        EXPECT_TRUE(buses.session);
        EXPECT_FALSE(buses.accessibility);
    }
    const Environment session("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);
    EXPECT_TRUE(MessageBuses::probe(test::longEnough).accessibility); // no accessibility bus is offered
    daemon.kill();
    daemon.waitForFinished(test::longEnoughInMilliseconds);
    EXPECT_FALSE(MessageBuses::probe(patience).session);
}

} // namespace
} // namespace morlaine
