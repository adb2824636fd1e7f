#include "Core/Models/LowerNames.h"

#include "Core/Models/TextStarts.h"
#include "Utilities/FileUrl.h"
#include "Utilities/Lowercase.h"
#include "Utilities/SixteenBytes.h"
#include "Utilities/Utf8.h"

#include <algorithm>
#include <limits>
#include <span>

namespace morlaine {

namespace {

/// Whether a byte (or each of sixteen) is a slash or may be changed by lower-casing.
template <typename Bytes>
auto isWorthALook(const Bytes& bytes) noexcept
{
    static_assert(static_cast<signed char>(TreeArrays::nameEnd) == -1);
    return (bytes < -1) | ((bytes >= 'A') & (bytes <= 'Z')) | (bytes == '/');
}

/// The index of the first such byte from `begin` on; the size if there is none.
std::size_t placeWorthALook(const GrowingArray<char>& names, std::size_t begin) noexcept
{
    while (names.size() - begin >= SixteenBytes::count) {
        const int place = SixteenBytes::firstSet(isWorthALook(SixteenBytes::at(names.data() + begin)));
        if (place < SixteenBytes::count) {
            return begin + static_cast<std::size_t>(place);
        }
        begin += SixteenBytes::count;
    }
    while (begin < names.size() && !isWorthALook(static_cast<signed char>(names[begin]))) {
        ++begin;
    }
    return begin;
}

} // namespace

LowerNames::LowerNames(TreeArrays& tree)
{
    m_text.push_back(TreeArrays::nameEnd);
    m_starts.push_back(1);
    std::string lowerName;
    std::size_t place = placeWorthALook(tree.names, 0);
    for (std::size_t from = 0; place < tree.names.size(); place = placeWorthALook(tree.names, tree.nameStarts[from])) {
        const auto node = static_cast<Position>(textAt(tree.nameStarts, place, from));
        from = node + std::size_t{1};
        const std::string_view name = tree.name(node);
        m_hasSlashInNames = m_hasSlashInNames || (node != 0 && name.find('/') != std::string_view::npos);
        lowerName.clear();
        appendLowercased(name, lowerName);
        if (lowerName != name) {
            addChanged(node, lowerName);
            tree.kinds[node] |= TreeArrays::hasOtherLowerName;
            noteExtension(tree, node, lowerName);
        }
    }
    for (const auto& [node, own] : tree.ownUrls) {
        noteExtension(tree, node, lowercased(tree.name(node)));
    }
    m_nodes.shrinkToFit();
    m_starts.shrinkToFit();
    m_text.shrinkToFit();
}

void LowerNames::addChanged(Position node, std::string_view lowerName)
{
    if (lowerName.size() >= std::numeric_limits<std::uint32_t>::max() - m_text.size()) {
        throw TreeTooLarge();
    }
    m_text.append(std::span(lowerName.data(), lowerName.size()));
    m_text.push_back(TreeArrays::nameEnd);
    m_nodes.push_back(node);
    m_starts.push_back(static_cast<std::uint32_t>(m_text.size()));
}

/// Usually the lower-case name ends in the lower-case extension, so that searching the name also finds the extension.
void LowerNames::noteExtension(const TreeArrays& tree, Position node, std::string_view lowerName)
{
    const std::string_view extension = FileUrl::pathExtension(tree.lastComponent(node));
    if (extension.empty()) {
        return;
    }
    std::string lowerExtension = lowercased(validUtf8(extension));
    if (!lowerName.ends_with(lowerExtension)) {
        m_oddExtensions.push_back({node, std::move(lowerExtension)});
    }
}

std::size_t LowerNames::numberFrom(Position node, std::size_t least) const noexcept
{
    if (least < m_nodes.size() && m_nodes[least] >= node) {
        return least; // as a rule
    }
    const Position* const begin = m_nodes.begin() + std::min(least, m_nodes.size());
    return static_cast<std::size_t>(std::lower_bound(begin, m_nodes.end(), node) - m_nodes.begin());
}

} // namespace morlaine
