#pragma once

#include "Platform/MainThreadQueue.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace morlaine {

/// Queries the file system about folders in the background, since a share may be slow or never answer. Main thread
/// only. Answers come from the event loop, to the latest query only, and none after this object is destroyed.
class FolderListing {
public:
    /// The names of the subfolders of a folder, in exact bytes and no particular order; nothing if it cannot be listed.
    /// Includes links to folders.
    using Names = std::optional<std::vector<std::string>>;

    void list(const std::string& path, std::function<void(Names)> onListed);

    /// Whether the path names a folder.
    void test(const std::string& path, std::function<void(bool)> onTested);

private:
    template <typename Answer>
    void ask(Answer (*question)(const std::string& path), const std::string& path,
             std::function<void(Answer)> onAnswer);

    unsigned m_latest = 0;
    MainThreadQueue m_queue;
};

} // namespace morlaine
