#include "Platform/Linux/LinuxVolumes.h"

#include "Platform/Background.h"
#include "Platform/Linux/MountTable.h"
#include "Utilities/Utf8.h"

#include <charconv>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <system_error>

#include <sys/stat.h>
#include <sys/statvfs.h>

namespace morlaine {

namespace {

namespace fs = std::filesystem;
using Capacity = MountQueries::Capacity;

constexpr std::chrono::milliseconds usualPatience(300);

std::optional<std::int64_t> bytesOf(fsblkcnt_t blocks, unsigned long blockSize)
{
    std::int64_t bytes = 0;
    return __builtin_mul_overflow(blocks, blockSize, &bytes) ? std::nullopt : std::optional(bytes);
}

/// The device number of a block device file, links followed.
std::optional<dev_t> blockDevice(const char* path)
{
    struct stat status {};
    const bool isBlockDevice = ::stat(path, &status) == 0 && S_ISBLK(status.st_mode);
    return isBlockDevice ? std::optional(status.st_rdev) : std::nullopt;
}

/// Queries several mounts and gives up those that do not answer in time. The background work owns everything that it
/// touches, so that a call that never returns does not block anybody.
class CapacityRound {
public:
    CapacityRound(std::shared_ptr<const MountQueries> queries, std::size_t count)
        : m_queries(std::move(queries))
        , m_answers(std::make_shared<Answers>())
    {
        m_answers->capacities.resize(count);
        m_answers->missing = count;
    }

    void ask(std::size_t index, const std::string& mountPoint)
    {
        m_answers->give(index, m_queries->capacity(mountPoint));
    }

    void askOnThread(std::size_t index, const std::string& mountPoint)
    {
        const std::error_code failure =
            Background::start("capacity of " + mountPoint, Background::Priority::userInitiated,
                              [queries = m_queries, answers = m_answers, index, mountPoint] {
                                  answers->give(index, queries->capacity(mountPoint));
                              });
        if (failure) {
            m_answers->give(index, std::nullopt);
        }
    }

    /// The answers that are known when all have arrived or at `end`.
    [[nodiscard]] std::vector<std::optional<Capacity>> answersUntil(std::chrono::steady_clock::time_point end)
    {
        std::unique_lock lock(m_answers->mutex);
        m_answers->changed.wait_until(lock, end, [this] { return m_answers->missing == 0; });
        return m_answers->capacities;
    }

private:
    struct Answers {
        void give(std::size_t index, const std::optional<Capacity>& capacity)
        {
            const std::lock_guard lock(mutex);
            capacities[index] = capacity;
            missing -= 1;
            changed.notify_one();
        }

        std::mutex mutex;
        std::condition_variable changed;
        std::vector<std::optional<Capacity>> capacities;
        std::size_t missing = 0;
    };

    std::shared_ptr<const MountQueries> m_queries;
    std::shared_ptr<Answers> m_answers;
};

} // namespace

std::shared_ptr<const Volumes> Volumes::native()
{
    return std::make_shared<LinuxVolumes>(std::make_shared<LinuxMountQueries>(), usualPatience);
}

std::string LinuxMountQueries::mountInfo() const
{
    std::ifstream file("/proc/self/mountinfo", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// QStorageInfo takes the path as text, which breaks names that are not UTF-8. It also searches the mount table and the
// parent folders.
std::optional<Capacity> LinuxMountQueries::capacity(const std::string& mountPoint) const
{
    struct stat status {};
    struct statvfs values {};
    if (::stat(mountPoint.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) ||
        ::statvfs(mountPoint.c_str(), &values) != 0) {
        return std::nullopt;
    }
    return Capacity{bytesOf(values.f_blocks, values.f_frsize), bytesOf(values.f_bavail, values.f_frsize)};
}

// libblkid reads labels from the device, which takes root, or from its cache, which only root fills.
std::string LinuxMountQueries::label(const std::string& source) const
{
    const std::optional<dev_t> device = source.starts_with("/dev/") ? blockDevice(source.c_str()) : std::nullopt;
    std::error_code missing;
    for (fs::directory_iterator link("/dev/disk/by-label", missing), end; device && !missing && link != end;
         link.increment(missing)) {
        if (blockDevice(link->path().c_str()) == device) {
            return decodedLabel(link->path().filename().native());
        }
    }
    return {};
}

std::string decodedLabel(std::string_view linkName)
{
    std::string label;
    for (std::size_t i = 0; i < linkName.size(); ++i) {
        const char* digits = linkName.data() + i + 2;
        unsigned byte = 0;
        if (linkName.substr(i, 2) == "\\x" && i + 3 < linkName.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            label += static_cast<char>(byte);
            i += 3;
        } else {
            label += linkName[i];
        }
    }
    return label;
}

LinuxVolumes::LinuxVolumes(std::shared_ptr<const MountQueries> queries, std::chrono::milliseconds patience)
    : m_queries(std::move(queries))
    , m_patience(patience)
{
}

std::vector<MountedVolume> LinuxVolumes::mountedVolumes() const
{
    const auto end = std::chrono::steady_clock::now() + m_patience;
    const std::vector<Mount> mounts = mountsForPeople(m_queries->mountInfo());
    CapacityRound round(m_queries, mounts.size());
    for (std::size_t i = 0; i < mounts.size(); ++i) {
        if (!mounts[i].answersAtOnce) {
            round.askOnThread(i, mounts[i].mountPoint);
        }
    }
    for (std::size_t i = 0; i < mounts.size(); ++i) {
        if (mounts[i].answersAtOnce) {
            round.ask(i, mounts[i].mountPoint);
        }
    }
    const std::vector<std::optional<Capacity>> capacities = round.answersUntil(end);

    std::vector<MountedVolume> volumes;
    for (std::size_t i = 0; i < mounts.size(); ++i) {
        if (capacities[i]) {
            volumes.push_back({FileUrl::fromPath(mounts[i].mountPoint), validUtf8(m_queries->label(mounts[i].source)),
                               capacities[i]->total, capacities[i]->available});
        }
    }
    return volumes;
}

} // namespace morlaine
