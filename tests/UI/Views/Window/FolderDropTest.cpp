#include "UI/Views/Window/FolderDrop.h"

#include "Support/FakeFileSystem.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>

#include <gmock/gmock.h>

#include <memory>
#include <string>

namespace morlaine {
namespace {

struct DropCase {
    const char* what;
    QByteArray uris;
    bool isAllowed;
    std::string scanned; // empty if nothing is scanned
};

class FolderDropTest : public testing::TestWithParam<DropCase> {};

TEST_P(FolderDropTest, TakesTheFirstFolderAndNothingElse)
{
    auto fileSystem = std::make_shared<test::FakeFileSystem>();
    fileSystem->addFolder("/folder");
    fileSystem->addFolder("/\xFF");
    fileSystem->addFile("/file", 1);
    ResourceValues link;
    link.isSymbolicLink = true;
    link.isDirectory = false;
    fileSystem->addFile("/link", 1).values = link;
    fileSystem->resolved["/link"] = "/folder";

    QWidget window;
    window.resize(300, 200);
    FolderDrop drop(window, fileSystem, [] { return GetParam().isAllowed; });
    std::string scanned;
    QObject::connect(&drop, &FolderDrop::dropped, &drop, [&scanned](const FileUrl& url) { scanned = url.path(); });

    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), GetParam().uris);
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    EXPECT_EQ(enter.isAccepted(), !GetParam().scanned.empty()) << GetParam().what;
    EXPECT_EQ(drop.isVisibleTo(&window), enter.isAccepted()) << "the sign";

    QDropEvent dropped({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &dropped);
    EXPECT_EQ(scanned, GetParam().scanned) << GetParam().what;
    EXPECT_FALSE(drop.isVisibleTo(&window));
}

INSTANTIATE_TEST_SUITE_P(
    All, FolderDropTest,
    testing::Values(DropCase{"a folder", "file:///folder\r\n", true, "/folder"},
                    DropCase{"a file before it", "file:///file\r\nfile:///folder", true, "/folder"},
                    DropCase{"bytes that are not UTF-8", "file:///%FF", true, "/\xFF"},
                    DropCase{"a link to a folder", "file:///link", true, "/folder"},
                    DropCase{"a file", "file:///file", true, ""},
                    DropCase{"a page", "https://example.org/folder", true, ""},
                    DropCase{"a vanished folder", "file:///gone", true, ""}, DropCase{"nothing", "", true, ""},
                    DropCase{"a folder while a scan runs", "file:///folder", false, ""}));

} // namespace
} // namespace morlaine
