#pragma once

#include "UI/Styles/TextStyles.h"

#include <QTextEdit>

namespace morlaine {

/// A path to read, select and copy, as high as needed: it breaks between words and components, or inside one that is
/// longer than a line. The shown text cannot mislead (see shownPath); copying yields the exact path or part of it. A
/// selection is kept until the path changes.
class SelectableText final : public QTextEdit {
    Q_OBJECT

public:
    SelectableText(const QString& accessibleName, TextStyle style, QWidget* parent = nullptr);

    void setPath(const QString& path);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    const TextStyle m_style;
    QString m_path; // exact
};

} // namespace morlaine
