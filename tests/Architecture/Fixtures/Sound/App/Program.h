#pragma once

#include "UI/Views/Window/MainView.h"

#include <QApplication>
