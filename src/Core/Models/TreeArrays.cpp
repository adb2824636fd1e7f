#include "Core/Models/TreeArrays.h"

#include "Utilities/FileUrl.h"

namespace morlaine {

std::string_view TreeArrays::lastComponent(Position node) const noexcept
{
    if (!has(node, hasOwnUrl)) {
        return name(node);
    }
    const OwnUrl& own = ownUrls.find(node)->second;
    return own.isComponent ? std::string_view(own.bytes) : FileUrl::lastPathComponent(own.bytes);
}

std::string TreeArrays::location(Position node) const
{
    std::size_t length = 0;
    Position top = node;
    for (; !hasLocationOfItsOwn(top); top = parents[top]) {
        length += 1 + lastComponent(top).size();
    }
    std::string bytes = ownUrls.find(top)->second.bytes;
    if (top == node) {
        return bytes;
    }
    FileUrl::openFolder(bytes);
    bytes.resize(bytes.size() + length - 1);
    char* end = bytes.data() + bytes.size();
    for (Position each = node;;) {
        const std::string_view component = lastComponent(each);
        end -= component.size();
        component.copy(end, component.size());
        each = parents[each];
        if (each == top) {
            return bytes;
        }
        *--end = '/';
    }
}

void TreeArrays::shrinkToFit() noexcept
{
    ids.shrinkToFit();
    sizes.shrinkToFit();
    parents.shrinkToFit();
    ends.shrinkToFit();
    kinds.shrinkToFit();
    nameStarts.shrinkToFit();
    names.shrinkToFit();
}

} // namespace morlaine
