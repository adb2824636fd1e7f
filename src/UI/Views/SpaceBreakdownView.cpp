#include "UI/Views/SpaceBreakdownView.h"

#include "UI/Styles/Conversions.h"
#include "UI/Styles/StyledLabel.h"
#include "UI/Views/SidebarMetrics.h"
#include "Utilities/ByteCount.h"
#include "Utilities/Utf8.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace morlaine {

namespace {

constexpr int rowSpacing = 6;
constexpr int topPadding = 4;
constexpr int dotSide = 8;
constexpr int gap = 8;

class Dot final : public QWidget {
public:
    explicit Dot(const QColor& color) : m_color(color) { setFixedSize(dotSide, dotSide); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_color);
        painter.drawEllipse(rect());
    }

private:
    QColor m_color;
};

QWidget* makeRow(const CategoryShare& share)
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    auto* name = new StyledLabel(TextStyle::caption);
    const std::string_view text = share.category.displayName();
    name->setText(textOfUtf8(text));
    auto* size = new StyledLabel(TextStyle::caption, &Theme::textSecondary);
    size->setText(QString::fromStdString(byteCountText(share.size)));
    layout->addWidget(new Dot(toQColor(share.category.color())));
    layout->addWidget(name);
    layout->addStretch();
    layout->addWidget(size);
    return row;
}

} // namespace

SpaceBreakdownView::SpaceBreakdownView(QWidget* parent) : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(SidebarMetrics::margin, topPadding, SidebarMetrics::margin, topPadding);
    column->setSpacing(rowSpacing);
}

void SpaceBreakdownView::setShares(const std::vector<CategoryShare>& shares)
{
    qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
    for (const CategoryShare& share : shares) {
        layout()->addWidget(makeRow(share));
    }
}

} // namespace morlaine
