#pragma once

#include "Core/Models/FileNode.h"
#include "Utilities/DecodeError.h"

#include <variant>

class QIODevice;

namespace morlaine {

/// Writes a tree as one compact JSON object to `sink` (open for writing), through a buffer of fixed size. False when
/// writing fails; what was written before stays in the sink. Any thread.
[[nodiscard]] bool encodeFileNode(const FileNode& root, QIODevice& sink);

/// Reads one tree from `source` (open for reading) to its end. The text must be exactly one valid object; any error
/// rejects it as a whole. Uses bounded memory besides the tree, whatever the text. Any thread.
[[nodiscard]] std::variant<FileNode, DecodeError> decodeFileNode(QIODevice& source);

} // namespace morlaine
