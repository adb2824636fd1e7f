#pragma once

#include "Utilities/FileUrl.h"

#include <vector>

namespace morlaine {

/// The folders in which this user's programs keep their data, the preferred one first. They need not exist.
[[nodiscard]] std::vector<FileUrl> applicationSupportFolders();

} // namespace morlaine
