#pragma once

#include "Utilities/FileUrl.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QWidget;

namespace morlaine {

/// The desktop's dialog in which people choose one folder. Main thread only.
class FolderChooser {
public:
    struct Texts {
        std::optional<std::string> title; // of the dialog; the desktop's own when absent
        std::string prompt;               // on the button that confirms
    };

    FolderChooser() = default;
    virtual ~FolderChooser() = default;
    FolderChooser(const FolderChooser&) = delete;
    FolderChooser& operator=(const FolderChooser&) = delete;

    /// The running desktop's.
    [[nodiscard]] static std::unique_ptr<FolderChooser> native();

    /// Opens the dialog above `window`, which takes no input until it is closed, and returns at once. `onChosen` is
    /// called from the event loop with the folder that was chosen, or never. A second call while the dialog is open
    /// brings it to the front; closing the window closes it.
    virtual void choose(QWidget& window, const Texts& texts, std::function<void(const FileUrl&)> onChosen) = 0;
};

} // namespace morlaine
