#pragma once

#include "Core/Models/FileNode.h"
#include "Core/Scanner/DiskScanner.h"

#include <QString>

#include <optional>
#include <vector>

namespace morlaine {

/// What the inspector shows of an item, decided without a window.
namespace InspectorText {

enum class Panel { scanning, node, empty };

struct Row {
    QString label;
    QString value;

    friend bool operator==(const Row&, const Row&) = default;
};

/// A running scan comes first, then what is selected.
[[nodiscard]] Panel panelFor(bool isScanning, bool hasSelection);

/// Seconds as minutes and seconds, each of two digits at least, without hours: "01:05", "62:05". Fractions are dropped.
/// "00:00" for an invalid duration: negative, infinite or not a number.
[[nodiscard]] QString formatDuration(double seconds);

/// Size, share of the scan (with a root that holds anything), and how many items a folder holds.
[[nodiscard]] std::vector<Row> rowsFor(const FileNode& node, const std::optional<FileNode>& root);

/// How far a scan has come, line by line.
[[nodiscard]] std::vector<Row> rowsFor(const DiskScanner& scanner);

/// The full path as text, not yet made fit to be shown. Invalid UTF-8 becomes U+FFFD.
[[nodiscard]] QString fullPath(const FileNode& node);

} // namespace InspectorText

} // namespace morlaine
