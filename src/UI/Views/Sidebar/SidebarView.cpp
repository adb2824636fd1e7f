#include "UI/Views/Sidebar/SidebarView.h"

#include "UI/Styles/StyledLabel.h"
#include "UI/Views/Sidebar/PlaceRow.h"
#include "UI/Views/Sidebar/RecentScansList.h"
#include "UI/Views/Sidebar/SidebarAccessibility.h"
#include "UI/Views/Sidebar/SidebarMetrics.h"
#include "UI/Views/Sidebar/SpaceBreakdownView.h"
#include "UI/Widgets/ElidingLabel.h"

#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int sectionSpacing = 18;
constexpr int headerSpacing = 2;
constexpr int mostHeaderLines = 2;
constexpr int emptyLineIndent = 8;

/// Whether the rows match the places one by one. A reloaded place has a new id.
template <typename Place>
bool areRowsOf(const std::vector<PlaceRow*>& rows, const std::vector<Place>& places)
{
    return std::ranges::equal(rows, places, {}, &PlaceRow::id, &Place::id);
}

void removeRows(std::vector<PlaceRow*>& rows)
{
    qDeleteAll(rows);
    rows.clear();
}

} // namespace

SidebarView::SidebarView(MainViewModel& viewModel, QWidget* parent)
    : QScrollArea(parent)
    , m_viewModel(viewModel)
    , m_observer(viewModel, [this] { refresh(); })
{
    SidebarAccessibility::install();
    setAccessibleName(QStringLiteral("Disks"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    buildSections();
    refresh();
}

void SidebarView::buildSections()
{
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, SidebarMetrics::margin, 0, SidebarMetrics::margin);
    column->setSpacing(sectionSpacing);
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);

    m_volumes = addSection(QStringLiteral("Devices"));
    m_favorites = addSection(QStringLiteral("Favorites"));
    buildRecentScans();
    QVBoxLayout* breakdown = addSection(QStringLiteral("Space Breakdown"));
    m_breakdown = new SpaceBreakdownView;
    breakdown->addWidget(m_breakdown);
    m_breakdownSection = breakdown->parentWidget();
    column->addStretch();
}

QVBoxLayout* SidebarView::addSection(const QString& title)
{
    auto* section = new QWidget;
    auto* column = new QVBoxLayout(section);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* header = new ElidingLabel(TextStyle::subheadline, Theme::textSecondary, mostHeaderLines);
    header->setWeight(QFont::DemiBold);
    header->setText(title);
    auto* headerLine = new QVBoxLayout;
    headerLine->setContentsMargins(SidebarMetrics::margin, 0, SidebarMetrics::margin, headerSpacing);
    headerLine->addWidget(header);
    column->addLayout(headerLine);
    widget()->layout()->addWidget(section);
    return column;
}

void SidebarView::buildRecentScans()
{
    QVBoxLayout* section = addSection(QStringLiteral("Recent Scans"));
    auto* noScans = new StyledLabel(TextStyle::caption, &Theme::textTertiary);
    noScans->setText(QStringLiteral("No recent scans"));
    noScans->setWordWrap(true);
    constexpr int indent = SidebarMetrics::margin + emptyLineIndent;
    noScans->setContentsMargins(indent, headerSpacing, indent, 0);
    m_noRecentScans = noScans;
    m_recentScans = new RecentScansList;
    section->addWidget(m_noRecentScans);
    section->addWidget(m_recentScans);
    connect(m_recentScans, &RecentScansList::openRequested, &m_viewModel, &MainViewModel::loadHistoricalScan);
    connect(m_recentScans, &RecentScansList::removeRequested, &m_viewModel, &MainViewModel::deleteHistoryItem);
    connect(m_recentScans, &RecentScansList::rowEntered, this, [this](const QRect& row) {
        const QRect place(m_recentScans->mapTo(widget(), row.topLeft()), row.size());
        ensureVisible(0, place.bottom() + 1, 0, 0);
        ensureVisible(0, place.top(), 0, 0);
    });
}

void SidebarView::refresh()
{
    updateVolumes();
    updateFavorites();
    updatePlaces();
    updateRecentScans();
    updateSpaceBreakdown();
}

