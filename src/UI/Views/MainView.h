#pragma once

#include <QMainWindow>

namespace morlaine {

/// The window. It composes the views and implements none of them.
class MainView final : public QMainWindow {
    Q_OBJECT

public:
    explicit MainView(QWidget* parent = nullptr);
};

} // namespace morlaine
