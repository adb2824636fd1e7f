#include "UI/Views/Search/SearchField.h"

#include "UI/Styles/LeadingEdge.h"
#include "UI/Styles/Theme.h"
#include "UI/Widgets/RowPainting.h"
#include "UI/Widgets/SymbolImage.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScopedValueRollback>
#include <QToolButton>

namespace morlaine {

namespace {

constexpr int magnifierSide = 14;
constexpr int clearSide = 14;

} // namespace

SearchField::SearchField(QWidget* parent)
    : QWidget(parent)
    , m_edit(new QLineEdit(this))
    , m_clearButton(new QToolButton(this))
{
    auto* row = new QHBoxLayout(this);
    constexpr int leading = 8;
    constexpr int margin = 4;
    row->setContentsMargins(isRightToLeft() ? margin : leading, margin, isRightToLeft() ? leading : margin, margin);
    row->setSpacing(6);
    row->addWidget(new SymbolImage("magnifyingglass", magnifierSide, &Theme::textSecondary, this));
    row->addWidget(m_edit, 1);
    row->addWidget(m_clearButton);
    buildEdit();
    buildClearButton();
    setFocusProxy(m_edit);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SearchField::buildEdit()
{
    m_edit->setFrame(false);
    m_edit->setAlignment(leadingEdge() | Qt::AlignVCenter);
    m_edit->setPlaceholderText(QStringLiteral("Search file or folder name..."));
    m_edit->setAccessibleName(m_edit->placeholderText());
    m_edit->installEventFilter(this);
    connect(m_edit, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (!m_isFollowing) {
            Q_EMIT edited(text);
        }
    });
    connect(m_edit, &QLineEdit::returnPressed, this, &SearchField::submitted);
    connect(m_edit, &QLineEdit::textChanged, m_clearButton,
            [this](const QString& text) { m_clearButton->setVisible(!text.isEmpty()); });
}

void SearchField::buildClearButton()
{
    m_clearButton->setIcon(Symbols::icon("xmark.circle.fill", &Theme::textSecondary));
    m_clearButton->setIconSize({clearSide, clearSide});
    m_clearButton->setAutoRaise(true);
    m_clearButton->setFocusPolicy(Qt::TabFocus);
    m_clearButton->setAccessibleName(QStringLiteral("Clear search text"));
    QSizePolicy policy = m_clearButton->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_clearButton->setSizePolicy(policy);
    m_clearButton->hide();
    connect(m_clearButton, &QToolButton::clicked, this, &SearchField::clear);
}

void SearchField::setText(const QString& text)
{
    if (text != m_edit->text()) {
        const QScopedValueRollback following(m_isFollowing, true);
        m_edit->setText(text);
    }
}

void SearchField::focusAndSelect()
{
    m_edit->setFocus(Qt::ShortcutFocusReason);
    m_edit->selectAll();
}

/// Moves the focus first: Qt would give the focus of the hidden button to the next widget.
void SearchField::clear()
{
    m_edit->setFocus(Qt::OtherFocusReason);
    m_edit->clear();
}

bool SearchField::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    return QWidget::eventFilter(watched, event);
}

/// QLineEdit ignores this key and passes it to its parent.
void SearchField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Down && m_edit->hasFocus()) {
        Q_EMIT leftDownwards();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void SearchField::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Theme::separator(palette()));
    painter.setBrush(Theme::controlBackground(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::cornerRadiusSmall,
                            Theme::cornerRadiusSmall);
    if (m_edit->hasFocus()) {
        paintFocusRing(painter, rect(), palette());
    }
}

} // namespace morlaine
