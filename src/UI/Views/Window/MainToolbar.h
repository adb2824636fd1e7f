#pragma once

#include <QToolBar>

class QAction;
class QToolButton;

namespace morlaine {

/// The window's toolbar with its shortcuts. Shows the given state and emits a signal for each action.
class MainToolbar final : public QToolBar {
    Q_OBJECT

public:
    struct State {
        bool isSidebarVisible = true;
        bool isDetailVisible = true;
        bool canGoBack = false;
        bool canGoForward = false;
        bool isScanning = false;

        friend bool operator==(const State&, const State&) = default;
    };

    explicit MainToolbar(QWidget* parent = nullptr);

    void setState(const State& state);

Q_SIGNALS:
    void sidebarToggled();
    void backRequested();
    void forwardRequested();
    void scanRequested();
    void cancelRequested();
    void inspectorToggled();

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildNavigationGroup();
    void buildPrimaryGroup();
    [[nodiscard]] QWidget* makeCancelButton();
    void updateTexts();
    void growIcons();
    void tintCancelButton();

    State m_state;
    QAction* m_sidebar = nullptr;
    QAction* m_back = nullptr;
    QAction* m_forward = nullptr;
    QAction* m_progress = nullptr;
    QAction* m_cancel = nullptr;
    QAction* m_scan = nullptr;
    QAction* m_inspector = nullptr;
};

} // namespace morlaine
