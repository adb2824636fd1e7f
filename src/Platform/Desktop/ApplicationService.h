#pragma once

#include "Utilities/FileUrl.h"

#include <functional>
#include <memory>
#include <vector>

namespace morlaine {

/// What other programs of the desktop ask of this one: to come to the front, or to open what the user picked in a file
/// manager. Main thread only.
class ApplicationService {
public:
    struct Handlers {
        std::function<void()> activate;                        // come to the front
        std::function<void(const std::vector<FileUrl>&)> open; // show the first of these that can be shown
    };

    ApplicationService() = default;
    virtual ~ApplicationService() = default;
    ApplicationService(const ApplicationService&) = delete;
    ApplicationService& operator=(const ApplicationService&) = delete;

    /// Answers on the desktop's session bus for as long as the object lives and calls `handlers` from the event loop.
    /// Does nothing where there is no bus, or where another instance of the program answers already.
    [[nodiscard]] static std::unique_ptr<ApplicationService> native(Handlers handlers);
};

} // namespace morlaine
