#pragma once

#include "Platform/Desktop/FolderChooser.h"
#include "UI/Views/Sidebar/SidebarView.h"
#include "UI/Views/State/MainViewModel.h"

#include <QtWidgets/QWidget>
