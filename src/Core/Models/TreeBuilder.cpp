#include "Core/Models/TreeBuilder.h"

#include "Core/Models/RepeatedIds.h"
#include "Utilities/FileUrl.h"
#include "Utilities/Utf8.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>

namespace morlaine {

namespace {

constexpr TreeArrays::Position noNode = 0xFFFFFFFF;

std::uint8_t kindOf(const TreeBuilder::Fields& fields)
{
    return static_cast<std::uint8_t>(fields.category | (fields.isDirectory ? TreeArrays::isFolder : 0));
}

void setKind(std::uint8_t& kinds, TreeArrays::Kind kind, bool isSet)
{
    kinds = static_cast<std::uint8_t>(isSet ? kinds | kind : kinds & ~kind);
}

} // namespace

TreeBuilder::TreeBuilder(Source source, Limits limits) : m_openFolderNode(noNode), m_source(source), m_limits(limits)
{
    m_nodes.names.push_back(TreeArrays::nameEnd);
    m_nodes.nameStarts.push_back(1);
}

TreeBuilder::Position TreeBuilder::append(const Fields& fields, std::string_view name)
{
    const Position node = m_nodes.size();
    if (node >= m_limits.nodes || m_nodes.names.size() + name.size() + 1 > m_limits.nameBytes) {
        throw TreeTooLarge();
    }
    m_nodes.ids.push_back(fields.id);
    m_nodes.sizes.push_back(fields.size);
    m_nodes.parents.push_back(node == 0 ? 0 : m_openLists.back().node);
    m_nodes.ends.push_back(node + 1);
    m_nodes.kinds.push_back(kindOf(fields));
    m_nodes.names.append(std::span(name.data(), name.size()));
    m_nodes.names.push_back(TreeArrays::nameEnd);
    m_nodes.nameStarts.push_back(static_cast<std::uint32_t>(m_nodes.names.size()));
    return node;
}

TreeBuilder::Position TreeBuilder::add(const Fields& fields, std::string_view bytes, std::string_view name)
{
    const Position node = isValidUtf8(name) ? append(fields, name) : append(fields, validUtf8(name));
    place(node, bytes);
    return node;
}

TreeBuilder::Position TreeBuilder::addComponent(const Fields& fields, std::string_view component)
{
    return isValidUtf8(component) ? append(fields, component) : addComponent(fields, component, validUtf8(component));
}

TreeBuilder::Position TreeBuilder::addComponent(const Fields& fields, std::string_view component, std::string_view name)
{
    const Position node = append(fields, name);
    if (component != name) {
        setOwnUrl(node, component, true);
    }
    return node;
}

void TreeBuilder::addCopy(const FileNode& node)
{
    const TreeArrays& from = node.tree().arrays();
    const Position first = node.position();
    const Position end = from.ends[first];
    const Fields fields{node.id(), node.size(), node.isDirectory(), node.fileCategory()};
    const Position copy = add(fields, from.location(first), node.name());
    setKind(m_nodes.kinds[copy], TreeArrays::hasList, from.has(first, TreeArrays::hasList));
    for (Position inner = first + 1; inner < end; ++inner) {
        const Position innerCopy = append({from.ids[inner], from.sizes[inner], false, {}}, from.name(inner));
        m_nodes.parents[innerCopy] = from.parents[inner] - first + copy;
        m_nodes.kinds[innerCopy] = from.kinds[inner];
    }
    for (Position inner = first; inner < end; ++inner) {
        m_nodes.ends[inner - first + copy] = from.ends[inner] - first + copy;
    }
    const auto inside = from.ownUrls.upper_bound(first);
    for (auto own = inside; own != from.ownUrls.end() && own->first < end; ++own) {
        m_nodes.ownUrls.insert_or_assign(own->first - first + copy, own->second);
    }
}

void TreeBuilder::openList()
{
    const Position node = m_nodes.size() - 1;
    setKind(m_nodes.kinds[node], TreeArrays::hasList, true);
    std::size_t pathLength = 0;
    const auto own = m_nodes.ownUrls.find(node);
    if (own == m_nodes.ownUrls.end() || own->second.isComponent) {
        pathLength = m_openLists.back().pathLength + m_nodes.lastComponent(node).size() + 1;
    } else {
        std::string bytes = own->second.bytes;
        FileUrl::openFolder(bytes);
        pathLength = bytes.size();
    }
    m_openLists.push_back({node, pathLength});
}

void TreeBuilder::closeList()
{
    const Position folder = m_openLists.back().node;
    m_nodes.ends[folder] = m_nodes.size();
    m_openLists.pop_back();
    if (m_source == Source::measured) {
        m_order.sortList(m_nodes, folder);
    }
}

void TreeBuilder::dropList(Position node)
{
    m_nodes.ids.resize(node + 1);
    m_nodes.sizes.resize(node + 1);
    m_nodes.parents.resize(node + 1);
    m_nodes.ends.resize(node + 1);
    m_nodes.kinds.resize(node + 1);
    m_nodes.nameStarts.resize(node + 2);
    m_nodes.names.resize(m_nodes.nameStarts.back());
    m_nodes.ownUrls.erase(m_nodes.ownUrls.upper_bound(node), m_nodes.ownUrls.end());
    m_namesAgain.erase(m_namesAgain.upper_bound(node), m_namesAgain.end());
    m_nodes.ends[node] = node + 1;
    setKind(m_nodes.kinds[node], TreeArrays::hasList, false);
    m_openFolderNode = noNode;
}

void TreeBuilder::amend(Position node, const Fields& fields, std::string_view bytes,
                        const std::optional<std::string>& name)
{
    std::vector<std::string> locations;
    for (Position child = node + 1; child < m_nodes.ends[node]; child = m_nodes.ends[child]) {
        locations.push_back(m_nodes.location(child));
    }
    m_nodes.ids[node] = fields.id;
    m_nodes.sizes[node] = fields.size;
    m_nodes.kinds[node] = static_cast<std::uint8_t>(
        kindOf(fields) | (m_nodes.kinds[node] & (TreeArrays::hasList | TreeArrays::hasOwnUrl)));
    if (name) {
        m_namesAgain.insert_or_assign(node, validUtf8(*name));
    } else {
        m_namesAgain.try_emplace(node, m_nodes.name(node));
    }
    // With all bytes as its own location, the children's locations stay right while the node's name is not final.
    setOwnUrl(node, bytes, false);
    m_openFolderNode = noNode;
    std::size_t number = 0;
    for (Position child = node + 1; child < m_nodes.ends[node]; child = m_nodes.ends[child]) {
        place(child, locations[number++]);
    }
    place(node, bytes);
    m_openFolderNode = noNode;
}

void TreeBuilder::setOwnUrl(Position node, std::string_view bytes, bool isComponent)
{
    m_nodes.ownUrls.insert_or_assign(node, TreeArrays::OwnUrl{std::string(bytes), isComponent});
    setKind(m_nodes.kinds[node], TreeArrays::hasOwnUrl, true);
}

/// Builds the path of the folder only for a longer location, so that it costs no more than reading that location did.
void TreeBuilder::place(Position node, std::string_view bytes)
{
    const Position folder = m_nodes.parents[node];
    const bool isInOpenList = !m_openLists.empty() && m_openLists.back().node == folder;
    if (node == 0 || (isInOpenList && bytes.size() <= m_openLists.back().pathLength)) {
        setOwnUrl(node, bytes, false);
        return;
    }
    const std::string& path = startOfLocationsIn(folder);
    const bool isInFolder =
        bytes.size() > path.size() && bytes.starts_with(path) && bytes.find('/', path.size()) == std::string_view::npos;
    if (!isInFolder) {
        setOwnUrl(node, bytes, false);
        return;
    }
    const std::string_view component = bytes.substr(path.size());
    if (component != m_nodes.name(node) || m_namesAgain.contains(node)) {
        setOwnUrl(node, component, true);
    } else if (m_nodes.has(node, TreeArrays::hasOwnUrl)) {
        m_nodes.ownUrls.erase(node);
        setKind(m_nodes.kinds[node], TreeArrays::hasOwnUrl, false);
    }
}

const std::string& TreeBuilder::startOfLocationsIn(Position folder)
{
    if (m_openFolderNode != folder) {
        m_openFolder = m_nodes.location(folder);
        FileUrl::openFolder(m_openFolder);
        m_openFolderNode = folder;
    }
    return m_openFolder;
}

void TreeBuilder::nameAgain()
{
    GrowingArray<char> names;
    names.push_back(TreeArrays::nameEnd);
    for (Position node = 0; node < m_nodes.size(); ++node) {
        const auto again = m_namesAgain.find(node);
        const std::string_view name = again == m_namesAgain.end() ? m_nodes.name(node) : again->second;
        if (names.size() + name.size() + 1 > m_limits.nameBytes) {
            throw TreeTooLarge();
        }
        // `nameStarts[node]` is still needed as the end of the previous name.
        const auto start = static_cast<std::uint32_t>(names.size());
        names.append(std::span(name.data(), name.size()));
        names.push_back(TreeArrays::nameEnd);
        m_nodes.nameStarts[node] = start;
    }
    m_nodes.nameStarts.back() = static_cast<std::uint32_t>(names.size());
    m_nodes.names = std::move(names);
    for (const auto& [node, name] : m_namesAgain) {
        const auto own = m_nodes.ownUrls.find(node);
        if (own->second.isComponent && own->second.bytes == name) {
            m_nodes.ownUrls.erase(own);
            setKind(m_nodes.kinds[node], TreeArrays::hasOwnUrl, false);
        }
    }
}

FileNode TreeBuilder::finish()
{
    if (!m_namesAgain.empty()) {
        nameAgain();
    }
    if (m_source == Source::measured) {
        m_order.apply(m_nodes);
    }
    m_nodes.shrinkToFit();
    std::unique_ptr<Tree, Tree::Release> tree(new Tree(std::move(m_nodes)));
    if (m_source == Source::given) {
        tree->m_repeatedIds = repeatedIds(tree->arrays().ids);
    }
    return {tree.release(), 0};
}

} // namespace morlaine
