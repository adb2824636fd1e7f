#include "UI/Views/Window/SideColumn.h"

#include <QEasingCurve>

#include <algorithm>
#include <chrono>

namespace morlaine {

namespace {

constexpr std::chrono::milliseconds slideDuration{200};

} // namespace

SideColumn::SideColumn(Side side, Widths widths, QWidget* content, QWidget* parent)
    : QWidget(parent)
    , m_side(side)
    , m_widths(widths)
    , m_content(content)
    , m_width(widths.ideal)
{
    m_content->setParent(this);
    setMinimumWidth(m_widths.minimum);
    setMaximumWidth(m_widths.maximum);
    m_animation.setDuration(static_cast<int>(slideDuration.count()));
    m_animation.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& width) {
        setFixedWidth(width.toInt());
        Q_EMIT slid();
    });
    connect(&m_animation, &QVariantAnimation::finished, this, &SideColumn::finish);
}

QSize SideColumn::sizeHint() const
{
    // The window has a height of its own; that of the content would lay out everything in it.
    return {m_width, 0};
}

void SideColumn::setShown(bool isShown, int width)
{
    if (m_isShown == isShown) {
        return;
    }
    m_isShown = isShown;
    const bool isMoving = isSliding();
    m_animation.stop();
    if (isShown) {
        m_width = width;
    } else if (!isMoving) {
        m_width = this->width();
    }
    if (isShown && !isMoving) {
        setFixedWidth(0);
    }
    m_animation.setStartValue(isShown && !isMoving ? 0 : this->width());
    m_animation.setEndValue(isShown ? m_width : 0);
    show();
    m_animation.start();
}

void SideColumn::finish()
{
    if (m_isShown) {
        setMinimumWidth(m_widths.minimum);
        setMaximumWidth(m_widths.maximum);
    } else {
        hide();
    }
    Q_EMIT slid();
}

void SideColumn::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrangeContent();
}

/// The content keeps its width while the column slides; its outer part is cut off.
void SideColumn::arrangeContent()
{
    const bool isMoving = isSliding() || !m_isShown;
    const int contentWidth = isMoving ? m_width : std::max(width(), m_widths.minimum);
    const int hidden = std::max(contentWidth - width(), 0);
    m_content->setGeometry(m_side == Side::leading ? -hidden : 0, 0, contentWidth, height());
}

} // namespace morlaine
