#include "GeneratedTree.h"

#include <array>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace morlaine::bench {

namespace {

constexpr int fileCount = 200'000;
constexpr int deepest = 12;
constexpr unsigned seed = 20'010'101;
constexpr std::array<std::string_view, 10> extensions{"jpg",  "mp4", "so",  "h",  "txt",
                                                      "json", "zip", "png", "py", "dat"};

/// Numbers that are the same with every standard library.
class Dice {
public:
    [[nodiscard]] int below(int limit) { return static_cast<int>(m_generator() % static_cast<unsigned>(limit)); }

private:
    std::mt19937 m_generator{seed};
};

std::string nameOf(int number, Dice& dice)
{
    static constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz_-";
    std::string name;
    for (int length = 4 + dice.below(16); length > 0; --length) {
        name += letters[static_cast<std::size_t>(dice.below(static_cast<int>(letters.size())))];
    }
    return name + std::to_string(number);
}

void makeFile(const std::filesystem::path& path, off_t size)
{
    const int descriptor = ::open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    if (descriptor < 0 || ::ftruncate(descriptor, size) != 0) {
        throw std::system_error(errno, std::generic_category(), path.native());
    }
    ::close(descriptor);
}

struct Branch {
    std::filesystem::path path;
    int depth;
};

/// A folder of the tree in memory, before its nodes are made.
struct Plan {
    FileUrl url;
    std::vector<std::size_t> folders;
    std::vector<FileNode> files;
};

} // namespace

void makeGeneratedTree(const std::filesystem::path& folder)
{
    std::ostringstream parameters;
    parameters << '.' << fileCount << '-' << deepest << '-' << seed << ".finished";
    const std::filesystem::path finished = folder.native() + parameters.str();
    if (std::filesystem::exists(finished)) {
        return;
    }
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    Dice dice;
    std::vector<Branch> branches{{folder, 0}};
    for (int number = 0; number < fileCount;) {
        const Branch branch = branches[static_cast<std::size_t>(dice.below(static_cast<int>(branches.size())))];
        if (branch.depth < deepest) {
            const Branch deeper{branch.path / nameOf(number, dice), branch.depth + 1};
            std::filesystem::create_directory(deeper.path);
            branches.push_back(deeper);
        }
        const int width = dice.below(50) == 0 ? 1000 : dice.below(16);
        for (int i = 0; i < width && number < fileCount; ++i, ++number) {
            const std::string_view extension = extensions[static_cast<std::size_t>(dice.below(extensions.size()))];
            makeFile(branch.path / (nameOf(number, dice) + '.' + std::string(extension)), dice.below(1 << 20));
        }
    }
    makeFile(finished, 0);
}

FileNode generatedTree(int nodes)
{
    Dice dice;
    std::vector<Plan> plans{{FileUrl::fromPath("/home/somebody"), {}, {}}};
    std::vector<int> depths{0};
    for (int number = 0; number < nodes; ++number) {
        const auto parent = static_cast<std::size_t>(dice.below(static_cast<int>(plans.size())));
        if (depths[parent] < deepest) {
            plans.push_back({plans[parent].url.appending(nameOf(number, dice)), {}, {}});
            depths.push_back(depths[parent] + 1);
            plans[parent].folders.push_back(plans.size() - 1);
        }
        for (int width = dice.below(50) == 0 ? 1000 : dice.below(16); width > 0 && number < nodes; --width, ++number) {
            const std::string_view extension = extensions[static_cast<std::size_t>(dice.below(extensions.size()))];
            const std::string name = nameOf(number, dice) + '.' + std::string(extension);
            plans[parent].files.push_back(
                FileNode::inFolder(plans[parent].url, name, dice.below(1 << 30), false, FileCategory::from(extension)));
        }
    }
    // Folders stand behind those that hold them, so the last ones are finished first.
    std::vector<std::optional<FileNode>> finished(plans.size());
    for (std::size_t i = plans.size(); i-- > 0;) {
        std::vector<FileNode> children = std::move(plans[i].files);
        for (const std::size_t folder : plans[i].folders) {
            children.push_back(*std::move(finished[folder]));
        }
        finished[i].emplace(plans[i].url, plans[i].url.lastPathComponent(), 0, true, FileCategory::other,
                            std::move(children));
    }
    return *finished.front();
}

} // namespace morlaine::bench
