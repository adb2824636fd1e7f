#include "UI/Views/Window/MainToolbar.h"

#include "UI/Styles/Symbols.h"
#include "UI/Styles/Theme.h"
#include "UI/Widgets/ProgressIndicator.h"

#include <QAction>
#include <QEvent>
#include <QStyleOptionToolButton>
#include <QToolButton>
#include <QWidgetAction>

#include <utility>

namespace morlaine {

namespace {

constexpr int iconSide = 18;
constexpr int roomBesideIcon = 4; // on each side

/// Has more room between its icon and its text than styles leave.
class LabelledButton final : public QToolButton {
public:
    using QToolButton::QToolButton;

protected:
    void initStyleOption(QStyleOptionToolButton* option) const override
    {
        QToolButton::initStyleOption(option);
        option->iconSize.rwidth() += 2 * roomBesideIcon;
    }
};

class LabelledAction final : public QWidgetAction {
public:
    using QWidgetAction::QWidgetAction;

protected:
    QWidget* createWidget(QWidget* parent) override
    {
        auto* button = new LabelledButton(parent);
        button->setAutoRaise(true);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setDefaultAction(this);
        return button;
    }
};

/// The name is the accessible name of the picture.
QAction* addButton(QToolBar& toolbar, QAction* action, SymbolName symbol, const QString& name)
{
    action->setIcon(Symbols::icon(symbol));
    action->setText(name);
    action->setIconText(name);
    toolbar.addAction(action);
    toolbar.widgetForAction(action)->setAccessibleName(name);
    toolbar.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    action->setAutoRepeat(false);
    return action;
}

QAction* addButton(QToolBar& toolbar, SymbolName symbol, const QString& name)
{
    return addButton(toolbar, new QAction(&toolbar), symbol, name);
}

/// If a button with the focus disappeared, its neighbour would get the focus, and with it the space bar.
void setAvailable(const QToolBar& toolbar, QAction& action, bool isEnabled, bool isVisible)
{
    if (toolbar.widgetForAction(&action)->hasFocus() && !(isEnabled && isVisible)) {
        toolbar.window()->setFocus();
    }
    action.setEnabled(isEnabled);
    action.setVisible(isVisible);
}

} // namespace

MainToolbar::MainToolbar(QWidget* parent) : QToolBar(parent)
{
    setObjectName(QStringLiteral("toolbar"));
    setAccessibleName(tr("Toolbar"));
    setMovable(false);
    setFloatable(false);
    growIcons();
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    buildNavigationGroup();
    auto* space = new QWidget(this);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(space);
    buildPrimaryGroup();
    updateTexts();
    // For what has no room.
    findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))->setAccessibleName(QStringLiteral("More"));
}

void MainToolbar::buildNavigationGroup()
{
    const bool isMirrored = isRightToLeft();
    m_sidebar = addButton(*this, isMirrored ? SymbolName("sidebar.trailing") : SymbolName("sidebar.leading"),
                          QStringLiteral("Disks Sidebar"));
    m_sidebar->setShortcuts({QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_S), QKeySequence(Qt::CTRL | Qt::Key_S)});
    connect(m_sidebar, &QAction::triggered, this, &MainToolbar::sidebarToggled);
    m_sidebar->setCheckable(true);
    m_back = addButton(*this, isMirrored ? SymbolName("chevron.right") : SymbolName("chevron.left"),
                       QStringLiteral("Go Back"));
    connect(m_back, &QAction::triggered, this, &MainToolbar::backRequested);
    m_forward = addButton(*this, isMirrored ? SymbolName("chevron.left") : SymbolName("chevron.right"),
                          QStringLiteral("Go Forward"));
    connect(m_forward, &QAction::triggered, this, &MainToolbar::forwardRequested);
}

void MainToolbar::buildPrimaryGroup()
{
    m_progress = addWidget(new ProgressIndicator(ProgressIndicator::Size::small, QStringLiteral("Scanning"), this));
    m_cancel = addWidget(makeCancelButton());
    tintCancelButton();

    m_scan = addButton(*this, new LabelledAction(this), "folder.badge.plus", QStringLiteral("Scan Folder..."));
    m_scan->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    connect(m_scan, &QAction::triggered, this, &MainToolbar::scanRequested);

    m_inspector = addButton(*this, isRightToLeft() ? SymbolName("sidebar.leading") : SymbolName("sidebar.trailing"),
                            QStringLiteral("Inspector"));
    m_inspector->setShortcut(QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_I));
    m_inspector->setCheckable(true);
    connect(m_inspector, &QAction::triggered, this, &MainToolbar::inspectorToggled);
}

/// Not an action: its button would repeat the label in a tooltip.
QWidget* MainToolbar::makeCancelButton()
{
    auto* button = new QToolButton;
    button->setText(QStringLiteral("Cancel"));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, &MainToolbar::cancelRequested);
    return button;
}

void MainToolbar::setState(const State& state)
{
    if (std::exchange(m_state, state) != state) {
        updateTexts();
    }
}

void MainToolbar::updateTexts()
{
    m_sidebar->setChecked(m_state.isSidebarVisible);
    m_inspector->setChecked(m_state.isDetailVisible);
    m_sidebar->setToolTip(m_state.isSidebarVisible ? QStringLiteral("Hide Disks Sidebar (⌥⌘S or ⌘S)")
                                                   : QStringLiteral("Show Disks Sidebar (⌥⌘S or ⌘S)"));
    m_inspector->setToolTip(m_state.isDetailVisible ? QStringLiteral("Hide Inspector (⌥⌘I)")
                                                    : QStringLiteral("Show Inspector (⌥⌘I)"));
    m_scan->setToolTip(QStringLiteral("Select folder to scan disk space"));
    m_back->setToolTip(QStringLiteral("Go Back"));
    m_forward->setToolTip(QStringLiteral("Go Forward"));
    m_progress->setVisible(m_state.isScanning);
    setAvailable(*this, *m_back, m_state.canGoBack, true);
    setAvailable(*this, *m_forward, m_state.canGoForward, true);
    setAvailable(*this, *m_cancel, true, m_state.isScanning);
    setAvailable(*this, *m_scan, !m_state.isScanning, !m_state.isScanning); // also disables the shortcut
}

void MainToolbar::changeEvent(QEvent* event)
{
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        growIcons();
    }
    if (event->type() == QEvent::PaletteChange && m_cancel != nullptr) {
        tintCancelButton();
    }
}

void MainToolbar::growIcons()
{
    setIconSize({Symbols::grown(iconSide), Symbols::grown(iconSide)});
}

void MainToolbar::tintCancelButton()
{
    QPalette tinted;
    tinted.setColor(QPalette::ButtonText, Theme::textOfCancelling(palette()));
    widgetForAction(m_cancel)->setPalette(tinted);
}

} // namespace morlaine
