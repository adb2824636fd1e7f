#pragma once

#include "Core/Models/FileNode.h"
#include "Utilities/DecodeError.h"

#include <variant>

class QIODevice;

namespace morlaine {

/// Writes a tree as one compact JSON object to `sink` (open for writing), through a buffer of fixed size whatever the
/// size of the tree. False when the sink takes no more; what it took before stays in it. Any thread.
[[nodiscard]] bool encodeFileNode(const FileNode& root, QIODevice& sink);

/// Reads one tree from `source` (open for reading) to its end. The whole text must be one valid object; any fault
/// fails it as a whole. Memory beside the tree is bounded, whatever the text holds. Any thread.
[[nodiscard]] std::variant<FileNode, DecodeError> decodeFileNode(QIODevice& source);

} // namespace morlaine
