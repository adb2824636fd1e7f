#pragma once

#include "Core/Models/FileNode.h"
#include "UI/Views/State/NodeActions.h"

#include <QMenu>
#include <QString>

#include <optional>

namespace morlaine {

class MainViewModel;

/// The context menu of the treemap, for the node that was the target when it was made. Deletes itself when it closes.
class TreemapMenu final : public QMenu {
    Q_OBJECT

public:
    TreemapMenu(MainViewModel& viewModel, std::optional<FileNode> target, QWidget* parent);

private:
    void showTextsLikeEntries();
    void addText(const QString& text, bool isTitle);
    void run(NodeAction action);

    MainViewModel& m_viewModel;
    std::optional<FileNode> m_target;
};

} // namespace morlaine
