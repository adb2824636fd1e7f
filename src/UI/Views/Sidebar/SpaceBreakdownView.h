#pragma once

#include "UI/Views/Sidebar/SpaceBreakdown.h"
#include "UI/Widgets/NamedRows.h"

namespace morlaine {

/// A row for each category with files: a dot of its colour, its name, its size.
class SpaceBreakdownView final : public NamedRows {
    Q_OBJECT

public:
    explicit SpaceBreakdownView(QWidget* parent = nullptr);

    void setShares(const std::vector<CategoryShare>& shares);

private:
    void addShare(const CategoryShare& share);
};

} // namespace morlaine
