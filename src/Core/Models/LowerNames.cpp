#include "Core/Models/LowerNames.h"

#include "Utilities/FileUrl.h"
#include "Utilities/Lowercase.h"
#include "Utilities/Utf8.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>

namespace morlaine {

namespace {

constexpr std::uint64_t ones = 0x0101010101010101U;
constexpr std::uint64_t highBits = 0x80 * ones;

struct Look {
    bool isLowerAscii = true;
    bool hasSlash = false;
};

/// Eight characters at once, as long as there are so many; the rest is filled up with zeros.
Look lookAt(std::string_view name) noexcept
{
    std::uint64_t other = 0;
    std::uint64_t slashes = 0;
    for (std::size_t i = 0; i < name.size(); i += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, name.data() + i, std::min(name.size() - i, sizeof word));
        const std::uint64_t low = word & ~highBits;
        const std::uint64_t fromA = low + (0x80 - 'A') * ones;
        const std::uint64_t behindZ = low + (0x80 - 'Z' - 1) * ones;
        other |= word | (fromA & ~behindZ);
        const std::uint64_t slash = word ^ ('/' * ones);
        slashes |= (slash - ones) & ~slash;
    }
    return {(other & highBits) == 0, (slashes & highBits) != 0};
}

} // namespace

LowerNames::LowerNames(TreeArrays& tree)
{
    m_text.push_back(TreeArrays::nameEnd);
    m_starts.push_back(1);
    std::string lowerName;
    for (Position node = 0; node < tree.size(); ++node) {
        const std::string_view name = tree.name(node);
        const Look look = lookAt(name);
        m_hasSlashInNames = m_hasSlashInNames || (look.hasSlash && node != 0);
        if (look.isLowerAscii) {
            continue;
        }
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

/// As a rule a name ends in its extension, in lower case too; then whoever finds the extension has found it in the
/// name.
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

std::size_t LowerNames::numberFrom(Position node) const noexcept
{
    return static_cast<std::size_t>(std::lower_bound(m_nodes.begin(), m_nodes.end(), node) - m_nodes.begin());
}

} // namespace morlaine
