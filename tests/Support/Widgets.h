#pragma once

#include "Support/Wait.h"

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QTest>

#include <stdexcept>
#include <string>
#include <vector>

namespace morlaine::test {

/// The texts of the visible labels in a widget.
inline std::vector<std::string> labelsIn(const QWidget& root)
{
    std::vector<std::string> texts;
    for (const QLabel* label : root.findChildren<QLabel*>()) {
        if (label->isVisible()) {
            texts.push_back(label->text().toStdString());
        }
    }
    return texts;
}

/// The button with that text or accessible name; nullptr if there is none.
inline QAbstractButton* buttonIn(const QWidget& root, const char* name)
{
    for (QAbstractButton* button : root.findChildren<QAbstractButton*>()) {
        if (button->text() == QString::fromUtf8(name) || button->accessibleName() == QString::fromUtf8(name)) {
            return button;
        }
    }
    return nullptr;
}

/// Waits until the widget's window is on the screen.
[[nodiscard]] inline bool waitUntilExposed(QWidget* widget)
{
    return QTest::qWaitForWindowExposed(widget, longEnoughInMilliseconds);
}

/// The menu that opens on that request; throws if none does.
inline QMenu* openMenu(QWidget& widget, QContextMenuEvent::Reason reason, const QPoint& place = {})
{
    QContextMenuEvent event(reason, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
    const auto menu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
    if (!waitUntil([&] { return menu() != nullptr; })) {
        throw std::runtime_error("no menu has opened");
    }
    return menu();
}

/// Picks an entry of an open menu.
inline void choose(QMenu& menu, int entry)
{
    menu.setActiveAction(menu.actions().at(entry));
    QTest::keyClick(&menu, Qt::Key_Return);
}

} // namespace morlaine::test
