#include "Services/Search/SearchResultNode.h"

#include "Utilities/Utf8.h"

#include <string_view>
#include <vector>

namespace morlaine {

std::string SearchResultNode::path() const
{
    const Tree& tree = m_node.tree();
    std::vector<std::string_view> names;
    for (Tree::Position node = m_node.position(); node != m_root.position(); node = tree.parentOf(node)) {
        names.push_back(tree.nameOf(node));
    }
    std::string path = validUtf8(m_root.url().path());
    for (; !names.empty(); names.pop_back()) {
        path += '/';
        path += names.back();
    }
    return path;
}

} // namespace morlaine
