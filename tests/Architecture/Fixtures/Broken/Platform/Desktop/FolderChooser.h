#pragma once

#include "UI/Views/State/MainViewModel.h"

#include <QDialog>
