#include "UI/Views/Sidebar/SpaceBreakdownView.h"

#include "UI/Styles/Conversions.h"
#include "UI/Styles/StyledLabel.h"
#include "UI/Views/Sidebar/SidebarMetrics.h"
#include "UI/Widgets/LegendDot.h"
#include "Utilities/ByteCount.h"
#include "Utilities/Utf8.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace morlaine {

namespace {

constexpr int rowSpacing = 6;
constexpr int topPadding = 4;
constexpr int gap = 8;

QWidget* makeRow(const CategoryShare& share)
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    auto* name = new StyledLabel(TextStyle::caption);
    name->setText(textOfUtf8(share.category.displayName()));
    auto* size = new StyledLabel(TextStyle::caption, &Theme::textSecondary);
    size->setText(QString::fromStdString(byteCountText(share.size)));
    layout->addWidget(new LegendDot(toQColor(share.category.color())));
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
