#pragma once

#include "Core/Models/FileNode.h"
#include "Core/Scanner/DiskScanner.h"

#include <QString>

#include <optional>
#include <vector>

namespace morlaine {

/// The texts of the inspector: pure functions that need no window.
namespace InspectorText {

enum class Panel { scanning, node, empty };

struct Row {
    QString label;
    QString value;

    friend bool operator==(const Row&, const Row&) = default;
};

/// A running scan takes precedence over a selection.
[[nodiscard]] Panel panelFor(bool isScanning, bool hasSelection);

/// A duration as minutes and seconds, two digits each or more, without hours: "01:05", "62:05". Rounds down. "00:00"
/// for a negative, infinite or NaN duration.
[[nodiscard]] QString formatDuration(double seconds);

/// Size, share of the scan (if the root has a size), and the item count of a folder.
[[nodiscard]] std::vector<Row> rowsFor(const FileNode& node, const std::optional<FileNode>& root);

/// The progress of a scan.
[[nodiscard]] std::vector<Row> rowsFor(const DiskScanner& scanner);

/// The full path, not yet processed by shownPath. Invalid UTF-8 becomes U+FFFD.
[[nodiscard]] QString fullPath(const FileNode& node);

} // namespace InspectorText

} // namespace morlaine
