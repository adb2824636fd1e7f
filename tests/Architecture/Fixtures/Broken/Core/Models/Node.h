#pragma once

#include "../../UI/Views/MainView.h"
#include "Node.inc"
#include "Services/Search.h"

#include <QColor>
#include <QtWidgets>
