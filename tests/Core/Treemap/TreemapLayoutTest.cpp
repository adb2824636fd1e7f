#include "Core/Treemap/TreemapLayout.h"

#include "Support/TreeText.h"

#include <gtest/gtest.h>

#include <random>

namespace morlaine {
namespace {

/// With enough rectangles for many blocks, at random places.
TEST(TreemapLayout, FindsTheFileElseTheOutermostFolderAsAPlainSearchDoes)
{
    std::string text = "root/\n";
    for (int index = 0; index < 1'000; ++index) {
        text += "  f" + std::to_string(index) + (index % 5 == 0 ? "/\n" : " 1\n");
    }
    const FileNode root = test::treeFromText(text);
    std::mt19937 generator(20'010'101);
    const auto below = [&generator](unsigned limit) { return static_cast<double>(generator() % limit); };
    TreemapLayout layout;
    layout.restart(root);
    for (Tree::Position node = 1; node < root.tree().size(); node += 2) {
        layout.add(node, {below(100), below(100), below(20), below(20)}, 0);
    }
    for (int round = 0; round < 2'000; ++round) {
        const double x = below(120);
        const double y = below(120);
        std::optional<std::size_t> plain;
        std::optional<std::size_t> innermost;
        for (std::size_t index = 0; index < layout.size(); ++index) {
            const auto [node, rect, color, depth] = layout[index];
            const bool isHit = x >= rect.x && x < rect.x + rect.width && y >= rect.y && y < rect.y + rect.height;
            if (isHit && (!plain || (layout[*plain].node.isDirectory() && !node.isDirectory()))) {
                plain = index;
            }
            innermost = isHit ? index : innermost;
        }
        ASSERT_EQ(layout.hitTest(x, y), plain) << x << ", " << y;
        ASSERT_EQ(layout.innermostAt(x, y), innermost) << x << ", " << y;
    }

    const FileNode copy = test::treeFromText(text);
    for (Tree::Position node = 0; node < root.tree().size(); ++node) {
        const auto expected = node % 2 == 1 ? std::optional<std::size_t>(node / 2) : std::nullopt;
        ASSERT_EQ(layout.indexOf(FileNode::at(root.tree(), node)), expected);
        ASSERT_EQ(layout.indexOf(FileNode::at(copy.tree(), node)), std::nullopt) << "of another tree with other ids";
    }
}

} // namespace
} // namespace morlaine
