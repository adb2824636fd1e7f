#pragma once

#include "UI/Widgets/RoundedBox.h"
#include "Utilities/ChangeObserver.h"
#include "Utilities/Uuid.h"

#include <optional>
#include <vector>

class QGridLayout;
class QScrollArea;
class QStackedWidget;

namespace morlaine {

class DonutChart;
class FileNode;
class MainViewModel;
class NamedRows;
struct LegendRow;

/// The panel "Storage by File Type": the sizes of the file categories in the whole scan, wherever the treemap is zoomed
/// into. Sums a tree once, when it is first shown.
class PieChartView final : public RoundedBox {
    Q_OBJECT

public:
    explicit PieChartView(MainViewModel& viewModel, QWidget* parent = nullptr);

private:
    [[nodiscard]] QWidget* makeEmptyState();
    [[nodiscard]] QWidget* makeChart();
    void refresh();
    void showSlices(const FileNode& root);
    void showLegend(const std::vector<LegendRow>& rows);

    MainViewModel& m_viewModel;
    QStackedWidget* m_content = nullptr;
    DonutChart* m_donut = nullptr;
    QScrollArea* m_legendArea = nullptr;
    NamedRows* m_rows = nullptr;
    QGridLayout* m_legend = nullptr; // in it
    std::optional<Uuid> m_shownRoot;
    ChangeObserver m_observer;
};

} // namespace morlaine
