#include "Platform/Linux/UserDirectories.h"

#include <algorithm>

namespace morlaine {

namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view homeVariable = "$HOME";

/// Removes `prefix` from `text`; false if `text` does not begin with it.
bool skip(std::string_view& text, std::string_view prefix)
{
    const bool isThere = text.starts_with(prefix);
    text.remove_prefix(isThere ? prefix.size() : 0);
    return isThere;
}

void skipBlanks(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
}

std::string_view withoutTrailingSlashes(std::string_view path)
{
    return path.substr(0, path.find_last_not_of('/') + 1);
}

/// The text up to the closing quote. A backslash quotes the character behind it.
std::string unquoted(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size() && text[i] != '"'; ++i) {
        i += text[i] == '\\' && i + 1 < text.size() ? 1 : 0;
        result += text[i];
    }
    return result;
}

/// The path that a line such as `XDG_DESKTOP_DIR="$HOME/Desktop"` assigns to `key`; nothing for any other line. These
/// files may only contain absolute paths and paths in the home folder.
std::optional<std::string> pathInLine(std::string_view line, std::string_view key, std::string_view home)
{
    skipBlanks(line);
    if (!skip(line, key)) {
        return std::nullopt;
    }
    skipBlanks(line);
    if (!skip(line, "=")) {
        return std::nullopt;
    }
    skipBlanks(line);
    if (!skip(line, "\"")) {
        return std::nullopt;
    }
    const bool isInHome = skip(line, homeVariable);
    const std::string path = unquoted(line);
    if (!path.starts_with('/') && !(isInHome && path.empty())) {
        return std::nullopt;
    }
    return (isInHome ? std::string(home) : std::string()) + path;
}

} // namespace

std::optional<std::string> userDirectory(std::string_view configuration, std::string_view key,
                                         std::string_view usualName, std::string_view home)
{
    home = withoutTrailingSlashes(home);
    std::string path = std::string(home) + '/' + std::string(usualName);
    while (!configuration.empty()) {
        const std::size_t end = std::min(configuration.find('\n'), configuration.size());
        path = pathInLine(configuration.substr(0, end), key, home).value_or(path);
        configuration.remove_prefix(std::min(end + 1, configuration.size()));
    }
    path.resize(withoutTrailingSlashes(path).size());
    return path == home ? std::nullopt : std::optional(path.empty() ? "/" : path);
}

} // namespace morlaine
