#pragma once

#include "Core/../UI/Views/MainView.h"
#include "Core/Models/Missing.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "UI/Views/MainViewModel.h"

#include <private/qwidget_p.h>
