#pragma once

#include "UI/Styles/TextStyles.h"
#include "UI/Styles/Theme.h"

#include <QFont>
#include <QLabel>
#include <QStringList>

#include <optional>

namespace morlaine {

/// Breaks `text` into at most `maxLines` lines of `width` points: between words, or inside a word that is longer than a
/// line. A number and its unit count as one word. If the text does not fit, the middle of the last line is elided, so
/// that the extension stays visible. `text` must be a single line, see shownText.
[[nodiscard]] QStringList elidedLines(const QString& text, const QFont& font, int width, int maxLines);

/// A label for texts of any length, such as names and paths, in a text style and a system colour. It adapts to its
/// width, breaks and elides the text as above, and shows the whole text in a tooltip if it is elided. `text` is always
/// the whole text, also for assistive technology.
class ElidingLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ElidingLabel(TextStyle style, Theme::SystemColor color = Theme::textPrimary, int maxLines = 1,
                          QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

    /// Replaces the weight of the text style.
    void setWeight(QFont::Weight weight);

    [[nodiscard]] bool isElided() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// The last text that was measured. Shaping it takes long, and layouts ask many times.
    struct Measured {
        QString text;
        QFont font;
        int textWidth = 0;
        std::optional<int> width; // of `lines`
        QStringList lines;
    };

    [[nodiscard]] Measured& measured() const;
    [[nodiscard]] const QStringList& linesIn(int width) const;
    void applyFont();
    void showWholeText(const QPoint& position);
    [[nodiscard]] int heightOf(qsizetype lineCount) const;
    [[nodiscard]] int lineHeight() const;
    [[nodiscard]] int lineSpacing() const;

    const TextStyle m_style;
    const Theme::SystemColor m_color;
    const int m_maxLines;
    std::optional<QFont::Weight> m_weight;
    mutable std::optional<Measured> m_measured;
};

} // namespace morlaine
