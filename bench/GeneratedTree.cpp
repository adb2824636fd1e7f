#include "GeneratedTree.h"

#include "Core/Models/TreeBuilder.h"

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

/// Random numbers that are the same with every standard library.
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
    std::string name;
    int depth;
    std::vector<std::size_t> folders;
    std::vector<std::pair<std::string, std::int64_t>> files;
};

/// A folder whose list is open.
struct OpenPlan {
    const Plan* plan;
    TreeBuilder::Position node;
    std::size_t nextFolder = 0;
    std::int64_t size = 0;
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
    std::vector<Plan> plans{{"somebody", 0, {}, {}}};
    for (int number = 0; number < nodes; ++number) {
        const auto parent = static_cast<std::size_t>(dice.below(static_cast<int>(plans.size())));
        if (plans[parent].depth < deepest) {
            plans[parent].folders.push_back(plans.size());
            plans.push_back({nameOf(number, dice), plans[parent].depth + 1, {}, {}});
        }
        for (int width = dice.below(50) == 0 ? 1000 : dice.below(16); width > 0 && number < nodes; --width, ++number) {
            const std::string_view extension = extensions[static_cast<std::size_t>(dice.below(extensions.size()))];
            plans[parent].files.emplace_back(nameOf(number, dice) + '.' + std::string(extension), dice.below(1 << 30));
        }
    }
    TreeBuilder builder(TreeBuilder::Source::measured);
    std::vector<OpenPlan> open;
    const auto enter = [&](const Plan& plan) {
        const TreeBuilder::Fields folder{Uuid::random(), 0, true, FileCategory::other};
        open.push_back({&plan, open.empty() ? builder.add(folder, "/home/" + plan.name, plan.name)
                                            : builder.addComponent(folder, plan.name)});
        builder.openList();
        for (const auto& [name, size] : plan.files) {
            builder.addComponent({Uuid::random(), size, false, FileCategory::from(FileUrl::pathExtension(name))}, name);
            open.back().size += size;
        }
    };
    enter(plans.front());
    while (!open.empty()) {
        if (OpenPlan& current = open.back(); current.nextFolder < current.plan->folders.size()) {
            enter(plans[current.plan->folders[current.nextFolder++]]);
            continue;
        }
        const OpenPlan left = open.back();
        open.pop_back();
        builder.setSize(left.node, left.size);
        builder.closeList();
        if (!open.empty()) {
            open.back().size += left.size;
        }
    }
    return builder.finish();
}

} // namespace morlaine::bench
