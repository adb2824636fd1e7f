#pragma once

#include "Platform/Desktop/ApplicationService.h"
#include "UI/Styles/DesktopAppearance.h"

#include <QApplication>

#include <functional>
#include <future>
#include <memory>

namespace morlaine {

class MainView;

/// The program: Qt's application object and its one window.
class MorlaineApp {
public:
    /// `argc` and `argv` must outlive the object.
    MorlaineApp(int& argc, char** argv);
    ~MorlaineApp();
    MorlaineApp(const MorlaineApp&) = delete;
    MorlaineApp& operator=(const MorlaineApp&) = delete;

    /// Shows the window and runs the event loop. Returns the exit code of the process.
    [[nodiscard]] int run();

private:
    void bringToFront();

    /// Drops an event for which memory runs out and reports it; Qt would end the program.
    class Application final : public QApplication {
    public:
        Application(int& argc, char** argv) : QApplication(argc, argv) {}
        bool notify(QObject* receiver, QEvent* event) override;

        std::function<void()> onLackOfMemory;
    };

    std::future<void> m_fontList;
    Application m_application;
    DesktopAppearance m_appearance;
    std::unique_ptr<MainView> m_mainView;
    std::unique_ptr<ApplicationService> m_service;
};

} // namespace morlaine
