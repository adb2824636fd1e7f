#pragma once

#include "Utilities/Text.h"
