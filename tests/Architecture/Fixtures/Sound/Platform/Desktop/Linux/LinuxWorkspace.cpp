#include "Platform/FileSystem.h"

#include <QDesktopServices>
