#pragma once

#include "Platform/FileSystem.h"
#include "Utilities/Text.h"
