#include "UI/Views/Chart/PieChartView.h"

#include "UI/Styles/Conversions.h"
#include "UI/Styles/StyledLabel.h"
#include "UI/Views/Chart/DonutChart.h"
#include "UI/Views/State/MainViewModel.h"
#include "UI/Widgets/ElidingLabel.h"
#include "UI/Widgets/LegendDot.h"
#include "UI/Widgets/NamedRows.h"
#include "UI/Widgets/Scrollable.h"
#include "UI/Widgets/SymbolImage.h"

#include <QGridLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int padding = 10;
constexpr int betweenDonutAndLegend = 24;
constexpr int inLegendRow = 6;
constexpr int narrowestLegend = 96; // leaves room for the whole ring in a pane of minimum width
constexpr int wideLegend = 172;     // leaves room for the smallest ring there
constexpr int leastLetters = 7;     // of a name, as long as the ring can shrink
constexpr int symbolSide = 32;

QString title()
{
    return QStringLiteral("Storage by File Type");
}

} // namespace

PieChartView::PieChartView(MainViewModel& viewModel, QWidget* parent)
    : RoundedBox(0.3, Theme::cornerRadiusMedium, parent)
    , m_viewModel(viewModel)
    , m_content(new QStackedWidget)
    , m_observer(viewModel, [this] { refresh(); })
{
    setAccessibleName(title());
    auto* titleLabel = new ElidingLabel(TextStyle::headline, Theme::textSecondary);
    titleLabel->setText(title());
    m_content->addWidget(makeEmptyState());
    m_content->addWidget(makeChart());

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(static_cast<int>(Theme::paddingSmall));
    column->addWidget(titleLabel);
    column->addWidget(m_content, 1);
    refresh();
}

QWidget* PieChartView::makeEmptyState()
{
    auto* label = new StyledLabel(TextStyle::subheadline, Theme::textSecondary);
    label->setText(QStringLiteral("No scan data available"));
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    auto* state = new QWidget;
    auto* column = new QVBoxLayout(state);
    column->setContentsMargins({});
    column->addStretch();
    column->addWidget(new SymbolImage("chart.donut", symbolSide, Theme::quietPicture), 0, Qt::AlignHCenter);
    column->addWidget(label);
    column->addStretch();
    return state;
}

QWidget* PieChartView::makeChart()
{
    m_donut = new DonutChart;
    m_donut->setAccessibleName(title());

    m_rows = new NamedRows(QStringLiteral("Legend"));
    auto* centred = new QVBoxLayout(m_rows);
    centred->setContentsMargins({});
    m_legend = new QGridLayout;
    m_legend->setSpacing(inLegendRow);
    centred->addStretch();
    centred->addLayout(m_legend);
    centred->addStretch();

    m_legendArea = scrollable(m_rows);
    m_legendArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_legendArea->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // still scrolls
    m_legendArea->setMinimumHeight(0);

    auto* chart = new QWidget;
    auto* row = new QHBoxLayout(chart);
    row->setContentsMargins({});
    row->setSpacing(betweenDonutAndLegend);
    row->addWidget(m_donut);
    row->addWidget(m_legendArea, 1);
    return chart;
}

void PieChartView::refresh()
{
    const auto& root = m_viewModel.currentRootNode();
    const auto id = root ? std::optional(root->id()) : std::nullopt;
    if (id == m_shownRoot) {
        return;
    }
    m_shownRoot = id;
    if (root) {
        showSlices(*root);
    } else {
        m_content->setCurrentIndex(0);
    }
}

void PieChartView::showSlices(const FileNode& root)
{
    std::vector<PieSlice> slices = computeSlices(root);
    m_content->setCurrentIndex(slices.empty() ? 0 : 1);
    showLegend(legendRows(slices, root.size()));
    m_donut->setSlices(std::move(slices), root.size());
}

void PieChartView::showLegend(const std::vector<LegendRow>& rows)
{
    m_rows->forgetRows();
    while (const std::unique_ptr<QLayoutItem> item{m_legend->takeAt(0)}) {
        delete item->widget();
    }
    int line = 0;
    int wished = 0; // by names, beyond the width in which they can barely be recognised
    for (const LegendRow& row : rows) {
        auto* name = new ElidingLabel(TextStyle::caption);
        name->setText(row.name);
        name->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        auto* percentage = new StyledLabel(TextStyle::caption2, Theme::textSecondary);
        percentage->setText(row.percentage);
        m_legend->addWidget(new LegendDot(row.category ? toQColor(row.category->color()) : Theme::grey), line, 0);
        m_legend->addWidget(name, line, 1);
        m_legend->addWidget(percentage, line, 2, Qt::AlignRight | Qt::AlignVCenter);
        m_rows->addRow(*name, *percentage);
        const int width = std::min(name->sizeHint().width(), name->fontMetrics().averageCharWidth() * leastLetters);
        wished = std::max(wished, width - name->minimumSizeHint().width());
        ++line;
    }
    m_legend->setColumnStretch(3, 1);
    m_legendArea->setMinimumWidth(std::clamp(m_legend->minimumSize().width() + wished, narrowestLegend, wideLegend));
}

} // namespace morlaine
