#include "Platform/Linux/LinuxFileSystem.h"

#include "Platform/Linux/LinuxFolder.h"
#include "Platform/Linux/Measure.h"

#include <algorithm>
#include <cstdlib>
#include <thread>

namespace morlaine {

namespace {

struct FreeMemory {
    void operator()(char* memory) const { std::free(memory); }
};

} // namespace

std::shared_ptr<const FileSystem> FileSystem::native()
{
    return std::make_shared<LinuxFileSystem>();
}

std::optional<ResourceValues> LinuxFileSystem::resourceValues(const FileUrl& url) const
{
    const std::string path = url.path();
    const std::optional<PathStart> start = startOfPath(path);
    return start ? measure(start->anchor(), std::string(start->rest).c_str(), {}) : std::nullopt;
}

std::optional<std::uint64_t> LinuxFileSystem::volumeIdentifier(const FileUrl& url) const
{
    const std::optional<ResourceValues> values = resourceValues(url);
    return values ? values->volumeIdentifier : std::nullopt;
}

std::size_t LinuxFileSystem::usefulReaders() const noexcept
{
    constexpr std::size_t most = 2; // more were not measured
    const std::size_t processors = std::max(std::thread::hardware_concurrency(), 2U);
    return std::min(processors - 1, most); // the walk reads too, on another one
}

std::unique_ptr<Folder> LinuxFileSystem::folder(const FileUrl& url) const
{
    return std::make_unique<LinuxFolder>(url.path());
}

FileUrl LinuxFileSystem::resolvingSymlinks(const FileUrl& url) const
{
    const std::unique_ptr<char, FreeMemory> resolved(::realpath(url.path().c_str(), nullptr));
    return resolved ? FileUrl::fromPath(resolved.get()) : url;
}

} // namespace morlaine
