#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace morlaine {

/// How the steps of a path share the available width, in points. Pure.
struct BreadcrumbFit {
    /// The widths around the names.
    struct Metrics {
        int beforeName = 0;   // in each step: the chevron with its spacing
        int betweenSteps = 0; // also before the first one
        int leastName = 0;    // names are not cut below this width while folding helps
        int foldedSteps = 0;  // the button for all folded steps
    };

    std::vector<int> nameWidths; // one for each step; 0 for a folded one
    std::size_t firstFolded = 0; // folded steps are adjacent
    std::size_t foldedCount = 0; // 0 if every step is shown

    [[nodiscard]] bool isFolded(std::size_t step) const
    {
        return step >= firstFolded && step < firstFolded + foldedCount;
    }
};

/// Keeps the natural widths if they fit. Otherwise first cuts the longest names, then folds steps: those behind the
/// first one, finally the first one too. The last step is always shown.
[[nodiscard]] BreadcrumbFit fitBreadcrumb(std::span<const int> nameWidths, int available,
                                          const BreadcrumbFit::Metrics& metrics);

/// The width of all steps with uncut names.
[[nodiscard]] int naturalBreadcrumbWidth(std::span<const int> nameWidths, const BreadcrumbFit::Metrics& metrics);

/// How the header divides its width between the path and the info. The info's content has no influence, so that nothing
/// moves when it changes.
struct HeaderWidths {
    int breadcrumb = 0;
    int info = 0;
};

[[nodiscard]] HeaderWidths divideHeader(int available, int naturalBreadcrumb, int spacing);

} // namespace morlaine
