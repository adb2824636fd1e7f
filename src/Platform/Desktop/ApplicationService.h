#pragma once

#include "Utilities/FileUrl.h"

#include <functional>
#include <memory>
#include <vector>

namespace morlaine {

/// Requests from other programs of the desktop: to come to the front, or to open items that the user picked in a file
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

    /// Serves requests on the session bus as long as the object exists, and calls `handlers` from the event loop. Does
    /// nothing if there is no bus, or if another instance of the program serves them.
    [[nodiscard]] static std::unique_ptr<ApplicationService> native(Handlers handlers);
};

} // namespace morlaine
