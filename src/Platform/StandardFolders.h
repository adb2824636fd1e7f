#pragma once

#include "Utilities/FileUrl.h"

#include <optional>
#include <vector>

namespace morlaine {

/// The folders for application data of this user, the preferred one first. They need not exist.
[[nodiscard]] std::vector<FileUrl> applicationSupportFolders();

/// The folders that a desktop creates for each user, at the configured places. They need not exist; a folder that the
/// user has disabled is absent.
struct UserFolders {
    FileUrl home;
    std::optional<FileUrl> documents;
    std::optional<FileUrl> downloads;
    std::optional<FileUrl> desktop;

    /// The folders of the current user, as configured now.
    [[nodiscard]] static UserFolders current();
};

} // namespace morlaine
