#include "Core/Models/FileNode.h"

#include "Core/Models/TreeWalk.h"
#include "Utilities/ByteCount.h"
#include "Utilities/CheckedMath.h"
#include "Utilities/Utf8.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <new>

namespace morlaine {

/// What stands behind the name of a folder that holds something; the children's handles follow it.
struct FileNode::ChildList {
    std::size_t length;
    std::int64_t fileCount;
    std::int64_t directoryCount;

    [[nodiscard]] FileNode* nodes() noexcept { return reinterpret_cast<FileNode*>(this + 1); }
};

/// One allocation for a node: these fields, the bytes of the name right behind the last of them (in what would be
/// padding), and for a folder that holds something its ChildList behind that.
struct FileNode::Record {
    enum Flag : std::uint8_t {
        isFolder = 1,
        hasList = 2,          // `children` is present, be it empty
        hasChildren = 4,      // a ChildList stands behind the name
        locationIsFolder = 8, // the url is `location` plus the name, else `location` alone
    };

    std::atomic<std::uint32_t> references;
    std::uint32_t nameLength;
    std::int64_t size;
    FileUrl location;
    Uuid id;
    FileCategory fileCategory;
    std::uint8_t flags;

    /// Everything but the ChildList, for which there is room.
    [[nodiscard]] static Record* make(const Uuid& id, const FileUrl& location, std::string_view name, std::int64_t size,
                                      FileCategory fileCategory, std::uint8_t flags, std::size_t childCount);

    [[nodiscard]] static std::size_t childListOffset(std::size_t nameLength) noexcept;
    [[nodiscard]] static std::size_t allocationSize(std::size_t nameLength, std::size_t childCount) noexcept;

    [[nodiscard]] bool has(Flag flag) const noexcept { return (flags & flag) != 0; }
    [[nodiscard]] char* nameBytes() noexcept;
    [[nodiscard]] std::string_view name() noexcept { return {nameBytes(), nameLength}; }
    [[nodiscard]] ChildList* childList() noexcept;
    [[nodiscard]] std::span<FileNode> children() noexcept;

    void fillChildList(std::vector<FileNode>&& nodes);

    /// A dead record waits for its release in a list that is linked through its `size`.
    [[nodiscard]] Record* nextDead() const noexcept { return reinterpret_cast<Record*>(size); }
    void setNextDead(Record* next) noexcept { size = reinterpret_cast<std::intptr_t>(next); }

