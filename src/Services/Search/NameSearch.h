#pragma once

#include "Core/Models/FileNode.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace morlaine {

/// Sets the bits of the nodes in `begin`...`end` - 1, not empty. Bit 0 of `marks`, least significant first, is that of
/// position 0.
void markRange(std::span<std::uint64_t> marks, Tree::Position begin, Tree::Position end);

/// Marks the nodes below `root` whose lower-case name contains `query`, which is not empty, and everything inside them.
/// Helper threads take part in a search of many nodes, but are not waited for.
void markNamesWith(const FileNode& root, std::string_view query, std::span<std::uint64_t> marks);

} // namespace morlaine
