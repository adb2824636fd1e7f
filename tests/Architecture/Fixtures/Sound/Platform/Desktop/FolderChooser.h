#pragma once

#include <QDialog>
