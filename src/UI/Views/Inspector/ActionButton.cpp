#include "UI/Views/Inspector/ActionButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int leading = 10;
constexpr int gap = 8;
constexpr int leastHeight = 30;

} // namespace

ActionButton::ActionButton(SymbolName symbol, const QString& label, QWidget* parent)
    : QPushButton(Symbols::icon(symbol), label, parent)
    , m_symbol(symbol)
{
    setAutoDefault(false);
    setFocusPolicy(Qt::TabFocus); // after a click, Space still opens the selection
    const int side = Symbols::sideBeside(font());
    setIconSize({side, side});
}

QSize ActionButton::sizeHint() const
{
    const int width = leading + iconSize().width() + gap + fontMetrics().horizontalAdvance(text()) + leading;
    return {width, std::max(leastHeight, fontMetrics().height() + gap)};
}

void ActionButton::paintEvent(QPaintEvent* /*event*/)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = {};
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_PushButton, option);

    QRect icon(QPoint(leading, 0), iconSize());
    icon.moveTop((height() - icon.height()) / 2);
    QRect label = rect().adjusted(leading + iconSize().width() + gap, 0, -leading, 0);
    icon = QStyle::visualRect(layoutDirection(), rect(), icon);
    label = QStyle::visualRect(layoutDirection(), rect(), label);
    QPushButton::icon().paint(&painter, icon, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    const auto alignment = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawItemText(label, static_cast<int>(alignment) | Qt::TextSingleLine, option.palette, isEnabled(), text(),
                         QPalette::ButtonText);
}

} // namespace morlaine
