#include "Utilities/FileUrl.h"

#include "Utilities/Hex.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <new>
#include <utility>
#include <vector>

namespace morlaine {

/// Either a whole path (no folder) or one component inside a folder; the bytes stand behind the struct.
struct FileUrl::Segment {
    std::atomic<std::uint32_t> references;
    std::uint32_t length;
    Segment* folder;

    [[nodiscard]] char* bytes() noexcept { return reinterpret_cast<char*>(this + 1); }
    [[nodiscard]] std::string_view view() noexcept { return {bytes(), length}; }
};

namespace {

constexpr std::string_view scheme = "file://";
constexpr std::string_view localHost = "localhost";

std::string_view withoutTrailingSlashes(std::string_view path)
{
    while (path.size() > 1 && path.back() == '/') {
        path.remove_suffix(1);
    }
    return path;
}

/// Characters that stand for themselves in the path of a url: unreserved, sub-delimiters, ':', '@' and '/'.
constexpr std::array<bool, 256> plainCharacters = [] {
    std::array<bool, 256> plain{};
    for (const char c :
         std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=:@/")) {
        plain[static_cast<unsigned char>(c)] = true;
    }
    return plain;
}();

} // namespace

FileUrl FileUrl::fromPath(std::string_view path)
{
    path = path.substr(0, path.find('\0'));
    if (!path.empty() && path.front() == '/') {
        return FileUrl(makeSegment(nullptr, path));
    }
    std::error_code unreadable;
    std::string absolute = std::filesystem::current_path(unreadable).native();
    if (!absolute.ends_with('/')) {
        absolute += '/';
    }
    absolute += path;
    return FileUrl(makeSegment(nullptr, absolute));
}

std::optional<FileUrl> FileUrl::parse(std::string_view text)
{
    if (!text.starts_with(scheme)) {
        return std::nullopt;
    }
    text.remove_prefix(scheme.size());
    if (text.starts_with(localHost)) {
        text.remove_prefix(localHost.size());
    }
    const std::optional<std::string> path = percentDecoded(text);
    if (!path || !path->starts_with('/')) {
        return std::nullopt;
    }
    return FileUrl(makeSegment(nullptr, *path));
}

FileUrl::FileUrl(const FileUrl& other) noexcept : m_segment(other.m_segment)
{
    if (m_segment != nullptr) {
        m_segment->references.fetch_add(1, std::memory_order_relaxed);
    }
}

FileUrl& FileUrl::operator=(const FileUrl& other) noexcept
{
    FileUrl copy(other);
    std::swap(m_segment, copy.m_segment);
    return *this;
}

FileUrl& FileUrl::operator=(FileUrl&& other) noexcept
{
    FileUrl moved(std::move(other));
    std::swap(m_segment, moved.m_segment);
    return *this;
}

FileUrl::Segment* FileUrl::makeSegment(Segment* folder, std::string_view bytes)
{
    auto* segment = static_cast<Segment*>(::operator new(sizeof(Segment) + bytes.size()));
    ::new (segment) Segment{1, static_cast<std::uint32_t>(bytes.size()), folder};
    bytes.copy(segment->bytes(), bytes.size());
    return segment;
}

void FileUrl::release(Segment* segment) noexcept
{
    while (segment != nullptr && segment->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        Segment* folder = segment->folder;
        const std::size_t size = sizeof(Segment) + segment->length;
        segment->~Segment();
        ::operator delete(segment, size);
        segment = folder;
    }
}

FileUrl FileUrl::appending(std::string_view component) const
{
    FileUrl folder = asFolder();
    Segment* segment = makeSegment(folder.m_segment, component);
    folder.m_segment = nullptr; // the new segment holds it now
    return FileUrl(segment);
}

FileUrl FileUrl::asFolder() const
{
    const std::string_view bytes = m_segment->view();
    const std::string_view path = m_segment->folder == nullptr ? withoutTrailingSlashes(bytes) : bytes;
    return path.size() == bytes.size() ? *this : FileUrl(makeSegment(nullptr, path));
}

std::optional<FileUrl> FileUrl::sharedFolder() const noexcept
{
    if (m_segment->folder == nullptr) {
        return std::nullopt;
    }
    m_segment->folder->references.fetch_add(1, std::memory_order_relaxed);
    return FileUrl(m_segment->folder);
}

void FileUrl::exactBytes(std::string& buffer) const
{
    std::size_t length = 0;
    Segment* whole = m_segment;
    for (; whole->folder != nullptr; whole = whole->folder) {
        length += 1 + whole->length;
    }
    // The file system's root ends in the slash that joins it to what follows.
    std::string_view start = whole->view();
    if (whole != m_segment && start == "/") {
        start.remove_prefix(1);
    }
    buffer.resize(start.size() + length);
    char* end = buffer.data() + buffer.size();
    for (Segment* segment = m_segment; segment->folder != nullptr; segment = segment->folder) {
        end -= segment->length;
        std::memcpy(end, segment->bytes(), segment->length);
        *--end = '/';
    }
    std::memcpy(buffer.data(), start.data(), start.size());
}

void FileUrl::path(std::string& buffer) const
{
    exactBytes(buffer);
    buffer.resize(withoutTrailingSlashes(buffer).size());
}

std::string FileUrl::path() const
{
    std::string buffer;
    path(buffer);
    return buffer;
}

std::string_view FileUrl::lastPathComponent() const noexcept
{
    const std::string_view bytes = m_segment->view();
    if (m_segment->folder != nullptr) {
        return bytes;
    }
    const std::string_view path = withoutTrailingSlashes(bytes);
    return path.substr(path.rfind('/') + 1);
}

std::string_view FileUrl::pathExtension() const noexcept
{
    return pathExtension(lastPathComponent());
}

std::string_view FileUrl::pathExtension(std::string_view component) noexcept
{
    const std::size_t stop = component.rfind('.');
    return stop == std::string_view::npos || stop == 0 ? std::string_view() : component.substr(stop + 1);
}

std::string FileUrl::absoluteString() const
{
    std::string bytes;
    exactBytes(bytes);
    std::string text(scheme);
    appendPercentEncoded(bytes, text);
    return text;
}

void FileUrl::appendPercentEncoded(std::string_view bytes, std::string& text)
{
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (plainCharacters[byte]) {
            text += c;
        } else {
            text += {'%', hexDigit(byte >> 4U), hexDigit(byte & 0x0FU)};
        }
    }
}

