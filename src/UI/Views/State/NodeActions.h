#pragma once

#include <QLatin1StringView>

#include <span>

namespace morlaine {

class FileNode;
class MainViewModel;

/// An action on a node.
enum class NodeAction { reveal, open, copyPath, zoomIn };

/// Where the action is offered.
enum class NodeActionPlace { treemapMenu, resultMenu, inspector };

struct OfferedAction {
    NodeAction action;
    QLatin1StringView label;
    bool isForFoldersOnly = false;

    [[nodiscard]] bool isFor(const FileNode& node) const;
};

/// The actions of that place, in its order and with its labels.
[[nodiscard]] std::span<const OfferedAction> actionsOffered(NodeActionPlace place);

/// Main thread only.
void perform(NodeAction action, const FileNode& node, MainViewModel& viewModel);

} // namespace morlaine
