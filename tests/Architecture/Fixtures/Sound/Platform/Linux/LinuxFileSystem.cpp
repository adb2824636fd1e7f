#include "Platform/Linux/LinuxFileSystem.h"

#include <QFile>

#include <sys/stat.h>
