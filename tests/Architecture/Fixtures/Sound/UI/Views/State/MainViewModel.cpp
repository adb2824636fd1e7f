#include "UI/Views/State/MainViewModel.h"

#include "MainViewModel.moc"
