#include "Core/Models/FileNode.h"

#include "Core/Models/TreeBuilder.h"
#include "Utilities/ByteCount.h"

#include <algorithm>

namespace morlaine {

namespace {

using Position = Tree::Position;

/// `hasOwnUrl` is not compared: the root of a tree always has one, the same node elsewhere may not.
constexpr std::uint8_t comparedKinds = TreeArrays::category | TreeArrays::isFolder | TreeArrays::hasList;

/// The slices of a tree's arrays that belong to one node and everything inside it.
class Part {
public:
    explicit Part(const FileNode& node)
        : m_nodes(node.tree().arrays())
        , m_first(node.position())
        , m_length(m_nodes.ends[m_first] - m_first)
    {
    }

    [[nodiscard]] std::string location() const { return m_nodes.location(m_first); }
    [[nodiscard]] std::uint8_t kind() const { return m_nodes.kinds[m_first] & comparedKinds; }
    [[nodiscard]] std::string_view ids() const { return bytes(m_nodes.ids, 0); }
    [[nodiscard]] std::string_view sizes() const { return bytes(m_nodes.sizes, 0); }
    [[nodiscard]] std::string_view innerKinds() const { return bytes(m_nodes.kinds, 1); }

    /// Includes the terminators, so that equal bytes mean equal names.
    [[nodiscard]] std::string_view names() const
    {
        const std::size_t start = m_nodes.nameStarts[m_first];
        return {m_nodes.names.data() + start, m_nodes.nameStarts[m_first + m_length] - start};
    }

    /// The number of nodes, and the number of nodes in the subtree at `place`. With the order of the nodes these
    /// determine the structure.
    [[nodiscard]] Position length() const { return m_length; }
    [[nodiscard]] Position lengthAt(Position place) const { return m_nodes.ends[m_first + place] - m_first - place; }

    /// Calls `visit(place, ownUrl)` in order for inner nodes that have a url of their own. All other urls follow from
    /// names.
    template <typename Visit>
    void eachInnerUrl(Visit visit) const
    {
        const auto end = m_nodes.ownUrls.lower_bound(m_first + m_length);
        for (auto own = m_nodes.ownUrls.upper_bound(m_first); own != end; ++own) {
            visit(own->first - m_first, own->second);
        }
    }

    [[nodiscard]] bool hasSameShape(const Part& other) const
    {
        for (Position place = 0; place < m_length; ++place) {
            if (lengthAt(place) != other.lengthAt(place)) {
                return false;
            }
        }
        return true;
    }

    /// Requires equal kinds: these say which nodes have urls of their own.
    [[nodiscard]] bool hasSameInnerUrls(const Part& other) const
    {
        auto next = other.m_nodes.ownUrls.upper_bound(other.m_first);
        bool isSame = true;
        eachInnerUrl([&](Position, const TreeArrays::OwnUrl& own) { isSame = isSame && own == (next++)->second; });
        return isSame;
    }

private:
    template <typename Value>
    [[nodiscard]] std::string_view bytes(const GrowingArray<Value>& values, Position from) const
    {
        return {reinterpret_cast<const char*>(values.data() + m_first + from), (m_length - from) * sizeof(Value)};
    }

    const TreeArrays& m_nodes;
    Position m_first;
    Position m_length;
};

/// The hash of a sequence of values, each fed in turn.
class SequenceHash {
public:
    void feed(std::uint64_t value) noexcept
    {
        m_state = (m_state ^ value) * 0x9E3779B97F4A7C15U;
        m_state ^= m_state >> 32;
    }
    void feed(std::string_view bytes) noexcept { feed(std::hash<std::string_view>()(bytes)); }
    [[nodiscard]] std::size_t value() const noexcept { return static_cast<std::size_t>(m_state); }

private:
    std::uint64_t m_state = 0x243F6A8885A308D3U;
};

} // namespace

FileNode::FileNode(const Uuid& id, const FileUrl& url, std::string_view name, std::int64_t size, bool isDirectory,
                   FileCategory fileCategory, std::optional<std::vector<FileNode>> children)
    : FileNode(nullptr, 0)
{
    TreeBuilder builder(TreeBuilder::Source::given);
    builder.add({id, size, isDirectory, fileCategory}, url.bytes(), name);
    if (children) {
        builder.openList();
        for (const FileNode& child : *children) {
            builder.addCopy(child);
        }
        builder.closeList();
    }
    *this = builder.finish();
}

FileNode::FileNode(const FileUrl& url, std::string_view name, std::int64_t size, bool isDirectory,
                   FileCategory fileCategory, std::optional<std::vector<FileNode>> children)
    : FileNode(Uuid::random(), url, name, size, isDirectory, fileCategory, std::move(children))
{
}

std::string FileNode::formattedSize() const
{
    return byteCountText(size());
}

std::string FileNode::fileExtension() const
{
    return std::string(FileUrl::pathExtension(m_tree->lastComponentOf(m_position)));
}

std::size_t FileNode::Children::size() const noexcept
{
    return static_cast<std::size_t>(std::ranges::distance(begin(), end()));
}

FileNode FileNode::Children::operator[](std::size_t index) const noexcept
{
    return *std::ranges::next(begin(), static_cast<std::ptrdiff_t>(index));
}

bool operator==(const FileNode& a, const FileNode& b)
{
    if (a.m_tree == b.m_tree && a.m_position == b.m_position) {
        return true;
    }
    const Part left(a);
    const Part right(b);
    return left.ids() == right.ids() && left.sizes() == right.sizes() && left.kind() == right.kind() &&
           left.innerKinds() == right.innerKinds() && left.names() == right.names() && left.hasSameShape(right) &&
           left.hasSameInnerUrls(right) && left.location() == right.location();
}

} // namespace morlaine

std::size_t std::hash<morlaine::FileNode>::operator()(const morlaine::FileNode& node) const
{
    const morlaine::Part part(node);
    morlaine::SequenceHash sequence;
    sequence.feed(part.ids());
    sequence.feed(part.location());
    sequence.feed(part.names());
    sequence.feed(part.sizes());
    sequence.feed(part.kind());
    sequence.feed(part.innerKinds());
    for (morlaine::Tree::Position place = 0; place < part.length(); ++place) {
        sequence.feed(part.lengthAt(place));
    }
    part.eachInnerUrl([&sequence](morlaine::Tree::Position place, const morlaine::TreeArrays::OwnUrl& own) {
        sequence.feed(place);
        sequence.feed(own.bytes);
    });
    return sequence.value();
}
