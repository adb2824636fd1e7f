#pragma once

#include "UI/Views/State/MainViewModel.h"
#include "Utilities/ChangeObserver.h"

#include <QPointer>
#include <QScrollArea>

#include <optional>
#include <vector>

class QVBoxLayout;

namespace morlaine {

class PlaceRow;
class RecentScansList;
class SpaceBreakdownView;

/// The left column: the places to scan, the recent scans, and the space breakdown of the shown tree, in one scroll
/// area. The places are disabled while a scan runs; the recent scans stay active.
class SidebarView final : public QScrollArea {
    Q_OBJECT

public:
    /// `viewModel` must outlive this object.
    explicit SidebarView(MainViewModel& viewModel, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void buildSections();
    void buildRecentScans();
    [[nodiscard]] QVBoxLayout* addSection(const QString& title);

    void refresh();
    void updateVolumes();
    void updateFavorites();
    void updatePlaces();
    void leaveRow(PlaceRow& row);
    void returnToRow();
    void updateRecentScans();
    void updateTabOrder();
    void updateSpaceBreakdown();
    void addPlace(PlaceRow* row, const FileUrl& url, std::optional<Uuid>& hoverID, QVBoxLayout& section);

    MainViewModel& m_viewModel;
    std::optional<Uuid> m_hoverVolumeID;   // of the row under the pointer
    std::optional<Uuid> m_hoverFavoriteID; // likewise
    std::vector<PlaceRow*> m_volumeRows;   // owned by the sections
    std::vector<PlaceRow*> m_favoriteRows;
    QPointer<PlaceRow> m_rowLeft;      // had the focus when a scan began
    std::optional<Uuid> m_shownRootID; // root of the tree in the breakdown
    QVBoxLayout* m_volumes;
    QVBoxLayout* m_favorites;
    QWidget* m_noRecentScans;
    RecentScansList* m_recentScans;
    QWidget* m_breakdownSection;
    SpaceBreakdownView* m_breakdown;
    ChangeObserver m_observer;
};

} // namespace morlaine
