#include "Platform/ReadAhead.h"

#include "Platform/ReadAheadPool.h"

#include <algorithm>
#include <utility>

namespace morlaine {

namespace {

/// The walk's handle of a branch.
class ReadAheadFolder final : public Folder {
public:
    ReadAheadFolder(std::shared_ptr<ReadAheadPool> ahead, ReadAheadPool::Place place)
        : m_ahead(std::move(ahead))
        , m_place(std::move(place))
    {
    }
    ~ReadAheadFolder() override
    {
        if (m_place.branch != nullptr) {
            m_ahead->leave(*m_place.branch);
        }
        if (m_place.parent == nullptr) {
            m_ahead->stop();
        }
    }
    ReadAheadFolder(const ReadAheadFolder&) = delete;
    ReadAheadFolder& operator=(const ReadAheadFolder&) = delete;

    [[nodiscard]] bool list(FolderContents& contents, const std::stop_token& stop, const ListingPace& pace) override
    {
        return m_ahead->list(m_place, contents, stop, pace);
    }
    [[nodiscard]] std::unique_ptr<Folder> folder(std::string_view name) override
    {
        return std::make_unique<ReadAheadFolder>(m_ahead,
                                                 ReadAheadPool::Place{&m_ahead->enter(m_place), std::string(name)});
    }

private:
    const std::shared_ptr<ReadAheadPool> m_ahead;
    ReadAheadPool::Place m_place;
};

} // namespace

void ReadAheadRules::setPath(std::string& path, const std::string& folder, std::string_view name) const
{
    path = folder;
    if (path.size() < decisiveLength) {
        path += path == "/" ? "" : "/";
        path += name;
        path.resize(std::min(path.size(), decisiveLength));
    }
}

std::unique_ptr<Folder> readingAhead(std::unique_ptr<Folder> top, std::string path, ReadAheadRules rules,
                                     std::size_t helpers)
{
    const auto ahead = std::make_shared<ReadAheadPool>(std::move(top), std::move(path), std::move(rules), helpers);
    return std::make_unique<ReadAheadFolder>(ahead, ReadAheadPool::Place{nullptr, {}, &ahead->top()});
}

} // namespace morlaine
