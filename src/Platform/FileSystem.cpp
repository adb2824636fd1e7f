#include "Platform/FileSystem.h"

namespace morlaine {

FolderContents::Entry FolderContents::operator[](std::size_t index) const noexcept
{
    const Stored& stored = m_entries[index];
    return {std::string_view(m_names).substr(stored.nameOffset, stored.nameLength),
            stored.values ? &*stored.values : nullptr};
}

void FolderContents::append(std::string_view name, const std::optional<ResourceValues>& values)
{
    m_entries.push_back({m_names.size(), name.size(), values});
    m_names += name;
}

void FolderContents::clear() noexcept
{
    m_names.clear();
    m_entries.clear();
}

} // namespace morlaine
