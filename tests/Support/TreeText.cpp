#include "Support/TreeText.h"

#include "Core/Models/TreeBuilder.h"
#include "Core/Scanner/DiskWalk.h"
#include "Platform/FileSystem.h"
#include "Support/TreeWalk.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <vector>

namespace morlaine::test {

namespace {

struct Line {
    std::size_t level;
    std::string_view content;
};

std::vector<Line> linesOf(std::string_view text)
{
    std::vector<Line> lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (const std::size_t indent = line.find_first_not_of(' '); indent != std::string_view::npos) {
            lines.push_back({indent / 2, line.substr(indent)});
        }
    }
    return lines;
}

FileNode fileFromLine(std::string_view line, const FileUrl& folder)
{
    const std::size_t space = line.rfind(' ');
    const std::string_view name = line.substr(0, space);
    std::int64_t size = 0;
    std::from_chars(line.data() + space + 1, line.data() + line.size(), size);
    return {folder.appending(name), name, size, false, FileCategory::from(FileUrl::pathExtension(name)), std::nullopt};
}

FileNode nodeFromLines(const std::vector<Line>& lines, std::size_t& next, const FileUrl& folder)
{
    const Line line = lines.at(next++);
    const std::string_view name = line.content.substr(0, line.content.size() - 1);
    if (line.content.ends_with('!')) {
        return {folder.appending(name), name, 0, true, FileCategory::other, std::nullopt};
    }
    if (!line.content.ends_with('/')) {
        return fileFromLine(line.content, folder);
    }
    const FileUrl url = folder.appending(name);
    std::vector<FileNode> children;
    std::int64_t size = 0;
    while (next < lines.size() && lines[next].level == line.level + 1) {
        children.push_back(nodeFromLines(lines, next, url));
        size += children.back().size();
    }
    return {url, name, size, true, FileCategory::other, std::move(children)};
}

} // namespace

FileNode treeFromText(std::string_view text, std::string_view parent)
{
    const std::vector<Line> lines = linesOf(text);
    std::size_t next = 0;
    FileNode root = nodeFromLines(lines, next, FileUrl::fromPath(parent));
    if (next != lines.size()) {
        throw std::invalid_argument("a line of the tree hangs below nothing");
    }
    return root;
}

std::string textOfTree(const FileNode& root)
{
    std::string text;
    std::size_t level = 0;
    walkTree(
        root,
        [&](const FileNode& node) {
            text += std::string(2 * level++, ' ') + std::string(node.name());
            if (node.isDirectory()) {
                text += node.children() ? "/" : "!";
            } else {
                text += ' ' + std::to_string(node.size());
            }
            if (node.fileCategory() != FileCategory::other) {
                text += " [" + std::string(node.fileCategory().rawValue()) + ']';
            }
            text += '\n';
        },
        [&](const FileNode&) { --level; });
    return text;
}

FileNode chainOfFolders(int depth)
{
    TreeBuilder builder(TreeBuilder::Source::given);
    for (int level = 0; level < depth; ++level) {
        const TreeBuilder::Fields folder{Uuid::random(), 7, true, FileCategory::other};
        if (level == 0) {
            builder.add(folder, "/deep", "deep");
        } else {
            builder.addComponent(folder, "d");
        }
        builder.openList();
    }
    builder.addComponent({Uuid::random(), 7, false, FileCategory::document}, "end.txt");
    for (int level = 0; level < depth; ++level) {
        builder.closeList();
    }
    return builder.finish();
}

FileNode scan(const FileUrl& url)
{
    DiskWalk walk(FileSystem::native(), {}, [](const auto&...) {});
    return walk.scan(url);
}

FileNode folderOfFiles(int count)
{
    TreeBuilder builder(TreeBuilder::Source::given);
    builder.add({Uuid::random(), count, true, FileCategory::other}, "/root", "root");
    builder.openList();
    for (int i = 0; i < count; ++i) {
        builder.addComponent({Uuid::random(), 1, false, FileCategory::other}, std::to_string(i));
    }
    builder.closeList();
    return builder.finish();
}

} // namespace morlaine::test
