#include "UI/Views/Treemap/TreemapView.h"

#include "Core/Treemap/TreemapEngine.h"
#include "UI/Styles/Conversions.h"
#include "UI/Styles/Theme.h"
#include "UI/Views/State/MainViewModel.h"
#include "UI/Views/Treemap/TreemapAccessibility.h"
#include "UI/Views/Treemap/TreemapDecisions.h"
#include "UI/Views/Treemap/TreemapHeader.h"
#include "UI/Views/Treemap/TreemapMenu.h"
#include "UI/Widgets/Divider.h"
#include "UI/Widgets/PlainToolTip.h"

#include <QFontMetrics>
#include <QToolTip>
#include <QVBoxLayout>

#include <cstdint>
#include <new>
#include <utility>

namespace morlaine {

namespace {

constexpr QSize minimumViewSize(380, 220);
constexpr double sizeWithoutLayout = 20;

std::optional<Uuid> idOf(const std::optional<FileNode>& node)
{
    return node ? std::optional(node->id()) : std::nullopt;
}

/// Whether the layout may be one of a picture that is painted in turns.
bool isLarge(const std::optional<FileNode>& root)
{
    return root && root->fileCount() >= static_cast<std::int64_t>(TreemapTiles::worthAThread);
}

/// The accessible form must be registered before the canvas is made.
TreemapCanvas* makeCanvas(QWidget* parent)
{
    TreemapAccessibility::install();
    return new TreemapCanvas(parent);
}

} // namespace

TreemapView::TreemapView(MainViewModel& viewModel, QWidget* parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_header(new TreemapHeader(this))
    , m_canvas(makeCanvas(this))
    , m_rootID(idOf(viewModel.activeRootNode()))
    , m_observer(viewModel, [this] { readModel(); })
{
    build();
    connectCanvas();
    connectHeader();
    // The first layout follows the first resize of the canvas.
    m_canvas->showLayout(m_computedRects, TreemapDecisions::textInsteadOfRects(m_rootID.has_value()));
    readModel();
}

/// The canvas is destroyed after the members that its signals would change.
TreemapView::~TreemapView()
{
    m_canvas->disconnect(this);
    m_header->disconnect(this);
}

void TreemapView::build()
{
    setMinimumSize(minimumViewSize);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addWidget(new Divider(this));
    column->addWidget(m_canvas, 1);
}

void TreemapView::connectCanvas()
{
    m_sizeTimer.setSingleShot(true);
    connect(&m_sizeTimer, &QTimer::timeout, this, &TreemapView::followSize);
    connect(m_canvas, &TreemapCanvas::resized, this, [this] {
        m_canvas->awaitLayout();
        if (isLarge(m_viewModel.activeRootNode())) {
            m_sizeTimer.start();
        } else {
            followSize();
        }
    });
    connect(m_canvas, &TreemapCanvas::painted, &m_sizeTimer, qOverload<>(&QTimer::start));
    connect(m_canvas, &TreemapCanvas::hovered, this, [this](const QPointF& point) {
        m_hoverPoint = point;
        updateHoveredRect();
    });
    connect(m_canvas, &TreemapCanvas::hoverEnded, this, [this] { setHoveredRect(std::nullopt); });
    connect(m_canvas, &TreemapCanvas::clicked, this, &TreemapView::select);
    connect(m_canvas, &TreemapCanvas::doubleClicked, this, &TreemapView::zoomIn);
    connect(m_canvas, &TreemapCanvas::menuRequested, this, &TreemapView::openMenu);
    connect(m_canvas, &TreemapCanvas::toolTipRequested, this, &TreemapView::showToolTip);
    connect(m_canvas, &TreemapCanvas::moveRequested, this, &TreemapView::moveSelection);
    connect(m_canvas, &TreemapCanvas::zoomRequested, this, &TreemapView::zoomIntoSelection);
    connect(m_canvas, &TreemapCanvas::leaveRequested, this, [this] { m_viewModel.zoomOut(); });
    connect(m_canvas, &TreemapCanvas::rectPressed, this,
            [this](std::size_t position) { m_viewModel.setSelectedNode(computedRects()[position].node); });
    connect(m_canvas, &TreemapCanvas::rectZoomed, this,
            [this](std::size_t position) { m_viewModel.zoomIn(computedRects()[position].node); });
}

void TreemapView::connectHeader()
{
    connect(m_header, &TreemapHeader::houseClicked, this, [this] { m_viewModel.zoomToRoot(); });
    connect(m_header, &TreemapHeader::stepClicked, this, &TreemapView::showStep);
    connect(m_header, &TreemapHeader::focusLost, m_canvas, [this] { m_canvas->setFocus(); });
}

void TreemapView::readModel()
{
    const std::optional<Uuid> rootID = idOf(m_viewModel.activeRootNode());
    if (rootID != m_rootID) {
        recalculateLayout(m_canvas->size());
    }
    m_canvas->setHighlightIDs(m_viewModel.highlightIDs());
    m_header->setPath(m_viewModel.zoomStack());
    const std::optional<FileNode>& selected = m_viewModel.selectedNode();
    if (idOf(selected) != idOf(m_selectedNode)) {
        m_selectedNode = selected;
        showSelection();
        showHover();
        showInfo();
    }
}

/// A layout that changes while it is painted would need memory anew, and nobody would see it.
void TreemapView::followSize()
{
    if (m_canvas->awaitsLayout() && !m_canvas->isPainting()) {
        recalculateLayout(m_canvas->size());
    }
}

void TreemapView::recalculateLayout(const QSizeF& size)
{
    const std::optional<FileNode> root = m_viewModel.activeRootNode();
    const bool isSameRoot = std::exchange(m_rootID, idOf(root)) == idOf(root);
    if (!root) {
        m_computedRects = std::make_shared<TreemapLayout>();
    } else if (size.width() > sizeWithoutLayout && size.height() > sizeWithoutLayout) {
        if (m_computedRects->isBeingRead()) { // by a picture that is being painted
            m_computedRects = std::make_shared<TreemapLayout>();
        }
        layOut(*root, size);
    }
    m_canvas->showLayout(m_computedRects, TreemapDecisions::textInsteadOfRects(root.has_value()));
    if (isSameRoot) {
        followHoveredRect();
    }
    showSelection();
}

/// The layout stays empty if memory runs out.
void TreemapView::layOut(const FileNode& root, const QSizeF& size)
{
    try {
        TreemapEngine::layOut(root, {0, 0, size.width(), size.height()}, *m_computedRects, 4, 0);
    } catch (const std::bad_alloc&) {
        m_computedRects->clear();
        m_viewModel.reportLackOfMemory();
    }
}

/// The pointer has not moved, so that the hovered item stays the same. Its mark moves with it.
void TreemapView::followHoveredRect()
{
    if (!m_hoveredRect) {
        return;
    }
    const auto position = computedRects().indexOf(m_hoveredRect->node);
    if (position) {
        m_hoveredRect = computedRects()[*position];
        showHover();
    } else {
        m_canvas->setHoverMark(std::nullopt);
    }
}

std::optional<TreemapRect> TreemapView::rectAt(const QPointF& point) const
{
    const std::optional<std::size_t> index = computedRects().hitTest(point.x(), point.y());
    return index ? std::optional(computedRects()[*index]) : std::nullopt;
}

void TreemapView::updateHoveredRect()
{
    setHoveredRect(rectAt(m_hoverPoint));
}

void TreemapView::setHoveredRect(std::optional<TreemapRect> rect)
{
    const std::optional<TreemapRect> former = std::exchange(m_hoveredRect, std::move(rect));
    const bool isSame = former && m_hoveredRect && former->id() == m_hoveredRect->id();
    showHover();
    if (!isSame) {
        showInfo();
    }
}

void TreemapView::showSelection()
{
    m_canvas->setSelectedPosition(m_selectedNode ? computedRects().indexOf(*m_selectedNode) : std::nullopt);
}

/// A rectangle that is both selected and under the pointer gets the selection mark only.
void TreemapView::showHover()
{
    const bool isShown = m_hoveredRect && m_hoveredRect->id() != idOf(m_selectedNode);
    m_canvas->setHoverMark(isShown ? std::optional(m_hoveredRect->rect) : std::nullopt);
}

void TreemapView::showInfo()
{
    m_header->setInfo(TreemapDecisions::infoOf(m_hoveredRect, m_viewModel.selectedNode()));
}

void TreemapView::select(const QPointF& point)
{
    if (std::optional<TreemapRect> found = rectAt(point)) {
        m_viewModel.setSelectedNode(std::move(found->node));
    }
}

void TreemapView::moveSelection(TreemapDecisions::Move move)
{
    if (const auto index = TreemapDecisions::destination(computedRects(), m_canvas->selectedPosition(), move)) {
        m_viewModel.setSelectedNode(computedRects()[*index].node);
    }
}

void TreemapView::zoomIntoSelection()
{
    if (const std::optional<std::size_t> index = m_canvas->selectedPosition()) {
        m_viewModel.zoomIn(computedRects()[*index].node); // does nothing for a file
    }
}

void TreemapView::zoomIn(const QPointF& point)
{
    const std::optional<TreemapRect> found = rectAt(point);
    if (found && found->node.isDirectory()) {
        m_viewModel.zoomIn(found->node);
    }
}

/// The path may have become shorter since the button was painted.
void TreemapView::showStep(std::size_t step)
{
    std::vector<FileNode> path = m_viewModel.zoomStack();
    if (step >= path.size()) {
        return;
    }
    path.erase(path.begin() + static_cast<std::ptrdiff_t>(step) + 1, path.end());
    const FileNode folder = path.back();
    m_viewModel.setZoomStack(std::move(path));
    m_viewModel.setSelectedNode(folder);
}

void TreemapView::openMenu(const QPoint& globalPoint)
{
    auto* menu =
        new TreemapMenu(m_viewModel, m_hoveredRect ? m_hoveredRect->node : m_viewModel.selectedNode(), m_canvas);
    menu->popup(globalPoint);
}

/// What is hovered by rule may lie far outside of what the pointer is on.
void TreemapView::showToolTip(const QPointF& point, const QPoint& globalPoint)
{
    constexpr int mostWidth = 560;
    const std::optional<std::size_t> index = computedRects().innermostAt(point.x(), point.y());
    const std::optional<FileNode> shown = m_viewModel.activeRootNode();
    if (!index || !shown) {
        QToolTip::hideText();
        return;
    }
    const TreemapRect item = computedRects()[*index];
    const QString path = QFontMetrics(QToolTip::font())
                             .elidedText(TreemapDecisions::pathBelow(*shown, item.node), Qt::ElideMiddle, mostWidth);
    QToolTip::showText(globalPoint,
                       plainToolTip(path + QLatin1Char('\n') + QString::fromStdString(item.node.formattedSize())),
                       m_canvas, toQRectF(item.rect).toAlignedRect());
}

} // namespace morlaine
