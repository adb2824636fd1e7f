#pragma once

#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"

#include <QLabel>
#include <QStringList>

namespace morlaine {

/// `text` in at most `maxLines` lines of `width` points. Lines break between words, or anywhere where a word is longer
/// than a line; what does not fit is left out of the middle of the last line, so that the end, with its extension, is
/// seen. `text` is one line, as shownText makes it.
[[nodiscard]] QStringList elidedLines(const QString& text, const QFont& font, int width, int maxLines);

/// A label for texts of any length, such as names and paths, in a text style and a system colour: it takes the width
/// that it is given, breaks and elides the text as above and tells the whole text in a tooltip where it had to be
/// elided. `text` is the whole text, also to assistive technology.
class ElidingLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ElidingLabel(TextStyle style, Theme::SystemColor color = Theme::textPrimary, int maxLines = 1,
                          QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

    [[nodiscard]] bool isElided() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showWholeText(const QPoint& position);
    [[nodiscard]] int heightOf(qsizetype lineCount) const;
    [[nodiscard]] int lineHeight() const;
    [[nodiscard]] int lineSpacing() const;

    const TextStyle m_style;
    const Theme::SystemColor m_color;
    const int m_maxLines;
};

} // namespace morlaine
