#pragma once

#include "Platform/FileSystem.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace morlaine {

/// Which folders a walk will enter. Lives as long as a helper does, which may be longer than the walk: what folders
/// refer to has to live as long, and may be held by the function.
struct ReadAheadRules {
    /// Whether the walk enters the folder with this path and these values. Any thread. Of a path that is longer than
    /// `decisiveLength` only the beginning is given, which must suffice.
    std::function<bool(std::string_view path, const ResourceValues& values)> mayEnter;
    std::size_t decisiveLength = 0;
};

/// `top` and all folders in it for one walk, with up to `helpers` threads that list folders before the walk asks for
/// them: nearest first in the walk's own order, depth first and in the order of the listings. What the walk gets is
/// what `top` and its folders give, only older. `path` is the top's as `rules` expect it.
///
/// A folder that a helper cannot list is listed again by the walk. What is held for the walk is bounded, and so a
/// helper may wait in the middle of a listing. Destroying the top stops the helpers without waiting for them; one that
/// hangs in the system keeps what it needs alive.
[[nodiscard]] std::unique_ptr<Folder> readingAhead(std::unique_ptr<Folder> top, std::string path, ReadAheadRules rules,
                                                   std::size_t helpers);

} // namespace morlaine
