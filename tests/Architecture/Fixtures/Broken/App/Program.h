#pragma once

#include "Platform/Linux/LinuxFileSystem.h"
#include "UI/Views/Sidebar/SidebarView.h"
#include SOME_HEADER
