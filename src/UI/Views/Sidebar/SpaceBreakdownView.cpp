#include "UI/Views/Sidebar/SpaceBreakdownView.h"

#include "UI/Styles/Conversions.h"
#include "UI/Views/Sidebar/SidebarMetrics.h"
#include "UI/Widgets/ElidingLabel.h"
#include "UI/Widgets/LabelledValue.h"
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

} // namespace

SpaceBreakdownView::SpaceBreakdownView(QWidget* parent) : NamedRows(QStringLiteral("Space Breakdown"), parent)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(SidebarMetrics::margin, topPadding, SidebarMetrics::margin, topPadding);
    column->setSpacing(rowSpacing);
}

void SpaceBreakdownView::setShares(const std::vector<CategoryShare>& shares)
{
    forgetRows();
    qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
    for (const CategoryShare& share : shares) {
        addShare(share);
    }
}

void SpaceBreakdownView::addShare(const CategoryShare& share)
{
    auto* row = new QWidget;
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(gap);
    auto* name = new ElidingLabel(TextStyle::caption, Theme::textPrimary);
    name->setText(textOfUtf8(share.category.displayName()));
    auto* size = new ElidingLabel(TextStyle::caption, Theme::textSecondary);
    size->setText(QString::fromStdString(byteCountText(share.size)));
    line->addWidget(new LegendDot(toQColor(share.category.color())));
    line->addWidget(new LabelledValue(LabelledValue::Kind::lasting, name, size), 1);
    layout()->addWidget(row);
    addRow(*name, *size);
}

} // namespace morlaine