std::optional<std::string> FileUrl::percentDecoded(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '?' || c == '#') {
            return std::nullopt;
        }
        if (c == '%') {
            const int high = i + 2 < text.size() ? hexValue(text[i + 1]) : -1;
            const int low = i + 2 < text.size() ? hexValue(text[i + 2]) : -1;
            if (high < 0 || low < 0) {
                return std::nullopt;
            }
            c = static_cast<char>(high * 16 + low);
            i += 2;
        }
        if (c == '\0') {
            return std::nullopt;
        }
        bytes += c;
    }
    return bytes;
}

FileUrl FileUrl::standardized() const
{
    const std::string whole = path();
    std::vector<std::string_view> components;
    for (std::string_view rest = whole; !rest.empty();) {
        const std::size_t slash = std::min(rest.find('/'), rest.size());
        const std::string_view component = rest.substr(0, slash);
        rest.remove_prefix(std::min(slash + 1, rest.size()));
        if (component == "..") {
            if (!components.empty()) {
                components.pop_back();
            }
        } else if (!component.empty() && component != ".") {
            components.push_back(component);
        }
    }
    std::string standard;
    for (const std::string_view component : components) {
        standard += '/';
        standard += component;
    }
    return fromPath(standard.empty() ? "/" : standard);
}

bool operator==(const FileUrl& a, const FileUrl& b)
{
    FileUrl::Segment* left = a.m_segment;
    FileUrl::Segment* right = b.m_segment;
    while (left != right && left->folder != nullptr && right->folder != nullptr) {
        if (left->view() != right->view()) {
            return false;
        }
        left = left->folder;
        right = right->folder;
    }
    if (left == right) {
        return true;
    }
    if (left->folder == nullptr && right->folder == nullptr) {
        return left->view() == right->view();
    }
    std::string leftBytes;
    std::string rightBytes;
    a.exactBytes(leftBytes);
    b.exactBytes(rightBytes);
    return leftBytes == rightBytes;
}

} // namespace morlaine

std::size_t std::hash<morlaine::FileUrl>::operator()(const morlaine::FileUrl& url) const
{
    std::string bytes;
    url.exactBytes(bytes);
    return std::hash<std::string_view>()(bytes);
}
