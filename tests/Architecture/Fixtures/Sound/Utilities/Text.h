#pragma once

#include <QString>
#include <QtCore/qglobal.h>
#include <QtMath>
#include <queue>
