#pragma once

#include "UI/Views/Sidebar/SidebarView.h"

#include <QWidget>
