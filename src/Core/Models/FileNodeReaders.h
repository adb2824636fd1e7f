#pragma once

#include "Core/Models/FileNode.h"
#include "Utilities/DecodeError.h"

#include <cstddef>
#include <optional>
#include <variant>

class QIODevice;

namespace morlaine {

/// Objects may nest this deep. Every node's url holds the names of all folders above it, so that a true tree of such
/// depth would fill more than ten gigabytes of text.
inline constexpr std::size_t deepestLevel = 100'000;

/// Reads the one form in which this program writes a tree: keys in their order, no white space, each url that of the
/// folder with one component more. Much quicker than the other reader. Nothing for every other text, be it right or
/// wrong, for a node that fills more than a good part of a mebibyte, and for a device that cannot be read. Throws
/// TreeTooLarge and std::bad_alloc.
[[nodiscard]] std::optional<FileNode> readExactForm(QIODevice& source);

/// Reads any JSON text of a tree, and says what is wrong with one that is none.
[[nodiscard]] std::variant<FileNode, DecodeError> readAnyForm(QIODevice& source);

} // namespace morlaine
