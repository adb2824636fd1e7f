#include "UI/Views/Sidebar/SidebarText.h"

#include "UI/Styles/Theme.h"
#include "Utilities/FileUrl.h"
#include "Utilities/ShownText.h"

namespace morlaine {

QString volumeCaption(const VolumeInfo& volume)
{
    return QString::fromStdString(volume.formattedFreeSize()) + QStringLiteral(" free of ") +
           QString::fromStdString(volume.formattedTotalSize());
}

QColor usageColor(double percentUsed)
{
    constexpr double nearlyFull = 0.9;
    return percentUsed > nearlyFull ? Theme::red : Theme::blue;
}

QString scanHelp(const QString& name)
{
    return QStringLiteral("Scan ") + name;
}

QString folderName(const HistoricalScan& scan)
{
    const FileUrl url = FileUrl::fromPath(scan.path);
    const std::string_view name = url.lastPathComponent();
    return name.empty() ? QStringLiteral("/") : shownText(name);
}

} // namespace morlaine
