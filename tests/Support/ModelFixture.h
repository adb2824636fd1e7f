#pragma once

#include "Support/FakeFileSystem.h"
#include "Support/TemporaryFolder.h"
#include "UI/Views/State/MainViewModel.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace morlaine::test {

/// Records each call as a line of text.
class FakeWorkspace final : public Workspace {
public:
    std::vector<std::string> calls;

    void selectFile(const std::string& path, const std::string& rootPath) override;
    void open(const FileUrl& url) override;
    void copyText(std::string_view text) override;
    void openPrivacySettings() override;
};

/// A fixed list.
class FakeVolumes final : public Volumes {
public:
    std::vector<MountedVolume> list;

    [[nodiscard]] std::vector<MountedVolume> mountedVolumes() const override { return list; }
};

/// A model with fakes for the desktop and a store in its own folder. After changing the fakes, call `restart` or a
/// loading operation of the model.
class ModelFixture {
public:
    ModelFixture();

    TemporaryFolder folder;
    std::shared_ptr<FakeFileSystem> fileSystem = std::make_shared<FakeFileSystem>();
    std::shared_ptr<FakeVolumes> volumes = std::make_shared<FakeVolumes>();
    std::shared_ptr<FakeWorkspace> workspace = std::make_shared<FakeWorkspace>();
    UserFolders userFolders{FileUrl::fromPath("/home/me"), {}, {}, {}};
    std::unique_ptr<PersistenceManager> store;
    std::unique_ptr<MainViewModel> model;

    /// Replaces the model with a new one.
    void restart();

    /// Shows the tree as a recent scan. `show(text)` takes the format of treeFromText.
    void show(const FileNode& root);
    void show(std::string_view tree);

    /// Waits until the running scan is shown or has ended without a result.
    [[nodiscard]] bool waitForScan() const;
};

/// Its name, or "none".
[[nodiscard]] std::string nameOf(const std::optional<FileNode>& node);

/// The node of that name in a tree; ends the test program if there is none.
[[nodiscard]] FileNode nodeNamed(const FileNode& root, std::string_view name);

} // namespace morlaine::test
