#include "UI/Views/Search/FilterPicker.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QStylePainter>
#include <QToolTip>

namespace morlaine {

FilterPicker::FilterPicker(const QString& title, QWidget* parent) : QComboBox(parent)
{
    auto* label = new QLabel(title, parent);
    label->setBuddy(this);
    label->hide();
    setFocusPolicy(Qt::TabFocus); // after a click, Space still opens the selection
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    view()->installEventFilter(this);
}

QString FilterPicker::elidedText(const QStyleOptionComboBox& option) const
{
    const QRect place = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    constexpr int inset = 1; // of styles, on each side
    return fontMetrics().elidedText(currentText(), Qt::ElideRight, place.width() - 2 * inset);
}

bool FilterPicker::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        QStyleOptionComboBox option;
        initStyleOption(&option);
        const QString tip = elidedText(option) == currentText() ? QString() : currentText();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
        return true;
    }
    return QComboBox::event(event);
}

/// Qt would close the list without consuming the key, and the window's shortcut would run too.
bool FilterPicker::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) {
        return QComboBox::eventFilter(watched, event);
    }
    hidePopup();
    event->accept();
    return true;
}

void FilterPicker::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    option.currentText = elidedText(option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

} // namespace morlaine
