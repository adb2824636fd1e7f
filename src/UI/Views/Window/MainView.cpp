#include "UI/Views/Window/MainView.h"

#include "UI/Styles/Theme.h"
#include "UI/Styles/VisualEffectWidget.h"
#include "UI/Views/Inspector/DetailView.h"
#include "UI/Views/Sidebar/SidebarView.h"
#include "UI/Views/Window/AnalysisView.h"
#include "UI/Views/Window/FolderDrop.h"
#include "UI/Views/Window/MainToolbar.h"
#include "UI/Views/Window/MessageBanner.h"
#include "UI/Views/Window/Notification.h"
#include "UI/Views/Window/OnboardingView.h"
#include "UI/Views/Window/WindowColumns.h"
#include "Utilities/ShownText.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace morlaine {

namespace {

constexpr QSize minimumContentSize(960, 640);
constexpr QSize preferredSize(1280, 820);
constexpr int narrowestCentralArea = 400;
constexpr SideColumn::Widths sidebarWidths{200, 240, 360};
constexpr SideColumn::Widths inspectorWidths{240, 280, 420};

/// Controls that the space bar presses.
bool isPressedBySpace(const QWidget* widget)
{
    return qobject_cast<const QAbstractButton*>(widget) != nullptr || qobject_cast<const QComboBox*>(widget) != nullptr;
}

/// Moves `part` to the end of the tab order, which follows the order of construction otherwise.
void moveToEndOfTabOrder(const QWidget& part)
{
    QWidget* const window = part.window();
    std::vector<QWidget*> members;
    QWidget* last = nullptr;
    for (QWidget* next = window->nextInFocusChain(); next != window; next = next->nextInFocusChain()) {
        if (part.isAncestorOf(next)) {
            members.push_back(next);
        } else if (next->focusPolicy() & Qt::TabFocus) {
            last = next;
        }
    }
    for (QWidget* member : members) {
        if (last != nullptr && member->focusPolicy() & Qt::TabFocus) {
            QWidget::setTabOrder(last, member);
            last = member;
        }
    }
}

} // namespace

MainView::MainView(const MainViewModel::Environment& environment, std::unique_ptr<FolderChooser> folderChooser,
                   QWidget* parent)
    : QMainWindow(parent)
    , m_viewModel(std::make_unique<MainViewModel>(environment))
    , m_folderChooser(std::move(folderChooser))
    , m_workspace(environment.workspace)
    , m_fileSystem(environment.fileSystem)
    , m_observer(*m_viewModel, [this] { refresh(); })
{
    setWindowTitle(QStringLiteral("Morlaine"));
    setContextMenuPolicy(Qt::NoContextMenu);
    setUnifiedTitleAndToolBarOnMac(true);
    buildToolbar();
    buildCentralArea();
    buildColumns();
    bindShortcuts();
    acceptFolders();
    m_banner = new MessageBanner(this);
    m_notification = new Notification(this);
    connect(&m_viewModel->scanner(), &DiskScanner::failed, this, &MainView::showFailure);
    refresh();
    // Otherwise the first button would have the focus, and with it the space bar.
    setFocus();
    resize(preferredSize.boundedTo(screen()->availableSize()));
}

MainView::~MainView() = default;

void MainView::buildToolbar()
{
    m_toolbar = new MainToolbar(this);
    addToolBar(m_toolbar);
    connect(m_toolbar, &MainToolbar::sidebarToggled, this, &MainView::toggleSidebar);
    connect(m_toolbar, &MainToolbar::inspectorToggled, this, &MainView::toggleInspector);
    connect(m_toolbar, &MainToolbar::backRequested, m_viewModel.get(), &MainViewModel::navigateBack);
    connect(m_toolbar, &MainToolbar::forwardRequested, m_viewModel.get(), &MainViewModel::navigateForward);
    connect(m_toolbar, &MainToolbar::cancelRequested, m_viewModel.get(), &MainViewModel::cancelScan);
    connect(m_toolbar, &MainToolbar::scanRequested, this, &MainView::selectFolderToScan);
}

void MainView::buildCentralArea()
{
    m_onboarding = new OnboardingView(m_workspace);
    connect(m_onboarding, &OnboardingView::folderRequested, this, [this] { chooseFolder({std::nullopt, "Scan"}); });
    m_centralArea = new QStackedWidget;
    m_centralArea->setMinimumWidth(narrowestCentralArea);
    m_centralArea->addWidget(m_onboarding);
}

void MainView::buildColumns()
{
    QWidget* backing =
        Theme::VisualEffectView{Theme::Material::sidebar, Theme::BlendingMode::withinWindow}.make(nullptr);
    m_detailView = new DetailView(*m_viewModel);
    auto* layout = new QVBoxLayout(backing);
    layout->setContentsMargins({});
    layout->addWidget(m_detailView);
    auto* sidebar = new SideColumn(SideColumn::Side::leading, sidebarWidths, new SidebarView(*m_viewModel));
    auto* inspector = new SideColumn(SideColumn::Side::trailing, inspectorWidths, backing);
    sidebar->setObjectName(QStringLiteral("sidebar"));
    inspector->setObjectName(QStringLiteral("inspector"));
    m_columns = new WindowColumns(sidebar, m_centralArea, inspector, AnalysisView::comfortableWidth);
    m_columns->setMinimumSize(minimumContentSize);
    setCentralWidget(m_columns);
}

