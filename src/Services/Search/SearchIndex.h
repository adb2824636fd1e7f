#pragma once

#include "Services/Search/SearchResults.h"
#include "Utilities/FileCategory.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>

namespace morlaine {

/// Searches the nodes of one tree by text, category and size. The tree already holds everything that a search needs, so
/// that making an index costs nothing. Immutable; keeps the tree alive. Any thread.
class SearchIndex {
public:
    explicit SearchIndex(const FileNode& root);

    /// All nodes, root and folders included, that pass every filter that is set, in pre-order.
    ///
    /// `text` is trimmed and lower-cased. It must be part of the lower-case name or path (see SearchResultNode), or
    /// equal the lower-case extension. An empty text is no filter. Sizes are in bytes, and both limits are inclusive.
    [[nodiscard]] SearchResults search(const QString& text, std::optional<FileCategory> category,
                                       std::optional<std::int64_t> minSize, std::optional<std::int64_t> maxSize) const;

private:
    FileNode m_root;
    std::string m_lowerRootPath; // valid UTF-8
};

} // namespace morlaine
