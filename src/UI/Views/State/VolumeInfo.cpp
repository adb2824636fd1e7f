#include "UI/Views/State/VolumeInfo.h"

#include "Utilities/ByteCount.h"

namespace morlaine {

std::string VolumeInfo::formattedFreeSize() const
{
    return byteCountText(freeSize);
}

std::string VolumeInfo::formattedTotalSize() const
{
    return byteCountText(totalSize);
}

double VolumeInfo::percentUsed() const
{
    return totalSize == 0 ? 0.0 : static_cast<double>(totalSize - freeSize) / static_cast<double>(totalSize);
}

} // namespace morlaine
