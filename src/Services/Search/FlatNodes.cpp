#include "Services/Search/FlatNodes.h"

#include "Core/Models/TreeWalk.h"
#include "Utilities/Lowercase.h"
#include "Utilities/Utf8.h"

#include <QHashFunctions>

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace morlaine {

namespace {

constexpr char nameEnd = '\xFF'; // in no UTF-8
constexpr std::uint32_t freeSlot = 0xFFFFFFFF;
constexpr std::size_t mostNodes = 0x7FFFFFFF;

/// More than names take as a rule. What is not needed of it is never touched, and so takes no memory.
constexpr std::size_t roomForName = 48;

/// The seed differs from run to run, so that no file can hold ids that all fall on one slot.
std::uint32_t hashOf(const Uuid& id)
{
    static const std::size_t seed = QHashSeed::globalSeed();
    return static_cast<std::uint32_t>(qHashBits(id.bytes().data(), id.bytes().size(), seed));
}

} // namespace

FlatNodes::FlatNodes(const FileNode& root)
    : m_root(root)
    , m_rootPath(validUtf8(root.url().path()))
    , m_lowerRootPath(lowercased(m_rootPath))
{
    reserve(static_cast<std::size_t>(root.fileCount() + root.directoryCount()));
    std::vector<Position> open;
    std::vector<std::uint32_t> hashes;
    hashes.reserve(m_nodes.capacity());
    const auto enter = [&](const FileNode& node) {
        const Position position = size();
        append(node, open.empty() ? position : open.back());
        hashes.push_back(hashOf(node.id()));
        open.push_back(position);
    };
    const auto leave = [&](const FileNode&) {
        m_ends[open.back()] = size();
        open.pop_back();
    };
    walkTree(m_root, enter, leave);
    m_nameOffsets.push_back(m_lowerNames.size());
    indexIds(hashes);
}

void FlatNodes::reserve(std::size_t count)
{
    m_nodes.reserve(count);
    m_ends.reserve(count);
    m_parents.reserve(count);
    m_sizes.reserve(count);
    m_categories.reserve(count);
    m_nameOffsets.reserve(count + 1);
    m_lowerNames.reserve(count * roomForName);
}

void FlatNodes::append(const FileNode& node, Position parent)
{
    if (m_nodes.size() == mostNodes) {
        std::abort(); // more than any memory holds
    }
    m_nodes.push_back(&node);
    m_ends.push_back(0);
    m_parents.push_back(parent);
    m_sizes.push_back(node.size());
    m_categories.push_back(node.fileCategory());
    const std::size_t start = m_lowerNames.size();
    m_nameOffsets.push_back(start);
    appendLowercased(node.name(), m_lowerNames);
    const std::string_view lowerName = std::string_view(m_lowerNames).substr(start);
    m_hasSlashInNames = m_hasSlashInNames || (lowerName.find('/') != std::string_view::npos && &node != &m_root);
    noteExtension(node, lowerName);
    m_lowerNames += nameEnd;
}

/// As a rule a name ends in its extension, in lower case too; then whoever finds the extension has found it in the
/// name.
void FlatNodes::noteExtension(const FileNode& node, std::string_view lowerName)
{
    const std::string extension = node.fileExtension();
    if (extension.empty()) {
        return;
    }
    std::string lowerExtension = lowercased(validUtf8(extension));
    if (!lowerName.ends_with(lowerExtension)) {
        m_oddExtensions.push_back({static_cast<Position>(m_nodes.size() - 1), std::move(lowerExtension)});
    }
}

std::string FlatNodes::path(Position position) const
{
    std::vector<std::string_view> names;
    for (; position != 0; position = parentOf(position)) {
        names.push_back(node(position).name());
    }
    std::string path = m_rootPath;
    for (; !names.empty(); names.pop_back()) {
        path += '/';
        path += names.back();
    }
    return path;
}

std::string_view FlatNodes::lowerName(Position position) const noexcept
{
    const std::size_t start = m_nameOffsets[position];
    return std::string_view(m_lowerNames).substr(start, m_nameOffsets[position + 1] - start - 1);
}

FlatNodes::Position FlatNodes::positionAtOffset(std::size_t offset, Position from) const noexcept
{
    std::size_t low = from;
    std::size_t step = 1;
    for (; low + step < m_nodes.size() && m_nameOffsets[low + step] <= offset; step *= 2) {
        low += step;
    }
    const auto begin = m_nameOffsets.begin() + static_cast<std::ptrdiff_t>(low);
    const auto end = m_nameOffsets.begin() + static_cast<std::ptrdiff_t>(std::min(low + step, m_nodes.size()));
    return static_cast<Position>(std::upper_bound(begin, end, offset) - m_nameOffsets.begin() - 1);
}

FlatNodes::Position FlatNodes::positionIn(std::uint32_t slot) const noexcept
{
    return slot & ((1U << m_positionBits) - 1);
}

/// The slot that holds the id, or the free one where it belongs. What a slot holds beside the position tells most other
/// ids apart without a look at their nodes.
std::size_t FlatNodes::slotFor(const Uuid& id, std::uint32_t hash) const noexcept
{
    const std::uint32_t mark = hash << m_positionBits;
    std::size_t slot = (std::uint64_t{hash} * m_idSlots.size()) >> 32;
    for (; m_idSlots[slot] != freeSlot; slot = slot + 1 == m_idSlots.size() ? 0 : slot + 1) {
        const Position position = positionIn(m_idSlots[slot]);
        if (m_idSlots[slot] == (mark | position) && node(position).id() == id) {
            break;
        }
    }
    return slot;
}

void FlatNodes::indexIds(std::span<const std::uint32_t> hashes)
{
    m_positionBits = std::min(static_cast<int>(std::bit_width(hashes.size())), 31);
    m_idSlots.assign(hashes.size() + hashes.size() / 4 + 1, freeSlot);
    for (Position position = 0; position < hashes.size(); ++position) {
        std::uint32_t& slot = m_idSlots[slotFor(node(position).id(), hashes[position])];
        if (slot == freeSlot) {
            slot = (hashes[position] << m_positionBits) | position;
        } else {
            m_repeatedIds.emplace_back(position, positionIn(slot));
        }
    }
}

std::optional<FlatNodes::Position> FlatNodes::find(const Uuid& id) const noexcept
{
    const std::uint32_t slot = m_idSlots[slotFor(id, hashOf(id))];
    return slot == freeSlot ? std::nullopt : std::optional(positionIn(slot));
}

} // namespace morlaine
