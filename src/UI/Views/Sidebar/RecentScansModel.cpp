#include "UI/Views/Sidebar/RecentScansModel.h"

#include "UI/Views/Sidebar/SidebarText.h"
#include "UI/Widgets/PlainToolTip.h"
#include "Utilities/ByteCount.h"
#include "Utilities/RelativeDate.h"
#include "Utilities/ShownText.h"

#include <algorithm>
#include <utility>

namespace morlaine {

namespace {

QString dateText(const HistoricalScan& scan, Date now)
{
    return QString::fromStdString(formatDate(scan.date, now));
}

} // namespace

bool RecentScansModel::shows(const std::vector<HistoricalScan>& history) const
{
    return std::ranges::equal(m_rows, history, {}, &Row::scan);
}

bool RecentScansModel::setHistory(const std::vector<HistoricalScan>& history, Date now)
{
    if (shows(history)) {
        return false;
    }
    beginResetModel();
    m_rows.clear();
    m_rows.reserve(history.size());
    for (const HistoricalScan& scan : history) {
        m_rows.push_back(
            {scan, folderName(scan), QString::fromStdString(byteCountText(scan.totalSize)), dateText(scan, now)});
    }
    endResetModel();
    return true;
}

void RecentScansModel::updateDates(Date now)
{
    for (int i = 0; i < rowCount(); ++i) {
        Row& changed = m_rows[static_cast<std::size_t>(i)];
        const QString date = dateText(changed.scan, now);
        if (std::exchange(changed.date, date) != date) {
            Q_EMIT dataChanged(index(i), index(i), {Qt::AccessibleTextRole});
        }
    }
}

std::optional<int> RecentScansModel::rowOf(const Uuid& id) const
{
    const auto found = std::ranges::find(m_rows, id, [](const Row& row) { return row.scan.id; });
    return found == m_rows.end() ? std::nullopt : std::optional(static_cast<int>(found - m_rows.begin()));
}

int RecentScansModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant RecentScansModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Row& shown = row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return shown.name;
    case Qt::ToolTipRole:
        // The row elides each of them.
        return plainToolTip(
            QStringList{shownPath(shown.scan.path), shown.size, shown.date}.join(QStringLiteral(" • ")));
    case Qt::AccessibleTextRole:
        return QStringList{shown.name, shown.size, shown.date}.join(QStringLiteral(", "));
    default:
        return {};
    }
}

} // namespace morlaine
