#pragma once

#include "Platform/Desktop/Appearance.h"

#include <QObject>

#include <memory>

namespace morlaine {

/// Sets the look of the application and keeps it in step with the desktop. Make it once, after the application object
/// and before the first window.
///
/// If the desktop provides colours, these and the desktop's style are kept, and Qt follows them; only hints and
/// disabled texts that could hardly be seen get other colours. Otherwise the application gets Morlaine's style and the
/// light palette, or the dark one if the user prefers dark.
class DesktopAppearance {
public:
    /// Waits a moment for the desktop's preference, so that the first window does not change its colours.
    explicit DesktopAppearance(std::unique_ptr<Appearance> appearance = Appearance::native());

private:
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<QObject> m_visibleTexts;
};

} // namespace morlaine
