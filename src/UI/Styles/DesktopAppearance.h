#pragma once

#include "Platform/Desktop/Appearance.h"

#include <memory>

namespace morlaine {

/// Gives the application its looks and keeps them in step with the desktop for as long as it lives. Made once, after
/// the application object and before the first window.
///
/// Where the desktop brings colours of its own, these and the desktop's style stand, and Qt follows them.
/// Where it brings none, the application has Morlaine's style and one of Morlaine's palettes: the dark one where the
/// user wants programs to be dark, otherwise the light one.
class DesktopAppearance {
public:
    /// Waits a moment for the desktop to tell its preference, so that the first window does not change its colours at
    /// once.
    explicit DesktopAppearance(std::unique_ptr<Appearance> appearance = Appearance::native());

private:
    std::unique_ptr<Appearance> m_appearance;
};

} // namespace morlaine
