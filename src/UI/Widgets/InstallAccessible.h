#pragma once

#include <QAccessible>

namespace morlaine {

/// Makes Qt describe every `Widget` to assistive technology by an `Interface`, which is constructed from a reference to
/// the widget. Further calls do nothing. Call it before the widget gets an accessible name. Main thread only.
template <typename Interface, typename Widget>
void installAccessible()
{
    const auto make = [](const QString& /*className*/, QObject* object) -> QAccessibleInterface* {
        auto* const widget = qobject_cast<Widget*>(object);
        return widget != nullptr ? new Interface(*widget) : nullptr;
    };
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(make), true);
}

} // namespace morlaine