void SidebarView::addPlace(PlaceRow* row, const FileUrl& url, std::optional<Uuid>& hoverID, QVBoxLayout& section)
{
    section.addWidget(row);
    connect(row, &PlaceRow::clicked, &m_viewModel, [this, url] { m_viewModel.scan(url); });
    connect(row, &PlaceRow::hoverChanged, this, [this, &hoverID, id = row->id()](bool isUnderPointer) {
        if (isUnderPointer) {
            hoverID = id;
        } else if (hoverID == id) {
            hoverID.reset();
        }
        updatePlaces();
    });
}

void SidebarView::updateVolumes()
{
    if (areRowsOf(m_volumeRows, m_viewModel.volumes())) {
        return;
    }
    removeRows(m_volumeRows);
    m_hoverVolumeID.reset();
    for (const VolumeInfo& volume : m_viewModel.volumes()) {
        addPlace(m_volumeRows.emplace_back(new PlaceRow(volume)), volume.url, m_hoverVolumeID, *m_volumes);
    }
    updateTabOrder();
}

void SidebarView::updateFavorites()
{
    if (areRowsOf(m_favoriteRows, m_viewModel.favorites())) {
        return;
    }
    removeRows(m_favoriteRows);
    m_hoverFavoriteID.reset();
    for (const FavoriteFolder& folder : m_viewModel.favorites()) {
        addPlace(m_favoriteRows.emplace_back(new PlaceRow(folder)), folder.url, m_hoverFavoriteID, *m_favorites);
    }
    updateTabOrder();
}

/// The tab order belongs to the window, which the sidebar joins after its first rows were made.
void SidebarView::showEvent(QShowEvent* event)
{
    QScrollArea::showEvent(event);
    updateTabOrder();
}

void SidebarView::updateTabOrder()
{
    QWidget* previous = nullptr;
    const auto append = [&previous](QWidget* next) {
        if (previous != nullptr) {
            setTabOrder(previous, next);
        }
        previous = next;
    };
    std::ranges::for_each(m_volumeRows, append);
    std::ranges::for_each(m_favoriteRows, append);
    append(m_recentScans);
}

/// Called before the row is disabled: otherwise the focus would move to the next widget, and the sidebar would scroll
/// to it.
void SidebarView::leaveRow(PlaceRow& row)
{
    m_rowLeft = &row;
    window()->setFocus();
}

/// Unless the focus has moved elsewhere in the meantime.
void SidebarView::returnToRow()
{
    if (m_rowLeft != nullptr && window()->focusWidget() == window()) {
        m_rowLeft->setFocus(Qt::OtherFocusReason);
    }
    m_rowLeft.clear();
}

void SidebarView::updatePlaces()
{
    const bool isEnabled = !m_viewModel.scanner().isScanning();
    const auto update = [this, isEnabled](const std::vector<PlaceRow*>& rows, const std::optional<Uuid>& hoverID) {
        for (PlaceRow* row : rows) {
            if (!isEnabled && row->hasFocus()) {
                leaveRow(*row);
            }
            row->setEnabled(isEnabled);
            row->setCueShown(isEnabled && hoverID == row->id());
        }
    };
    update(m_volumeRows, m_hoverVolumeID);
    update(m_favoriteRows, m_hoverFavoriteID);
    if (isEnabled) {
        returnToRow();
    }
}

void SidebarView::updateRecentScans()
{
    const std::vector<HistoricalScan>& history = m_viewModel.scanHistory();
    m_recentScans->setHistory(history);
    m_recentScans->setVisible(!history.empty());
    m_noRecentScans->setVisible(history.empty());
}

void SidebarView::updateSpaceBreakdown()
{
    const std::optional<FileNode>& root = m_viewModel.currentRootNode();
    const std::optional<Uuid> rootID = root ? std::optional(root->id()) : std::nullopt;
    if (rootID == m_shownRootID && m_breakdownSection->isHidden() == !root) {
        return;
    }
    m_shownRootID = rootID;
    m_breakdown->setShares(root ? spaceBreakdown(*root) : std::vector<CategoryShare>());
    m_breakdownSection->setVisible(root.has_value());
}

} // namespace morlaine
