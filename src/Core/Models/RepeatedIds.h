#pragma once

#include "Core/Models/TreeArrays.h"

#include <utility>
#include <vector>

namespace morlaine {

/// The nodes whose id an earlier node has already, each with the first that has it, in the order of the tree. Quick as
/// long as there are few of them.
[[nodiscard]] std::vector<std::pair<TreeArrays::Position, TreeArrays::Position>>
repeatedIds(const GrowingArray<Uuid>& ids);

} // namespace morlaine
