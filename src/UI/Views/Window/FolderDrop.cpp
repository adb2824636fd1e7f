#include "UI/Views/Window/FolderDrop.h"

#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>

#include <utility>

namespace morlaine {

FolderDrop::FolderDrop(QWidget& window, std::shared_ptr<const FileSystem> fileSystem, std::function<bool()> isAllowed)
    : QWidget(&window)
    , m_fileSystem(std::move(fileSystem))
    , m_isAllowed(std::move(isAllowed))
{
    hide();
    setAttribute(Qt::WA_TransparentForMouseEvents);
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool FolderDrop::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
        enter(*static_cast<QDropEvent*>(event));
        return true;
    case QEvent::DragLeave:
        hide();
        return true;
    case QEvent::Drop:
        drop(*static_cast<QDropEvent*>(event));
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

/// Parses the list of urls itself: QUrl loses bytes that are invalid UTF-8.
std::optional<FileUrl> FolderDrop::folderIn(const QMimeData& mime) const
{
    std::vector<FileUrl> urls;
    for (const QByteArray& line : mime.data(QStringLiteral("text/uri-list")).split('\n')) {
        const QByteArray text = line.trimmed();
        if (const std::optional<FileUrl> url =
                FileUrl::parse({text.constData(), static_cast<std::size_t>(text.size())})) {
            urls.push_back(*url);
        }
    }
    return firstFolder(urls, *m_fileSystem);
}

void FolderDrop::enter(QDropEvent& event)
{
    if (!event.possibleActions().testFlag(Qt::CopyAction) || !m_isAllowed() || !folderIn(*event.mimeData())) {
        event.ignore();
        return;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
    setGeometry(parentWidget()->rect());
    raise();
    show();
}

void FolderDrop::drop(QDropEvent& event)
{
    hide();
    const std::optional<FileUrl> folder = m_isAllowed() ? folderIn(*event.mimeData()) : std::nullopt;
    if (!folder) {
        event.ignore();
        return;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
    Q_EMIT dropped(*folder);
}

void FolderDrop::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QColor accent = palette().color(QPalette::Active, QPalette::Highlight);
    QColor veil = Theme::panelBackground(palette());
    veil.setAlphaF(0.86F);
    painter.fillRect(rect(), veil);
    painter.setPen(QPen(accent, 3, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5));
    painter.setFont(TextStyles::font(TextStyle::title));
    painter.setPen(Theme::textPrimary(palette()));
    painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("Drop to scan this folder"));
}

std::optional<FileUrl> firstFolder(const std::vector<FileUrl>& urls, const FileSystem& fileSystem)
{
    for (const FileUrl& url : urls) {
        const std::optional<ResourceValues> values = fileSystem.resourceValues(url);
        const FileUrl target = values && values->isSymbolicLink ? fileSystem.resolvingSymlinks(url) : url;
        const std::optional<ResourceValues> targetValues =
            values && values->isSymbolicLink ? fileSystem.resourceValues(target) : values;
        if (targetValues && targetValues->isDirectory.value_or(false)) {
            return target;
        }
    }
    return std::nullopt;
}

} // namespace morlaine
