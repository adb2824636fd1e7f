#pragma once

#include "Core/Models/FileNode.h"

#include <string>
#include <string_view>

namespace morlaine::test {

/// A tree from indented text, one node a line, two spaces a level: `name size` for a file, `name/` for a folder, whose
/// size is the sum of what it holds, `name!` for a folder without a list. Urls lie below `parent`.
[[nodiscard]] FileNode treeFromText(std::string_view text, std::string_view parent = "/");

/// The same text for a tree, with ` [category]` behind every category but that of folders and unlisted extensions.
[[nodiscard]] std::string textOfTree(const FileNode& root);

/// A chain of folders `depth` deep, each in the one before, with one file at its end.
[[nodiscard]] FileNode chainOfFolders(int depth);

/// What a walk without helper threads makes of a folder of this machine.
[[nodiscard]] FileNode scan(const FileUrl& url);

/// The folder `/root` with `count` files of one byte, named by their numbers from 0 on.
[[nodiscard]] FileNode folderOfFiles(int count);

} // namespace morlaine::test
