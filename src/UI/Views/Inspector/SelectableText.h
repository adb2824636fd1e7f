#pragma once

#include "UI/Styles/TextStyles.h"

#include <QTextEdit>

namespace morlaine {

/// Text to read, select and copy, as high as it needs to be: it breaks between words and components of a path, or
/// anywhere where one is longer than a line. A selection lasts until the text changes.
class SelectableText final : public QTextEdit {
    Q_OBJECT

public:
    SelectableText(const QString& accessibleName, TextStyle style, QWidget* parent = nullptr);

    void setText(const QString& text);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    const TextStyle m_style;
    QString m_text; // as it was set, which the document shows but does not keep
};

} // namespace morlaine
