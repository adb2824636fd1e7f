#pragma once

#include "Core/Models/FileNode.h"
#include "UI/Views/Treemap/TreemapDecisions.h"

#include <QLabel>
#include <QWidget>

#include <cstddef>
#include <optional>
#include <span>

class QToolButton;

namespace morlaine {

class TreemapBreadcrumb;

/// A dot in the node's colour, its name and its size, at the trailing edge. The name is elided first.
class TreemapInfo final : public QLabel {
    Q_OBJECT

public:
    explicit TreemapInfo(QWidget* parent = nullptr);

    void setInfo(const std::optional<TreemapDecisions::Info>& info);
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<TreemapDecisions::Info> m_info;
};

/// The bar above the treemap: the button for the whole tree, the path zoomed into, and the info. Its height depends on
/// the font only, and its width does not depend on its content.
class TreemapHeader final : public QWidget {
    Q_OBJECT

public:
    explicit TreemapHeader(QWidget* parent = nullptr);

    void setPath(std::span<const FileNode> path);
    void setInfo(const std::optional<TreemapDecisions::Info>& info);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void houseClicked();
    void stepClicked(std::size_t step);

    /// The button with the keyboard focus was removed.
    void focusLost();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void growIcon();
    void arrange();

    QToolButton* const m_house;
    TreemapBreadcrumb* const m_breadcrumb;
    TreemapInfo* const m_info;
};

} // namespace morlaine
