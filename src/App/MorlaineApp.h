#pragma once

#include "UI/Styles/DesktopAppearance.h"
#include "UI/Views/MainView.h"

#include <QApplication>

namespace morlaine {

/// The running program: the toolkit's application object and the one window, which lives as long as it.
class MorlaineApp {
public:
    /// `argc` and `argv` must outlive the object.
    MorlaineApp(int& argc, char** argv);

    /// Shows the window; returns the process's exit code once the window is closed.
    [[nodiscard]] int run();

private:
    QApplication m_application;
    DesktopAppearance m_appearance;
    MainView m_mainView;
};

} // namespace morlaine
