#include "UI/Views/Inspector/InspectorText.h"

#include "Utilities/ByteCount.h"
#include "Utilities/ShownText.h"
#include "Utilities/Utf8.h"

#include <cmath>

namespace morlaine::InspectorText {

namespace {

QString shareText(std::int64_t size, std::int64_t rootSize)
{
    return QString::asprintf("%.2f%%", static_cast<double>(size) * 100 / static_cast<double>(rootSize));
}

QString itemsText(const FileNode& folder)
{
    return QStringLiteral("%1 files, %2 folders").arg(folder.fileCount()).arg(folder.directoryCount());
}

} // namespace

Panel panelFor(bool isScanning, bool hasSelection)
{
    if (isScanning) {
        return Panel::scanning;
    }
    return hasSelection ? Panel::node : Panel::empty;
}

QString formatDuration(double seconds)
{
    constexpr double tooLong = 1e15; // beyond it a double cannot represent single seconds
    if (!(seconds >= 0 && seconds < tooLong)) {
        return QStringLiteral("00:00");
    }
    const auto whole = static_cast<long long>(std::floor(seconds));
    return QString::asprintf("%02lld:%02lld", whole / 60, whole % 60);
}

std::vector<Row> rowsFor(const FileNode& node, const std::optional<FileNode>& root)
{
    std::vector<Row> rows{{QStringLiteral("Size"), QString::fromStdString(node.formattedSize())}};
    if (root && root->size() >= 1) {
        rows.push_back({QStringLiteral("Share of Scan"), shareText(node.size(), root->size())});
    }
    if (node.isDirectory()) {
        rows.push_back({QStringLiteral("Total Items"), itemsText(node)});
    }
    return rows;
}

std::vector<Row> rowsFor(const DiskScanner& scanner)
{
    return {{QStringLiteral("Elapsed Time:"), formatDuration(scanner.elapsedTime())},
            {QStringLiteral("Current Path:"), shownPath(scanner.currentPath())},
            {QStringLiteral("Scanned Files:"), QString::number(scanner.scannedFilesCount())},
            {QStringLiteral("Scanned Folders:"), QString::number(scanner.scannedDirsCount())},
            {QStringLiteral("Calculated Size:"), QString::fromStdString(byteCountText(scanner.totalSize()))}};
}

QString fullPath(const FileNode& node)
{
    return textOfUtf8(node.url().path());
}

} // namespace morlaine::InspectorText
