#pragma once

#include "Services/Search.h"

#include <QObject>
