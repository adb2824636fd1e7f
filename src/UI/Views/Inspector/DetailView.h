#pragma once

#include "UI/Views/Inspector/InspectorText.h"
#include "Utilities/ChangeObserver.h"

#include <QStackedWidget>

namespace morlaine {

class EmptyPanel;
class MainViewModel;
class NodePanel;
class ScanningPanel;

/// The inspector: a running scan's progress, else the selected item with its actions, else an invitation to select one.
/// It keeps no state of its own and scrolls what is higher than itself. Transparent; 240 points are wide enough for it.
class DetailView final : public QStackedWidget {
    Q_OBJECT

public:
    explicit DetailView(MainViewModel& viewModel, QWidget* parent = nullptr);

    /// Whether there is a scan to cancel. The window has one meaning for Escape at a time, and asks.
    [[nodiscard]] bool isCancelOffered() const;

    /// Cancels the scan that runs, if one does; returns whether one did.
    bool cancelIfScanning();

    /// What went wrong last, where nothing else is to be shown.
    [[nodiscard]] std::optional<QString> message() const;

    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    [[nodiscard]] InspectorText::Panel panel() const;
    void refresh();

    MainViewModel& m_viewModel;
    ScanningPanel* m_scanningPanel;
    NodePanel* m_nodePanel;
    EmptyPanel* m_emptyPanel;
    ChangeObserver m_observer;
};

} // namespace morlaine
