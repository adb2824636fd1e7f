#include "Support/PlainSearch.h"

#include "Utilities/Lowercase.h"
#include "Utilities/Utf8.h"

namespace morlaine::test {

namespace {

void flatten(const FileNode& node, const std::string& path, std::vector<PlainHit>& list)
{
    list.push_back({node, path});
    for (const FileNode& child : node.childrenOrNone()) {
        flatten(child, path + "/" + std::string(child.name()), list);
    }
}

bool contains(std::string_view text, const std::string& query)
{
    return lowercased(text).find(query) != std::string::npos;
}

} // namespace

std::vector<PlainHit> plainSearch(const FileNode& root, const std::string& text, std::optional<FileCategory> category,
                                  std::optional<std::int64_t> minSize, std::optional<std::int64_t> maxSize)
{
    std::vector<PlainHit> all;
    flatten(root, validUtf8(root.url().path()), all);
    const std::string query = lowercased(text);
    std::erase_if(all, [&](const PlainHit& entry) {
        const FileNode& node = entry.node;
        const bool hasText = query.empty() || contains(node.name(), query) ||
                             lowercased(validUtf8(node.fileExtension())) == query || contains(entry.path, query);
        return (category && node.fileCategory() != *category) || (minSize && node.size() < *minSize) ||
               (maxSize && node.size() > *maxSize) || !hasText;
    });
    return all;
}

} // namespace morlaine::test
