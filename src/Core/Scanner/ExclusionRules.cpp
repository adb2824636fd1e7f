#include "Core/Scanner/ExclusionRules.h"

namespace morlaine {

bool ExclusionRules::isExcluded(std::string_view path, const ResourceValues& values) const
{
    if (path == rootPath) {
        return false;
    }
    if (path == "/Volumes" || path == "/System/Volumes" || path == "/dev") {
        return true;
    }
    if (path.starts_with("/.vol") || path.starts_with("/.nofollow") || path.starts_with("/.resolve")) {
        return true;
    }
    if (values.isVolume) {
        return true;
    }
    return values.volumeIdentifier && rootVolumeID && *rootVolumeID != *values.volumeIdentifier;
}

} // namespace morlaine
