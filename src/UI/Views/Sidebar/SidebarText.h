#pragma once

#include "Services/Persistence/HistoricalScan.h"
#include "UI/Views/State/VolumeInfo.h"

#include <QColor>
#include <QString>

namespace morlaine {

/// "120 GB free of 500 GB".
[[nodiscard]] QString volumeCaption(const VolumeInfo& volume);

/// The colour of a volume's usage bar: red above nine tenths, otherwise blue.
[[nodiscard]] QColor usageColor(double percentUsed);

/// The help text of a place, such as "Scan Home".
[[nodiscard]] QString scanHelp(const QString& name);

/// The name of the scanned folder; a slash for the root of the file system.
[[nodiscard]] QString folderName(const HistoricalScan& scan);

} // namespace morlaine
