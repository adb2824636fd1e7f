#include "Platform/Desktop/Linux/FolderListing.h"

#include "Platform/Background.h"

#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace morlaine {

namespace {

bool isFolder(const std::string& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isFolder(DIR* parent, const dirent& entry)
{
    if (entry.d_type == DT_DIR) {
        return true;
    }
    struct stat status {};
    const bool mayBe = entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
    return mayBe && ::fstatat(::dirfd(parent), &entry.d_name[0], &status, 0) == 0 && S_ISDIR(status.st_mode);
}

FolderListing::Names foldersIn(const std::string& path)
{
    const std::unique_ptr<DIR, decltype([](DIR* folder) { ::closedir(folder); })> folder(::opendir(path.c_str()));
    if (!folder) {
        return std::nullopt;
    }
    std::vector<std::string> names;
    while (const dirent* const entry = ::readdir(folder.get())) {
        const std::string_view name = &entry->d_name[0];
        if (name != "." && name != ".." && isFolder(folder.get(), *entry)) {
            names.emplace_back(name);
        }
    }
    return names;
}

} // namespace

void FolderListing::list(const std::string& path, std::function<void(Names)> onListed)
{
    ask<Names>(foldersIn, path, std::move(onListed));
}

void FolderListing::test(const std::string& path, std::function<void(bool)> onTested)
{
    ask<bool>(isFolder, path, std::move(onTested));
}

template <typename Answer>
void FolderListing::ask(Answer (*question)(const std::string& path), const std::string& path,
                        std::function<void(Answer)> onAnswer)
{
    const auto deliver = [this, number = ++m_latest, onAnswer = std::move(onAnswer)](const Answer& answer) {
        if (number == m_latest) {
            onAnswer(answer);
        }
    };
    const std::error_code failure = Background::start(
        "folder dialog", Background::Priority::userInitiated, [question, path, poster = m_queue.poster(), deliver] {
            poster.post([deliver, answer = question(path)] { deliver(answer); });
        });
    if (failure) {
        m_queue.post([deliver] { deliver(Answer()); });
    }
}

} // namespace morlaine
