#pragma once

#include "Core/Models/Node.h"
#include "Platform/FileSystem.h"

#include <QDesktopServices>
