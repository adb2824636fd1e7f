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

/// The path of folders zoomed into, a button for each behind a chevron. It takes whatever width it is given: where the
/// names have no room they are cut, and steps in the middle fold into one button that lists them.
class TreemapBreadcrumb final : public QWidget {
    Q_OBJECT

public:
    explicit TreemapBreadcrumb(QWidget* parent = nullptr);

    /// Keeps the names only.
    void setPath(std::span<const FileNode> path);

    /// The width at which every name stands as it is.
    [[nodiscard]] int naturalWidth() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void stepClicked(std::size_t step);

    /// Another path or another font.
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
    std::vector<int> m_naturalWidths;    // of the buttons with their names
    std::vector<QToolButton*> m_buttons; // one for each name
    QToolButton* const m_foldButton;
    BreadcrumbFit m_fit;
    std::vector<int> m_chevrons; // where they begin
};

} // namespace morlaine
