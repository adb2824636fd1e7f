#pragma once

#include "Platform/FolderChooser.h"

#include <string>
#include <vector>

namespace morlaine::test {

/// Notes how it is asked, and chooses when the test says so.
class FakeFolderChooser final : public FolderChooser {
public:
    struct Log {
        std::vector<std::string> requests; // "title/prompt"
        std::function<void(const FileUrl&)> onChosen;
    };

    explicit FakeFolderChooser(Log& log) : m_log(log) {}

    void choose(QWidget& /*window*/, const Texts& texts, std::function<void(const FileUrl&)> onChosen) override
    {
        m_log.requests.push_back(texts.title.value_or("no title") + '/' + texts.prompt);
        m_log.onChosen = std::move(onChosen);
    }

private:
    Log& m_log;
};

} // namespace morlaine::test
