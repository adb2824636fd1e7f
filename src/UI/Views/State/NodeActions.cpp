#include "UI/Views/State/NodeActions.h"

#include "UI/Views/State/MainViewModel.h"

#include <array>

namespace morlaine {

namespace {

using enum NodeAction;

constexpr QLatin1StringView revealLabel("Reveal in Finder");

constexpr std::array treemapMenu{
    OfferedAction{zoomIn, QLatin1StringView("Zoom In"), true},
    OfferedAction{reveal, revealLabel},
    OfferedAction{open, QLatin1StringView("Open File / Folder")},
    OfferedAction{copyPath, QLatin1StringView("Copy Path")},
};

constexpr std::array resultMenu{
    OfferedAction{reveal, revealLabel},
    OfferedAction{open, QLatin1StringView("Open")},
    OfferedAction{copyPath, QLatin1StringView("Copy Path")},
    OfferedAction{zoomIn, QLatin1StringView("Zoom In")},
};

constexpr std::array inspector{
    OfferedAction{reveal, revealLabel},
    OfferedAction{open, QLatin1StringView("Open File")},
    OfferedAction{copyPath, QLatin1StringView("Copy Absolute Path")},
    OfferedAction{zoomIn, QLatin1StringView("Zoom Into Folder"), true},
};

} // namespace

bool OfferedAction::isFor(const FileNode& node) const
{
    return node.isDirectory() || !isForFoldersOnly;
}

std::span<const OfferedAction> actionsOffered(NodeActionPlace place)
{
    switch (place) {
    case NodeActionPlace::treemapMenu:
        return treemapMenu;
    case NodeActionPlace::resultMenu:
        return resultMenu;
    default:
        return inspector;
    }
}

void perform(NodeAction action, const FileNode& node, MainViewModel& viewModel)
{
    switch (action) {
    case reveal:
        viewModel.revealInFinder(node);
        break;
    case open:
        viewModel.openFile(node);
        break;
    case copyPath:
        viewModel.copyPathToClipboard(node);
        break;
    case zoomIn:
        viewModel.zoomIn(node);
        break;
    }
}

} // namespace morlaine
