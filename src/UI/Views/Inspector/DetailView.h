#pragma once

#include "UI/Views/Inspector/InspectorText.h"
#include "Utilities/ChangeObserver.h"

#include <QStackedWidget>

namespace morlaine {

class EmptyPanel;
class MainViewModel;
class NodePanel;
class ScanningPanel;

/// The inspector: the progress of a running scan, otherwise the selected item with its actions, otherwise an invitation
/// to select one. It has no state of its own and scrolls if it is too low. Transparent; needs a width of 240 points.
class DetailView final : public QStackedWidget {
    Q_OBJECT

public:
    explicit DetailView(MainViewModel& viewModel, QWidget* parent = nullptr);

    /// Whether the progress of a running scan, with its button, is shown.
    [[nodiscard]] bool isCancelOffered() const;

    /// Cancels a running scan; returns whether there was one.
    bool cancelIfScanning();

    /// The last error message, if the inspector shows it.
    [[nodiscard]] std::optional<QString> message() const;

    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    [[nodiscard]] InspectorText::Panel panel() const;
    void refresh();

    /// A panel and what it scrolls in. They are made when they are first shown, which makes the window appear sooner.
    template <typename Content>
    struct Page {
        Content* panel = nullptr;
        QWidget* area = nullptr;
    };

    template <typename Content, typename... Arguments>
    Content& turnTo(Page<Content>& page, Arguments&&... arguments);

    MainViewModel& m_viewModel;
    Page<ScanningPanel> m_scanningPage;
    Page<NodePanel> m_nodePage;
    Page<EmptyPanel> m_emptyPage;
    ChangeObserver m_observer;
};

} // namespace morlaine
