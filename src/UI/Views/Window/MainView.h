#pragma once

#include "Platform/Desktop/FolderChooser.h"
#include "UI/Views/State/MainViewModel.h"
#include "Utilities/ChangeObserver.h"

#include <QMainWindow>

#include <memory>
#include <vector>

class QStackedWidget;

namespace morlaine {

class AnalysisView;
class DetailView;
class MainToolbar;
class MessageBanner;
class Notification;
class OnboardingView;
class WindowColumns;

/// The window. It owns the state, composes the views, and binds the shortcuts.
class MainView final : public QMainWindow {
    Q_OBJECT

public:
    MainView(const MainViewModel::Environment& environment, std::unique_ptr<FolderChooser> folderChooser,
             QWidget* parent = nullptr);
    ~MainView() override;

    /// The state of the views; lives as long as the window.
    [[nodiscard]] MainViewModel& viewModel() { return *m_viewModel; }

    /// Scans the first of `urls` that is a folder. Does nothing while a scan runs.
    void openFirstFolder(const std::vector<FileUrl>& urls);

    [[nodiscard]] bool isSidebarVisible() const { return m_isSidebarVisible; }
    [[nodiscard]] bool isDetailVisible() const { return m_isDetailVisible; }

protected:
    bool event(QEvent* event) override;

private:
    void buildToolbar();
    void buildColumns();
    void buildCentralArea();
    void bindShortcuts();
    void acceptFolders();

    void refresh();
    void updateCentralArea();
    void announceEndOfScan();

    void toggleSidebar();
    void toggleInspector();
    void selectFolderToScan();
    void chooseFolder(const FolderChooser::Texts& texts);
    void leave();
    void openSelection();
    void openContextMenu();
    void focusSearchField();
    void showFailure();

    const std::unique_ptr<MainViewModel> m_viewModel;
    const std::unique_ptr<FolderChooser> m_folderChooser;
    const std::shared_ptr<Workspace> m_workspace;
    const std::shared_ptr<const FileSystem> m_fileSystem;
    bool m_isSidebarVisible = true;
    bool m_isDetailVisible = true;
    bool m_isEndToBeAnnounced = false;

    MainToolbar* m_toolbar = nullptr;
    WindowColumns* m_columns = nullptr;
    DetailView* m_detailView = nullptr;
    MessageBanner* m_banner = nullptr;
    Notification* m_notification = nullptr;
    QStackedWidget* m_centralArea = nullptr;
    OnboardingView* m_onboarding = nullptr;
    AnalysisView* m_analysis = nullptr; // while a tree is shown
    ChangeObserver m_observer;
};

} // namespace morlaine
