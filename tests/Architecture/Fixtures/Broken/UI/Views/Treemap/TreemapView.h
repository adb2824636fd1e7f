#pragma once

#include "Platform/Desktop/FolderChooser.h"
#include "UI/Views/Sidebar/SidebarView.h"
