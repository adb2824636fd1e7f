#include "UI/Views/Inspector/DetailView.h"

#include "UI/Views/Inspector/EmptyPanel.h"
#include "UI/Views/Inspector/NodePanel.h"
#include "UI/Views/Inspector/ScanningPanel.h"
#include "UI/Views/State/MainViewModel.h"
#include "UI/Widgets/Scrollable.h"

#include <utility>

namespace morlaine {

namespace {

constexpr QSize least(240, 120);

} // namespace

DetailView::DetailView(MainViewModel& viewModel, QWidget* parent)
    : QStackedWidget(parent)
    , m_viewModel(viewModel)
    , m_observer(viewModel, [this] { refresh(); })
{
    setAccessibleName(QStringLiteral("Inspector"));
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

template <typename Content, typename... Arguments>
Content& DetailView::turnTo(Page<Content>& page, Arguments&&... arguments)
{
    if (page.panel == nullptr) {
        page.panel = new Content(std::forward<Arguments>(arguments)...);
        page.area = scrollable(page.panel);
        addWidget(page.area);
    }
    setCurrentWidget(page.area);
    return *page.panel;
}

void DetailView::refresh()
{
    switch (panel()) {
    case InspectorText::Panel::scanning:
        return turnTo(m_scanningPage, m_viewModel).refresh();
    case InspectorText::Panel::node:
        return turnTo(m_nodePage, m_viewModel).refresh();
    case InspectorText::Panel::empty:
        return turnTo(m_emptyPage).setMessage(message());
    }
}

} // namespace morlaine
