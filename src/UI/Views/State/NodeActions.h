#pragma once

#include <QLatin1StringView>

#include <span>

namespace morlaine {

class FileNode;
class MainViewModel;

/// What can be done with a node.
enum class NodeAction { reveal, open, copyPath, zoomIn };

/// Where this is offered.
enum class NodeActionPlace { treemapMenu, resultMenu, inspector };

struct OfferedAction {
    NodeAction action;
    QLatin1StringView label;
    bool isForFoldersOnly = false;

    [[nodiscard]] bool isFor(const FileNode& node) const;
};

/// In the order and the words of the place.
[[nodiscard]] std::span<const OfferedAction> actionsOffered(NodeActionPlace place);

/// Main thread only.
void perform(NodeAction action, const FileNode& node, MainViewModel& viewModel);

} // namespace morlaine
