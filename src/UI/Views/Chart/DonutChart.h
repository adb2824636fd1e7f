#pragma once

#include "UI/Views/Chart/PieSlice.h"

#include <QWidget>

#include <optional>
#include <vector>

namespace morlaine {

/// The ring of the file-type chart with the total in its hole. A tooltip shows category and size of the slice under the
/// pointer, or the total if the hole is too small for it. 130 by 130 points, or less if there is less room.
class DonutChart final : public QWidget {
    Q_OBJECT

public:
    explicit DonutChart(QWidget* parent = nullptr);

    void setSlices(std::vector<PieSlice> slices, std::int64_t total);

    /// The slice at a position; null in the hole, in a gap and outside the ring.
    [[nodiscard]] const PieSlice* sliceAt(const QPointF& position) const;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRectF circle() const;
    [[nodiscard]] double thickness() const;
    void showTip(const QPoint& position);
    [[nodiscard]] double roomForTotal() const;
    [[nodiscard]] QFont captionFont() const;
    [[nodiscard]] QFont totalFont() const;
    [[nodiscard]] bool isTotalCut() const;
    void paintTotal(QPainter& painter) const;

    std::vector<PieSlice> m_slices;
    QString m_total;
    const PieSlice* m_tipSlice = nullptr; // points into m_slices
};

} // namespace morlaine
