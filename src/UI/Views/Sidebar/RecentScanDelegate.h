#pragma once

#include <QAbstractItemDelegate>

namespace morlaine {

class RecentScansModel;

/// Paints the rows of a RecentScansModel: name over size and date, and a trash can at the end.
class RecentScanDelegate final : public QAbstractItemDelegate {
    Q_OBJECT

public:
    /// `model` must outlive this object.
    explicit RecentScanDelegate(const RecentScansModel& model, QObject* parent = nullptr);

    /// The area of the trash can that takes clicks, in a row at `rowRect`.
    [[nodiscard]] static QRect trashRect(const QRect& rowRect, Qt::LayoutDirection direction);

    /// The row whose trash can is under the pointer; -1 for none.
    void setRowWithHotTrash(int row) { m_rowWithHotTrash = row; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// The height of every row; ignores `index`.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const RecentScansModel& m_model;
    int m_rowWithHotTrash = -1;
};

} // namespace morlaine
