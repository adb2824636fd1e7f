#pragma once

#include <cstddef>

namespace morlaine {

/// Whether the program may still map so many bytes, which a limit on its address space can prevent. Any thread.
[[nodiscard]] bool canReserve(std::size_t bytes);

} // namespace morlaine
