#pragma once

#include "Core/Models/FileNode.h"

#include <string>
#include <string_view>

namespace morlaine::test {

/// A tree from indented text, one node per line, two spaces per level: `name size` for a file, `name/` for a folder,
/// whose size is the sum of its contents, `name!` for a folder without a list. Urls lie below `parent`.
[[nodiscard]] FileNode treeFromText(std::string_view text, std::string_view parent = "/");

/// The text of a tree, with ` [category]` behind each category except those of folders and unlisted extensions.
[[nodiscard]] std::string textOfTree(const FileNode& root);

/// Nested folders, `depth` deep, with one file in the innermost.
[[nodiscard]] FileNode chainOfFolders(int depth);

/// Scans a folder on disk without helper threads.
[[nodiscard]] FileNode scan(const FileUrl& url);

/// The folder `/root` with `count` files of one byte, named by their numbers from 0.
[[nodiscard]] FileNode folderOfFiles(int count);

} // namespace morlaine::test
