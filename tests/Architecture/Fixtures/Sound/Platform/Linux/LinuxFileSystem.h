#pragma once

#include "Platform/FileSystem.h"
