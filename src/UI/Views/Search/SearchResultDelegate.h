#pragma once

#include <QAbstractItemDelegate>

namespace morlaine {

class SearchResultsModel;

/// Paints the rows of a SearchResultsModel: icon, name over path, size at the end. Where room is short the name loses
/// its middle and the path its beginning.
class SearchResultDelegate final : public QAbstractItemDelegate {
    Q_OBJECT

public:
    /// `model` must outlive this.
    explicit SearchResultDelegate(const SearchResultsModel& model, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// The height of every row; `index` is not looked at.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const SearchResultsModel& m_model;
};

} // namespace morlaine
