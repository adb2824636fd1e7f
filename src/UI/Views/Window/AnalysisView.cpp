#include "UI/Views/Window/AnalysisView.h"

#include "UI/Views/Chart/PieChartView.h"
#include "UI/Views/Search/SearchFilterView.h"
#include "UI/Views/State/MainViewModel.h"
#include "UI/Views/Treemap/TreemapView.h"

#include <QVBoxLayout>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int narrowestPane = 280;
constexpr int narrowestSearch = 190; // if there is not enough room for both panes
constexpr int lowestPane = 140;
constexpr int idealPaneHeight = 200;
constexpr int highestPane = 360;

} // namespace

AnalysisView::AnalysisView(MainViewModel& viewModel, QWidget* parent)
    : QSplitter(Qt::Vertical, parent)
    , m_search(new SearchFilterView(viewModel))
    , m_chart(new PieChartView(viewModel))
    , m_bottom(new QSplitter(Qt::Horizontal))
{
    m_bottom->setChildrenCollapsible(false);
    m_bottom->addWidget(m_search);
    m_bottom->addWidget(m_chart);
    m_bottom->setSizes({1000, 1000});

    // A splitter takes its own limits from its parts, so a plain widget around it keeps the height.
    auto* pane = new QWidget;
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins({});
    column->addWidget(m_bottom);
    pane->setMinimumHeight(lowestPane);
    pane->setMaximumHeight(highestPane);

    setChildrenCollapsible(false);
    addWidget(new TreemapView(viewModel));
    addWidget(pane);
    handle(1)->setAccessibleName(QStringLiteral("Divider below the treemap"));
    m_bottom->handle(1)->setAccessibleName(QStringLiteral("Divider between search and chart"));
    setStretchFactor(0, 1);
    setStretchFactor(1, 0);
    setSizes({highestPane * 4, idealPaneHeight});
}

/// In the smallest window there is less room than the two panes want. The search then shrinks first, since its texts
/// elide better than the chart's.
void AnalysisView::resizeEvent(QResizeEvent* event)
{
    const int room = width() - m_bottom->handleWidth();
    const int forSearch = std::clamp(room - narrowestPane, narrowestSearch, narrowestPane);
    m_search->setMinimumWidth(forSearch);
    m_chart->setMinimumWidth(std::min(narrowestPane, room - forSearch));
    QSplitter::resizeEvent(event);
}

void AnalysisView::focusSearchField()
{
    m_search->focusSearchField();
}

} // namespace morlaine
