#pragma once

#include "Services/Persistence/HistoricalScan.h"
#include "Utilities/Uuid.h"

#include <QAbstractListModel>

#include <optional>
#include <vector>

namespace morlaine {

/// The earlier scans as rows, each with how long ago it was.
///
/// Has no Q_OBJECT, which it needs for nothing: moc (6.4) cannot read a header that begins with certain standard ones.
class RecentScansModel final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    struct Row {
        HistoricalScan scan;
        QString name; // of the scanned folder
        QString size;
        QString date; // as seen from the last call of setHistory or updateDates
    };

    /// Resets the rows, unless they show that history already: then false.
    bool setHistory(const std::vector<HistoricalScan>& history, Date now);

    /// Announces the rows whose date reads differently by now.
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
