#include "Platform/FileSystem.h"

namespace morlaine {

std::optional<ResourceValues> FolderContents::values(std::size_t index) const noexcept
{
    const Stored& stored = m_entries[index];
    const auto has = [flags = stored.flags](Stored::Flag flag) { return (flags & flag) != 0; };
    std::optional<ResourceValues> values;
    if (has(Stored::isUnusual)) {
        values = m_unusual[static_cast<std::size_t>(stored.fileSize)];
    } else if (has(Stored::isMeasured)) {
        values.emplace();
        if (has(Stored::hasFileSize)) {
            values->fileSize = stored.fileSize;
        }
        if (has(Stored::hasAllocatedSizes)) {
            values->totalAllocatedSize = stored.allocatedSize;
            values->allocatedSize = stored.allocatedSize;
        }
        if (has(Stored::hasVolume)) {
            values->volumeIdentifier = m_volume;
        }
        if (has(Stored::knowsIsDirectory)) {
            values->isDirectory = has(Stored::directory);
        }
        values->isPackage = has(Stored::isPackage);
        values->isSymbolicLink = has(Stored::isSymbolicLink);
        values->isVolume = has(Stored::isVolume);
    }
    return values;
}

bool FolderContents::isUsual(const ResourceValues& values) const noexcept
{
    return values.totalAllocatedSize == values.allocatedSize &&
           (!values.volumeIdentifier || values.volumeIdentifier == m_volume);
}

void FolderContents::append(std::string_view name, const std::optional<ResourceValues>& values)
{
    Stored stored{m_names.size(), static_cast<std::uint32_t>(name.size()), 0, 0, 0};
    if (values) {
        if (!m_volume) {
            m_volume = values->volumeIdentifier;
        }
        const auto flag = [](bool isSet, Stored::Flag value) { return isSet ? std::uint32_t{value} : 0U; };
        const bool usual = isUsual(*values);
        stored.flags = Stored::isMeasured | flag(values->fileSize.has_value(), Stored::hasFileSize) |
                       flag(values->allocatedSize.has_value(), Stored::hasAllocatedSizes) |
                       flag(values->volumeIdentifier.has_value(), Stored::hasVolume) |
                       flag(values->isDirectory.has_value(), Stored::knowsIsDirectory) |
                       flag(values->isDirectory.value_or(false), Stored::directory) |
                       flag(values->isPackage, Stored::isPackage) |
                       flag(values->isSymbolicLink, Stored::isSymbolicLink) | flag(values->isVolume, Stored::isVolume) |
                       flag(!usual, Stored::isUnusual);
        if (usual) {
            stored.fileSize = values->fileSize.value_or(0);
            stored.allocatedSize = values->allocatedSize.value_or(0);
        } else {
            stored.fileSize = static_cast<std::int64_t>(m_unusual.size());
            m_unusual.push_back(*values);
        }
    }
    m_entries.push_back(stored);
    m_names += name;
}

void FolderContents::clear() noexcept
{
    m_names.clear();
    m_entries.clear();
    m_unusual.clear();
    m_volume.reset();
}

} // namespace morlaine
