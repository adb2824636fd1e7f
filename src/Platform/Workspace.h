#pragma once

#include "Utilities/FileUrl.h"

#include <memory>
#include <string>
#include <string_view>

namespace morlaine {

/// What the desktop does with items on behalf of other programs. Every operation returns at once and reports nothing:
/// where the desktop lacks what it takes (no session bus, no file manager, no program for a file), nothing happens.
/// Main thread only.
class Workspace {
public:
    Workspace() = default;
    virtual ~Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    /// The running desktop's.
    [[nodiscard]] static std::shared_ptr<Workspace> native();

    /// Shows the item at the absolute `path` (exact bytes), selected, in the desktop's file manager. Where none can do
    /// that, the folder at `rootPath` is opened instead, or with an empty one the folder that holds the item.
    virtual void selectFile(const std::string& path, const std::string& rootPath) = 0;

    /// Opens the item with its default application.
    virtual void open(const FileUrl& url) = 0;

    /// Puts `text` (exact bytes, as a rule UTF-8) on the clipboard as plain text, in place of what is there.
    virtual void copyText(std::string_view text) = 0;

    /// Opens the desktop's own settings where they tell which programs may read the user's files.
    virtual void openPrivacySettings() = 0;
};

} // namespace morlaine
