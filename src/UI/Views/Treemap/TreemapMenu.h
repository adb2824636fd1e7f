#pragma once

#include "Core/Models/FileNode.h"

#include <QMenu>
#include <QString>

#include <optional>
#include <vector>

namespace morlaine {

class MainViewModel;

/// What the treemap's context menu offers for a node, in order. Pure.
struct TreemapMenuEntry {
    enum class Kind { text, title, separator, zoomIn, reveal, open, copyPath };

    Kind kind = Kind::text;
    QString text; // as people read it; empty for the separator
};

[[nodiscard]] std::vector<TreemapMenuEntry> treemapMenuEntries(const std::optional<FileNode>& target);

/// The menu itself, for the node that was the target when it was made. Deletes itself when it closes.
class TreemapMenu final : public QMenu {
    Q_OBJECT

public:
    TreemapMenu(MainViewModel& viewModel, std::optional<FileNode> target, QWidget* parent);

private:
    void showTextsLikeEntries();
    void add(const TreemapMenuEntry& entry);
    void addText(const QString& text, bool isTitle);
    void run(TreemapMenuEntry::Kind kind);

    MainViewModel& m_viewModel;
    std::optional<FileNode> m_target;
};

} // namespace morlaine
