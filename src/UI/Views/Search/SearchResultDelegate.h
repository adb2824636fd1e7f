#pragma once

#include <QAbstractItemDelegate>

namespace morlaine {

class SearchResultsModel;

/// Paints the rows of a SearchResultsModel: icon, name over path, size at the end. A name is elided in the middle, a
/// path at the beginning.
class SearchResultDelegate final : public QAbstractItemDelegate {
    Q_OBJECT

public:
    /// `model` must outlive this object.
    explicit SearchResultDelegate(const SearchResultsModel& model, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// The height of every row; ignores `index`.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const SearchResultsModel& m_model;
};

} // namespace morlaine
