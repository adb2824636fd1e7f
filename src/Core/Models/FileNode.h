#pragma once

#include "Core/Models/Tree.h"
#include "Utilities/FileCategory.h"
#include "Utilities/FileUrl.h"
#include "Utilities/Uuid.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morlaine {

/// One file, package, symbolic link or folder of a scanned tree, a folder together with all that it holds.
///
/// A value to its users: immutable, compared and hashed field by field. Inside a handle: the tree, which all its nodes
/// share, and a position in it. Copying a node, whatever hangs below it, is one counter increment, and every copy keeps
/// the whole tree. Nodes may be copied, read and dropped on any thread. Nothing here recurses, however deep the tree. A
/// moved-from node may only be destroyed or assigned to.
class FileNode {
public:
    class Children;

    /// A tree of its own. `name` is made valid UTF-8 (U+FFFD for what is not). `children` are copied with all that they
    /// hold and kept in the order given; a node without a list (a file) differs from one with an empty list. To make a
    /// tree of many nodes use TreeBuilder. Throws TreeTooLarge.
    FileNode(const Uuid& id, const FileUrl& url, std::string_view name, std::int64_t size, bool isDirectory,
             FileCategory fileCategory, std::optional<std::vector<FileNode>> children);

    /// The same with a fresh random id.
    FileNode(const FileUrl& url, std::string_view name, std::int64_t size, bool isDirectory, FileCategory fileCategory,
             std::optional<std::vector<FileNode>> children);

    FileNode(const FileNode& other) noexcept : FileNode(other.m_tree, other.m_position)
    {
        if (m_tree != nullptr) {
            m_tree->retain();
        }
    }
    FileNode(FileNode&& other) noexcept : FileNode(std::exchange(other.m_tree, nullptr), other.m_position) {}
    FileNode& operator=(FileNode other) noexcept
    {
        std::swap(m_tree, other.m_tree);
        std::swap(m_position, other.m_position);
        return *this;
    }
    ~FileNode()
    {
        if (m_tree != nullptr) {
            m_tree->release();
        }
    }

    /// The node at `position` of a tree that somebody holds.
    [[nodiscard]] static FileNode at(const Tree& tree, Tree::Position position) noexcept
    {
        tree.retain();
        return {&tree, position};
    }

    /// The tree that the node is in, and its place there. They last as long as any node of the tree.
    [[nodiscard]] const Tree& tree() const noexcept { return *m_tree; }
    [[nodiscard]] Tree::Position position() const noexcept { return m_position; }

    /// Identity: two nodes are the same item of the same scan when their ids are equal.
    [[nodiscard]] const Uuid& id() const noexcept { return m_tree->idOf(m_position); }

    /// The exact location. Made when asked for.
    [[nodiscard]] FileUrl url() const { return m_tree->urlOf(m_position); }

    /// The name for people, valid UTF-8. The view lasts as long as any node of the tree.
    [[nodiscard]] std::string_view name() const noexcept { return m_tree->nameOf(m_position); }

    /// Bytes: of a file the smaller of its length and what is allocated for it, of a package the sum of its files, of a
    /// folder the sum of its children.
    [[nodiscard]] std::int64_t size() const noexcept { return m_tree->sizeOf(m_position); }

    [[nodiscard]] bool isDirectory() const noexcept { return m_tree->isDirectory(m_position); }
    [[nodiscard]] FileCategory fileCategory() const noexcept { return m_tree->categoryOf(m_position); }

    /// What a folder holds, or nothing for a node that has no list. Lasts as long as any node of the tree.
    [[nodiscard]] std::optional<Children> children() const noexcept;

    /// The children, or none: for walks that treat a missing list like an empty one.
    [[nodiscard]] Children childrenOrNone() const noexcept;

    /// `size` as people read it.
    [[nodiscard]] std::string formattedSize() const;

    /// The extension of the url's last component, case kept, exact bytes; empty when there is none.
    [[nodiscard]] std::string fileExtension() const;

    /// How many nodes of this tree are no folders, the node itself included. Costs nothing for the root of its tree,
    /// one pass for others.
    [[nodiscard]] std::int64_t fileCount() const noexcept { return m_tree->countsOf(m_position).first; }

    /// How many nodes of this tree are folders, the node itself included. Costs nothing for the root of its tree, one
    /// pass for others.
    [[nodiscard]] std::int64_t directoryCount() const noexcept { return m_tree->countsOf(m_position).second; }

    /// Compares all seven fields, the children element by element. The same place of the same tree is equal at once.
    friend bool operator==(const FileNode& a, const FileNode& b);

private:
    friend class TreeBuilder;

    /// Takes over a reference.
    FileNode(const Tree* tree, Tree::Position position) noexcept : m_tree(tree), m_position(position) {}

    const Tree* m_tree;
    Tree::Position m_position;
};

/// The children of a node, in order. A light range that makes a node of each child when it is asked for. Lasts as long
/// as any node of the tree.
class FileNode::Children {
public:
    class Iterator {
    public:
        using iterator_concept = std::forward_iterator_tag;
        using iterator_category = std::input_iterator_tag;
        using value_type = FileNode;
        using difference_type = std::ptrdiff_t;

        Iterator() = default;
        Iterator(const Tree* tree, Tree::Position position) : m_tree(tree), m_position(position) {}

        [[nodiscard]] FileNode operator*() const noexcept { return FileNode::at(*m_tree, m_position); }
        Iterator& operator++() noexcept
        {
            m_position = m_tree->endOf(m_position);
            return *this;
        }
        Iterator operator++(int) noexcept { return std::exchange(*this, Iterator(*this).operator++()); }

        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        const Tree* m_tree = nullptr;
        Tree::Position m_position = 0;
    };

    /// What stands in `tree` from `first` up to `end`.
    Children(const Tree& tree, Tree::Position first, Tree::Position end) : m_tree(&tree), m_first(first), m_end(end) {}

    [[nodiscard]] Iterator begin() const noexcept { return {m_tree, m_first}; }
    [[nodiscard]] Iterator end() const noexcept { return {m_tree, m_end}; }
    [[nodiscard]] bool empty() const noexcept { return m_first == m_end; }
    [[nodiscard]] FileNode front() const noexcept { return *begin(); }

    /// These two go through the children.
    [[nodiscard]] std::size_t size() const noexcept;
    [[nodiscard]] FileNode operator[](std::size_t index) const noexcept;

private:
    const Tree* m_tree;
    Tree::Position m_first;
    Tree::Position m_end;
};

inline FileNode::Children FileNode::childrenOrNone() const noexcept
{
    return {*m_tree, m_position + 1, m_tree->endOf(m_position)};
}

inline std::optional<FileNode::Children> FileNode::children() const noexcept
{
    return m_tree->hasList(m_position) ? std::optional(childrenOrNone()) : std::nullopt;
}

} // namespace morlaine

template <>
struct std::hash<morlaine::FileNode> {
    [[nodiscard]] std::size_t operator()(const morlaine::FileNode& node) const;
};