    void destroy() noexcept;
};

namespace {

constexpr std::size_t alignedUp(std::size_t offset, std::size_t alignment)
{
    return (offset + alignment - 1) / alignment * alignment;
}

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

FileNode::Record* FileNode::Record::make(const Uuid& id, const FileUrl& location, std::string_view name,
                                         std::int64_t size, FileCategory fileCategory, std::uint8_t flags,
                                         std::size_t childCount)
{
    void* memory = ::operator new(allocationSize(name.size(), childCount));
    auto* record =
        ::new (memory) Record{1, static_cast<std::uint32_t>(name.size()), size, location, id, fileCategory, flags};
    name.copy(record->nameBytes(), name.size());
    return record;
}

char* FileNode::Record::nameBytes() noexcept
{
    return reinterpret_cast<char*>(&flags + 1);
}

std::size_t FileNode::Record::childListOffset(std::size_t nameLength) noexcept
{
    return alignedUp(offsetof(Record, flags) + 1 + nameLength, alignof(ChildList));
}

std::size_t FileNode::Record::allocationSize(std::size_t nameLength, std::size_t childCount) noexcept
{
    const std::size_t children = childCount == 0 ? 0 : sizeof(ChildList) + childCount * sizeof(FileNode);
    return std::max(sizeof(Record), childListOffset(nameLength) + children);
}

FileNode::ChildList* FileNode::Record::childList() noexcept
{
    return has(hasChildren) ? reinterpret_cast<ChildList*>(reinterpret_cast<char*>(this) + childListOffset(nameLength))
                            : nullptr;
}

std::span<FileNode> FileNode::Record::children() noexcept
{
    ChildList* list = childList();
    return list == nullptr ? std::span<FileNode>() : std::span<FileNode>(list->nodes(), list->length);
}

void FileNode::Record::fillChildList(std::vector<FileNode>&& nodes)
{
    auto* list = ::new (static_cast<void*>(childList())) ChildList{nodes.size(), 0, 1};
    FileNode* place = list->nodes();
    for (FileNode& node : nodes) {
        list->fileCount = checkedAdd(list->fileCount, node.fileCount());
        list->directoryCount = checkedAdd(list->directoryCount, node.directoryCount());
        ::new (static_cast<void*>(place++)) FileNode(std::move(node));
    }
}

void FileNode::Record::destroy() noexcept
{
    const std::size_t bytes = allocationSize(nameLength, children().size());
    this->~Record();
    ::operator delete(this, bytes);
}

FileNode::FileNode(const Uuid& id, const FileUrl& url, std::string_view name, std::int64_t size, bool isDirectory,
                   FileCategory fileCategory, std::optional<std::vector<FileNode>> children)
{
    std::string repaired;
    if (!isValidUtf8(name)) {
        repaired = validUtf8(name);
        name = repaired;
    }
    const std::size_t childCount = children ? children->size() : 0;
    // A folder that holds something keeps its own url, since its children hold the very same one.
    const std::optional<FileUrl> folder =
        childCount == 0 && url.lastPathComponent() == name ? url.sharedFolder() : std::nullopt;
    const auto flags = static_cast<std::uint8_t>(
        (isDirectory ? Record::isFolder : 0) | (children ? Record::hasList : 0) |
        (childCount != 0 ? Record::hasChildren : 0) | (folder ? Record::locationIsFolder : 0));
    m_record = Record::make(id, folder ? *folder : url, name, size, fileCategory, flags, childCount);
    if (childCount != 0) {
        m_record->fillChildList(*std::move(children));
    }
}

FileNode FileNode::inFolder(const FileUrl& folder, std::string_view component, std::int64_t size, bool isDirectory,
                            FileCategory fileCategory)
{
    if (!isValidUtf8(component)) {
        return {folder.appending(component), component, size, isDirectory, fileCategory, std::nullopt};
    }
    const auto flags = static_cast<std::uint8_t>(Record::locationIsFolder | (isDirectory ? Record::isFolder : 0));
    return FileNode(Record::make(Uuid::random(), folder.asFolder(), component, size, fileCategory, flags, 0));
}

FileNode::FileNode(const FileUrl& url, std::string_view name, std::int64_t size, bool isDirectory,
                   FileCategory fileCategory, std::optional<std::vector<FileNode>> children)
    : FileNode(Uuid::random(), url, name, size, isDirectory, fileCategory, std::move(children))
{
}

FileNode::FileNode(const FileNode& other) noexcept : m_record(other.m_record)
{
    if (m_record != nullptr) {
        m_record->references.fetch_add(1, std::memory_order_relaxed);
    }
}

FileNode& FileNode::operator=(const FileNode& other) noexcept
{
    FileNode copy(other);
    std::swap(m_record, copy.m_record);
    return *this;
}

FileNode& FileNode::operator=(FileNode&& other) noexcept
{
    FileNode moved(std::move(other));
    std::swap(m_record, moved.m_record);
    return *this;
}

void FileNode::release(Record* record) noexcept
{
    Record* dead = nullptr;
    const auto drop = [&dead](Record* candidate) {
        if (candidate != nullptr && candidate->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            candidate->setNextDead(dead);
            dead = candidate;
        }
    };
    drop(record);
    while (dead != nullptr) {
        Record* current = dead;
        dead = current->nextDead();
        for (FileNode& child : current->children()) {
            drop(std::exchange(child.m_record, nullptr));
        }
        current->destroy();
    }
}

const Uuid& FileNode::id() const noexcept
{
    return m_record->id;
}

FileUrl FileNode::url() const
{
    return m_record->has(Record::locationIsFolder) ? m_record->location.appending(name()) : m_record->location;
}

std::string_view FileNode::name() const noexcept
{
    return m_record->name();
}

std::int64_t FileNode::size() const noexcept
{
    return m_record->size;
}

bool FileNode::isDirectory() const noexcept
{
    return m_record->has(Record::isFolder);
}

FileCategory FileNode::fileCategory() const noexcept
{
    return m_record->fileCategory;
}

std::optional<std::span<const FileNode>> FileNode::children() const noexcept
{
    return m_record->has(Record::hasList) ? std::optional(childrenOrNone()) : std::nullopt;
}

std::span<const FileNode> FileNode::childrenOrNone() const noexcept
{
    return m_record->children();
}

std::string FileNode::formattedSize() const
{
    return byteCountText(size());
}

std::string FileNode::fileExtension() const
{
    return std::string(m_record->has(Record::locationIsFolder) ? FileUrl::pathExtension(name())
                                                               : m_record->location.pathExtension());
}

std::int64_t FileNode::fileCount() const noexcept
{
    if (!isDirectory()) {
        return 1;
    }
    const ChildList* list = m_record->childList();
    return list == nullptr ? 0 : list->fileCount;
}

std::int64_t FileNode::directoryCount() const noexcept
{
    if (!isDirectory()) {
        return 0;
    }
    const ChildList* list = m_record->childList();
    return list == nullptr ? 1 : list->directoryCount;
}

bool FileNode::hasEqualFields(const FileNode& other) const
{
    Record& a = *m_record;
    Record& b = *other.m_record;
    constexpr std::uint8_t compared = Record::isFolder | Record::hasList;
    if (a.id != b.id || a.name() != b.name() || a.size != b.size || ((a.flags ^ b.flags) & compared) != 0 ||
        a.fileCategory != b.fileCategory || a.children().size() != b.children().size()) {
        return false;
    }
    if (a.has(Record::locationIsFolder) && b.has(Record::locationIsFolder)) {
        return a.location == b.location;
    }
    return url() == other.url();
}

bool operator==(const FileNode& a, const FileNode& b)
{
    std::vector<std::pair<const FileNode*, const FileNode*>> pairs{{&a, &b}};
    while (!pairs.empty()) {
        const auto [left, right] = pairs.back();
        pairs.pop_back();
        if (left->m_record == right->m_record) {
            continue;
        }
        if (!left->hasEqualFields(*right)) {
            return false;
        }
        const auto leftChildren = left->childrenOrNone();
        const auto rightChildren = right->childrenOrNone();
        for (std::size_t i = 0; i < leftChildren.size(); ++i) {
            pairs.emplace_back(&leftChildren[i], &rightChildren[i]);
        }
    }
    return true;
}

std::size_t FileNode::hashOfFields() const
{
    SequenceHash hash;
    hash.feed(std::hash<Uuid>()(id()));
    hash.feed(std::hash<FileUrl>()(url()));
    hash.feed(name());
    hash.feed(static_cast<std::uint64_t>(size()));
    hash.feed(isDirectory() ? 1 : 0);
    hash.feed(fileCategory().rawValue());
    hash.feed(children() ? 1 : 0);
    if (children()) {
        hash.feed(childrenOrNone().size());
    }
    return hash.value();
}

} // namespace morlaine

std::size_t std::hash<morlaine::FileNode>::operator()(const morlaine::FileNode& node) const
{
    morlaine::SequenceHash sequence;
    morlaine::walkTree(node, [&sequence](const morlaine::FileNode& entered) { sequence.feed(entered.hashOfFields()); });
    return sequence.value();
}
