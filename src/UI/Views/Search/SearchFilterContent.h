#pragma once

#include "Services/Search/SearchResultNode.h"
#include "Utilities/FileCategory.h"

#include <QColor>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace morlaine {

/// A size threshold in the search panel.
struct SizeFilter {
    QLatin1StringView name;
    std::optional<std::int64_t> bytes; // nothing for no threshold
};

/// In binary units, unlike the sizes that are shown.
inline constexpr std::array<SizeFilter, 7> sizeFilters{{
    {QLatin1StringView("Any Size"), std::nullopt},
    {QLatin1StringView("> 10 MB"), 10'485'760},
    {QLatin1StringView("> 100 MB"), 104'857'600},
    {QLatin1StringView("> 500 MB"), 524'288'000},
    {QLatin1StringView("> 1 GB"), 1'073'741'824},
    {QLatin1StringView("> 5 GB"), 5'368'709'120},
    {QLatin1StringView("> 10 GB"), 10'737'418'240},
}};

/// The threshold at that index of the list. An index outside the list is a programming error and ends the program.
[[nodiscard]] std::optional<std::int64_t> sizeFilterBytes(int index);

/// The area below the search inputs: an invitation, a message that nothing was found, or the list.
enum class SearchContent { idle, nothingFound, results };

[[nodiscard]] SearchContent searchContent(const QString& text, std::optional<FileCategory> category,
                                          std::optional<std::int64_t> minSize, bool hasResults);

/// The content of a result's row.
struct SearchResultRow {
    QString name;
    QString path;
    QString size;
    bool isDirectory = false;
    QColor iconColor;

    /// The text for screen readers.
    [[nodiscard]] QString accessibleText() const;
};

[[nodiscard]] SearchResultRow searchResultRow(const SearchResultNode& result);

} // namespace morlaine
