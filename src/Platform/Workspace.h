#pragma once

#include "Utilities/FileUrl.h"

#include <memory>
#include <string>
#include <string_view>

namespace morlaine {

/// What the desktop does with items. Every operation returns at once and reports nothing: if the desktop lacks what it
/// takes (a session bus, a file manager, a program for a file), nothing happens. Main thread only.
class Workspace {
public:
    Workspace() = default;
    virtual ~Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    /// The implementation for this system.
    [[nodiscard]] static std::shared_ptr<Workspace> native();

    /// Shows the item at the absolute `path` (exact bytes), selected, in the file manager. If no file manager can,
    /// opens the folder at `rootPath` instead, or the folder that contains the item if `rootPath` is empty.
    virtual void selectFile(const std::string& path, const std::string& rootPath) = 0;

    /// Opens the item with its default application.
    virtual void open(const FileUrl& url) = 0;

    /// Replaces the clipboard with `text` (exact bytes, usually UTF-8) as plain text.
    virtual void copyText(std::string_view text) = 0;

    /// Opens the desktop's settings for access to the user's files.
    virtual void openPrivacySettings() = 0;
};

} // namespace morlaine
