#pragma once

#include "UI/Views/MainView.h"

#include <QWidget>
