#include "Utilities/FileUrl.h"

#include "Utilities/Hex.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>
#include <vector>

namespace morlaine {

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

/// Characters that need no encoding in the path of a url: unreserved, sub-delimiters, ':', '@' and '/'.
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
        return FileUrl(std::string(path));
    }
    std::error_code unreadable;
    std::string absolute = std::filesystem::current_path(unreadable).native();
    if (!absolute.ends_with('/')) {
        absolute += '/';
    }
    absolute += path;
    return FileUrl(std::move(absolute));
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
    std::optional<std::string> path = percentDecoded(text);
    if (!path || !path->starts_with('/')) {
        return std::nullopt;
    }
    return FileUrl(*std::move(path));
}

FileUrl FileUrl::appending(std::string_view component) const
{
    std::string bytes;
    bytes.reserve(m_bytes.size() + 1 + component.size());
    bytes = m_bytes;
    openFolder(bytes);
    bytes += component;
    return FileUrl(std::move(bytes));
}

void FileUrl::openFolder(std::string& bytes)
{
    bytes.resize(withoutTrailingSlashes(bytes).size());
    if (!bytes.ends_with('/')) {
        bytes += '/';
    }
}

std::string FileUrl::path() const
{
    return std::string(withoutTrailingSlashes(m_bytes));
}

std::string_view FileUrl::lastPathComponent(std::string_view bytes) noexcept
{
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
    std::string text(scheme);
    appendPercentEncoded(m_bytes, text);
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

} // namespace morlaine
