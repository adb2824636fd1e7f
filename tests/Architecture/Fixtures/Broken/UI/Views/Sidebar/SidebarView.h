#pragma once

#include "App/Program.h"
#include "Platform/Linux/LinuxFileSystem.h"

#include <UI/../App/Program.h>
