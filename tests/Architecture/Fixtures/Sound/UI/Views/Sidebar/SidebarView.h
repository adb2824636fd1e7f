#pragma once

#include "UI/Views/State/MainViewModel.h"
