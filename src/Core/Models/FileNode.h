#pragma once

#include "Utilities/FileCategory.h"
#include "Utilities/FileUrl.h"
#include "Utilities/Uuid.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morlaine {

/// One file, package, symbolic link or folder of a scanned tree, a folder together with all that it holds.
///
/// A value to its users: immutable, compared and hashed field by field. Inside a handle to a shared record, so that
/// copying a node, whatever hangs below it, is one counter increment. Nodes may be copied, read and dropped on any
/// thread. Nothing here recurses, however deep the tree. A moved-from node may only be destroyed or assigned to.
class FileNode {
public:
    /// `name` is made valid UTF-8 (U+FFFD for what is not). `children` are kept in the order given; a node without
    /// a list (a file) differs from one with an empty list. Counts are summed here, checked. A child whose `url` was
    /// appended to its folder's and ends in its name shares the folder's.
    FileNode(const Uuid& id, const FileUrl& url, std::string_view name, std::int64_t size, bool isDirectory,
             FileCategory fileCategory, std::optional<std::vector<FileNode>> children);

    /// The same with a fresh random id.
    FileNode(const FileUrl& url, std::string_view name, std::int64_t size, bool isDirectory, FileCategory fileCategory,
             std::optional<std::vector<FileNode>> children);

    /// A node with a fresh random id for `component` (one file name in exact bytes) in `folder`, without a list of
    /// children. The same as a node made from the appended url, but for the cost of that url.
    [[nodiscard]] static FileNode inFolder(const FileUrl& folder, std::string_view component, std::int64_t size,
                                           bool isDirectory, FileCategory fileCategory);

    FileNode(const FileNode& other) noexcept;
    FileNode(FileNode&& other) noexcept : m_record(std::exchange(other.m_record, nullptr)) {}
    FileNode& operator=(const FileNode& other) noexcept;
    FileNode& operator=(FileNode&& other) noexcept;
    ~FileNode() { release(m_record); }

    /// Identity: two nodes are the same item of the same scan when their ids are equal.
    [[nodiscard]] const Uuid& id() const noexcept;

    /// The exact location. Made when asked for.
    [[nodiscard]] FileUrl url() const;

    /// The name for people, valid UTF-8. The view lasts as long as any copy of this node.
    [[nodiscard]] std::string_view name() const noexcept;

    /// Bytes: of a file the smaller of its length and what is allocated for it, of a package the sum of its files, of a
    /// folder the sum of its children.
    [[nodiscard]] std::int64_t size() const noexcept;

    [[nodiscard]] bool isDirectory() const noexcept;
    [[nodiscard]] FileCategory fileCategory() const noexcept;

    /// What a folder holds, or nothing for a node that has no list. The span lasts as long as any copy of this node.
    [[nodiscard]] std::optional<std::span<const FileNode>> children() const noexcept;

    /// The children, or none: for walks that treat a missing list like an empty one.
    [[nodiscard]] std::span<const FileNode> childrenOrNone() const noexcept;

    /// `size` as people read it.
    [[nodiscard]] std::string formattedSize() const;

    /// The extension of the url's last component, case kept, exact bytes; empty when there is none.
    [[nodiscard]] std::string fileExtension() const;

    /// How many nodes of this tree are no folders, the node itself included. Costs nothing.
    [[nodiscard]] std::int64_t fileCount() const noexcept;

    /// How many nodes of this tree are folders, the node itself included. Costs nothing.
    [[nodiscard]] std::int64_t directoryCount() const noexcept;

    /// Compares all seven fields, the children element by element. Copies are equal at once.
    friend bool operator==(const FileNode& a, const FileNode& b);

private:
    friend struct std::hash<FileNode>;
    struct Record;
    struct ChildList;

    explicit FileNode(Record* record) noexcept : m_record(record) {}

    [[nodiscard]] bool hasEqualFields(const FileNode& other) const;
    [[nodiscard]] std::size_t hashOfFields() const;
    static void release(Record* record) noexcept;

    Record* m_record;
};

} // namespace morlaine

template <>
struct std::hash<morlaine::FileNode> {
    [[nodiscard]] std::size_t operator()(const morlaine::FileNode& node) const;
};
