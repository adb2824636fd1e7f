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

/// Lets a folder be dropped on a window, and covers the window with a sign while one hovers over it. What is not a
/// folder is refused.
class FolderDrop final : public QWidget {
    Q_OBJECT

public:
    /// `isAllowed` is asked whenever something is dragged over the window. `window` owns this widget.
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

/// The first of `urls` that is a folder, or a link to one, which is then followed.
[[nodiscard]] std::optional<FileUrl> firstFolder(const std::vector<FileUrl>& urls, const FileSystem& fileSystem);

} // namespace morlaine
