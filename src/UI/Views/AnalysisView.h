#pragma once

#include <QSplitter>

namespace morlaine {

class MainViewModel;
class SearchFilterView;

/// What fills the middle of the window while a tree is shown: the treemap above the search and the chart.
class AnalysisView final : public QSplitter {
    Q_OBJECT

public:
    explicit AnalysisView(MainViewModel& viewModel, QWidget* parent = nullptr);

    /// Moves the keyboard focus into the search field.
    void focusSearchField();

private:
    SearchFilterView* const m_search;
};

} // namespace morlaine
