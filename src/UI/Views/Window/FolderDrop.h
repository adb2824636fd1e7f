#pragma once

#include "Platform/FileSystem.h"
#include "Utilities/FileUrl.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QDropEvent;
class QMimeData;

namespace morlaine {

/// Accepts a folder that is dropped on a window, and covers the window with a sign while one is dragged over it.
/// Refuses anything else.
class FolderDrop final : public QWidget {
    Q_OBJECT

public:
    /// Calls `isAllowed` on each drag and drop. `window` owns this widget.
    FolderDrop(QWidget& window, std::shared_ptr<const FileSystem> fileSystem, std::function<bool()> isAllowed);

Q_SIGNALS:
    void dropped(const morlaine::FileUrl& folder);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] std::optional<FileUrl> folderIn(const QMimeData& mime) const;
    void enter(QDropEvent& event);
    void drop(QDropEvent& event);

    const std::shared_ptr<const FileSystem> m_fileSystem;
    const std::function<bool()> m_isAllowed;
};

/// The first of `urls` that is a folder or a link to one; a link is resolved.
[[nodiscard]] std::optional<FileUrl> firstFolder(const std::vector<FileUrl>& urls, const FileSystem& fileSystem);

} // namespace morlaine
