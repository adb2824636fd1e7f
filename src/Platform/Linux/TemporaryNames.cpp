#include "Platform/Linux/TemporaryNames.h"

#include "Platform/Linux/Uninterrupted.h"
#include "Platform/PrivateFiles.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace morlaine {

namespace {

std::array<int, 2> signalPipe{-1, -1};

void passOn(int signal)
{
    const int error = errno;
    const auto number = static_cast<unsigned char>(signal);
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &number, 1);
    errno = error;
}

/// Runs on its own thread: it may take locks, which a signal handler may not, and does not depend on the main thread.
void awaitSignal()
{
    unsigned char signal = 0;
    while (::read(signalPipe[0], &signal, 1) != 1) {
    }
    TemporaryNames::shared().removeForGood();
    std::signal(signal, SIG_DFL);
    ::kill(::getpid(), signal);
}

} // namespace

TemporaryNames& TemporaryNames::shared()
{
    static TemporaryNames& names = *new TemporaryNames;
    return names;
}

int TemporaryNames::make(std::string& path, int suffixLength)
{
    const std::lock_guard lock(m_mutex);
    const int descriptor = uninterrupted([&, pattern = path] {
        path = pattern; // a failed call may leave anything there
        return ::mkostemps(path.data(), suffixLength, O_CLOEXEC);
    });
    if (descriptor >= 0) {
        m_paths.insert(path);
    }
    return descriptor;
}

void TemporaryNames::forget(const std::string& path)
{
    const std::lock_guard lock(m_mutex);
    m_paths.erase(path);
}

void TemporaryNames::removeForGood()
{
    m_mutex.lock();
    for (const std::string& path : m_paths) {
        ::unlink(path.c_str());
    }
}

void removeTemporaryFilesOnSignals()
{
    if (::pipe2(signalPipe.data(), O_CLOEXEC) != 0) {
        return;
    }
    try {
        std::thread(awaitSignal).detach();
    } catch (const std::system_error&) {
        return;
    }
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction action = {};
        if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            action = {};
            action.sa_handler = passOn;
            action.sa_flags = SA_RESTART;
            ::sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace morlaine
