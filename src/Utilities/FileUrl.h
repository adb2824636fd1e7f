#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace morlaine {

/// The location of a file or folder: an absolute path of exact bytes (any but NUL, UTF-8 or not) with a text form
/// `file:///…`. A value inside, a shared handle outside: a url appended to a folder's url holds that folder's and
/// one component more, so that the urls of a tree share their folders. Copies cost one counter increment.
///
/// Immutable and safe to share between threads. A moved-from url may only be destroyed or assigned to.
class FileUrl {
public:
    /// The location of `path`. A relative path is taken from the current working directory; everything behind a
    /// NUL is dropped, since no path goes on there.
    [[nodiscard]] static FileUrl fromPath(std::string_view path);

    /// Reads the text form, `file:///…` or `file://localhost/…`; nothing for another scheme or host, a broken
    /// percent escape, an encoded NUL, a query or a fragment.
    [[nodiscard]] static std::optional<FileUrl> parse(std::string_view text);

    FileUrl(const FileUrl& other) noexcept;
    FileUrl(FileUrl&& other) noexcept : m_segment(std::exchange(other.m_segment, nullptr)) {}
    FileUrl& operator=(const FileUrl& other) noexcept;
    FileUrl& operator=(FileUrl&& other) noexcept;
    ~FileUrl() { release(m_segment); }

    /// The location of `component` inside this folder. Requires one file name: not empty, without slash and NUL.
    [[nodiscard]] FileUrl appending(std::string_view component) const;

    /// This url as the urls appended to it share it: without trailing slashes.
    [[nodiscard]] FileUrl asFolder() const;

    /// The folder that this url was appended to; nothing for a url made from a whole path.
    [[nodiscard]] std::optional<FileUrl> sharedFolder() const noexcept;

    /// The path in its exact bytes, without the slashes that may trail it. The second form replaces `buffer`, so
    /// that its memory serves many paths.
    [[nodiscard]] std::string path() const;
    void path(std::string& buffer) const;

    /// The exact bytes of the part behind the last slash that does not trail the path; empty for `/`.
    /// Valid while a copy of this url lives.
    [[nodiscard]] std::string_view lastPathComponent() const noexcept;

    /// The extension of the last component, see below.
    [[nodiscard]] std::string_view pathExtension() const noexcept;

    /// The part behind the last full stop of a file name, case kept; none for `.bashrc`, `name.` and `name`.
    [[nodiscard]] static std::string_view pathExtension(std::string_view component) noexcept;

    /// The text form. Bytes that may not stand in a path of a url are percent-encoded.
    [[nodiscard]] std::string absoluteString() const;

    /// Appends the text form of path bytes (slashes stay) to `text`.
    static void appendPercentEncoded(std::string_view bytes, std::string& text);

    /// The bytes that a text form stands for; nothing for a broken escape, a NUL, `?` or `#`.
    [[nodiscard]] static std::optional<std::string> percentDecoded(std::string_view text);

    /// The same location without empty, `.` and `..` components and trailing slashes. Links are not looked at.
    [[nodiscard]] FileUrl standardized() const;

    /// Equal when the text forms are equal. A trailing slash makes a difference.
    friend bool operator==(const FileUrl& a, const FileUrl& b);

private:
    friend struct std::hash<FileUrl>;
    struct Segment;

    explicit FileUrl(Segment* segment) noexcept : m_segment(segment) {}

    [[nodiscard]] static Segment* makeSegment(Segment* folder, std::string_view bytes);
    static void release(Segment* segment) noexcept;
    void exactBytes(std::string& buffer) const;

    Segment* m_segment;
};

} // namespace morlaine

template <>
struct std::hash<morlaine::FileUrl> {
    [[nodiscard]] std::size_t operator()(const morlaine::FileUrl& url) const;
};
