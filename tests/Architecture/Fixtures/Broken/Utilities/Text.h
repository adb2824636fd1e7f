#pragma once

#include "Platform/FileSystem.h"

#include <qwidget.h>
