#include "UI/Views/Search/SearchFilterContent.h"

#include "UI/Styles/Conversions.h"
#include "UI/Styles/Theme.h"
#include "Utilities/ShownText.h"

#include <cstdlib>

namespace morlaine {

std::optional<std::int64_t> sizeFilterBytes(int index)
{
    if (index < 0 || index >= static_cast<int>(sizeFilters.size())) {
        std::abort();
    }
    return sizeFilters[static_cast<std::size_t>(index)].bytes;
}

SearchContent searchContent(const QString& text, std::optional<FileCategory> category,
                            std::optional<std::int64_t> minSize, bool hasResults)
{
    if (text.isEmpty() && !category && !minSize) {
        return SearchContent::idle;
    }
    return hasResults ? SearchContent::results : SearchContent::nothingFound;
}

QString SearchResultRow::accessibleText() const
{
    return name + QStringLiteral(", ") + path + QStringLiteral(", ") + size;
}

SearchResultRow searchResultRow(const SearchResultNode& result)
{
    const FileNode& node = result.node();
    return {shownText(node.name()), shownPath(result.path()), QString::fromStdString(node.formattedSize()),
            node.isDirectory(), node.isDirectory() ? Theme::yellow : toQColor(node.fileCategory().color())};
}

} // namespace morlaine
