#pragma once

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace morlaine {

/// A rounded row with a magnifier, a text field, and a button that clears it, which is visible while there is text.
class SearchField final : public QWidget {
    Q_OBJECT

public:
    explicit SearchField(QWidget* parent = nullptr);

    /// Replaces the text. Does not emit `edited`.
    void setText(const QString& text);

    /// Focuses the field and selects the whole text.
    void focusAndSelect();

Q_SIGNALS:
    /// The user, or an assistive program, has changed the text.
    void edited(const QString& text);

    /// Return was pressed.
    void submitted();

    /// The down key was pressed.
    void leftDownwards();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void buildEdit();
    void buildClearButton();
    void clear();

    QLineEdit* m_edit;
    QToolButton* m_clearButton;
    bool m_isFollowing = false; // takes a text over that the user has not typed
};

} // namespace morlaine
