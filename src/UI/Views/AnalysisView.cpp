#include "UI/Views/AnalysisView.h"

#include "UI/Views/MainViewModel.h"
#include "UI/Views/SearchFilterView.h"
#include "UI/Views/TreemapView.h"

namespace morlaine {

namespace {

constexpr int narrowestPane = 280;
constexpr int lowestPane = 140;
constexpr int idealPaneHeight = 200;
constexpr int highestPane = 360;

} // namespace

AnalysisView::AnalysisView(MainViewModel& viewModel, QWidget* parent)
    : QSplitter(Qt::Vertical, parent)
    , m_search(new SearchFilterView(viewModel))
{
    auto* treemap = new TreemapView(viewModel);
    auto* chart = new QWidget;
    chart->setMinimumWidth(narrowestPane);

    auto* bottom = new QSplitter(Qt::Horizontal);
    bottom->setChildrenCollapsible(false);
    bottom->addWidget(m_search);
    bottom->addWidget(chart);
    bottom->setMinimumHeight(lowestPane);
    bottom->setMaximumHeight(highestPane);

    setChildrenCollapsible(false);
    addWidget(treemap);
    addWidget(bottom);
    setStretchFactor(0, 1);
    setStretchFactor(1, 0);
    setSizes({highestPane * 4, idealPaneHeight});
}

void AnalysisView::focusSearchField()
{
    m_search->focusSearchField();
}

} // namespace morlaine
