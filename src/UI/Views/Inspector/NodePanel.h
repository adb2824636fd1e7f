#pragma once

#include "Core/Models/FileNode.h"

#include <QWidget>

#include <array>
#include <vector>

class QLabel;
class QVBoxLayout;

namespace morlaine {

class ActionButton;
class DetailRow;
class ElidingLabel;
class MainViewModel;
class SelectableText;
class SymbolImage;

/// The details of the selected node and its actions. An action applies to the node that is selected when the button is
/// clicked.
class NodePanel final : public QWidget {
    Q_OBJECT

public:
    explicit NodePanel(MainViewModel& viewModel, QWidget* parent = nullptr);

    /// Shows the selected node. Changes nothing if there is none.
    void refresh();

private:
    [[nodiscard]] QWidget* makeHeader();
    void addRows(QVBoxLayout& column);
    void addPath(QVBoxLayout& column);
    void addActions(QVBoxLayout& column);

    void showHeader(const FileNode& node);
    void showRows(const FileNode& node);

    MainViewModel& m_viewModel;
    SymbolImage* m_icon = nullptr;
    ElidingLabel* m_name = nullptr;
    QLabel* m_kind = nullptr;
    std::array<DetailRow*, 3> m_rows{};
    SelectableText* m_path = nullptr;
    std::vector<ActionButton*> m_actions; // one for each action of the inspector
};

} // namespace morlaine
