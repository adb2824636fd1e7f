#include "UI/Views/Treemap/TreemapBreadcrumb.h"

#include "UI/Styles/Symbols.h"
#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"
#include "UI/Widgets/PlainToolTip.h"
#include "Utilities/ShownText.h"

#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int betweenSteps = 4;
constexpr int insideStep = 6;
constexpr int paddingOfName = 6; // on each side, as a target for the pointer
constexpr int leastName = 64;

/// Escapes ampersands, which mark mnemonics in controls.
QString asLabel(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1StringView("&&"));
}

} // namespace

TreemapBreadcrumb::TreemapBreadcrumb(QWidget* parent) : QWidget(parent), m_foldButton(makeButton())
{
    setAccessibleName(QStringLiteral("Path"));
    m_foldButton->setText(QStringLiteral("…"));
    m_foldButton->setAccessibleName(QStringLiteral("More folders"));
    m_foldButton->hide();
    connect(m_foldButton, &QToolButton::clicked, this, &TreemapBreadcrumb::openFoldedSteps);
}

QToolButton* TreemapBreadcrumb::makeButton()
{
    auto* button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    return button;
}

void TreemapBreadcrumb::setPath(std::span<const FileNode> path)
{
    std::vector<QString> names;
    std::ranges::transform(path, std::back_inserter(names),
                           [](const FileNode& folder) { return shownText(folder.name()); });
    if (names == m_names) {
        return;
    }
    m_names = std::move(names);
    for (; m_buttons.size() > m_names.size(); m_buttons.pop_back()) {
        delete m_buttons.back();
    }
    while (m_buttons.size() < m_names.size()) {
        const std::size_t step = m_buttons.size();
        QToolButton* const button = makeButton();
        connect(button, &QToolButton::clicked, this, [this, step] { Q_EMIT stepClicked(step); });
        m_buttons.push_back(button);
        setTabOrder(step == 0 ? m_foldButton : m_buttons[step - 1], button);
    }
    if (!m_buttons.empty()) {
        setTabOrder(m_buttons.front(), m_foldButton);
    }
    measure();
}

void TreemapBreadcrumb::measure()
{
    m_naturalWidths.clear();
    for (std::size_t step = 0; step < m_names.size(); ++step) {
        m_buttons[step]->setAccessibleName(m_names[step]);
        m_naturalWidths.push_back(m_foldButton->fontMetrics().horizontalAdvance(m_names[step]) + aroundName());
    }
    arrange();
    Q_EMIT naturalWidthChanged();
}

int TreemapBreadcrumb::aroundName() const
{
    return 2 * paddingOfName;
}

int TreemapBreadcrumb::chevronSide() const
{
    return Symbols::sideBeside(TextStyles::font(TextStyle::caption2));
}

BreadcrumbFit::Metrics TreemapBreadcrumb::metrics() const
{
    return {chevronSide() + insideStep, betweenSteps, leastName,
            m_foldButton->fontMetrics().horizontalAdvance(m_foldButton->text()) + aroundName()};
}

int TreemapBreadcrumb::naturalWidth() const
{
    return naturalBreadcrumbWidth(m_naturalWidths, metrics());
}

QSize TreemapBreadcrumb::sizeHint() const
{
    return {naturalWidth(), m_foldButton->sizeHint().height()};
}

QSize TreemapBreadcrumb::minimumSizeHint() const
{
    return {0, m_foldButton->sizeHint().height()};
}

void TreemapBreadcrumb::arrange()
{
    m_fit = fitBreadcrumb(m_naturalWidths, width(), metrics());
    m_chevrons.clear();
    int left = betweenSteps;
    for (std::size_t step = 0; step < m_buttons.size(); ++step) {
        m_buttons[step]->setVisible(!m_fit.isFolded(step));
        if (!m_fit.isFolded(step)) {
            showStep(step);
            left = place(*m_buttons[step], left, m_fit.nameWidths[step]);
        } else if (step == m_fit.firstFolded) {
            left = place(*m_foldButton, left, metrics().foldedSteps);
        }
    }
    m_foldButton->setVisible(m_fit.foldedCount > 0);
    update();
}

/// Places a chevron and a button; returns where the next step begins.
int TreemapBreadcrumb::place(QToolButton& button, int left, int width)
{
    m_chevrons.push_back(left);
    const int nameLeft = left + chevronSide() + insideStep;
    const int height = std::min(button.sizeHint().height(), this->height());
    button.setGeometry(
        QStyle::visualRect(layoutDirection(), rect(), {nameLeft, (this->height() - height) / 2, width, height}));
    return nameLeft + width + betweenSteps;
}

void TreemapBreadcrumb::showStep(std::size_t step)
{
    const QString& name = m_names[step];
    const int room = m_fit.nameWidths[step] - aroundName();
    const bool isCut = m_fit.nameWidths[step] < m_naturalWidths[step];
    m_buttons[step]->setText(
        asLabel(isCut ? m_foldButton->fontMetrics().elidedText(name, Qt::ElideMiddle, room) : name));
    m_buttons[step]->setToolTip(isCut ? plainToolTip(name) : QString());
}

void TreemapBreadcrumb::openFoldedSteps()
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (std::size_t step = m_fit.firstFolded; step < m_fit.firstFolded + m_fit.foldedCount; ++step) {
        menu->addAction(asLabel(m_names[step]), this, [this, step] { Q_EMIT stepClicked(step); });
    }
    menu->popup(m_foldButton->mapToGlobal(m_foldButton->rect().bottomLeft()));
}

bool TreemapBreadcrumb::event(QEvent* event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        measure();
    }
    return isHandled;
}

void TreemapBreadcrumb::resizeEvent(QResizeEvent* /*event*/)
{
    arrange();
}

void TreemapBreadcrumb::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const int side = chevronSide();
    for (const int left : m_chevrons) {
        Symbols::paint(painter,
                       QStyle::visualRect(layoutDirection(), rect(), {left, (height() - side) / 2, side, side}),
                       isRightToLeft() ? SymbolName("chevron.left") : SymbolName("chevron.right"),
                       Theme::textSecondary(palette()));
    }
}

} // namespace morlaine
