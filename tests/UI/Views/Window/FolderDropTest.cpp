#include "UI/Views/Window/FolderDrop.h"

#include "Support/FakeFileSystem.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace morlaine {
namespace {

/// Drops the list of addresses on a window; returns the path of the folder to scan, empty if there is none.
std::string dropped(const std::shared_ptr<const FileSystem>& fileSystem, const char* uris, bool isAllowed)
{
    QWidget window;
    window.resize(300, 200);
    FolderDrop drop(window, fileSystem, [isAllowed] { return isAllowed; });
    std::string scanned;
    QObject::connect(&drop, &FolderDrop::dropped, &drop, [&scanned](const FileUrl& url) { scanned = url.path(); });

    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), uris);
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    EXPECT_EQ(drop.isVisibleTo(&window), enter.isAccepted()) << "the sign";

    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &event);
    EXPECT_EQ(enter.isAccepted(), !scanned.empty());
    EXPECT_FALSE(drop.isVisibleTo(&window));
    return scanned;
}

TEST(FolderDropTest, TakesTheFirstFolderAndNothingElse)
{
    const auto fileSystem = std::make_shared<test::FakeFileSystem>();
    fileSystem->addFolder("/folder");
    fileSystem->addFolder("/\xFF");
    fileSystem->addFile("/file", 1);
    fileSystem->addFile("/link", 1).values->isSymbolicLink = true;
    fileSystem->resolved["/link"] = "/folder";
    const std::pair<const char*, const char*> cases[] = {
        {"file:///folder\r\n", "/folder"},
        {"file:///file\r\nfile:///folder", "/folder"},
        {"file:///%FF", "/\xFF"},
        {"file:///link", "/folder"},
        {"file:///file", ""},
        {"https://example.org/folder", ""},
        {"file:///gone", ""},
        {"", ""},
    };
    for (const auto& [uris, scanned] : cases) {
        EXPECT_EQ(dropped(fileSystem, uris, true), scanned) << uris;
    }
    EXPECT_EQ(dropped(fileSystem, "file:///folder", false), "") << "while a scan runs";
}

} // namespace
} // namespace morlaine
