#pragma once

#include "UI/Views/Sidebar/SpaceBreakdown.h"

#include <QWidget>

namespace morlaine {

/// A row for each category with files: a dot of its colour, its name, its size.
class SpaceBreakdownView final : public QWidget {
    Q_OBJECT

public:
    explicit SpaceBreakdownView(QWidget* parent = nullptr);

    void setShares(const std::vector<CategoryShare>& shares);
};

} // namespace morlaine
