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

/// The details of the selected node and what can be done with it. The actions are those of the model, on the node that
/// is selected when they are asked for.
class NodePanel final : public QWidget {
    Q_OBJECT

public:
    explicit NodePanel(MainViewModel& viewModel, QWidget* parent = nullptr);

    /// Shows the selected node; leaves everything as it is where there is none.
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
    std::vector<ActionButton*> m_actions; // one for each that the inspector offers
};

} // namespace morlaine
