#pragma once

#include "Utilities/FileUrl.h"

#include <optional>
#include <vector>

namespace morlaine {

/// The folders in which this user's programs keep their data, the preferred one first. They need not exist.
[[nodiscard]] std::vector<FileUrl> applicationSupportFolders();

/// The folders that a desktop makes for each user, wherever the user has moved them and whatever language they are
/// named in. They need not exist; one that the user has none of is absent.
struct UserFolders {
    FileUrl home;
    std::optional<FileUrl> documents;
    std::optional<FileUrl> downloads;
    std::optional<FileUrl> desktop;

    /// Those of the user who runs the program, as they are configured now.
    [[nodiscard]] static UserFolders current();
};

} // namespace morlaine
