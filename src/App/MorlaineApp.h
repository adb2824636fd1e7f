#pragma once

#include "Platform/Desktop/ApplicationService.h"
#include "UI/Styles/DesktopAppearance.h"

#include <QApplication>

#include <functional>
#include <memory>

namespace morlaine {

class MainView;

/// The running program: Qt's application object and the one window, which lives as long as it.
class MorlaineApp {
public:
    /// `argc` and `argv` must outlive the object.
    MorlaineApp(int& argc, char** argv);
    ~MorlaineApp();
    MorlaineApp(const MorlaineApp&) = delete;
    MorlaineApp& operator=(const MorlaineApp&) = delete;

    /// Shows the window; returns the process's exit code once the window is closed.
    [[nodiscard]] int run();

private:
    void bringToFront();

    /// Catches what Qt would end the program for: an event for which memory does not suffice is dropped, and told of.
    class Application final : public QApplication {
    public:
        Application(int& argc, char** argv) : QApplication(argc, argv) {}
        bool notify(QObject* receiver, QEvent* event) override;

        std::function<void()> onLackOfMemory;
    };

    Application m_application;
    DesktopAppearance m_appearance;
    std::unique_ptr<MainView> m_mainView;
    std::unique_ptr<ApplicationService> m_service;
};

} // namespace morlaine
