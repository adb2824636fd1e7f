#include "UI/Views/Inspector/ActionButton.h"

#include <QHelpEvent>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolTip>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int leading = 10;
constexpr int gap = 8;
constexpr int leastHeight = 30;
constexpr int leastLetters = 6;

} // namespace

ActionButton::ActionButton(SymbolName symbol, const QString& label, QWidget* parent)
    : QPushButton(Symbols::icon(symbol), label, parent)
    , m_symbol(symbol)
{
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed); // may become narrower than its label
    setFocusPolicy(Qt::TabFocus);                              // after a click, Space still opens the selection
    const int side = Symbols::sideBeside(font());
    setIconSize({side, side});
}

QSize ActionButton::sizeHint() const
{
    return sizeFor(text());
}

QSize ActionButton::minimumSizeHint() const
{
    return sizeFor(text().left(leastLetters));
}

QSize ActionButton::sizeFor(const QString& label) const
{
    const int width = leading + iconSize().width() + gap + fontMetrics().horizontalAdvance(label) + leading;
    return {width, std::max(leastHeight, fontMetrics().height() + gap)};
}

QString ActionButton::elidedLabel() const
{
    const int room = width() - sizeFor(QString()).width();
    return fontMetrics().elidedText(text(), Qt::ElideRight, room);
}

bool ActionButton::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const QString tip = elidedLabel() == text() ? QString() : text();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
        return true;
    }
    return QPushButton::event(event);
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
    painter.drawItemText(label, static_cast<int>(alignment) | Qt::TextSingleLine, option.palette, isEnabled(),
                         elidedLabel(), QPalette::ButtonText);
}

} // namespace morlaine
