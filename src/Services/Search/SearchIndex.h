#pragma once

#include "Services/Search/SearchResults.h"
#include "Utilities/FileCategory.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>

namespace morlaine {

/// Finds the nodes of one tree by text, category and size. All that a search needs is in the tree, so that an index
/// costs nothing. Immutable, and keeps the tree alive. Any thread.
class SearchIndex {
public:
    explicit SearchIndex(const FileNode& root);

    /// Every node, the root and folders too, that passes all filters that are set, in pre-order.
    ///
    /// `text` without white space around it and in lower case must be part of the node's name or of its path (that
    /// which SearchResultNode gives) or be its extension, all in lower case; when nothing is left of it, it sets no
    /// filter. Sizes are in bytes; both ends of the range belong to it.
    [[nodiscard]] SearchResults search(const QString& text, std::optional<FileCategory> category,
                                       std::optional<std::int64_t> minSize, std::optional<std::int64_t> maxSize) const;

private:
    FileNode m_root;
    std::string m_lowerRootPath; // valid UTF-8
};

} // namespace morlaine
