#pragma once

#include "Utilities/FileUrl.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QWidget;

namespace morlaine {

/// The desktop's dialog for choosing a folder. Main thread only.
class FolderChooser {
public:
    struct Texts {
        std::optional<std::string> title; // of the dialog; a default title if absent
        std::string prompt;               // label of the button that confirms
    };

    FolderChooser() = default;
    virtual ~FolderChooser() = default;
    FolderChooser(const FolderChooser&) = delete;
    FolderChooser& operator=(const FolderChooser&) = delete;

    /// The implementation for this system.
    [[nodiscard]] static std::unique_ptr<FolderChooser> native();

    /// Opens the dialog, modal to `window`, and returns at once. Calls `onChosen` from the event loop with the chosen
    /// folder, or never. A second call while the dialog is open brings it to the front. Closing the window closes the
    /// dialog.
    virtual void choose(QWidget& window, const Texts& texts, std::function<void(const FileUrl&)> onChosen) = 0;
};

} // namespace morlaine
