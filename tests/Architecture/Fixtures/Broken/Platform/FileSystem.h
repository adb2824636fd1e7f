#pragma once

#include "Core/Models/Node.h"
#include "Platform/Linux/LinuxFileSystem.h"

#include <QtGui/QImage>
