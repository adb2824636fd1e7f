#pragma once

#include "Core/Models/TreeArrays.h"

namespace morlaine {

/// Puts the children of each folder in order: largest first, those of equal size as they stood. Beside the tree this
/// takes four bytes a node, the largest of its arrays once more, and sixteen bytes a child of the widest folder.
void sortLargestFirst(TreeArrays& tree);

} // namespace morlaine
