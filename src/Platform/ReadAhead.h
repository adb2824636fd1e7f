#pragma once

#include "Platform/FileSystem.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace morlaine {

/// Which folders a walk will enter. Kept as long as any helper runs, which may be longer than the walk. The function
/// must own everything that the folders refer to.
struct ReadAheadRules {
    /// Whether the walk enters the folder with this path and these values. Called on any thread. Paths longer than
    /// `decisiveLength` are cut to that length.
    std::function<bool(std::string_view path, const ResourceValues& values)> mayEnter;
    std::size_t decisiveLength = 0;

    /// Sets `path` to the path of an entry of the folder with path `folder`, both cut to the decisive length.
    void setPath(std::string& path, const std::string& folder, std::string_view name) const;
};

/// Wraps `top` and the folders below it for one walk. `helpers` threads, more while they mostly wait for a disk, list
/// folders before the walk asks for them, nearest first in the order of the walk (depth first, in the order of the
/// listings). The walk gets the same results as from `top`, only older. `path` is the path of the top for `rules`.
///
/// The walk lists a folder itself if a helper could not. The memory of results that wait for the walk is bounded: a
/// helper may pause in the middle of a listing. Destroying the top stops the helpers without waiting for them; a helper
/// that hangs in a system call keeps everything that it uses alive.
[[nodiscard]] std::unique_ptr<Folder> readingAhead(std::unique_ptr<Folder> top, std::string path, ReadAheadRules rules,
                                                   std::size_t helpers);

} // namespace morlaine
