#pragma once

#include "Platform/MainThreadQueue.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace morlaine {

/// Asks the file system about folders in the background, since a share may take its time or never answer. Main
/// thread only; answers come from its event loop, and only to the latest question. None comes once this object is gone.
class FolderListing {
public:
    /// The names of the folders in a folder, in their exact bytes and in no order; nothing when it cannot be listed.
    /// Links that lead to folders count.
    using Names = std::optional<std::vector<std::string>>;

    void list(const std::string& path, std::function<void(Names)> onListed);

    /// Whether there is a folder at the path.
    void test(const std::string& path, std::function<void(bool)> onTested);

private:
    template <typename Answer>
    void ask(Answer (*question)(const std::string& path), const std::string& path,
             std::function<void(Answer)> onAnswer);

    unsigned m_latest = 0;
    MainThreadQueue m_queue;
};

} // namespace morlaine
