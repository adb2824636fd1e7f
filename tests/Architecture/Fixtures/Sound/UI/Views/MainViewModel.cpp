#include "UI/Views/MainViewModel.h"

#include "MainViewModel.moc"
