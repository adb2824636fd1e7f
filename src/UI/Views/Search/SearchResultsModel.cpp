#include "UI/Views/Search/SearchResultsModel.h"

#include "UI/Views/Search/SearchFilterContent.h"
#include "UI/Widgets/PlainToolTip.h"

#include <algorithm>
#include <limits>

namespace morlaine {

void SearchResultsModel::setResults(const SearchResults& results)
{
    if (results.isSameAs(m_results) || (results.empty() && m_results.empty())) {
        return;
    }
    beginResetModel();
    m_results = results;
    endResetModel();
}

int SearchResultsModel::rowCount(const QModelIndex& parent) const
{
    constexpr std::size_t most = std::numeric_limits<int>::max();
    return parent.isValid() ? 0 : static_cast<int>(std::min(m_results.size(), most));
}

QVariant SearchResultsModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return searchResultRow(result(index.row())).name;
    case Qt::ToolTipRole:
        return plainToolTip(searchResultRow(result(index.row())).path);
    case Qt::AccessibleTextRole:
        return searchResultRow(result(index.row())).accessibleText();
    default:
        return {};
    }
}

} // namespace morlaine
