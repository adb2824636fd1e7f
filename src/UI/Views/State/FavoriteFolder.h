#pragma once

#include "Utilities/FileUrl.h"
#include "Utilities/Uuid.h"

#include <string>

namespace morlaine {

/// One folder that people often look into, as the sidebar lists it. It need not exist.
struct FavoriteFolder {
    Uuid id; // fresh for each record
    FileUrl url;
    std::string name;     // for people
    std::string iconName; // of the symbol beside it
};

} // namespace morlaine
