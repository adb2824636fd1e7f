#include "UI/Views/Inspector/DetailView.h"

#include "UI/Views/Inspector/EmptyPanel.h"
#include "UI/Views/Inspector/NodePanel.h"
#include "UI/Views/Inspector/ScanningPanel.h"
#include "UI/Views/State/MainViewModel.h"
#include "UI/Widgets/Scrollable.h"

namespace morlaine {

namespace {

constexpr QSize least(240, 120);

} // namespace

DetailView::DetailView(MainViewModel& viewModel, QWidget* parent)
    : QStackedWidget(parent)
    , m_viewModel(viewModel)
    , m_scanningPanel(new ScanningPanel(viewModel.scanner()))
    , m_nodePanel(new NodePanel(viewModel))
    , m_emptyPanel(new EmptyPanel)
    , m_observer(viewModel, [this] { refresh(); })
{
    setAccessibleName(QStringLiteral("Inspector"));
    // In the order of InspectorText::Panel.
    addWidget(scrollable(m_scanningPanel));
    addWidget(scrollable(m_nodePanel));
    addWidget(scrollable(m_emptyPanel));
    connect(m_scanningPanel, &ScanningPanel::cancelRequested, this, &DetailView::cancelIfScanning);
    refresh();
}

bool DetailView::isCancelOffered() const
{
    return m_viewModel.scanner().isScanning();
}

bool DetailView::cancelIfScanning()
{
    const bool isScanning = isCancelOffered();
    if (isScanning) {
        m_viewModel.cancelScan();
    }
    return isScanning;
}

QSize DetailView::minimumSizeHint() const
{
    return least;
}

InspectorText::Panel DetailView::panel() const
{
    return InspectorText::panelFor(isCancelOffered(), m_viewModel.selectedNode().has_value());
}

std::optional<QString> DetailView::message() const
{
    return panel() == InspectorText::Panel::empty ? m_viewModel.scanner().errorMessage() : std::nullopt;
}

void DetailView::refresh()
{
    const auto shown = panel();
    switch (shown) {
    case InspectorText::Panel::scanning:
        m_scanningPanel->refresh();
        break;
    case InspectorText::Panel::node:
        m_nodePanel->refresh();
        break;
    case InspectorText::Panel::empty:
        m_emptyPanel->setMessage(message());
        break;
    }
    setCurrentIndex(static_cast<int>(shown));
}

} // namespace morlaine
