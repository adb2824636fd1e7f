#pragma once

#include "UI/Views/MainViewModel.h"

#include <QtWidgets/QWidget>
