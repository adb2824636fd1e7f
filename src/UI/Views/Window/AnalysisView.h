#pragma once

#include <QSplitter>

namespace morlaine {

class MainViewModel;
class PieChartView;
class SearchFilterView;

/// The middle of the window while a tree is shown: the treemap above the search and the chart.
class AnalysisView final : public QSplitter {
    Q_OBJECT

public:
    /// Below this width its parts are narrower than they should be. In points.
    static constexpr int comfortableWidth = 566;

    explicit AnalysisView(MainViewModel& viewModel, QWidget* parent = nullptr);

    /// Moves the keyboard focus into the search field.
    void focusSearchField();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    SearchFilterView* const m_search;
    PieChartView* const m_chart;
    QSplitter* const m_bottom;
};

} // namespace morlaine
