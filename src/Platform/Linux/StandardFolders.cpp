#include "Platform/StandardFolders.h"

#include <QFile>
#include <QStandardPaths>

namespace morlaine {

std::vector<FileUrl> applicationSupportFolders()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (folder.isEmpty()) {
        return {};
    }
    return {FileUrl::fromPath(QFile::encodeName(folder).toStdString())};
}

} // namespace morlaine
