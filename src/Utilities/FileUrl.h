#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace morlaine {

/// The location of a file or folder: an absolute path of exact bytes (any but NUL, UTF-8 or not) with a text form
/// `file:///…`. A value.
class FileUrl {
public:
    /// The location of `path`. A relative path is taken from the current working directory. A NUL and everything behind
    /// it are dropped, since no path contains one.
    [[nodiscard]] static FileUrl fromPath(std::string_view path);

    /// Reads the text form, `file:///…` or `file://localhost/…`; nothing for another scheme or host, a broken
    /// percent escape, an encoded NUL, a query or a fragment.
    [[nodiscard]] static std::optional<FileUrl> parse(std::string_view text);

    /// The location of `component` inside this folder. Requires one file name: not empty, without slash and NUL.
    [[nodiscard]] FileUrl appending(std::string_view component) const;

    /// Turns the bytes of a folder's location into the prefix of its children's: leaves exactly one slash at the end.
    static void openFolder(std::string& bytes);

    /// All bytes of the location, trailing slashes included. The reference is valid as long as this url.
    [[nodiscard]] const std::string& bytes() const noexcept { return m_bytes; }

    /// The exact bytes of the path without trailing slashes.
    [[nodiscard]] std::string path() const;

    /// The exact bytes of the last component, trailing slashes ignored; empty for `/`. The view is valid as long as
    /// this url. The second form takes the bytes of a location.
    [[nodiscard]] std::string_view lastPathComponent() const noexcept { return lastPathComponent(m_bytes); }
    [[nodiscard]] static std::string_view lastPathComponent(std::string_view bytes) noexcept;

    /// The extension of the last component, see below.
    [[nodiscard]] std::string_view pathExtension() const noexcept;

    /// The part behind the last full stop of a file name, case kept; none for `.bashrc`, `name.` and `name`.
    [[nodiscard]] static std::string_view pathExtension(std::string_view component) noexcept;

    /// The text form. Bytes that are not allowed in the path of a url are percent-encoded.
    [[nodiscard]] std::string absoluteString() const;

    /// Appends the text form of path bytes (slashes stay) to `text`.
    static void appendPercentEncoded(std::string_view bytes, std::string& text);

    /// The bytes that a text form encodes; nothing for a broken escape, a NUL, `?` or `#`.
    [[nodiscard]] static std::optional<std::string> percentDecoded(std::string_view text);

    /// The same location without empty, `.` and `..` components and trailing slashes. Symbolic links are not resolved.
    [[nodiscard]] FileUrl standardized() const;

    /// Equal when the text forms are equal. A trailing slash makes a difference.
    friend bool operator==(const FileUrl&, const FileUrl&) = default;

private:
    explicit FileUrl(std::string bytes) noexcept : m_bytes(std::move(bytes)) {}

    std::string m_bytes;
};

} // namespace morlaine

template <>
struct std::hash<morlaine::FileUrl> {
    [[nodiscard]] std::size_t operator()(const morlaine::FileUrl& url) const noexcept
    {
        return std::hash<std::string>()(url.bytes());
    }
};
