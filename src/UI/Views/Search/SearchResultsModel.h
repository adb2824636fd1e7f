#pragma once

#include "Services/Search/SearchResults.h"

#include <QAbstractListModel>

namespace morlaine {

/// The results of a search as rows, in their order. Shares the results, and builds the texts of a row on access.
class SearchResultsModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;
    SearchResultsModel(const SearchResultsModel&) = delete;
    SearchResultsModel& operator=(const SearchResultsModel&) = delete;

    /// Does nothing if these results are shown already.
    void setResults(const SearchResults& results);

    /// The result of a row that exists.
    [[nodiscard]] SearchResultNode result(int row) const { return m_results[static_cast<std::size_t>(row)]; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    SearchResults m_results;
};

} // namespace morlaine
