#pragma once

#include "../../UI/Views/Sidebar/SidebarView.h"
#include "Node.inc"
#include "Services/Search.h"

#include <QColor>
#include <QtWidgets>
