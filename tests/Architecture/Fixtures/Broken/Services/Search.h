#pragma once

#include "Core/../UI/Views/Sidebar/SidebarView.h"
#include "Core/Models/Missing.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "UI/Views/State/MainViewModel.h"

#include <private/qwidget_p.h>
