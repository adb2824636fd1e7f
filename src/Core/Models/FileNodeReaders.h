#pragma once

#include "Core/Models/FileNode.h"
#include "Utilities/DecodeError.h"

#include <cstddef>
#include <optional>
#include <variant>

class QIODevice;

namespace morlaine {

/// The deepest nesting of objects that is read. Since each url contains the names of all folders above, a real tree of
/// this depth would take more than ten gigabytes of text.
inline constexpr std::size_t deepestLevel = 100'000;

/// Reads the exact form in which this program writes a tree: keys in order, no white space, each url one component
/// longer than that of its folder. Much faster than `readAnyForm`. Returns nothing for any other text, valid or not,
/// possibly for a node of more than 128 KiB, and for a device that cannot be read. Throws TreeTooLarge and
/// std::bad_alloc.
[[nodiscard]] std::optional<FileNode> readExactForm(QIODevice& source);

/// Reads any JSON text of a tree, or says why it is invalid.
[[nodiscard]] std::variant<FileNode, DecodeError> readAnyForm(QIODevice& source);

} // namespace morlaine
