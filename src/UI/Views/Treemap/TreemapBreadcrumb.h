#pragma once

#include "Core/Models/FileNode.h"
#include "UI/Views/Treemap/BreadcrumbFit.h"

#include <QString>
#include <QWidget>

#include <cstddef>
#include <span>
#include <vector>

class QToolButton;

namespace morlaine {

/// The path of folders zoomed into: a chevron and a button for each. It adapts to any width: names are cut, and steps
/// in the middle are folded into one button with a menu.
class TreemapBreadcrumb final : public QWidget {
    Q_OBJECT

public:
    explicit TreemapBreadcrumb(QWidget* parent = nullptr);

    /// Copies the names only.
    void setPath(std::span<const FileNode> path);

    /// The width at which no name is cut.
    [[nodiscard]] int naturalWidth() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void stepClicked(std::size_t step);

    /// The path or the font has changed.
    void naturalWidthChanged();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QToolButton* makeButton();
    [[nodiscard]] BreadcrumbFit::Metrics metrics() const;
    [[nodiscard]] int chevronSide() const;
    [[nodiscard]] int aroundName() const;
    void measure();
    void arrange();
    int place(QToolButton& button, int left, int width);
    void showStep(std::size_t step);
    void openFoldedSteps();

    std::vector<QString> m_names;
    std::vector<int> m_naturalWidths;    // of the buttons with uncut names
    std::vector<QToolButton*> m_buttons; // one for each name
    QToolButton* const m_foldButton;
    BreadcrumbFit m_fit;
    std::vector<int> m_chevrons; // their left edges
};

} // namespace morlaine
