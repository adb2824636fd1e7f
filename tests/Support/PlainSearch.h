#pragma once

#include "Core/Models/FileNode.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace morlaine::test {

struct PlainHit {
    FileNode node;
    std::string path;
};

/// The simplest search: recurses over the tree, builds every path, and lower-cases names, extensions and paths for each
/// query. `text` is trimmed UTF-8.
[[nodiscard]] std::vector<PlainHit> plainSearch(const FileNode& root, const std::string& text,
                                                std::optional<FileCategory> category,
                                                std::optional<std::int64_t> minSize,
                                                std::optional<std::int64_t> maxSize);

} // namespace morlaine::test
