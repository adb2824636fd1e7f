#pragma once

#include "Core/Models/Node.h"

#include <rapidjson/reader.h>
