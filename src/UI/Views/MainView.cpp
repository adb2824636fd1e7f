#include "UI/Views/MainView.h"

#include <QWidget>

namespace morlaine {

namespace {

constexpr QSize minimumContentSize(960, 640);

} // namespace

MainView::MainView(QWidget* parent) : QMainWindow(parent)
{
    setWindowTitle(QStringLiteral("Morlaine"));

    auto* content = new QWidget(this);
    content->setMinimumSize(minimumContentSize);
    setCentralWidget(content);
}

} // namespace morlaine
