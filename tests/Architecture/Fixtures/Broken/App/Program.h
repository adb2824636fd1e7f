#pragma once

#include "Platform/Linux/LinuxFileSystem.h"
#include "UI/Views/MainView.h"
#include SOME_HEADER
