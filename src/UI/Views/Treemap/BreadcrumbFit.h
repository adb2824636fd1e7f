#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace morlaine {

/// How the steps of a path share the room that there is, in points. Pure.
struct BreadcrumbFit {
    /// What stands around the names.
    struct Metrics {
        int beforeName = 0;   // in each step: the chevron with its spacing
        int betweenSteps = 0; // also before the first one
        int leastName = 0;    // what a longer name is never cut below as long as folding helps
        int foldedSteps = 0;  // the button that stands for all folded steps, in place of a name
    };

    std::vector<int> nameWidths; // one for each step; 0 for a folded one
    std::size_t firstFolded = 0; // folded steps stand side by side
    std::size_t foldedCount = 0; // 0 when every step is shown

    [[nodiscard]] bool isFolded(std::size_t step) const
    {
        return step >= firstFolded && step < firstFolded + foldedCount;
    }
};

/// Shows the names as they are where there is room. Otherwise cuts the longest ones first, then folds steps away, those
/// behind the first one before all others, and at last the first one. The last step is always shown.
[[nodiscard]] BreadcrumbFit fitBreadcrumb(std::span<const int> nameWidths, int available,
                                          const BreadcrumbFit::Metrics& metrics);

/// The width of all steps with their names as they are.
[[nodiscard]] int naturalBreadcrumbWidth(std::span<const int> nameWidths, const BreadcrumbFit::Metrics& metrics);

/// How a row is divided between a path and the info at its end. What the info tells has no influence, so that nothing
/// moves while it changes.
struct HeaderWidths {
    int breadcrumb = 0;
    int info = 0;
};

[[nodiscard]] HeaderWidths divideHeader(int available, int naturalBreadcrumb, int spacing);

} // namespace morlaine
