#pragma once

#include "Core/Models/TreeArrays.h"

#include <utility>
#include <vector>

namespace morlaine {

/// The nodes whose id an earlier node already has, each with the first node of that id, in the order of the tree. Fast
/// as long as there are few of them.
[[nodiscard]] std::vector<std::pair<TreeArrays::Position, TreeArrays::Position>>
repeatedIds(const GrowingArray<Uuid>& ids);

} // namespace morlaine
