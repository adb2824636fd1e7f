#include "Support/ModelFixture.h"

#include "Core/Models/FileNodeJson.h"
#include "Support/TreeText.h"
#include "Support/TreeWalk.h"
#include "Support/Wait.h"

#include <QFile>

#include <stdexcept>

namespace morlaine::test {

void FakeWorkspace::selectFile(const std::string& path, const std::string& rootPath)
{
    calls.push_back("select " + path + " in \"" + rootPath + '"');
}

void FakeWorkspace::open(const FileUrl& url)
{
    calls.push_back("open " + url.path());
}

void FakeWorkspace::copyText(std::string_view text)
{
    calls.push_back("copy " + std::string(text));
}

void FakeWorkspace::openPrivacySettings()
{
    calls.emplace_back("settings");
}

ModelFixture::ModelFixture() : store(std::make_unique<PersistenceManager>(folder.url("share")))
{
    restart();
}

void ModelFixture::restart()
{
    model.reset();
    model = std::make_unique<MainViewModel>(
        MainViewModel::Environment{fileSystem, volumes, userFolders, workspace, *store});
}

void ModelFixture::show(const FileNode& root)
{
    HistoricalScan scan;
    scan.id = Uuid::random();
    QFile file(folder.path() / "share/com.morlaine.Morlaine/Scans" / (scan.id.toString() + ".json"));
    if (!file.open(QIODevice::WriteOnly) || !encodeFileNode(root, file)) {
        throw std::runtime_error("the tree cannot be written");
    }
    file.close();
    model->loadHistoricalScan(scan);
}

void ModelFixture::show(std::string_view tree)
{
    show(treeFromText(tree));
}

bool ModelFixture::waitForScan() const
{
    return waitUntil([this] { return model->currentRootNode() || model->scanner().errorMessage(); });
}

std::string nameOf(const std::optional<FileNode>& node)
{
    return node ? std::string(node->name()) : "none";
}

FileNode nodeNamed(const FileNode& root, std::string_view name)
{
    std::optional<FileNode> found;
    walkTree(root, [&](const FileNode& node) {
        if (!found && node.name() == name) {
            found = node;
        }
    });
    if (!found) {
        throw std::invalid_argument("no node is named " + std::string(name));
    }
    return *found;
}

} // namespace morlaine::test
