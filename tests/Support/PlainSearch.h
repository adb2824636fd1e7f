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

/// The search once more, as plainly as it can be said: it recurses over the tree, makes every path whole, and
/// lower-cases names, extensions and paths anew for each query. `text` is UTF-8 without white space around it.
[[nodiscard]] std::vector<PlainHit> plainSearch(const FileNode& root, const std::string& text,
                                                std::optional<FileCategory> category,
                                                std::optional<std::int64_t> minSize,
                                                std::optional<std::int64_t> maxSize);

} // namespace morlaine::test