void MainView::bindShortcuts()
{
    const auto bind = [this](const QKeySequence& keys, void (MainView::*action)()) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    bind(QKeySequence(Qt::CTRL | Qt::Key_F), &MainView::focusSearchField);
    bind(QKeySequence(Qt::Key_Escape), &MainView::leave);
    bind(QKeySequence(Qt::Key_Space), &MainView::openSelection);
    bind(QKeySequence(Qt::SHIFT | Qt::Key_F10), &MainView::openContextMenu);
}

void MainView::acceptFolders()
{
    auto* drop = new FolderDrop(*this, m_fileSystem, [this] { return !m_viewModel->scanner().isScanning(); });
    connect(drop, &FolderDrop::dropped, m_viewModel.get(), &MainViewModel::scan);
}

void MainView::openFirstFolder(const std::vector<FileUrl>& urls)
{
    if (m_viewModel->scanner().isScanning()) {
        return;
    }
    if (const std::optional<FileUrl> folder = firstFolder(urls, *m_fileSystem)) {
        m_viewModel->scan(*folder);
    }
}

bool MainView::event(QEvent* event)
{
    // Qt asks the focus widget first. Accepting this event sends the key to the widget instead of the shortcut.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Space && key->modifiers() == Qt::NoModifier && isPressedBySpace(focusWidget())) {
            key->accept();
            return true;
        }
    }
    return QMainWindow::event(event);
}

void MainView::refresh()
{
    m_toolbar->setState({m_isSidebarVisible, m_isDetailVisible, m_viewModel->canGoBack(), m_viewModel->canGoForward(),
                         m_viewModel->scanner().isScanning()});
    updateCentralArea();
    announceEndOfScan();
}

/// The tree comes a little later than the end of its scan.
void MainView::announceEndOfScan()
{
    if (m_viewModel->scanner().isScanning()) {
        m_isEndToBeAnnounced = true;
    } else if (!m_isEndToBeAnnounced) {
        return;
    } else if (const std::optional<FileNode>& root = m_viewModel->currentRootNode()) {
        m_isEndToBeAnnounced = false;
        m_notification->announce(QStringLiteral("Scan finished: %1, %2")
                                     .arg(shownText(root->name()), QString::fromStdString(root->formattedSize())));
    } else if (const std::optional<QString> message = m_viewModel->scanner().errorMessage()) {
        m_isEndToBeAnnounced = false;
        if (!m_banner->isVisible()) {
            m_notification->announce(*message);
        }
    }
}

/// Makes a new analysis for the first tree after none was shown.
void MainView::updateCentralArea()
{
    const bool hasTree = m_viewModel->currentRootNode().has_value();
    if (hasTree == (m_analysis != nullptr)) {
        return;
    }
    if (hasTree) {
        m_analysis = new AnalysisView(*m_viewModel);
        m_centralArea->setCurrentIndex(m_centralArea->addWidget(m_analysis));
        moveToEndOfTabOrder(*m_detailView);
    } else {
        if (m_analysis->isAncestorOf(focusWidget())) {
            setFocus(); // otherwise the first button would get the focus, and with it the space bar
        }
        m_centralArea->removeWidget(m_analysis);
        std::exchange(m_analysis, nullptr)->deleteLater();
    }
}

void MainView::toggleSidebar()
{
    m_isSidebarVisible = !m_isSidebarVisible;
    m_columns->setShown(WindowColumns::Side::leading, m_isSidebarVisible);
    refresh();
}

void MainView::toggleInspector()
{
    m_isDetailVisible = !m_isDetailVisible;
    m_columns->setShown(WindowColumns::Side::trailing, m_isDetailVisible);
    if (m_isDetailVisible) {
        m_banner->hide(); // the inspector shows the message
    }
    refresh();
}

void MainView::selectFolderToScan()
{
    chooseFolder({"Select Folder to Scan", "Scan"});
}

void MainView::chooseFolder(const FolderChooser::Texts& texts)
{
    m_folderChooser->choose(*this, texts, [this](const FileUrl& folder) { m_viewModel->scan(folder); });
}

/// Escape cancels a running scan, otherwise leaves the folder zoomed into. Open lists and menus handle the key
/// themselves.
void MainView::leave()
{
    if (!m_detailView->cancelIfScanning()) {
        m_viewModel->zoomOut();
    }
}

/// Shows the message if the inspector does not.
void MainView::showFailure()
{
    const std::optional<QString> message = m_viewModel->scanner().errorMessage();
    if (message && !(m_isDetailVisible && m_detailView->message())) {
        m_banner->showMessage(*message);
    }
}

void MainView::openSelection()
{
    if (const std::optional<FileNode> node = m_viewModel->selectedNode()) {
        m_viewModel->openFile(*node);
    }
}

/// Qt handles the menu key only, which many keyboards lack.
void MainView::openContextMenu()
{
    QWidget* const target = focusWidget() != nullptr ? focusWidget() : this;
    const QPoint place = target->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, target->mapToGlobal(place));
    QApplication::sendEvent(target, &event);
}

void MainView::focusSearchField()
{
    if (m_analysis != nullptr) {
        m_analysis->focusSearchField();
    }
}

} // namespace morlaine
