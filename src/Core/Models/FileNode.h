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

/// One file, package, symbolic link or folder of a scanned tree, with everything inside it.
///
/// To its users an immutable value, compared and hashed field by field. Inside it is a handle: a reference to the
/// shared tree and a position in it. Copying a node increments one counter, however large the folder; every copy keeps
/// the whole tree alive. Nodes may be copied, read and destroyed on any thread. Nothing here recurses. A moved-from
/// node may only be destroyed or assigned to.
class FileNode {
public:
    class Children;

    /// Makes a new tree. `name` is made valid UTF-8 (U+FFFD for invalid bytes). `children` are copied with everything
    /// inside them and keep their order; a node without a list (a file) differs from one with an empty list. Use
    /// TreeBuilder to make a tree of many nodes. Throws TreeTooLarge.
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

    /// The node at `position` of a tree that another node keeps alive.
    [[nodiscard]] static FileNode at(const Tree& tree, Tree::Position position) noexcept
    {
        tree.retain();
        return {&tree, position};
    }

    /// The node's tree and its position there. The reference is valid as long as any node of the tree exists.
    [[nodiscard]] const Tree& tree() const noexcept { return *m_tree; }
    [[nodiscard]] Tree::Position position() const noexcept { return m_position; }

    /// Identity: two nodes are the same item of the same scan when their ids are equal.
    [[nodiscard]] const Uuid& id() const noexcept { return m_tree->idOf(m_position); }

    /// The exact location. Built on each call.
    [[nodiscard]] FileUrl url() const { return m_tree->urlOf(m_position); }

    /// The name to show, valid UTF-8. The view is valid as long as any node of the tree exists.
    [[nodiscard]] std::string_view name() const noexcept { return m_tree->nameOf(m_position); }

    /// In bytes: of a file the smaller of its length and its allocated size, of a package the sum of its files, of a
    /// folder the sum of its children.
    [[nodiscard]] std::int64_t size() const noexcept { return m_tree->sizeOf(m_position); }

    [[nodiscard]] bool isDirectory() const noexcept { return m_tree->isDirectory(m_position); }
    [[nodiscard]] FileCategory fileCategory() const noexcept { return m_tree->categoryOf(m_position); }

    /// The children, or nothing for a node without a list. Valid as long as any node of the tree exists.
    [[nodiscard]] std::optional<Children> children() const noexcept;

    /// The children; empty for a node without a list.
    [[nodiscard]] Children childrenOrNone() const noexcept;

    /// `size` in words, such as "1.2 MB".
    [[nodiscard]] std::string formattedSize() const;

    /// The extension of the url's last component in its exact bytes; empty if it has none.
    [[nodiscard]] std::string fileExtension() const;

    /// The number of files in this node, itself included; everything but a folder is a file. Constant time for the root
    /// of the tree, one pass for others.
    [[nodiscard]] std::int64_t fileCount() const noexcept { return m_tree->countsOf(m_position).first; }

    /// The number of folders in this node, itself included. Constant time for the root of the tree, one pass for
    /// others.
    [[nodiscard]] std::int64_t directoryCount() const noexcept { return m_tree->countsOf(m_position).second; }

    /// Compares all seven fields, children included. Comparing a node with its copy is constant time.
    friend bool operator==(const FileNode& a, const FileNode& b);

private:
    friend class TreeBuilder;

    /// Takes over a reference of the tree.
    FileNode(const Tree* tree, Tree::Position position) noexcept : m_tree(tree), m_position(position) {}

    const Tree* m_tree;
    Tree::Position m_position;
};

/// The children of a node, in order. A light range that makes each node on access. Valid as long as any node of the
/// tree exists.
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

    /// The siblings in `tree` from position `first` up to `end`.
    Children(const Tree& tree, Tree::Position first, Tree::Position end) : m_tree(&tree), m_first(first), m_end(end) {}

    [[nodiscard]] Iterator begin() const noexcept { return {m_tree, m_first}; }
    [[nodiscard]] Iterator end() const noexcept { return {m_tree, m_end}; }
    [[nodiscard]] bool empty() const noexcept { return m_first == m_end; }
    [[nodiscard]] FileNode front() const noexcept { return *begin(); }

    /// These two iterate over the children.
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
