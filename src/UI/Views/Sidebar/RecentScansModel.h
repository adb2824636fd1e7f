#pragma once

#include "Services/Persistence/HistoricalScan.h"
#include "Utilities/Uuid.h"

#include <QAbstractListModel>

#include <optional>
#include <vector>

namespace morlaine {

/// The recent scans as rows, each with its age.
///
/// Has no Q_OBJECT, which it does not need: moc 6.4 cannot parse one of the standard headers.
class RecentScansModel final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    struct Row {
        HistoricalScan scan;
        QString name; // of the scanned folder
        QString size;
        QString date; // relative to the last call of setHistory or updateDates
    };

    /// Resets the rows and returns true, unless the history is unchanged.
    bool setHistory(const std::vector<HistoricalScan>& history, Date now);

    /// Updates the dates and announces the rows whose text changes.
    void updateDates(Date now);

    [[nodiscard]] const Row& row(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    [[nodiscard]] std::optional<int> rowOf(const Uuid& id) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] bool shows(const std::vector<HistoricalScan>& history) const;

    std::vector<Row> m_rows;
};

} // namespace morlaine
