#pragma once

#include "Utilities/FileUrl.h"
#include "Utilities/Uuid.h"

#include <string>

namespace morlaine {

/// A favourite folder in the sidebar. It need not exist.
struct FavoriteFolder {
    Uuid id; // new for each record
    FileUrl url;
    std::string name;     // the name to show
    std::string iconName; // the symbol beside it
};

} // namespace morlaine
