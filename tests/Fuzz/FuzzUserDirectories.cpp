#include "Platform/Linux/UserDirectories.h"

#include <cstddef>
#include <cstdlib>

/// Whatever the file says, a user directory is an absolute path without slashes at its end, and not the home folder.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const std::string_view home : {"/home/u", "/", "/home/u//"}) {
        const auto path = morlaine::userDirectory(text, "XDG_DESKTOP_DIR", "Desktop", home);
        const bool isSound = !path || (path->starts_with('/') && (path->size() == 1 || !path->ends_with('/')));
        if (!isSound || path == (home == "/" ? "/" : "/home/u")) {
            std::abort();
        }
    }
    return 0;
}
